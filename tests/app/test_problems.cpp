#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QPushButton>
#include <QtTest>

#include "app/editorfixture.h"
#include "model/binbytes.h"
#include "model/snapshot.h"
#include "support/dialogdriver.h"
#include "tools/problemswidget.h"

namespace veldra::testing {

namespace {

class CProblemsTest : public CEditorTest {
 protected:
  CProblemsWidget& Problems() { return frame->Docks().Problems(); }
  CBinModel& Model() { return frame->ActiveDocument()->Model(); }
  void Check() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return Problems().IsUpToDate(); }));
  }
  /// "Kind|place", a line each, as they are listed.
  std::string Listed() {
    Check();
    QString rows;
    const QAbstractItemModel& list = *Problems().Grid().model();
    for (int row = 0; row < list.rowCount(); ++row)
      rows += list.index(row, 0).data().toString() + "|" + list.index(row, 1).data().toString() + "\n";
    return rows.toStdString();
  }
  /// The first row, whose problem or place is TEXT.
  void Choose(const char* text, int column = CProblemRows::kKind) {
    Check();
    QAbstractItemModel& list = *Problems().Grid().model();
    const QModelIndexList found = list.match(list.index(0, column), Qt::DisplayRole, text, 1, Qt::MatchFixedString);
    ASSERT_FALSE(found.isEmpty()) << text;
    Problems().Grid().selectionModel()->setCurrentIndex(
        found.first(), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
  QPushButton& Button(const char* name) { return *Child<QPushButton>(Problems(), name); }
  std::vector<uint8_t> Content() {
    CByteWriter out;
    WriteSnapshot(Model(), out);
    return {out.Bytes().begin(), out.Bytes().end()};
  }
  QString Title() { return frame->Docks().Dock(EToolDock::kProblems).windowTitle(); }

  /// One problem of each kind that a model can have once it is open.
  std::string WriteFaultyModel() {
    constexpr uint32_t kEnd = 0x00FFFFFF;
    CBinBytes file;
    file.Words({0x14, 0x10000, 2, 0, 10});
    file.Point(0, 0, 0).Point(100, 0, 0).Point(100, 100, 0).Point(0, 100, 60).Point(0, 100, 0).Point(50, 0, 0);
    file.Point(100, 0, 0).Point(500, 0, 0).Point(7, 7, 7).Point(0, 50000, 5);
    file.Face(0x19, {{2}, {4}, {6}}).Face(0x19, {{4}, {6}, {2}}).Face(0x19, {{0}, {4}, {9}});
    file.Texture("BIG.RAW").Face(0x18, {{0, 0, 0}, {1, kEnd, 0}, {2, kEnd, kEnd}, {3, 0, kEnd}});
    file.Animation({"LONGNAME1.RAW", "GONE.RAW"}, 0x10000).Face(0x18, {{0}, {5}, {7}}).End();
    folder.Write("LONGNAME1.RAW", std::string(64 * 64, '\1'));
    questions.OnYesNo("texture size not supported", EAnswer::kYes);
    questions.OnTexture("GONE.RAW", {.choice = STextureAnswer::EChoice::kBlank, .width = 64});
    return folder.Write("faulty.bin", file.bytes);
  }
};

}  // namespace

TEST_F(CProblemsTest, EachKindIsListedShownMendedAndSteppedBack) {
  CTarnView& view = StartWith(WriteFaultyModel());
  Do(ECommand::kDockProblems);
  CBinFace& quad = Model().Face(3);
  quad.SetTexCoord(3, {0.0, 1.5});
  Model().ReportFacesChanged();
  EXPECT_EQ(Listed(),
            "Texture not found|Face 4\nTexture size|Face 3\nTexture name too long|Face 4\nFace without area|Face 4\n"
            "Bent quad|Face 3\nFace twice|Faces 0, 1\nVertices in one place|Vertices 1, 6\nUnused vertex|Vertex 8\n"
            "Off the texture|Face 3, vertex 3\nModel too large|\n");
  EXPECT_EQ(Title(), "Problems (10)");

  Choose("Face twice");
  QTest::keyClick(&Problems().Grid(), Qt::Key_Return);
  EXPECT_EQ(Model().Selected(kFaces), (std::vector<int32_t>{0, 1}));
  EXPECT_EQ(view.Cursor().Face(), 0);
  QTest::keyClick(&Problems().Grid(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            "Problem\tWhere\tWhat\nFace twice\tFaces 0, 1\tFace 1 has the corners of face 0\n");

  const std::vector<uint8_t> before = Content();
  const struct {
    const char* kind;
    const char* button;
    const char* step;
  } mends[] = {
      {"Face without area", "mend", "Delete Face"}, {"Bent quad", "mend", "Split Quad"},
      {"Face twice", "mend", "Delete Copy"},        {"Vertices in one place", "mend", "Merge Vertices"},
      {"Unused vertex", "mend", "Delete Vertex"},   {"Off the texture", "mendAll", "Bring Back Onto the Texture"}};
  for (const auto& [kind, button, step] : mends) {
    Choose(kind);
    Button(button).click();
    Check();
    EXPECT_EQ(frame->ActiveDocument()->Steps().BackName(), step) << kind;
  }
  EXPECT_EQ(Listed(), "Texture size|Faces 2, 3\nModel too large|\n");
  EXPECT_EQ(Model().CheckInvariants(), "");
  for (size_t i = 0; i < std::size(mends); ++i)
    Do(ECommand::kEditStepBack);
  EXPECT_TRUE(Content() == before);

  Check();
  Problems().Grid().selectAll();
  EXPECT_EQ(Button("mend").text().toStdString(), "Mend Selected (6)");
  Button("mend").click();
  EXPECT_EQ(Listed(), "Texture size|Faces 2, 3\nModel too large|\n");
  EXPECT_EQ(Model().CheckInvariants(), "");
  Do(ECommand::kEditStepBack);
  EXPECT_TRUE(Content() == before);
}

TEST_F(CProblemsTest, FollowsEditsFiltersAndLeavesReadOnlyModelsAlone) {
  StartWith(WriteModel("a.bin"));
  Do(ECommand::kDockProblems);
  EXPECT_EQ(Listed(), "");
  EXPECT_EQ(Child<QLabel>(Problems(), "problemSummary")->text(), "No problems found.");
  EXPECT_EQ(Title(), "Problems");
  for (int i = 0; i < 3; ++i)
    Model().AddVertex({3000 + i, 0, 0});
  Model().AddVertex({3002, 0, 0});
  Check();
  EXPECT_EQ(Problems().Count(), 5u);
  auto* kinds = Child<QComboBox>(Problems(), "problemKinds");
  kinds->setCurrentText("Unused vertex (4)");
  EXPECT_EQ(Listed(),
            "Unused vertex|Vertex 8\nUnused vertex|Vertex 9\nUnused vertex|Vertex 10\n"
            "Unused vertex|Vertex 11\n");
  Problems().Grid().sortByColumn(CProblemRows::kPlace, Qt::DescendingOrder);
  Choose("Vertex 11", CProblemRows::kPlace);
  EXPECT_EQ(Problems().Grid().currentIndex().row(), 0);
  QTest::keyClick(&Problems().Grid(), Qt::Key_Return);
  EXPECT_EQ(Model().Selected(kVertices), std::vector<int32_t>{11});
  frame->ActiveDocument()->SetReadOnly(true);
  Settle();
  EXPECT_FALSE(Button("mend").isEnabled());
  frame->ActiveDocument()->SetReadOnly(false);
  Settle();
  Button("mendAll").click();
  EXPECT_EQ(Listed(), "");
  EXPECT_FALSE(kinds->isEnabled());
}

}  // namespace veldra::testing
