#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include "app/qtquestions.h"
#include "app/setupdlg.h"
#include "support/dialogdriver.h"
#include "support/testfiles.h"
#include "textures/texturestore.h"

namespace veldra::testing {

namespace {

bool HasLabel(QWidget& dialog, const QString& text) {
  const auto labels = dialog.findChildren<QLabel*>();
  return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) { return label->text() == text; });
}

}  // namespace

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
  CDialogDriver driver;
  const std::pair<QString, EAnswer> buttons[] = {
      {"Yes", EAnswer::kYes}, {"No", EAnswer::kNo}, {"Cancel", EAnswer::kCancel}};
  for (const auto& [button, answer] : buttons) {
    driver.Click("messageBox", button);
    EXPECT_EQ(questions.AskYesNoCancel({.text = "?"}), answer);
    driver.On("messageBox", [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(questions.AskYesNoCancel({.text = "?", .usual = answer}), answer);
    if (answer == EAnswer::kCancel) continue;
    driver.Click("messageBox", button);
    EXPECT_EQ(questions.AskYesNo({.text = "?"}), answer);
  }
  const auto escape = [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  driver.On("messageBox", escape).On("messageBox", escape);
  EXPECT_EQ(questions.AskYesNoCancel({.text = "?"}), EAnswer::kCancel);
  EXPECT_EQ(questions.AskYesNo({.text = "?"}), EAnswer::kNo);
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
  } cases[] = {{"/a/m.bin", {.text = "<b>100 & more"}, "/a/m.bin"},
               {"/a/m.bin", {.text = "Model is currupt", .details = "at byte 7"}, "/a/m.bin\nat byte 7"},
               {"/a/m.bin", {.text = "\"/a/m.bin\" is there already."}, ""},
               {"Untitled3", {.text = "Save changes to Untitled3?"}, ""}};
  for (const auto& row : cases) {
    CDialogDriver driver;
    driver.On("messageBox", [&](QWidget& widget) {
      const auto& box = dynamic_cast<QMessageBox&>(widget);
      EXPECT_EQ(box.text().toStdString(), row.message.text);
      EXPECT_EQ(box.informativeText(), row.shown);
      QTest::keyClick(&widget, Qt::Key_Return);
    });
    const CQuestions::CAbout about(questions, row.file);
    questions.Message(row.message);
  }
}

TEST(QtQuestions, UnknownFaceDialog) {
  using EChoice = SUnknownFaceAnswer::EChoice;
  CQtQuestions questions;
  CDialogDriver driver;
  const std::pair<const char*, EChoice> choices[] = {
      {"ignore", EChoice::kIgnore}, {"abort", EChoice::kAbort}, {"change", EChoice::kChange}};
  for (const auto& [choice, answer] : choices) {
    driver.On("unknownFace", [&](QWidget& dialog) {
      EXPECT_TRUE(HasLabel(dialog, "This model contains the unknown face\ntype (0x77). What would you like to do?"));
      QTest::mouseClick(Child<QRadioButton>(dialog, choice), Qt::LeftButton, {}, QPoint(8, 8));
      auto* types = Child<QComboBox>(dialog, "types");
      EXPECT_EQ(types->isEnabled(), answer == EChoice::kChange);
      QTest::keyClick(types, Qt::Key_End);
      ClickButton(dialog, "OK");
    });
    const SUnknownFaceAnswer given = questions.AskUnknownFace(0x77);
    EXPECT_EQ(given.choice, answer);
    EXPECT_TRUE(answer != EChoice::kChange || given.type == 0x33u);
  }
  driver.On("unknownFace", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(questions.AskUnknownFace(1).choice, EChoice::kAbort);
}

TEST(QtQuestions, UnusedVerticesDialog) {
  using EChoice = SUnusedVerticesAnswer::EChoice;
  CQtQuestions questions;
  CDialogDriver driver;
  driver.On("unusedVertices", [](QWidget& dialog) {
    QTest::mouseClick(Child<QCheckBox>(dialog, "dontShowAgain"), Qt::LeftButton, {}, QPoint(8, 8));
    ClickButton(dialog, "Save Anyway");
  });
  driver.On("unusedVertices", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  const SUnusedVerticesAnswer answer = questions.AskUnusedVertices();
  EXPECT_EQ(answer.choice, EChoice::kSaveAnyway);
  EXPECT_TRUE(answer.dont_show_again);
  EXPECT_EQ(questions.AskUnusedVertices().choice, EChoice::kCancel);
}

TEST(QtQuestions, TextureQuestionIsAMessageAndThenAFileDialog) {
  const CTempFolder folder;
  folder.Write("other.raw", "x");
  CQtQuestions questions;
  const SFilePrompt prompt{.title = "Select Texture",
                           .filters = {{"MTM Texture *.raw", "*.raw"}},
                           .directory = folder.Path(),
                           .name = {},
                           .default_extension = "raw"};
  CDialogDriver driver;
  driver.Click("missingTexture", "Select File...").On("openFile", [](QWidget& dialog) {
    EXPECT_EQ(Child<QComboBox>(dialog, "fileTypeCombo")->itemText(0), "MTM Texture *.raw");
    auto* name = Child<QLineEdit>(dialog, "fileNameEdit");
    name->selectAll();
    QTest::keyClicks(name, "other");
    QTest::keyClick(name, Qt::Key_Return);
  });
  const STextureAnswer picked = questions.AskTexture({.text = "Texture not found."}, prompt);
  EXPECT_EQ(picked.choice, STextureAnswer::EChoice::kFile);
  EXPECT_EQ(picked.path, folder.File("other.raw"));
  driver.Click("missingTexture", "Select File...")
      .On("openFile", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); })
      .Click("missingTexture", "Folder for All...")
      .On("openFolder", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); })
      .Click("missingTexture", "Stand-Ins for All");
  EXPECT_EQ(questions.AskTexture({.text = "Texture not found."}, prompt).choice, STextureAnswer::EChoice::kGiveUp);
  EXPECT_EQ(questions.AskTexture({.text = "Texture not found."}, prompt).choice, STextureAnswer::EChoice::kBlankForAll);
}

TEST(SetUpDialog, ChecksTheFolderAsItIsChosen) {
  const CTempFolder folder;
  folder.Write("game/ART/SKY.RAW", "x");
  folder.Write("empty/x.txt", "x");
  SSetUp offer;
  offer.sample_folder = folder.File("sample");
  CSetUpDialog dialog(CSetUpDialog::EOccasion::kFirstStart, offer);
  auto* edit = Child<CPathField>(dialog, "gameFolder")->Edit();
  EXPECT_TRUE(IsOkEnabled(dialog)) << "without the game";
  for (const char* bad : {"none", "empty"}) {
    edit->setText(QString::fromStdString(folder.File(bad)));
    EXPECT_FALSE(IsOkEnabled(dialog)) << bad;
  }
  edit->setText(QString::fromStdString(folder.File("game")));
  EXPECT_TRUE(IsOkEnabled(dialog));
  EXPECT_TRUE(Child<QLabel>(dialog, "found")->text().startsWith("0 archives, 1 texture,"));
  EXPECT_FALSE(Child<QCheckBox>(dialog, "stockList")->isEnabled()) << "there are no archives to make it of";
  Child<QCheckBox>(dialog, "sample")->setChecked(true);
  const SSetUp choice = dialog.Choice();
  EXPECT_TRUE(choice.has_game && choice.wants_sample && !choice.builds_stock_list);
  EXPECT_TRUE(IsSameFile(choice.game.art, folder.File("game/ART"))) << choice.game.art;
  Child<QRadioButton>(dialog, "withoutGame")->setChecked(true);
  EXPECT_FALSE(dialog.Choice().has_game);
}

TEST(QtQuestions, TheFileThatIsPointedAtIsShownWithWhatItIsFor) {
  const CTempFolder folder;
  folder.Write("good.raw", std::string(64 * 64, 'x'));
  folder.Write("bad.raw", "x");
  CQtQuestions questions;
  const CTextureStore textures(questions, GreyRamp());
  CDialogDriver driver;
  driver.On("openFile", [](QWidget& dialog) {
    EXPECT_EQ(Child<QLabel>(dialog, "note")->text(), "For barn.obj");
    auto* picture = Child<QLabel>(dialog, "picture");
    auto* name = Child<QLineEdit>(dialog, "fileNameEdit");
    dialog.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    name->setFocus();
    name->setText("good.raw");
    EXPECT_FALSE(picture->pixmap().isNull());
    name->setText("bad.raw");
    EXPECT_TRUE(picture->pixmap().isNull());
    EXPECT_FALSE(picture->text().isEmpty());
    name->setText("good.raw");
    QTest::keyClick(name, Qt::Key_Return);
  });
  const SFilePrompt prompt{.title = "Texture",
                           .filters = {{"MTM Texture *.raw", "*.raw"}},
                           .directory = folder.Path(),
                           .name = {},
                           .default_extension = "raw",
                           .note = "For barn.obj",
                           .make_picture = [&](const std::string& path) { return textures.Picture(path); }};
  EXPECT_EQ(questions.AskOpenFile(prompt), folder.File("good.raw"));
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
