#include <gtest/gtest.h>

#include <QGuiApplication>
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
  const auto in_menus = AllInMenus();
  for (const SCommandRow& row : CommandRows()) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_EQ(std::count(in_menus.begin(), in_menus.end(), row.id), row.is_key_only ? 0 : 1) << row.name;
    EXPECT_TRUE(!row.is_key_only || *row.view_key != '\0') << row.name;
    EXPECT_FALSE(StatusText(row).isEmpty()) << row.name;
    for (const std::string key : {row.key, row.view_key})
      EXPECT_TRUE(key.empty() || ShownKey(ParseKey(key).value_or("")) == key) << row.name;
  }
  const CUserKeys keys(AllKeyCommands());
  for (size_t i = 0; i < keys.Commands().size(); ++i)
    EXPECT_FALSE(keys.IsChanged(i)) << keys.Commands()[i].id << " has a key that is another command's";
  for (const SMenuRow& menu : MenuRows())
    EXPECT_EQ(std::count(in_menus.begin(), in_menus.end(), menu.submenu), menu.submenu == ECommand::kNone ? 0 : 1)
        << menu.name;
}

TEST(CommandTable, MenuKeysDifferWithinAMenu) {
  std::set<QString> in_bar;
  std::vector<const SMenuRow*> menus = {&ItemMenu(EGroupKind::kFaces), &ItemMenu(EGroupKind::kVertices)};
  for (const SMenuRow& menu : MenuRows()) {
    EXPECT_TRUE(menu.submenu != ECommand::kNone || in_bar.insert(MenuKey(menu.title)).second) << menu.title;
    menus.push_back(&menu);
  }
  for (const SMenuRow* menu : menus) {
    std::set<QString> used;
    for (const ECommand id : menu->commands) {
      if (id == ECommand::kNone || id == ECommand::kWindowList) continue;
      const QString key = MenuKey(Text(id));
      EXPECT_FALSE(key.isEmpty()) << Text(id);
      EXPECT_TRUE(used.insert(key).second) << menu->title << ": " << Text(id);
    }
  }
  for (const SCommandRow& row : CommandRows())
    for (const QString& key : in_bar)
      EXPECT_NE(std::string(row.view_key), "Alt+" + key.toStdString()) << row.name << " and a menu have one key";
}

TEST(CommandTable, ViewKeysMatchTheirEvents) {
  const struct {
    const char* key;
    int pressed;
    Qt::KeyboardModifiers modifiers;
    bool matches;
    quint32 scan_code = 0;
  } cases[] = {
      {"F", Qt::Key_F, Qt::ShiftModifier, false},
      {"Tab", Qt::Key_Backtab, Qt::ShiftModifier, false},
      {"Home", Qt::Key_Home, Qt::KeypadModifier, true},
      {"+", Qt::Key_Plus, Qt::ShiftModifier, true},
      {"+", Qt::Key_Plus, Qt::KeypadModifier, true},
      {"+", Qt::Key_Equal, Qt::NoModifier, true},
      {"+", Qt::Key_Plus, Qt::ControlModifier, false},
      {"5 (Number Pad)", Qt::Key_5, Qt::NoModifier, false},
      {"5 (Number Pad)", Qt::Key_Clear, Qt::KeypadModifier, true},
      {"Up/Down Arrows", Qt::Key_Up, Qt::NoModifier, false},
      {"A", 0x0424, Qt::NoModifier, true, 30},  // a Cyrillic letter
      {"A", 0x0424, Qt::NoModifier, false, 99},
      {"A", Qt::Key_Q, Qt::NoModifier, false, 30},
  };
  for (const auto& row : cases) {
    const quint32 first_scan_code = QGuiApplication::platformName() == "windows" ? 0 : 8;
    const QKeyEvent event(QEvent::KeyPress, row.pressed, row.modifiers, row.scan_code + first_scan_code, 0, 0);
    EXPECT_EQ(CKeyMatch(ParseKey(row.key).value_or("")).Matches(event), row.matches)
        << row.key << " and " << row.pressed;
  }
}

TEST_F(CEditorTest, CommandsAreEnabledByTheDocument) {
  Start();
  const std::string path = WriteModel("a.bin");
  const auto document = [this]() -> CTarnDoc& { return *frame->ActiveDocument(); };
  const auto add = [&](int32_t x) { document().Model().AddVertex({x, 0, 0}); };
  const std::pair<char, std::function<void()>> states[] = {
      {'-', [] {}},  // no document
      {'e', [&] { frame->Files().New(); }},
      {'1', [&] { add(5); }},
      {'2', [&] { add(6), document().SetModified(false); }},
      {'f', [&] { frame->OpenFile(path); }},
      {'m', [&] { document().SetModified(true); }},
      {'t', [&] { document().Model().RemoveFaces(0, 6), document().DeleteAllUnused(); }},  // only its texture is left
      {'r',
       [&] { document().SetModified(false), frame->Windows().CloseActive(), Settle(), frame->OpenFile(path, true); }},
  };
  const std::pair<ECommand, std::string_view> enabled[] = {
      {ECommand::kFileOpen, "-e12fmtr"},
      {ECommand::kFileClose, "e12fmtr"},
      {ECommand::kFileSave, "1mt"},
      {ECommand::kFileSaveAs, "e12fmtr"},
      {ECommand::kFileReload, "fmtr"},
      {ECommand::kExportWavefront, "e12fmtr"},
      {ECommand::kExport3ds, "12fmr"},
      {ECommand::kFileTextureList, "fmtr"},
      {ECommand::kEditUndo, ""},
      {ECommand::kModelCenterAll, "12fm"},
      {ECommand::kModelResize, "2fm"},
      {ECommand::kModelMerge, "12fm"},
      {ECommand::kModelAddFace, "fm"},
      {ECommand::kModelAddVertex, "e12fmt"},
      {ECommand::kModelReplaceTexture, "fmt"},
      {ECommand::kViewWireframe, "e12fmtr"},
  };
  for (const auto& [state, make] : states) {
    make();
    Settle();
    frame->RefreshCommands();
    for (const auto& [command, in_states] : enabled)
      EXPECT_EQ(frame->Action(command)->isEnabled(), in_states.find(state) != std::string_view::npos)
          << state << CommandRow(command).name;
  }
}

}  // namespace veldra::testing
