#include <gtest/gtest.h>

#include <QDialog>
#include <QFile>
#include <QRegularExpression>
#include <QTextBlock>
#include <QtTest>
#include <set>

#include "app/help/helpwindow.h"
#include "app/help/welcomepage.h"
#include "app/recentpictures.h"
#include "platform/files.h"
#include "support/dialogdriver.h"
#include "support/testfiles.h"

namespace veldra::testing {

namespace {

/// Where links may lead: "guide.md", "guide.md#saving".
std::set<QString> Destinations() {
  std::set<QString> places;
  for (const SHelpSection& section : HelpSections())
    places.insert(section.file + (section.anchor.isEmpty() ? QString() : "#" + section.anchor));
  return places;
}

}  // namespace

TEST(Help, EveryLinkPictureAndTopicIsThere) {
  const std::set<QString> places = Destinations();
  const QRegularExpression link(R"(\]\(([^)]+)\))");
  for (const SHelpPage& page : HelpPages()) {
    QFile file(QStringLiteral(":/help/") + page.file);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << page.file;
    const QString text = QString::fromUtf8(file.readAll());
    for (const QRegularExpressionMatch& found : link.globalMatch(text)) {
      const QString to = found.captured(1).startsWith('#') ? page.file + found.captured(1) : found.captured(1);
      EXPECT_TRUE(places.contains(to) || QFile::exists(":/help/" + to)) << page.file << ": " << to.toStdString();
    }
  }
  for (const QString& window : WindowsWithHelp()) {
    const QUrl url = HelpFor(window);
    EXPECT_TRUE(places.contains(url.path().mid(6) + "#" + url.fragment())) << window.toStdString();
  }
}

TEST(Help, TheKeyLeadsToThePageOfTheDialog) {
  QWidget owner;
  CHelpWindow::InstallKey(owner);
  QDialog dialog(&owner);
  dialog.setObjectName("podCreator");
  dialog.setModal(true);
  dialog.show();
  QTest::keyClick(&dialog, Qt::Key_F1);
  auto* help = Child<CHelpWindow>(dialog, "help");
  ASSERT_NE(help, nullptr);
  auto* page = Child<QTextBrowser>(*help, "helpPage");
  EXPECT_EQ(page->textCursor().block().text(), "Archives");
  TypeInto(*help, "search", "stock-file list");
  auto* list = Child<QTreeWidget>(*help, "contents");
  ASSERT_GT(list->topLevelItemCount(), 0);
  list->setCurrentItem(list->topLevelItem(0));
  EXPECT_TRUE(page->toPlainText().contains("Stock-File List", Qt::CaseInsensitive));
  TypeInto(*help, "search", "zzqx");
  EXPECT_EQ(list->topLevelItemCount(), 0);
}

TEST(WelcomePage, ShowsRecentFilesWithTheirPictures) {
  const CTempFolder folder;
  CRecentPictures pictures(folder.File("thumbnails"));
  const SImage picture = {.width = 2, .height = 1, .rgba = {9, 9, 9, 255, 9, 9, 9, 255}};
  pictures.Keep("/a.bin", picture, {"/b.bin"});
  pictures.Keep("/b.bin", picture, {"/b.bin"});
  pictures.Keep("/c.bin", {}, {});
  EXPECT_FALSE(FileExists(pictures.FileOf("/a.bin"))) << "it is not among the recent ones any more";
  CWelcomePage page;
  page.SetRecent({{"/b.bin", pictures.FileOf("/b.bin")}, {"/c.bin", pictures.FileOf("/c.bin")}});
  auto* list = Child<QListWidget>(page, "recent");
  ASSERT_EQ(list->count(), 2);
  EXPECT_EQ(list->item(0)->icon().availableSizes().value(0), QSize(2, 1));
  std::string wanted;
  QObject::connect(&page, &CWelcomePage::FileWanted, &page, [&](const std::string& path) { wanted = path; });
  emit list->itemClicked(list->item(1));
  EXPECT_EQ(wanted, "/c.bin");
}

}  // namespace veldra::testing
