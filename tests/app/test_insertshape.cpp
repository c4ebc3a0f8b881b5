#include <QListWidget>
#include <QtTest>

#include "app/editorfixture.h"
#include "app/insertshapedlg.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

/// What a user does, counted.
class InsertShapeTest : public CEditorTest {
 protected:
  void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    ++actions;
    QTest::keyClick(&widget, key, modifiers);
    Settle();
  }
  void Type(QWidget& dialog, const char* name, const QString& text) {
    ++actions;
    TypeInto(dialog, name, text);
  }

  CDialogDriver driver;
  int actions = 0;
};

TEST_F(InsertShapeTest, ARampWithTextureFromNothingInAFewActions) {
  const std::string texture = folder.File("GRID.RAW");
  Start();
  Press(*frame, Qt::Key_N, Qt::ControlModifier);
  questions.OnOpenFiles("Load Texture", SOpenFiles{.paths = {texture}});
  driver.On("insertShape", [&](QWidget& dialog) {
    ++actions;
    Child<QListWidget>(dialog, "kinds")->setCurrentRow(static_cast<int>(EShape::kRamp));
    Type(dialog, "sizeX", "400");
    Type(dialog, "sizeY", "150");
    Type(dialog, "sizeZ", "600");
    ++actions;
    ClickButton(dialog, "Load Texture...");
    ++actions;  // the file
    const auto& shape_dialog = static_cast<CInsertShapeDialog&>(dialog);
    EXPECT_EQ(shape_dialog.Preview().Shown().FaceCount(), 5);
    EXPECT_TRUE(shape_dialog.Preview().IsPlaying());
    EXPECT_FALSE(Child<QWidget>(dialog, "sides")->isVisible());
    Press(dialog, Qt::Key_Return);
  });
  Press(*frame, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
  const CBinModel& model = frame->ActiveDocument()->Model();
  ASSERT_EQ(model.FaceCount(), 5);
  EXPECT_EQ(model.Face(0).Texture()->Name(), "GRID.RAW");
  EXPECT_EQ(model.Bound(3) - model.Bound(0), 400);
  EXPECT_EQ(model.Bound(5) - model.Bound(2), 600);
  EXPECT_EQ(model.SelectedCount(kFaces), 5);
  EXPECT_EQ(model.SelectedCount(kVertices), 6);
  EXPECT_EQ(model.FaceGroups().front().Name(), "ramp");
  EXPECT_LT(actions, 10);
  Do(ECommand::kEditStepBack);
  EXPECT_EQ(model.VertexCount() + model.TextureCount(), 0);
}

TEST_F(InsertShapeTest, TakesItsNumbersAndTellsWhatCannotBeBuilt) {
  StartWith(WriteModel("box.bin"));
  CBinModel& model = frame->ActiveDocument()->Model();
  const std::vector<int32_t> selected = {1};
  model.Select(kVertices, selected, true);
  driver.On("insertShape", [&](QWidget& dialog) {
    const SPoint at = model.Vertex(1).Position();
    const auto& asked = static_cast<CInsertShapeDialog&>(dialog);
    EXPECT_EQ(asked.Input().shape.middle, at);
    EXPECT_EQ(asked.Input().texture, 0);
    auto* kinds = Child<QListWidget>(dialog, "kinds");
    kinds->setCurrentRow(static_cast<int>(EShape::kTorus));
    Child<QSpinBox>(dialog, "sides")->setValue(12);
    EXPECT_TRUE(IsOkEnabled(dialog));
    Child<QSpinBox>(dialog, "rings")->setValue(2);
    EXPECT_FALSE(IsOkEnabled(dialog));
    Child<QSpinBox>(dialog, "rings")->setValue(5);
    QTest::keyClick(Child<QWidget>(dialog, "tiltXDial"), Qt::Key_PageUp);
    EXPECT_EQ(asked.Input().shape.tilt, (Vector3{15, 0, 0}));
    Child<QComboBox>(dialog, "textures")->setCurrentText("None");
    ClickButton(dialog, "OK");
  });
  Do(ECommand::kInsertShape);
  EXPECT_EQ(model.VertexCount(), 8 + 12 * 5);
  EXPECT_EQ(model.Face(model.FaceCount() - 1).Type(), uint32_t{kFaceUntextured});
  driver.On("insertShape", [&](QWidget& dialog) {  // as it was left
    EXPECT_EQ(static_cast<CInsertShapeDialog&>(dialog).Input().shape.sides, 12);
    dialog.close();
  });
  Do(ECommand::kInsertShape);
  EXPECT_EQ(frame->ActiveDocument()->Steps().Count(), 1u);
}

}  // namespace veldra::testing
