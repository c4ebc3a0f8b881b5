#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "app/commands/commandtable.h"
#include "settings/keyevents.h"
#include "settings/userkeys.h"
#include "view/keyboardtable.h"

namespace veldra {

/// The commands of all windows as the preferences list them, the main window's in the order of its menus.
std::vector<SKeyCommand> AllKeyCommands();
/// A line for each thing that cannot be understood in SETTING.
void TraceKeyFaults(std::string_view setting);

/// The keys of the main window's commands: those of the table, or what the user has made of them. A key stands in the
/// column of the table that it is from; another one works in the whole window, or, where it means something in most
/// controls, in the 3D views.
class CCommandKeys {
 public:
  /// SETTING is CSettings::keys.
  explicit CCommandKeys(std::string_view setting);

  /// All that the row has.
  const std::vector<std::string>& KeysOf(const SCommandRow& row) const;
  /// Those that are shortcuts in the whole window.
  std::vector<std::string> ShortcutsOf(const SCommandRow& row) const;
  /// The row whose key in the 3D views EVENT presses, enabled or not; null when there is none.
  const SCommandRow* FindInView(const QKeyEvent& event) const;
  /// Likewise of those in the whole window.
  const SCommandRow* FindInWindow(const QKeyEvent& event) const;

  /// For the keyboard dialog.
  SKeyTexts Texts() const;

 private:
  using Matches = std::vector<std::pair<CKeyMatch, const SCommandRow*>>;
  static const SCommandRow* Find(const Matches& matches, const QKeyEvent& event);

  CUserKeys keys_;
  Matches in_views_;
  Matches in_window_;
};

}  // namespace veldra
