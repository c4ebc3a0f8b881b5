#include <gtest/gtest.h>

#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>
#include <QWindow>
#include <QtTest>

#include "app/editorfixture.h"
#include "model/binfile.h"
#include "platform/files.h"

namespace veldra::testing {

namespace {

void Drop(QWidget& window, const QStringList& files) {
  QMimeData data;
  QList<QUrl> urls;
  for (const QString& file : files)
    urls.append(QUrl::fromLocalFile(file));
  data.setUrls(urls);
  const QPoint at = window.rect().center();
  QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.windowHandle(), &enter);
  if (!enter.isAccepted()) return;
  QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.windowHandle(), &drop);
}

}  // namespace

TEST_F(CEditorTest, OpenCommandShowsTheModelAndItsCounts) {
  const std::string path = WriteModel("truck.bin");
  Start();
  questions.OnOpenFiles("Open", SOpenFiles{.paths = {path}});
  QTest::keyClick(frame.get(), Qt::Key_O, Qt::ControlModifier);
  Settle();
  ASSERT_NE(frame->ActiveView(), nullptr);
  WaitUntilDrawn(*frame->ActiveView());
  EXPECT_TRUE(frame->windowTitle().contains("truck.bin")) << frame->windowTitle().toStdString();
  EXPECT_EQ(frame->findChild<QLabel*>("modelCounts")->text(), "8 vertices, 6 faces, 1 texture");
  EXPECT_TRUE(frame->statusBar()->currentMessage().contains("truck.bin"));
  QTest::keyClick(frame.get(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(frame->Children().size(), 2);
}

TEST_F(CEditorTest, AFileThatIsOpenIsOnlyActivated) {
  const std::string first = WriteModel("first.bin");
  const std::string second = WriteModel("second.bin");
  Start();
  ASSERT_TRUE(frame->OpenFile(first));
  for (const std::string& other : {folder.File("./first.bin"), folder.OtherPath("first.bin")}) {
    ASSERT_TRUE(frame->OpenFile(second));
    EXPECT_EQ(frame->ActiveDocument()->Title(), "second.bin");
    ASSERT_TRUE(frame->OpenFile(other));
    EXPECT_EQ(frame->ActiveDocument()->Title(), "first.bin");
    EXPECT_EQ(frame->Children().size(), 2);
  }
}

TEST_F(CEditorTest, DocumentsCanOpenWithoutBeingActivated) {
  settings.open_inactive = 1;
  Start();
  for (const char* name : {"first.bin", "second.bin"})
    ASSERT_TRUE(frame->OpenFile(WriteModel(name)));
  EXPECT_EQ(frame->ActiveDocument()->Title(), "first.bin");
  EXPECT_EQ(frame->Children().size(), 2);
}

TEST_F(CEditorTest, ModelFilesDroppedOnTheWindowOpen) {
  const auto path = [this](const char* name) { return QString::fromStdString(folder.File(name)); };
  WriteModel("a.bin");
  WriteModel("B.BIN");
  folder.Write("c.txt", "no model");
  Start();
  Drop(*frame, {path("c.txt")});
  Settle();
  EXPECT_EQ(frame->Children().size(), 0);
  Drop(*frame, {path("a.bin"), path("c.txt"), path("B.BIN")});
  Settle();
  ASSERT_EQ(frame->Children().size(), 2);
  EXPECT_EQ(frame->ActiveDocument()->Title(), "B.BIN");
  WriteModel("d.bin");
  Drop(*frame, {path("d.bin")});  // now onto a view
  Settle();
  EXPECT_EQ(frame->Children().size(), 3);
}

TEST_F(CEditorTest, ChangesAreMarkedAndNotLostUnasked) {
  const std::string path = WriteModel("m.bin", {.shift_x = 100});
  const std::string original = ReadTestFile(path);
  CTarnView& view = StartWith(path);
  EXPECT_FALSE(frame->isWindowModified());
  Do(ECommand::kModelCenterAll);
  EXPECT_TRUE(frame->isWindowModified());
  EXPECT_EQ(view.Document().Model().Bound(0), -1000);

  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kCancel);
  Do(ECommand::kFileClose);
  ASSERT_EQ(frame->Children().size(), 1);
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kNo);
  QTest::keyClick(&view, Qt::Key_W, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(frame->Children().size(), 0);
  EXPECT_EQ(ReadTestFile(path), original);

  ASSERT_TRUE(frame->OpenFile(path));
  Do(ECommand::kModelCenterX);
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kYes);
  Do(ECommand::kFileExit);
  EXPECT_FALSE(frame->isVisible());
  EXPECT_NE(ReadTestFile(path), original);
}

TEST_F(CEditorTest, ExitAsksForEachDocumentAndStopsAtCancel) {
  Start();
  for (const char* name : {"a.bin", "b.bin", "c.bin"}) {
    ASSERT_TRUE(frame->OpenFile(WriteModel(name)));
    frame->ActiveDocument()->SetModified(name[0] != 'b');
  }
  questions.OnYesNoCancel("a.bin", EAnswer::kNo).OnYesNoCancel("c.bin", EAnswer::kCancel);
  EXPECT_FALSE(frame->close());
  EXPECT_EQ(frame->Children().size(), 3);
  questions.OnYesNoCancel("a.bin", EAnswer::kNo).OnYesNoCancel("c.bin", EAnswer::kNo);
  EXPECT_TRUE(frame->close());
}

TEST_F(CEditorTest, RecentFilesAreRememberedAndOpen) {
  const std::string first = WriteModel("first & last.bin");
  const std::string second = WriteModel("second.bin");
  Start();
  ASSERT_TRUE(frame->OpenFile(first));
  ASSERT_TRUE(frame->OpenFile(second));
  // Not only at the program's end, which may be a crash.

  Start();
  QMenu* menu = frame->Action(ECommand::kFileRecent)->menu();
  ASSERT_TRUE(frame->Action(ECommand::kFileRecent)->isEnabled());
  emit menu->aboutToShow();
  ASSERT_EQ(menu->actions().size(), 2);
  EXPECT_EQ(menu->actions()[0]->text(), QString::fromStdString("&1 " + second));
  EXPECT_TRUE(menu->actions()[1]->text().endsWith("first && last.bin"));
  menu->actions()[1]->trigger();
  EXPECT_EQ(frame->ActiveDocument()->Path(), first);

  RemoveFile(second);
  emit menu->aboutToShow();
  menu->actions()[1]->trigger();
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1u);
  EXPECT_EQ(app->RecentFiles().Paths(), std::vector<std::string>{first});
}

TEST_F(CEditorTest, TheWindowMenuListsAndActivates) {
  Start();
  for (const char* name : {"a.bin", "b.bin"})
    ASSERT_TRUE(frame->OpenFile(WriteModel(name)));
  auto* menu = frame->findChild<QMenu*>("menuWindow");
  for (int i = 0; i < 2; ++i)
    emit menu->aboutToShow();
  ASSERT_EQ(menu->actions().size(), 11);
  EXPECT_EQ(menu->actions()[10]->text(), "&2 b.bin");
  menu->actions()[9]->trigger();
  EXPECT_EQ(frame->ActiveDocument()->Title(), "a.bin");
  Do(ECommand::kWindowTile);
  const QList<CChildFrame*> children = frame->Children();
  EXPECT_FALSE(children[0]->geometry().intersects(children[1]->geometry()));
  for (const Qt::KeyboardModifiers back : {Qt::NoModifier, Qt::ShiftModifier}) {
    QTest::keyClick(frame.get(), Qt::Key_F6, Qt::ControlModifier | back);
    Settle();
    EXPECT_EQ(frame->ActiveDocument()->Title(), back ? "a.bin" : "b.bin");
  }
  for (int again = 0; again < 2; ++again) {
    Do(ECommand::kWindowFourViews);
    EXPECT_EQ(frame->Children().size(), 5);
    EXPECT_FALSE(frame->ActiveView()->State().orthographic);
  }
}

}  // namespace veldra::testing
