#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QTreeWidget>
#include <QtTest>

#include "app/editorfixture.h"
#include "app/qtquestions.h"
#include "platform/files.h"
#include "settings/coptools.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

namespace {

QStringList Names(const CMainFrame& frame) {
  QStringList names;
  for (const CChildFrame* child : frame.Children())
    names.append(child->Name());
  return names;
}

}  // namespace

TEST_F(CEditorTest, TwoWindowsOfADocumentAreNumberedAndCloseOneByOne) {
  const std::string path = WriteModel("a.bin");
  Start();
  ASSERT_TRUE(frame->OpenFile(path));
  ASSERT_TRUE(frame->OpenFile(WriteModel("b.bin")));
  frame->Windows().Activate(*app->FindDocument(path));
  Do(ECommand::kWindowNew);
  EXPECT_EQ(Names(*frame).join(" "), "a.bin:1 b.bin a.bin:2");
  EXPECT_EQ(frame->Windows().Documents().size(), 2);
  CTarnView& first = frame->Children()[0]->View();
  CTarnView& second = *frame->ActiveView();
  WaitUntilDrawn(second);
  Do(ECommand::kViewWireframe);
  EXPECT_EQ(second.State().mode, ERenderMode::kWireframe);
  EXPECT_EQ(first.State().mode, ERenderMode::kTextured);
  const QImage before = Picture(first);
  first.Document().Model().SetVertexPosition(0, {-300, -200, -100});
  EXPECT_NE(Picture(first), before);
  for (const CChildFrame* child : frame->Children())
    EXPECT_EQ(child->isWindowModified(), child->Name() != "b.bin");

  Do(ECommand::kFileClose);  // asks nothing: another window of it stays
  EXPECT_EQ(Names(*frame).join(" "), "a.bin b.bin");
  frame->Windows().Activate(*app->FindDocument(path));
  questions.OnYesNoCancel("Save changes to a.bin?", EAnswer::kNo);
  Do(ECommand::kFileClose);
  EXPECT_EQ(Names(*frame).join(" "), "b.bin");
  EXPECT_EQ(app->FindDocument(path), nullptr);
}

TEST_F(CEditorTest, ChangedPreferencesActAtOnceAndComeBack) {
  CQtQuestions dialogs;
  Start(&dialogs);
  ASSERT_TRUE(frame->OpenFile(WriteModel("m.bin", {.shift_y = 100})));
  CDialogDriver driver;
  driver.On("preferences", [](QWidget& dialog) {
    Child<QCheckBox>(dialog, "NOTCENTEREDMSG")->setChecked(false);
    ClickButton(dialog, "OK");
  });
  Do(ECommand::kFilePreferences);
  frame->ActiveDocument()->SetModified(true);
  Do(ECommand::kFileSave);  // no longer asks whether to centre
  EXPECT_FALSE(frame->ActiveDocument()->IsModified());
  EXPECT_TRUE(frame->close());
  EXPECT_TRUE(app->SaveSettings());

  SettingsMap written;
  CopTools::ReadCfgFile(folder.File("Veldra.cfg"), written);
  EXPECT_EQ(written["NOTCENTEREDMSG"], "0");
}

TEST_F(CEditorTest, AnotherDefaultPaletteIsSeenAtOnceUnlessItCannotBeLoaded) {
  CTarnView& view = StartWith(WriteModel("m.bin"));
  const QImage before = Picture(view);
  std::vector<uint8_t> greens(768);
  for (size_t i = 1; i < greens.size(); i += 3)
    greens[i] = static_cast<uint8_t>(i / 3);
  const std::string other = folder.Write("GREENS.ACT", greens);
  CDialogDriver driver;
  for (const std::string& path : {other, folder.Write("SHORT.ACT", "x")})
    driver.On("preferences", [path](QWidget& dialog) {
      TypeInto(dialog, "DEFPAL", QString::fromStdString(path));
      ClickButton(dialog, "OK");
    });
  Do(ECommand::kFilePreferences);
  const QImage after = Picture(view);
  EXPECT_NE(after, before);
  Do(ECommand::kFilePreferences);
  EXPECT_EQ(Picture(view), after);
  EXPECT_EQ(app->Settings().defpal, other);
  EXPECT_EQ(questions.TakeMessageTexts(),
            std::vector<std::string>{"The default palette could not be loaded. The old one stays."});
}

TEST_F(CEditorTest, AnEarlierStateOpensAsANewDocument) {
  CQtQuestions dialogs;
  Start(&dialogs);
  dialogs.SetParent(frame.get());
  ASSERT_TRUE(frame->OpenFile(WriteModel("m.bin", {.shift_x = 50})));
  WaitUntilDrawn(*frame->ActiveView());
  Do(ECommand::kModelCenterX);
  const auto states = app->EarlierStates().List(frame->ActiveDocument()->StatesKey());
  ASSERT_EQ(states.size(), 1u);
  EXPECT_GT(states[0].picture.width, 0);
  CDialogDriver driver;
  driver.On("earlierStates", [](QWidget& dialog) {
    auto* list = Child<QTreeWidget>(dialog, "states");
    list->setCurrentItem(list->topLevelItem(0));
    ClickButton(dialog, "Open as a new document");
  });
  Do(ECommand::kFileEarlierStates);
  ASSERT_EQ(frame->Children().size(), 2);
  EXPECT_EQ(frame->ActiveDocument()->Model().Bound(0), -950);
  EXPECT_EQ(frame->ActiveDocument()->Path(), "");
  EXPECT_TRUE(frame->ActiveDocument()->IsModified());
}

}  // namespace veldra::testing
