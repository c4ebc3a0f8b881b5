#include <gtest/gtest.h>

#include <QMessageBox>
#include <QtTest>

#include "app/editorfixture.h"
#include "app/qtquestions.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

TEST_F(CEditorTest, SavingAsksThroughTheDialogsInTheirOrder) {
  CQtQuestions dialogs;
  Start(&dialogs);
  dialogs.SetParent(frame.get());
  CDialogDriver driver;
  const auto answer = [&](const char* question, const char* button) {
    driver.On("messageBox", [=](QWidget& box) {
      EXPECT_TRUE(dynamic_cast<QMessageBox&>(box).text().startsWith(question)) << question;
      ClickButton(box, button);
    });
  };
  const auto open = [&](const std::string& path) {
    answer("This model uses a texture size not supported by MTM2.", "Yes");
    ASSERT_TRUE(frame->OpenFile(path));
  };
  const std::string path = WriteModel("m.bin", {.shift_y = 100, .unused_vertex = true, .texture = "BIG.RAW"});
  const std::string before = ReadTestFile(path);
  open(path);
  frame->ActiveDocument()->SetModified(true);
  for (const auto& [center, last] : {std::pair{"No", "Cancel save"}, {"Yes", "Delete unused vertices and save"}}) {
    EXPECT_EQ(ReadTestFile(path), before);
    EXPECT_TRUE(frame->ActiveDocument()->IsModified());
    answer("Model is not centered along the vertical axis.", center);
    answer("Model uses a texture size not supported by MTM2.", "Yes");
    driver.Click("unusedVertices", last);
    Do(ECommand::kFileSave);
  }
  EXPECT_FALSE(frame->ActiveDocument()->IsModified());
  Do(ECommand::kFileClose);
  open(path);
  EXPECT_EQ(frame->ActiveDocument()->Model().VertexCount(), 8);
  EXPECT_EQ(frame->ActiveDocument()->Model().Bounds().max.y, 600);
}

TEST_F(CEditorTest, AKeyRightAfterAnotherFindsItsCommand) {
  CTarnView& view = StartWith(WriteModel("m.bin"));
  frame->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
  view.setFocus();
  Settle();
  // On a slow screen both are read before the event loop gets round to anything else.
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_X})
    QTest::keyClick(&view, key);
  EXPECT_TRUE(frame->ActiveDocument()->IsModified());
  QTest::keyClick(&view, Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(frame->ActiveDocument()->IsModified());
}

TEST_F(CEditorTest, ReadOnlyModelsAreSavedUnderAnotherNameOnly) {
  const std::string path = WriteModel("m.bin");
  const std::string original = ReadTestFile(path);
  Start();
  questions.OnOpenFiles("Open", SOpenFiles{.paths = {path, WriteModel("n.bin")}, .read_only = true});
  Do(ECommand::kFileOpen);
  ASSERT_EQ(frame->Children().size(), 2);
  frame->Windows().Activate(*app->FindDocument(path));
  EXPECT_TRUE(frame->windowTitle().contains("(Read-Only)"));
  // Another document must not take the name.
  frame->Files().New();
  frame->ActiveDocument()->Model().AddVertex({0, 0, 0});
  app->Settings().unused_verts_msg = 0;
  // By whatever way.
  questions.OnSaveFile("Save Document As", SSavePath{.path = folder.OtherPath("m.bin"), .filter = 0});
  Do(ECommand::kFileSave);
  EXPECT_EQ(questions.TakeMessageTexts(),
            std::vector<std::string>{"Cannot save as that name.The file has been opened as read-only"});
  EXPECT_EQ(ReadTestFile(path), original);
  frame->ActiveDocument()->SetModified(false);
}

}  // namespace veldra::testing
