#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include "app/qtquestions.h"
#include "support/dialogdriver.h"
#include "support/testfiles.h"

namespace veldra::testing {

namespace {

void TypeFileName(QWidget& dialog, const QString& name) {
  auto* edit = Child<QLineEdit>(dialog, "fileNameEdit");
  edit->selectAll();
  QTest::keyClicks(edit, name);
  QTest::keyClick(edit, Qt::Key_Return);
}

bool HasLabel(QWidget& dialog, const QString& text) {
  const auto labels = dialog.findChildren<QLabel*>();
  return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) { return label->text() == text; });
}

}  // namespace

TEST(QtQuestions, MessagesShowTextCaptionAndDetails) {
  CQtQuestions questions;
  CDialogDriver driver;
  driver.On("messageBox", [](QWidget& widget) {
    auto& box = dynamic_cast<QMessageBox&>(widget);
    EXPECT_EQ(box.text(), "<b>100 & more");
    EXPECT_EQ(box.windowTitle(), "Veldra - Error");
    EXPECT_EQ(box.informativeText(), "at byte 7");
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    QTest::keyClick(&box, Qt::Key_Return);
  });
  questions.Message({.text = "<b>100 & more", .caption = kErrorCaption, .icon = EIcon::kError, .details = "at byte 7"});
}

TEST(QtQuestions, StandOverTheWindowThatTheUserWorksIn) {
  CQtQuestions questions;
  QWidget main_window;
  QWidget tool_window;
  questions.SetParent(&main_window);
  main_window.show();
  tool_window.show();
  tool_window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&tool_window));
  CDialogDriver driver;
  driver.On("messageBox", [&](QWidget& box) {
    EXPECT_EQ(box.parentWidget(), &tool_window);
    QTest::keyClick(&box, Qt::Key_Return);
  });
  questions.Message({.text = "?"});
}

TEST(QtQuestions, EachAnswerOfYesNoCancel) {
  CQtQuestions questions;
  const std::pair<QString, EAnswer> buttons[] = {
      {"Yes", EAnswer::kYes}, {"No", EAnswer::kNo}, {"Cancel", EAnswer::kCancel}};
  for (const auto& [button, answer] : buttons) {
    CDialogDriver driver;
    driver.Click("messageBox", button);
    EXPECT_EQ(questions.AskYesNoCancel({.text = "?"}), answer);
    if (answer == EAnswer::kCancel) continue;
    driver.Click("messageBox", button);
    EXPECT_EQ(questions.AskYesNo({.text = "?"}), answer);
  }
  CDialogDriver driver;
  const auto escape = [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  driver.On("messageBox", escape).On("messageBox", escape);
  EXPECT_EQ(questions.AskYesNoCancel({.text = "?"}), EAnswer::kCancel);
  EXPECT_EQ(questions.AskYesNo({.text = "?"}), EAnswer::kNo);
  for (const EAnswer usual : {EAnswer::kYes, EAnswer::kNo, EAnswer::kCancel}) {
    driver.On("messageBox", [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(questions.AskYesNoCancel({.text = "?", .usual = usual}), usual);
  }
  driver.Click("messageBox", "Don't Save");
  EXPECT_EQ(questions.AskYesNoCancel({.text = "?", .yes = "&Save", .no = "Do&n't Save"}), EAnswer::kNo);
}

TEST(QtQuestions, NameTheFileThatTheyAreAbout) {
  CQtQuestions questions;
  const CQuestions::CAbout outer(questions, "/models/outer.bin");
  const struct {
    const char* file;
    SMessage message;
    const char* shown;
  } cases[] = {{"/a/m.bin", {.text = "Model is currupt"}, "/a/m.bin"},
               {"/a/m.bin", {.text = "Model is currupt", .details = "at byte 7"}, "/a/m.bin\nat byte 7"},
               {"/a/m.bin", {.text = "\"/a/m.bin\" is there already."}, ""},
               {"/a/m.bin", {.text = "Save changes to m.bin?"}, "/a/m.bin"},
               {"Untitled3", {.text = "Save changes to Untitled3?"}, ""}};
  for (const auto& row : cases) {
    CDialogDriver driver;
    driver.On("messageBox", [&](QWidget& widget) {
      EXPECT_EQ(dynamic_cast<QMessageBox&>(widget).informativeText(), row.shown);
      QTest::keyClick(&widget, Qt::Key_Return);
    });
    const CQuestions::CAbout about(questions, row.file);
    questions.Message(row.message);
  }
  CDialogDriver driver;
  driver.On("unusedVertices", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Veldra - outer.bin");
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  EXPECT_EQ(questions.AskUnusedVertices().choice, SUnusedVerticesAnswer::EChoice::kSaveAnyway);
}

TEST(QtQuestions, UnknownFaceDialog) {
  using EChoice = SUnknownFaceAnswer::EChoice;
  CQtQuestions questions;
  const struct {
    const char* choice;
    EChoice answer;
  } cases[] = {{"ignore", EChoice::kIgnore}, {"abort", EChoice::kAbort}};
  for (const auto& row : cases) {
    CDialogDriver driver;
    driver.On("unknownFace", [&](QWidget& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Veldra - Unknown Face");
      EXPECT_TRUE(HasLabel(dialog, "This model contains the unknown face\ntype (0x77). What would you like to do?"));
      QTest::mouseClick(Child<QRadioButton>(dialog, row.choice), Qt::LeftButton, {}, QPoint(8, 8));
      EXPECT_FALSE(Child<QComboBox>(dialog, "types")->isEnabled());
      ClickButton(dialog, "OK");
    });
    EXPECT_EQ(questions.AskUnknownFace(0x77).choice, row.answer);
  }
  CDialogDriver driver;
  driver.On("unknownFace", [](QWidget& dialog) {
    QTest::mouseClick(Child<QRadioButton>(dialog, "change"), Qt::LeftButton, {}, QPoint(8, 8));
    auto* types = Child<QComboBox>(dialog, "types");
    EXPECT_EQ(types->count(), 6);
    EXPECT_EQ(types->currentText(), "0x18 Normal Texture (MTM)");
    QTest::keyClick(types, Qt::Key_End);
    ClickButton(dialog, "OK");
  });
  driver.On("unknownFace", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  const SUnknownFaceAnswer changed = questions.AskUnknownFace(0x77);
  EXPECT_EQ(changed.choice, EChoice::kChange);
  EXPECT_EQ(changed.type, 0x33u);
  EXPECT_EQ(questions.AskUnknownFace(1).choice, EChoice::kAbort);
}

TEST(QtQuestions, UnusedVerticesDialog) {
  using EChoice = SUnusedVerticesAnswer::EChoice;
  CQtQuestions questions;
  const struct {
    QString button;
    EChoice answer;
    bool again;
  } cases[] = {{"Delete unused vertices and save", EChoice::kDelete, false},
               {"Save Anyway", EChoice::kSaveAnyway, true},
               {"Cancel save", EChoice::kCancel, false}};
  for (const auto& row : cases) {
    CDialogDriver driver;
    driver.On("unusedVertices", [&](QWidget& dialog) {
      EXPECT_TRUE(HasLabel(dialog,
                           "This model contains unused vertices which may cause undesired results in the game. What "
                           "would you like to do?"));
      auto* again = Child<QCheckBox>(dialog, "dontShowAgain");
      EXPECT_EQ(again->text(), "Don't show this again");
      if (row.again) QTest::mouseClick(again, Qt::LeftButton, {}, QPoint(8, 8));
      ClickButton(dialog, row.button);
    });
    const SUnusedVerticesAnswer answer = questions.AskUnusedVertices();
    EXPECT_EQ(answer.choice, row.answer);
    EXPECT_EQ(answer.dont_show_again, row.again);
  }
  CDialogDriver driver;
  driver.On("unusedVertices", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(questions.AskUnusedVertices().choice, EChoice::kCancel);
}

TEST(QtQuestions, TextureQuestionIsAMessageAndThenAFileDialog) {
  const CTempFolder folder;
  folder.Write("OTHER.RAW", "x");
  CQtQuestions questions;
  const SFilePrompt prompt{.title = "Select Texture",
                           .filters = {{"MTM Texture *.raw", "*.raw"}},
                           .directory = folder.Path(),
                           .name = {},
                           .default_extension = "raw"};
  CDialogDriver driver;
  driver.Click("messageBox", "OK").On("openFile", [](QWidget& dialog) {
    EXPECT_EQ(Child<QComboBox>(dialog, "fileTypeCombo")->itemText(0), "MTM Texture *.raw");
    TypeFileName(dialog, "OTHER.RAW");
  });
  const STextureAnswer picked = questions.AskTexture({.text = "Texture not found."}, prompt);
  EXPECT_EQ(picked.choice, STextureAnswer::EChoice::kFile);
  EXPECT_EQ(picked.path, folder.File("OTHER.RAW"));
  driver.Click("messageBox", "OK").On("openFile", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(questions.AskTexture({.text = "Texture not found."}, prompt).choice, STextureAnswer::EChoice::kGiveUp);
}

TEST(QtQuestions, OpenDialogTakesOnlyFilesThatExist) {
  const CTempFolder folder;
  folder.Write("there.act", "x");
  CQtQuestions questions;
  CDialogDriver driver;
  driver
      .On("openFile",
          [](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Select Default Palette");
            TypeFileName(dialog, "not-there");
          })
      .Click("", "OK")  // the dialog's own warning
      .On("openFile", [](QWidget& dialog) { TypeFileName(dialog, "there"); });
  const auto path = questions.AskOpenFile({.title = "Select Default Palette",
                                           .filters = {{"Adobe Color Table *.act", "*.act"}},
                                           .directory = folder.Path(),
                                           .name = {},
                                           .default_extension = "act"});
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(*path, folder.File("there.act"));
}

TEST(QtQuestions, ScaleFactorIsCheckedWhileTyping) {
  CQtQuestions questions;
  CDialogDriver driver;
  driver.On("scaleFactor", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Enter Hellbender Scale Factor");
    auto* factor = Child<QLineEdit>(dialog, "factor");
    auto* ok = Child<QDialogButtonBox>(dialog, "")->button(QDialogButtonBox::Ok);
    EXPECT_EQ(factor->text(), "1.25");
    EXPECT_TRUE(ok->isEnabled());
    factor->selectAll();
    QTest::keyClicks(factor, "2x");
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_FALSE(Child<QLabel>(dialog, "fault")->text().isEmpty());
    QTest::keyClick(factor, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    QTest::keyClick(factor, Qt::Key_Backspace);
    QTest::keyClicks(factor, ".5");
    EXPECT_TRUE(Child<QLabel>(dialog, "fault")->text().isEmpty());
    QTest::keyClick(factor, Qt::Key_Return);
  });
  driver.On("scaleFactor", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(questions.AskScaleFactor(1.25), 2.5);
  EXPECT_EQ(questions.AskScaleFactor(1.25), std::nullopt);
}

TEST(QtQuestions, LongWorkShowsItsProgressAndCanBeCancelled) {
  CQtQuestions questions;
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  {
    CDialogDriver driver;
    const auto work = questions.BeginWork("Merging vertices", true);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_TRUE(work->Step(1, 100));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    driver.On("progress", [](QWidget& dialog) {
      EXPECT_TRUE(HasLabel(dialog, "Merging vertices"));
      EXPECT_EQ(dynamic_cast<QProgressDialog&>(dialog).value(), 500);
      ClickButton(dialog, "Cancel");
    });
    bool goes_on = true;
    for (int i = 0; i < 1000 && goes_on; ++i) {
      QTest::qSleep(10);
      goes_on = work->Step(50, 100);
    }
    EXPECT_FALSE(goes_on);
  }
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

}  // namespace veldra::testing
