#pragma once

#include <QString>
#include <span>
#include <variant>

#include "app/commands/commandid.h"
#include "document/tarn2doc.h"
#include "view/tarn2view.h"

namespace veldra {

class CDocumentWindows;
class CEditCommands;
class CFileCommands;
class CMainFrame;
class CModelCommands;
class CToolCommands;
class CToolDocks;

/// What the rules of the commands look at. Without an open document both are null.
struct SCommandState {
  const CTarnDoc* document = nullptr;
  const CTarnView* view = nullptr;
  bool has_recent_files = false;
  const CToolDocks* docks = nullptr;
};

/// Who carries a command out: the main frame or one of its parts, or the active view, its editing commands or its
/// document, which need one to be there.
using CommandHandler =
    std::variant<std::monostate, void (CMainFrame::*)(), void (CFileCommands::*)(), void (CModelCommands::*)(),
                 void (CDocumentWindows::*)(), void (CToolDocks::*)(), void (CToolCommands::*)(), void (CTarnView::*)(),
                 void (CEditCommands::*)(), void (CTarnDoc::*)()>;

/// One command. Menus, tool bar, status texts, keys and enabling all come from these rows.
struct SCommandRow {
  ECommand id;
  const char* name;           ///< of the action and of its icon file
  const char* text;           ///< with "&" before the menu's key
  const char* status;         ///< status bar text, then "\n" and tool tip where it has one of its own
  const char* key = "";       ///< the application's shortcut, "Ctrl+O"
  const char* view_key = "";  ///< works while a 3D view has the focus: "F", "Shift+Space", "+", "5 (Number Pad)"
  bool has_icon = false;
  bool is_key_only = false;                         ///< stands in no menu
  bool (*when)(const SCommandState&) = nullptr;     ///< enabled; null: whenever its handler's target is there
  bool (*checked)(const SCommandState&) = nullptr;  ///< null: not checkable
  bool is_choice = false;                           ///< one of several, shown as a radio button
  CommandHandler handler = {};
};

std::span<const SCommandRow> CommandRows();
const SCommandRow& CommandRow(ECommand id);
bool IsEnabled(const SCommandRow& row, const SCommandState& state);
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
std::span<const ECommand> ToolBarCommands();

}  // namespace veldra
