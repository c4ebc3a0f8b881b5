#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include "editing/editdialogs.h"
#include "editing/mergedlg.h"
#include "support/dialogdriver.h"
#include "ui/fielddialog.h"

namespace veldra::testing {

namespace {

void Press(QWidget& dialog, const char* button) {
  QTest::keyClick(Child<QAbstractButton>(dialog, button), Qt::Key_Space);
}

QString Text(QWidget& dialog, const char* label) {
  return Child<QLabel>(dialog, label)->text();
}

class MoveDialogs : public ::testing::Test {
 protected:
  MoveDialogs() {
    model_.AddVertex({-100, 0, 10});
    model_.AddVertex({300, 50, 10});
  }
  CSettings settings_;
  CEditDialogs dialogs_{settings_};
  CBinModel model_;
  CDialogDriver driver_;
};

}  // namespace

TEST_F(MoveDialogs, ResizeShowsTheResultAndRefusesWhatDoesNotFit) {
  driver_.On("resize", [](QWidget& dialog) {
    EXPECT_EQ(Text(dialog, "presentX"), "400");
    EXPECT_FALSE(Child<QRadioButton>(dialog, "selectedVertices")->isEnabled());
    TypeInto(dialog, "x", "0.5");
    EXPECT_EQ(Text(dialog, "resultX"), "200");
    EXPECT_EQ(Text(dialog, "placeX"), "-50 to 150");
    TypeInto(dialog, "y", "2000000000");
    EXPECT_EQ(Text(dialog, "dialogFault"), "The result would not fit in 32 bits.");
    EXPECT_FALSE(IsOkEnabled(dialog));
    TypeInto(dialog, "y", "2");
    ClickButton(dialog, "OK");
  });
  const auto input = dialogs_.AskResize(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->x, 0.5);
  EXPECT_EQ(input->y, 2.0);
  EXPECT_EQ(input->z, 1.0);
}

TEST_F(MoveDialogs, WhatWasEnteredLastComesBackButForACancelledOne) {
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

TEST_F(MoveDialogs, ASelectionCanBeMovedWhileThereIsOne) {
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

TEST_F(MoveDialogs, Rotate) {
  driver_.On("rotate", [](QWidget& dialog) {
    TypeInto(dialog, "angle", "90");
    Press(dialog, "z");
    EXPECT_EQ(Text(dialog, "resultX"), "50");
    EXPECT_EQ(Text(dialog, "resultY"), "400");
    Press(dialog, "radians");
    EXPECT_NE(Text(dialog, "resultX"), "50");
    Press(dialog, "x");
    ClickButton(dialog, "OK");
  });
  const auto input = dialogs_.AskRotate(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->angle, 90.0);
  EXPECT_TRUE(input->radians);
  EXPECT_EQ(input->axis, EAxis::kX);
}

TEST_F(MoveDialogs, MergeCountsWhatIsTyped) {
  CMergeDialog dialog(model_, {.threshold = 3}, nullptr);
  dialog.show();
  auto* count = Child<QLabel>(dialog, "mergeCount");
  const auto becomes = [&](const char* text) { return QTest::qWaitFor([&] { return count->text() == text; }); };
  EXPECT_TRUE(becomes("0 vertices go, 0 faces vanish."));
  TypeInto(dialog, "threshold", "500");
  EXPECT_EQ(count->text(), "Counting...");
  EXPECT_TRUE(becomes("1 vertex goes, 0 faces vanish."));
  TypeInto(dialog, "threshold", "-");
  EXPECT_EQ(count->text(), "");
  EXPECT_EQ(dialog.findChild<QLabel*>("distancesWrap"), nullptr);
  model_.AddVertex({80000, 0, 0});
  EXPECT_NE(CMergeDialog(model_, {}, nullptr).findChild<QLabel*>("distancesWrap"), nullptr);
}

TEST_F(MoveDialogs, AddVertexTakesAnyCoordinates) {
  driver_.On("addVertex", [](QWidget& dialog) {
    TypeInto(dialog, "y", "-2147483648");
    TypeInto(dialog, "z", "7");
    ClickButton(dialog, "OK");
  });
  EXPECT_EQ(dialogs_.AskAddVertex(nullptr)->position, (SPoint{0, INT32_MIN, 7}));
}

}  // namespace veldra::testing
