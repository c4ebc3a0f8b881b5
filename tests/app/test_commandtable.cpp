#include <gtest/gtest.h>

#include <QKeySequence>
#include <algorithm>
#include <map>
#include <set>

#include "app/editorfixture.h"

namespace veldra::testing {

namespace {

std::vector<ECommand> AllInMenus() {
  std::vector<ECommand> ids;
  for (const SMenuRow& menu : MenuRows())
    ids.insert(ids.end(), menu.commands.begin(), menu.commands.end());
  std::erase(ids, ECommand::kNone);
  return ids;
}

QString MenuKey(const char* text) {
  const QString label = QString::fromUtf8(text);
  const auto at = label.indexOf('&');
  return at < 0 ? QString() : label.mid(at + 1, 1).toUpper();
}

}  // namespace

TEST(CommandTable, EachCommandStandsInOneMenuWithAKeyOfItsOwn) {
  std::set<std::string> names;
  std::map<std::string, std::string> keys;
  auto in_menus = AllInMenus();
  for (const SCommandRow& row : CommandRows()) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_EQ(std::count(in_menus.begin(), in_menus.end(), row.id), 1) << row.name;
    EXPECT_FALSE(StatusText(row).isEmpty()) << row.name;
    for (const char* key : {row.key, row.view_key}) {
      if (*key == '\0') continue;
      EXPECT_TRUE(keys.emplace(key, row.name).second) << row.name << " and " << keys[key] << " both on " << key;
    }
    EXPECT_EQ(QKeySequence(row.key).toString().toStdString(), row.key) << row.name;
  }
  EXPECT_EQ(in_menus.size(), CommandRows().size());
}

TEST(CommandTable, MenuKeysDifferWithinAMenu) {
  std::set<QString> titles;
  for (const SMenuRow& menu : MenuRows()) {
    EXPECT_TRUE(titles.insert(MenuKey(menu.title)).second) << menu.title;
    std::set<QString> used;
    for (const ECommand id : menu.commands) {
      if (id == ECommand::kNone || id == ECommand::kWindowList) continue;
      const QString key = MenuKey(CommandRow(id).text);
      EXPECT_FALSE(key.isEmpty()) << CommandRow(id).name;
      EXPECT_TRUE(used.insert(key).second) << menu.title << ": " << CommandRow(id).name;
    }
  }
}

TEST(CommandTable, StatusTextEndsWhereTheToolTipBegins) {
  const auto& wireframe = CommandRow(ECommand::kViewWireframe);
  EXPECT_EQ(StatusText(wireframe), "Display model as wireframe");
  EXPECT_EQ(ToolTip(wireframe), "Wireframe");
  EXPECT_EQ(ToolTip(CommandRow(ECommand::kFileSaveAs)), "Save As");
}

TEST_F(CEditorTest, CommandsAreEnabledByTheDocument) {
  Start();
  const auto enabled = [this] {
    Settle();
    std::set<std::string> names;
    for (const SCommandRow& row : CommandRows())
      if (row.id != ECommand::kWindowList && frame->Action(row.id)->isEnabled()) names.insert(row.name);
    return names;
  };
  EXPECT_EQ(enabled(), (std::set<std::string>{"open", "exit", "about"}));

  ASSERT_TRUE(frame->OpenFile(WriteModel("a.bin")));
  auto all = enabled();
  EXPECT_EQ(all.count("save"), 0u);
  for (const char* name : {"close", "saveAs", "recentFiles", "wireframe", "play", "background", "centerAll", "centerX",
                           "deleteUnused", "cascade"})
    EXPECT_EQ(all.count(name), 1u) << name;

  frame->ActiveDocument()->SetModified(true);
  EXPECT_EQ(enabled().count("save"), 1u);
  frame->ActiveDocument()->SetModified(false);
  frame->ActiveDocument()->SetReadOnly(true);
  for (const char* name : {"centerAll", "centerX", "centerY", "centerZ", "deleteUnused"})
    EXPECT_EQ(enabled().count(name), 0u) << name;
  frame->ActiveDocument()->SetReadOnly(false);
  frame->ActiveDocument()->Model().Clear();
  frame->RefreshCommands();
  EXPECT_EQ(enabled().count("centerAll"), 0u);
}

}  // namespace veldra::testing
