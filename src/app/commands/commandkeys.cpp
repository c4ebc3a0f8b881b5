#include "app/commands/commandkeys.h"

#include <algorithm>
#include <functional>

#include "mapping/mappingkeys.h"
#include "platform/trace.h"
#include "podtools/podextractorkeys.h"
#include "truckeditor/truckeditorkeys.h"

namespace veldra {

namespace {

constexpr const char* kMainWindow = "Main Window";
constexpr const char* kHelpKey = "F1";

SKeyCommand KeyCommandOf(const SCommandRow& row, const std::string& group, const std::string& path) {
  SKeyCommand command = {row.name, kMainWindow, group, path + CommandName(row), {}};
  for (const char* const key : {row.key, row.view_key})
    for (std::string& each : ParseKeys(key))
      command.defaults.push_back(std::move(each));
  command.is_fixed = std::ranges::count(command.defaults, kHelpKey) > 0;
  return command;
}

/// Those of MENU and its submenus, which stand before their names.
void AddCommandsOf(const SMenuRow& menu, const std::string& group, const std::string& path,
                   std::vector<SKeyCommand>& commands) {
  for (const ECommand id : menu.commands) {
    if (const SMenuRow* const submenu = FindSubmenu(id)) {
      AddCommandsOf(*submenu, group, path + WithoutMenuSigns(submenu->title) + " > ", commands);
    } else if (id != ECommand::kNone && id != ECommand::kFileRecent && id != ECommand::kWindowList) {
      commands.push_back(KeyCommandOf(CommandRow(id), group, path));
    }
  }
}

std::vector<SKeyCommand> MainKeyCommands() {
  std::vector<SKeyCommand> commands;
  std::vector<std::string> titles;
  for (const SMenuRow& menu : MenuRows()) {
    if (menu.submenu != ECommand::kNone) continue;
    titles.emplace_back(menu.title);
    AddCommandsOf(menu, WithoutMenuSigns(menu.title), "", commands);
  }
  for (const SCommandRow& row : CommandRows())
    if (row.is_key_only) commands.push_back(KeyCommandOf(row, "3D View", ""));
  std::ranges::move(MenuKeysOf(kMainWindow, titles), std::back_inserter(commands));
  return commands;
}

bool IsInViews(const SCommandRow& row, const std::string& key) {
  const auto is_of = [&key](const char* column) { return std::ranges::count(ParseKeys(column), key) > 0; };
  return is_of(row.view_key) || (!is_of(row.key) && (IsPlainKey(key) || key.find("Num+") != std::string::npos));
}

}  // namespace

std::vector<SKeyCommand> AllKeyCommands() {
  std::vector<SKeyCommand> commands = MainKeyCommands();
  for (auto& others : {MappingKeyCommands(), PodExtractorKeyCommands(), TruckEditorKeyCommands()})
    commands.insert(commands.end(), others.begin(), others.end());
  return commands;
}

void TraceKeyFaults(std::string_view setting) {
  const CUserKeys keys(AllKeyCommands(), setting);
  for (const std::string& fault : keys.Faults())
    Trace("KEYS : %s\n", fault.c_str());
}

CCommandKeys::CCommandKeys(std::string_view setting) : keys_(MainKeyCommands(), setting) {
  for (const SCommandRow& row : CommandRows())
    for (const std::string& key : KeysOf(row))
      (IsInViews(row, key) ? in_views_ : in_window_).emplace_back(CKeyMatch(key), &row);
}

const std::vector<std::string>& CCommandKeys::KeysOf(const SCommandRow& row) const {
  static const std::vector<std::string> none;
  return row.id == ECommand::kFileRecent || row.id == ECommand::kWindowList ? none : keys_.KeysOf(row.name);
}

std::vector<std::string> CCommandKeys::ShortcutsOf(const SCommandRow& row) const {
  std::vector<std::string> keys = KeysOf(row);
  std::erase_if(keys, [&](const std::string& key) { return IsInViews(row, key); });
  return keys;
}

const SCommandRow* CCommandKeys::Find(const Matches& matches, const QKeyEvent& event) {
  const auto found =
      std::ranges::find_if(matches, [&](const auto& key_and_row) { return key_and_row.first.Matches(event); });
  return found != matches.end() ? found->second : nullptr;
}

const SCommandRow* CCommandKeys::FindInView(const QKeyEvent& event) const {
  return Find(in_views_, event);
}

const SCommandRow* CCommandKeys::FindInWindow(const QKeyEvent& event) const {
  return Find(in_window_, event);
}

/// A row of the list stands for several commands, whose keys it names in one, unless the user has others.
SKeyTexts CCommandKeys::Texts() const {
  SKeyTexts texts;
  std::array<std::vector<std::string>, kKeyboardRows> keys;
  std::array<bool, kKeyboardRows> are_changed = {};
  for (const SCommandRow& row : CommandRows()) {
    const SKeyCommand command = KeyCommandOf(row, "", "");
    const int at = ListedRow(*row.key != '\0' ? row.key : row.view_key);
    if (at >= 0) {
      const auto index = static_cast<size_t>(at);
      are_changed[index] = are_changed[index] || KeysOf(row) != command.defaults;
      keys[index].insert(keys[index].end(), KeysOf(row).begin(), KeysOf(row).end());
    } else if (!KeysOf(row).empty()) {
      texts.others.push_back({command.name, ShownKeys(KeysOf(row)), StatusText(row).toStdString()});
    }
  }
  for (size_t i = 0; i < keys.size(); ++i)
    texts.listed[i] = are_changed[i] ? ShownKeys(keys[i]) : kKeyboardKeys[i];
  return texts;
}

}  // namespace veldra
