#include <gtest/gtest.h>

#include <QKeySequence>
#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "app/commands/viewkeys.h"
#include "app/editorfixture.h"

namespace veldra::testing {

namespace {

/// The commands, submenus' ids among them.
std::vector<ECommand> AllInMenus() {
  std::vector<ECommand> ids;
  for (const SMenuRow& menu : MenuRows())
    ids.insert(ids.end(), menu.commands.begin(), menu.commands.end());
  std::erase(ids, ECommand::kNone);
  return ids;
}

const char* Text(ECommand id) {
  const SMenuRow* submenu = FindSubmenu(id);
  return submenu != nullptr ? submenu->title : CommandRow(id).text;
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
  const auto in_menus = AllInMenus();
  for (const SCommandRow& row : CommandRows()) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_EQ(std::count(in_menus.begin(), in_menus.end(), row.id), row.is_key_only ? 0 : 1) << row.name;
    EXPECT_TRUE(!row.is_key_only || *row.view_key != '\0') << row.name;
    EXPECT_TRUE(*row.view_key == '\0' || CViewKey(row.view_key).IsValid()) << row.name;
    EXPECT_FALSE(StatusText(row).isEmpty()) << row.name;
    for (const char* key : {row.key, row.view_key}) {
      if (*key == '\0') continue;
      EXPECT_TRUE(keys.emplace(key, row.name).second) << row.name << " and " << keys[key] << " both on " << key;
    }
    EXPECT_EQ(QKeySequence(row.key).toString().toStdString(), row.key) << row.name;
  }
  for (const SMenuRow& menu : MenuRows())
    EXPECT_EQ(std::count(in_menus.begin(), in_menus.end(), menu.submenu), menu.submenu == ECommand::kNone ? 0 : 1)
        << menu.name;
}

TEST(CommandTable, MenuKeysDifferWithinAMenu) {
  std::set<QString> titles;
  for (const SMenuRow& menu : MenuRows()) {
    EXPECT_TRUE(menu.submenu != ECommand::kNone || titles.insert(MenuKey(menu.title)).second) << menu.title;
    std::set<QString> used;
    for (const ECommand id : menu.commands) {
      if (id == ECommand::kNone || id == ECommand::kWindowList) continue;
      const QString key = MenuKey(Text(id));
      EXPECT_FALSE(key.isEmpty()) << Text(id);
      EXPECT_TRUE(used.insert(key).second) << menu.title << ": " << Text(id);
    }
  }
}

TEST(CommandTable, StatusTextEndsWhereTheToolTipBegins) {
  const auto& wireframe = CommandRow(ECommand::kViewWireframe);
  EXPECT_EQ(StatusText(wireframe), "Display model as wireframe");
  EXPECT_EQ(ToolTip(wireframe), "Wireframe");
  EXPECT_EQ(ToolTip(CommandRow(ECommand::kFileSaveAs)), "Save As");
}

TEST(CommandTable, ViewKeysMatchTheirEvents) {
  const struct {
    const char* key;
    int pressed;
    Qt::KeyboardModifiers modifiers;
    bool matches;
  } cases[] = {
      {"F", Qt::Key_F, Qt::NoModifier, true},
      {"F", Qt::Key_F, Qt::ShiftModifier, false},
      {"Alt+Shift+N", Qt::Key_N, Qt::AltModifier | Qt::ShiftModifier, true},
      {"Tab", Qt::Key_Tab, Qt::NoModifier, true},
      {"Tab", Qt::Key_Backtab, Qt::ShiftModifier, false},
      {"Shift+Tab", Qt::Key_Backtab, Qt::ShiftModifier, true},
      {"Home", Qt::Key_Home, Qt::KeypadModifier, true},
      {"+", Qt::Key_Plus, Qt::ShiftModifier, true},
      {"+", Qt::Key_Plus, Qt::KeypadModifier, true},
      {"+", Qt::Key_Equal, Qt::NoModifier, true},
      {"+", Qt::Key_Plus, Qt::ControlModifier, false},
      {"5 (Number Pad)", Qt::Key_5, Qt::NoModifier, false},
      {"5 (Number Pad)", Qt::Key_5, Qt::KeypadModifier, true},
      {"5 (Number Pad)", Qt::Key_Clear, Qt::KeypadModifier, true},
      {"Up/Down Arrows", Qt::Key_Up, Qt::NoModifier, false},
  };
  for (const auto& row : cases) {
    const QKeyEvent event(QEvent::KeyPress, row.pressed, row.modifiers);
    EXPECT_EQ(CViewKey(row.key).Matches(event), row.matches) << row.key << " and " << row.pressed;
  }
}

TEST_F(CEditorTest, CommandsAreEnabledByTheDocument) {
  Start();
  const auto enabled = [this](const std::vector<std::string>& asked) {
    frame->RefreshCommands();
    Settle();
    std::set<std::string> names;
    for (const SCommandRow& row : CommandRows())
      if (row.id != ECommand::kWindowList && !row.is_key_only && frame->Action(row.id)->isEnabled() &&
          (asked.empty() || std::find(asked.begin(), asked.end(), row.name) != asked.end()))
        names.insert(row.name);
    return names;
  };
  using Names = std::set<std::string>;
  for (const char* name : {"new", "open", "exit", "preferences", "recover", "about"})
    EXPECT_EQ(enabled({name}), Names{name});
  for (const char* name : {"close", "saveAs", "recentFiles", "wireframe", "play", "background", "cascade", "newWindow",
                           "earlierStates", "exportWavefront", "exportVrml"})
    EXPECT_EQ(enabled({name}), Names{}) << name;

  const std::vector<std::string> ruled = {"save",
                                          "reload",
                                          "centerAll",
                                          "centerX",
                                          "resize",
                                          "translate",
                                          "rotate",
                                          "mirror",
                                          "addFace",
                                          "addVertex",
                                          "deleteUnused",
                                          "mergeVertices",
                                          "insertBin",
                                          "insertGenericObject",
                                          "saveTextureList",
                                          "export3ds",
                                          "replaceTexture",
                                          "undo",
                                          "redo"};
  const Names of_any = {"addVertex", "insertBin"};
  const Names of_vertices = {"centerAll", "centerX",      "translate",     "rotate",
                             "mirror",    "deleteUnused", "mergeVertices", "export3ds"};
  const Names of_textures = {"saveTextureList", "replaceTexture"};
  const auto join = [](std::initializer_list<Names> sets) {
    Names all;
    for (const Names& names : sets)
      all.insert(names.begin(), names.end());
    return all;
  };
  const std::string path = WriteModel("a.bin");
  const auto fresh = [this] { frame->Files().New(); };
  const auto add = [this](int32_t x) { frame->ActiveDocument()->Model().AddVertex({x, 0, 0}); };
  const auto unmodified = [this] { frame->ActiveDocument()->SetModified(false); };
  const struct {
    const char* what;
    std::function<void()> make;
    Names expected;
  } cases[] = {
      {"empty", fresh, of_any},
      {"one vertex", [&] { fresh(), add(5); }, join({of_any, of_vertices, {"save"}})},
      {"two vertices in one place", [&] { fresh(), add(5), add(5), unmodified(); }, join({of_any, of_vertices})},
      {"two vertices", [&] { fresh(), add(5), add(6), unmodified(); }, join({of_any, of_vertices, {"resize"}})},
      {"three without texture", [&] { fresh(), add(5), add(6), add(7), unmodified(); },
       join({of_any, of_vertices, {"resize"}})},
      {"box of a file", [&] { frame->OpenFile(path); },
       join({of_any, of_vertices, of_textures, {"reload", "resize", "addFace"}})},
      {"modified", [&] { frame->ActiveDocument()->SetModified(true); },
       join({of_any, of_vertices, of_textures, {"reload", "resize", "addFace", "save"}})},
      {"textures only",
       [&] {
         unmodified();
         CBinModel& model = frame->ActiveDocument()->Model();
         model.RemoveFaces(0, model.FaceCount());
         frame->ActiveDocument()->DeleteAllUnused();
       },
       join({of_any, of_textures, {"reload", "save"}})},
      {"read-only",
       [&] {
         unmodified();
         frame->Windows().CloseActive();
         Settle();
         frame->OpenFile(path, true);
       },
       {"reload", "saveTextureList", "export3ds"}},
  };
  for (const auto& row : cases) {
    row.make();
    EXPECT_EQ(enabled(ruled), row.expected) << row.what;
    EXPECT_EQ(enabled({"exportWavefront", "exportVrml", "saveAs", "newWindow"}).size(), 4u) << row.what;
  }
}

}  // namespace veldra::testing
