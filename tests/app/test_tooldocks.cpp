#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeView>
#include <QtTest>

#include "app/editorfixture.h"
#include "editing/modelcommands.h"
#include "model/geometry.h"
#include "support/dialogdriver.h"
#include "tools/modeltreemodel.h"

namespace veldra::testing {

namespace {

using Tree = CModelTreeModel;

class CToolDocksTest : public CEditorTest {
 protected:
  CToolWidget& Tool(EToolDock dock) { return *static_cast<CToolWidget*>(frame->Docks().Dock(dock).widget()); }
  void Raise(EToolDock dock) {
    frame->Docks().Dock(dock).raise();
    Settle();
  }
  QString Title(EToolDock dock) {
    return Child<QLabel>(Tool(dock), "title")->text().remove(QRegularExpression("<[^>]*>"));
  }
  QTreeView& TreeView() { return *Child<QTreeView>(*frame, "modelTree"); }
  Tree& Rows() { return *static_cast<Tree*>(TreeView().model()); }
  QString RowText(Tree::ESection section, int32_t number = -1) {
    return Rows().IndexOf({section, number}).data().toString();
  }
  void Open(Tree::ESection section) {
    TreeView().expand(Rows().IndexOf({section, -1}));
    Settle();
  }
  QPoint Middle(Tree::ESection section, int32_t number) {
    return TreeView().visualRect(Rows().IndexOf({section, number})).center();
  }
  void Click(Tree::ESection section, int32_t number, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(TreeView().viewport(), Qt::LeftButton, modifiers, Middle(section, number));
    Settle();
  }
  void DoubleClick(QWidget& viewport, const QPoint& at) {
    QTest::mouseClick(&viewport, Qt::LeftButton, {}, at);
    QTest::mouseDClick(&viewport, Qt::LeftButton, {}, at);
    Settle();
  }
  void Type(const char* field, const QString& text, Qt::Key key = Qt::Key_Return) {
    auto* edit = Child<QLineEdit>(*frame, field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, key);
    Settle();
  }
  std::vector<int32_t> SelectedFaces() { return frame->ActiveDocument()->Model().Selected(kFaces); }
  using Numbers = std::vector<int32_t>;
};

}  // namespace

TEST_F(CToolDocksTest, FollowTheActiveWindow) {
  CTarnView& first = StartWith(WriteModel("a.bin"));
  EXPECT_TRUE(first.hasFocus());
  first.Cursor().SetFace(2);
  Do(ECommand::kWindowNew);
  EXPECT_EQ(Title(EToolDock::kCurrentFace), "There is no current face. A click on one in the 3D view makes it so.");
  Do(ECommand::kWindowNext);
  EXPECT_EQ(Title(EToolDock::kCurrentFace), "Face 2 of 6");
  EXPECT_EQ(Child<QLabel>(*frame, "storedNormal")->text(), Child<QLabel>(*frame, "normal")->text());
  ASSERT_TRUE(frame->OpenFile(WriteModel("b.bin", {.unused_vertex = true})));
  Settle();
  EXPECT_EQ(RowText(Tree::kVertices), "Vertices (9)");
  frame->ActiveView()->Cursor().SetVertex(8);
  Raise(EToolDock::kVertexStatus);
  Raise(EToolDock::kModelInfo);
  EXPECT_TRUE(Child<QPlainTextEdit>(Tool(EToolDock::kModelInfo), "text")->toPlainText().contains("VERTEX# 8"));
  Raise(EToolDock::kVertexStatus);
  EXPECT_EQ(Title(EToolDock::kVertexStatus), "Vertex 8 of 9");
  EXPECT_EQ(Child<QLabel>(*frame, "users")->text(), "No face uses it");
  for (int i = 0; i < 3; ++i)
    Do(ECommand::kFileClose);
  EXPECT_EQ(Title(EToolDock::kVertexStatus), "No model is open.");
  EXPECT_EQ(RowText(Tree::kFaces), "Faces (0)");
}

TEST_F(CToolDocksTest, VertexIsTypedOver) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  CTarnDoc& document = view.Document();
  const auto position = [&] { return document.Model().Vertex(3).Position(); };
  Raise(EToolDock::kVertexStatus);
  view.Cursor().SetVertex(3);
  Settle();
  Type("y", "-2147483649");
  Type("x", "1.5");
  EXPECT_EQ(position(), (SPoint{-1000, 600, 400}));
  Type("y", "70", Qt::Key_Escape);
  Type("y", "77");
  EXPECT_EQ(position(), (SPoint{-1000, 77, 400}));
  EXPECT_TRUE(document.IsModified());
  EXPECT_EQ(app->EarlierStates().List(document.StatesKey()).size(), 1u);

  // What is being typed stays while something else changes, and goes with another position.
  auto* x = Child<QLineEdit>(*frame, "x");
  x->setText("55");
  const int32_t other = 0;
  document.Model().Select(EGroupKind::kVertices, {&other, 1}, true);
  Settle();
  EXPECT_EQ(x->text(), "55");
  Translate(document.Model(), SScope::All(), 1, 0, 0);
  Settle();
  EXPECT_EQ(x->text(), "-999");

  document.SetReadOnly(true);
  Settle();
  Type("z", "5");
  EXPECT_EQ(position(), (SPoint{-999, 77, 400}));
}

TEST_F(CToolDocksTest, TreeSelectsInTheModelAndShowsWhatIsSelected) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  CBinModel& model = view.Document().Model();
  Open(Tree::kFaces);
  Click(Tree::kFaces, 1);
  EXPECT_EQ(view.Cursor().Face(), 1);
  EXPECT_EQ(SelectedFaces(), Numbers());
  Click(Tree::kFaces, 3, Qt::ShiftModifier);
  EXPECT_EQ(SelectedFaces(), (Numbers{1, 2, 3}));
  Click(Tree::kFaces, 2, Qt::ControlModifier);
  EXPECT_EQ(SelectedFaces(), (Numbers{1, 3}));

  model.AddGroup(kFaces, "front", Numbers{0, 5});
  view.Cursor().SetFace(2);
  Open(Tree::kFaceGroups);
  EXPECT_EQ(Rows().PlaceOf(TreeView().currentIndex()), (Tree::SPlace{Tree::kFaces, 2}));
  DoubleClick(*TreeView().viewport(), Middle(Tree::kFaceGroups, 0));
  EXPECT_EQ(SelectedFaces(), (Numbers{0, 5}));
  const auto color_at = [&](int32_t face) {
    const QRect row = TreeView().visualRect(Rows().IndexOf({Tree::kFaces, face}));
    return TreeView().viewport()->grab().toImage().pixelColor(row.right() - 2, row.top() + 2);
  };
  EXPECT_EQ(color_at(0), TreeView().palette().color(QPalette::Highlight));
  EXPECT_EQ(color_at(1), TreeView().palette().color(QPalette::Base));

  model.RemoveFaces(Numbers{0, 1, 2});
  Settle();
  EXPECT_EQ(Rows().rowCount(Rows().IndexOf({Tree::kFaces, -1})), 3);
}

TEST_F(CToolDocksTest, SearchNarrowsTheTree) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  const int32_t shiny = 4;
  view.Document().Model().Face(shiny).SetType(kFaceShiny);
  view.Document().Model().ReportFacesChanged();
  TreeView().setFocus();
  QTest::keyClick(&TreeView(), Qt::Key_S);
  QTest::keyClicks(Child<QLineEdit>(*frame, "search"), "hiny");
  Settle();
  EXPECT_EQ(RowText(Tree::kFaces), "Faces (1 of 6)");
  Click(Tree::kFaces, shiny);
  EXPECT_EQ(view.Cursor().Face(), shiny);
  view.Document().Model().Face(0).SetType(kFaceShiny);
  view.Document().Model().ReportFacesChanged();
  Settle();
  EXPECT_EQ(RowText(Tree::kFaces), "Faces (2 of 6)");
  EXPECT_EQ(Rows().PlaceOf(TreeView().currentIndex()), (Tree::SPlace{Tree::kFaces, shiny}));
  EXPECT_EQ(view.Cursor().Face(), shiny);
}

TEST_F(CToolDocksTest, TextureListMarksUnusedOnesAndSelectsFaces) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  ASSERT_NE(LoadTexture(view.Document(), folder.File("BIG.RAW")), nullptr);
  Raise(EToolDock::kTextureList);
  auto* list = Child<QTreeView>(Tool(EToolDock::kTextureList), "textures");
  const auto text = [&](int row, int column) { return list->model()->index(row, column).data().toString(); };
  EXPECT_EQ(text(0, 0), "GRID.RAW\n64 x 64, plain");
  EXPECT_EQ(text(0, 1), "6");
  EXPECT_EQ(text(1, 1), "unused");
  view.Document().Model().SetFaceTexture(3, &view.Document().Model().Texture(1));
  Settle();
  EXPECT_EQ(text(1, 1), "1");
  const QPoint at = list->visualRect(list->model()->index(1, 0)).center();
  DoubleClick(*list->viewport(), at);
  EXPECT_EQ(SelectedFaces(), Numbers{3});
}

TEST_F(CToolDocksTest, PlacesComeBackInTheNextRun) {
  Start();
  CToolDocks& docks = frame->Docks();
  frame->addDockWidget(Qt::BottomDockWidgetArea, &docks.Dock(EToolDock::kModelInfo));
  Do(ECommand::kDockTextureList);
  docks.Dock(EToolDock::kVertexStatus).setFloating(true);
  docks.Dock(EToolDock::kVertexStatus).move(321, 123);
  ASSERT_TRUE(frame->OpenFile(WriteModel("a.bin")));
  Do(ECommand::kViewOnly3D);
  EXPECT_TRUE(frame->close());
  settings = app->Settings();
  EXPECT_EQ(QPoint(settings.vertex_status_x, settings.vertex_status_y), QPoint(321, 123));
  settings.vertex_status_x = 200;

  Start();
  EXPECT_EQ(frame->dockWidgetArea(&frame->Docks().Dock(EToolDock::kModelInfo)), Qt::BottomDockWidgetArea);
  EXPECT_FALSE(frame->Docks().IsOpen(EToolDock::kTextureList));
  EXPECT_TRUE(frame->Docks().Dock(EToolDock::kVertexStatus).isFloating());
  EXPECT_EQ(frame->Docks().Dock(EToolDock::kVertexStatus).pos(), QPoint(200, 123));
}

TEST_F(CToolDocksTest, AreAwayWhileAViewIsSeenAlone) {
  StartWith(WriteModel("a.bin"));
  Do(ECommand::kDockModelInfo);
  Raise(EToolDock::kVertexStatus);
  const int width = frame->centralWidget()->width();
  Do(ECommand::kViewOnly3D);
  for (const auto dock : {EToolDock::kModelTree, EToolDock::kVertexStatus, EToolDock::kTextureList})
    EXPECT_FALSE(frame->Docks().IsOpen(dock));
  EXPECT_EQ(frame->centralWidget()->width(), frame->width());
  ASSERT_TRUE(frame->OpenFile(WriteModel("b.bin")));  // is not seen alone
  Settle();
  EXPECT_EQ(frame->centralWidget()->width(), width);
  EXPECT_FALSE(frame->Docks().IsOpen(EToolDock::kModelInfo));
}

TEST_F(CToolDocksTest, OnlyWhatIsSeenWorksAndOnlyOnceATurn) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  const auto refreshes_of_five_changes = [&](EToolDock dock) {
    const int before = Tool(dock).RefreshCount();
    for (int32_t i = 0; i < 5; ++i) {
      view.Cursor().SetFace(i);
      Translate(view.Document().Model(), SScope::All(), 1, 0, 0);
    }
    Settle();
    return Tool(dock).RefreshCount() - before;
  };
  EXPECT_EQ(refreshes_of_five_changes(EToolDock::kCurrentFace), 1);
  EXPECT_EQ(refreshes_of_five_changes(EToolDock::kVertexStatus), 0) << "behind";
  Do(ECommand::kDockCurrentFace);
  const int closed = Tool(EToolDock::kCurrentFace).RefreshCount();
  EXPECT_EQ(refreshes_of_five_changes(EToolDock::kCurrentFace), 0) << "closed";
  Do(ECommand::kDockCurrentFace);
  EXPECT_EQ(Title(EToolDock::kCurrentFace), "Face 4 of 6");
  EXPECT_EQ(Tool(EToolDock::kCurrentFace).RefreshCount(), closed + 1);
}

}  // namespace veldra::testing
