#pragma once

#include <QString>
#include <span>
#include <string>
#include <string_view>

#include "app/commands/commandid.h"
#include "model/helperclasses.h"

namespace veldra {

struct SCommandTarget;

/// One command. Menus, tool bar, status texts, keys and enabling all come from these rows.
struct SCommandRow {
  ECommand id;
  const char* name;           ///< of the action and of its icon file
  const char* text;           ///< with "&" before the menu's key
  const char* status;         ///< status bar text, then "\n" and tool tip where it has one of its own
  const char* key = "";       ///< the application's shortcut, "Ctrl+O"
  const char* view_key = "";  ///< works while a 3D view has the focus: "F", "Shift+Space", "+", "5 (Number Pad)"
  bool has_icon = false;
  bool is_key_only = false;  ///< stands in no menu
  /// Said when its key is pressed while it is not enabled; "" for nothing.
  const char* needs = "";
  bool (*when)(const SCommandTarget&) = nullptr;     ///< enabled; null: always
  bool (*checked)(const SCommandTarget&) = nullptr;  ///< null: not checkable
  bool is_choice = false;                            ///< one of those in the rows beside it, shown as a radio button
  /// Stands behind the text: what the command works on now. Null: nothing does.
  std::string (*object)(const SCommandTarget&) = nullptr;
  /// Carries it out. Only called while the rule above allows it. Null: a list that is filled when it opens, or a
  /// command that is never enabled.
  void (*run)(const SCommandTarget&) = nullptr;
};

std::span<const SCommandRow> CommandRows();
const SCommandRow& CommandRow(ECommand id);
/// The row of that name; null when there is none.
const SCommandRow* FindCommand(std::string_view name);
bool IsEnabled(const SCommandRow& row, const SCommandTarget& target);
/// The text without what belongs to menus only.
std::string CommandName(const SCommandRow& row);
QString StatusText(const SCommandRow& row);
QString ToolTip(const SCommandRow& row);

/// A menu and what stands in it, in order: commands, separators (kNone) and submenus.
struct SMenuRow {
  const char* name;
  const char* title;
  std::span<const ECommand> commands;
  ECommand submenu = ECommand::kNone;  ///< stands where this id stands in another menu; kNone: in the menu bar
};
std::span<const SMenuRow> MenuRows();
/// The submenu of that id; null when ID is none.
const SMenuRow* FindSubmenu(ECommand id);
/// What can be done with the current face or vertex and the selection: the context menu of a 3D view or a tool window.
const SMenuRow& ItemMenu(EGroupKind kind);
std::span<const ECommand> ToolBarCommands();

}  // namespace veldra
