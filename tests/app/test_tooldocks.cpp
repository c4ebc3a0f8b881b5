#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeView>
#include <QtTest>

#include "app/editorfixture.h"
#include "editing/modelcommands.h"
#include "mapping/mappingwidget.h"
#include "model/geometry.h"
#include "support/dialogdriver.h"
#include "tools/modeltreemodel.h"

namespace veldra::testing {

namespace {

using Tree = CModelTreeModel;

class CToolDocksTest : public CEditorTest {
 protected:
  CToolWidget& Tool(EToolDock dock) { return frame->Docks().Tool(dock); }
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
  Do(ECommand::kFileNew);
  EXPECT_TRUE(Title(EToolDock::kVertexStatus).contains("Model > Insert")) << "what an empty one begins with";
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

  document.SetReadOnly(true);
  Settle();
  Type("z", "5");
  EXPECT_EQ(position(), (SPoint{-1000, 77, 400}));
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

  model.RemoveFaces(Numbers{0, 1, 2});
  Settle();
  EXPECT_EQ(Rows().rowCount(Rows().IndexOf({Tree::kFaces, -1})), 3);
}

TEST_F(CToolDocksTest, PlacesComeBackInTheNextRun) {
  Start();
  CToolDocks& docks = frame->Docks();
  frame->addDockWidget(Qt::BottomDockWidgetArea, &docks.Dock(EToolDock::kModelInfo));
  Do(ECommand::kDockTextureList);
  docks.Dock(EToolDock::kVertexStatus).setFloating(true);
  docks.Dock(EToolDock::kVertexStatus).move(321, 123);
  Settle();
  const QPoint corner = docks.Dock(EToolDock::kVertexStatus).geometry().topLeft();  // within its frame
  ASSERT_TRUE(frame->OpenFile(WriteModel("a.bin")));
  Do(ECommand::kViewOnly3D);
  EXPECT_TRUE(frame->close());
  settings = app->Settings();
  EXPECT_EQ(QPoint(settings.vertex_status_x, settings.vertex_status_y), corner);
  settings.vertex_status_x = 200;

  Start();
  EXPECT_EQ(frame->dockWidgetArea(&frame->Docks().Dock(EToolDock::kModelInfo)), Qt::BottomDockWidgetArea);
  EXPECT_FALSE(frame->Docks().IsOpen(EToolDock::kTextureList));
  EXPECT_TRUE(frame->Docks().Dock(EToolDock::kVertexStatus).isFloating());
  EXPECT_EQ(frame->Docks().Dock(EToolDock::kVertexStatus).geometry().topLeft(), QPoint(200, corner.y()));
}

TEST_F(CToolDocksTest, WhatStandsInOneIsMadeWhenItIsFirstSeenAndKeepsItsStateUntilThen) {
  const std::string guides = "wheel| 12.5| 3 4\n";
  Start();
  frame->Docks().Mapping().Session().SetAllGuides(guides);
  EXPECT_TRUE(frame->close());
  Start();
  EXPECT_NE(frame->Docks().Dock(EToolDock::kModelTree).widget(), nullptr) << "in front";
  EXPECT_EQ(frame->Docks().Dock(EToolDock::kMapping).widget(), nullptr);
  EXPECT_TRUE(frame->close());
  Start();
  frame->Docks().ShowMapping();
  EXPECT_EQ(frame->Docks().Mapping().Session().AllGuides(), guides);
}

TEST_F(CToolDocksTest, OnlyWhatIsSeenWorksAndOnlyOnceATurn) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  const int front = Tool(EToolDock::kCurrentFace).RefreshCount();
  const int behind = Tool(EToolDock::kVertexStatus).RefreshCount();
  for (int32_t i = 0; i < 5; ++i) {
    view.Cursor().SetFace(i);
    Translate(view.Document().Model(), SScope::All(), 1, 0, 0);
  }
  Settle();
  EXPECT_EQ(Tool(EToolDock::kCurrentFace).RefreshCount(), front + 1);
  EXPECT_EQ(Tool(EToolDock::kVertexStatus).RefreshCount(), behind);
}

}  // namespace veldra::testing
