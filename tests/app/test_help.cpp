#include <gtest/gtest.h>

#include <QDialog>
#include <QFile>
#include <QRegularExpression>
#include <QTextBlock>
#include <QtTest>
#include <set>

#include "app/commands/commandtable.h"
#include "app/help/helpwindow.h"
#include "app/help/welcomepage.h"
#include "app/recentpictures.h"
#include "platform/files.h"
#include "settings/userkeys.h"
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

/// Of the main window: "File > Import > Wavefront".
void AddPaths(const SMenuRow& menu, const QString& above, QStringList& paths) {
  const QString path = above + QString::fromStdString(WithoutMenuSigns(menu.title)) + " > ";
  for (const ECommand id : menu.commands) {
    if (const SMenuRow* submenu = FindSubmenu(id)) {
      AddPaths(*submenu, path, paths);
    } else if (id != ECommand::kNone) {
      paths.append(path + QString::fromStdString(WithoutMenuSigns(CommandRow(id).text)));
    }
  }
}

/// Also a menu for itself, and what stands behind a command, as a page of the preferences.
bool IsPath(const QString& text, const QStringList& paths) {
  return std::ranges::any_of(paths, [&](const QString& path) {
    return text == path || text.startsWith(path + " > ") || path.startsWith(text + " > ");
  });
}

}  // namespace

TEST(Help, CommandsStandInTheMenusWhereTheGuideSaysThem) {
  QStringList paths;
  for (const SMenuRow& menu : MenuRows())
    if (menu.submenu == ECommand::kNone) AddPaths(menu, {}, paths);
  const QRegularExpression named(R"(\*(\w+ > [^*]+)\*)");
  for (const char* page : {"guide.md", "guide-editing.md", "guide-modelling.md", "guide-textures.md"}) {
    QFile file(QStringLiteral(":/help/") + page);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << page;
    for (const QRegularExpressionMatch& found : named.globalMatch(QString::fromUtf8(file.readAll()))) {
      const QString path = found.captured(1).simplified().remove("...");
      const bool is_of_another_window = path.startsWith("Options > ");
      EXPECT_TRUE(is_of_another_window || IsPath(path, paths)) << page << ": " << path.toStdString();
    }
  }
}

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
