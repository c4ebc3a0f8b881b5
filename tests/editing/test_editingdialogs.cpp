#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QtTest>

#include "editing/editdialogs.h"
#include "editing/mergedlg.h"
#include "platform/files.h"
#include "support/dialogdriver.h"
#include "support/richmodel.h"
#include "ui/fielddialog.h"

namespace veldra::testing {

namespace {

void Press(QWidget& dialog, const char* button) {
  QTest::keyClick(Child<QAbstractButton>(dialog, button), Qt::Key_Space);
}

QString Text(QWidget& dialog, const char* label) {
  return Child<QLabel>(dialog, label)->text();
}

QString Fault(QWidget& dialog) {
  return Text(dialog, "dialogFault");
}

class EditingDialogs : public ::testing::Test {
 protected:
  EditingDialogs() {
    for (const SPoint& at : {SPoint{-100, 0, 10}, {300, 50, 10}, {0, 1, 10}, {10, 4, 10}, {20, 9, 10}, {30, 16, 10}})
      model_.AddVertex(at);
    for (size_t i = 0; i < 2; ++i)
      model_.AddTexture(std::make_unique<CBinTexture>(model_, CTextureSet::Name(i), textures_.Image(i)));
  }
  CTextureSet textures_;
  CSettings settings_;
  CEditDialogs dialogs_{settings_};
  CBinModel model_;
  CDialogDriver driver_;
};

}  // namespace

TEST_F(EditingDialogs, WhatWasEnteredLastComesBackButForACancelledOne) {
  driver_.On("resize", [](QWidget& dialog) {
    Press(dialog, "same");
    TypeInto(dialog, "y", "3");
    ClickButton(dialog, "OK");
  });
  driver_.On("resize", [](QWidget& dialog) {
    EXPECT_EQ(Child<QLineEdit>(dialog, "x")->text(), "3");
    TypeInto(dialog, "x", "4");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  driver_.On("resize", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
  EXPECT_EQ(dialogs_.AskResize(model_, nullptr)->z, 3.0);
  EXPECT_EQ(dialogs_.AskResize(model_, nullptr), std::nullopt);
  EXPECT_EQ(dialogs_.AskResize(model_, nullptr)->x, 3.0);
}

TEST_F(EditingDialogs, ASelectionCanBeMovedWhileThereIsOne) {
  const int32_t second[] = {1};
  model_.Select(EGroupKind::kVertices, second, true);
  driver_.On("translate", [](QWidget& dialog) {
    Press(dialog, "selectedVertices");
    TypeInto(dialog, "x", "1.5");
    EXPECT_FALSE(IsOkEnabled(dialog));
    TypeInto(dialog, "x", "-50");
    EXPECT_EQ(Text(dialog, "resultX"), "350");
    ClickButton(dialog, "OK");
  });
  auto input = dialogs_.AskTranslate(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->x, -50);
  EXPECT_EQ(input->scope, SScope::EKind::kSelectedVertices);

  model_.SelectAll(EGroupKind::kVertices, false);
  driver_.Click("translate", "OK");
  input = dialogs_.AskTranslate(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->x, -50);
  EXPECT_EQ(input->scope, SScope::EKind::kAll);
}

TEST_F(EditingDialogs, ASelectionTurnsAboutItsMiddleUntilTheUserSaysOtherwise) {
  model_.AddVertex({20, 9, 21});
  const int32_t two[] = {4, 6};
  model_.Select(EGroupKind::kVertices, two, true);
  const auto place = [](QWidget& dialog) { return Child<QLineEdit>(dialog, "pivotZ")->text(); };
  driver_.On("rotate", [&](QWidget& dialog) {
    EXPECT_TRUE(Child<QRadioButton>(dialog, "selectedVertices")->isChecked());
    EXPECT_EQ(place(dialog), "15.5");
    Press(dialog, "allVertices");
    EXPECT_EQ(place(dialog), "0");
    auto* pivot = Child<QComboBox>(dialog, "pivot");
    QTest::keyClick(pivot, Qt::Key_Down);
    EXPECT_EQ(pivot->currentText(), "Current vertex (4)");
    EXPECT_EQ(place(dialog), "10");
    Press(dialog, "selectedVertices");
    EXPECT_EQ(place(dialog), "10");
    QTest::keyClick(pivot, Qt::Key_Down);
    TypeInto(dialog, "pivotZ", "");
    EXPECT_FALSE(IsOkEnabled(dialog));
    EXPECT_EQ(Fault(dialog), "Pivot Z: Enter a number.");
    TypeInto(dialog, "pivotZ", "2.5");
    ClickButton(dialog, "OK");
  });
  const auto input = dialogs_.AskRotate(model_, nullptr, 4);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->pivot.kind, SPivotInput::EKind::kPoint);
  EXPECT_EQ(input->pivot.point, (Vector3{20, 9, 2.5}));
}

TEST_F(EditingDialogs, MergeCountsWhatIsTyped) {
  CMergeDialog dialog(model_, {.threshold = 3}, nullptr);
  dialog.show();
  auto* count = Child<QLabel>(dialog, "mergeCount");
  const auto becomes = [&](const char* text) { return QTest::qWaitFor([&] { return count->text() == text; }); };
  EXPECT_TRUE(becomes("0 vertices go, 0 faces vanish."));
  TypeInto(dialog, "threshold", "500");
  EXPECT_EQ(count->text(), "Counting...");
  EXPECT_TRUE(becomes("5 vertices go, 0 faces vanish."));
  TypeInto(dialog, "threshold", "-");
  EXPECT_EQ(count->text(), "");
  EXPECT_EQ(dialog.findChild<QLabel*>("distancesWrap"), nullptr);
  model_.AddVertex({80000, 0, 0});
  EXPECT_NE(CMergeDialog(model_, {}, nullptr).findChild<QLabel*>("distancesWrap"), nullptr);
}

TEST_F(EditingDialogs, AddFaceChecksItsCornersAndItsTexture) {
  settings_.def_face_type = 0x29;
  driver_.On("addFace", [](QWidget& dialog) {
    EXPECT_EQ(Child<QComboBox>(dialog, "types")->currentText(), "0x29 Shiny Texture (MTM2)");
    EXPECT_FALSE(Child<QLineEdit>(dialog, "corner4")->isEnabled());
    TypeInto(dialog, "corner2", "2");
    EXPECT_NE(Fault(dialog), "") << "named twice";
    TypeInto(dialog, "corner2", "5");
    EXPECT_TRUE(IsOkEnabled(dialog));
    QTest::keyClick(Child<QRadioButton>(dialog, "quad"), Qt::Key_Space);
    TypeInto(dialog, "corner4", "4");
    QTest::keyClick(Child<QComboBox>(dialog, "textures"), Qt::Key_End);
    EXPECT_FALSE(IsOkEnabled(dialog)) << "needs a texture";
    QTest::keyClick(Child<QComboBox>(dialog, "textures"), Qt::Key_Up);
    ClickButton(dialog, "OK");
  });
  const auto input = dialogs_.AskAddFace(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->corners, (std::array<int32_t, 4>{0, 5, 2, 4}));
  EXPECT_EQ(input->type, 0x29u);
  EXPECT_EQ(input->texture, 1);
}

TEST_F(EditingDialogs, ReplaceTextureTakesATextureFileOnly) {
  const CTempFolder folder;
  const std::string good = folder.Write("NEW.RAW", std::string(128 * 128, 'a'));
  const std::string bad = folder.Write("BAD.RAW", std::string(100, 'a'));
  settings_.art_dir = folder.Path();
  driver_.On("replaceTexture", [&](QWidget& dialog) {
    auto* list = Child<QListWidget>(dialog, "textures");
    const std::pair<std::string, const char*> rows[] = {
        {bad, "Not a texture: 100 bytes, not 64, 128, 256 or 512 squared."}, {folder.File("new.raw"), ""}};
    for (const auto& [path, fault] : rows) {
      TypeInto(dialog, "path", QString::fromStdString(path));
      EXPECT_EQ(Fault(dialog), fault);
      EXPECT_EQ(IsOkEnabled(dialog), *fault == '\0');
    }
    QTest::keyClick(list, Qt::Key_Down);
    ClickButton(dialog, "OK");
  });
  const auto input = dialogs_.AskReplaceTexture(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->texture, 1);
  EXPECT_TRUE(IsSameFile(input->path, good)) << input->path;
}

}  // namespace veldra::testing
