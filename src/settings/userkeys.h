#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/keytext.h"

namespace veldra {

/// A command as far as its keys go, which are spelled as keytext.h says.
struct SKeyCommand {
  std::string id;      ///< in the settings file: "save", "truckEditor.save"; "" for what is no command: a menu's key
  std::string window;  ///< keys of different windows do not clash
  std::string group;   ///< where it stands: a menu
  std::string name;
  std::vector<std::string> defaults;
  bool is_fixed = false;  ///< its keys cannot be changed
};

/// A row of the table of a window other than the main one.
struct SWindowKey {
  const char* name;
  const char* text;  ///< "&" before the menu's key
  const char* keys;  ///< blanks between several; "" for none
};
/// TEXT without what belongs to menus only.
std::string WithoutMenuSigns(std::string_view text);
/// The rows with ids "<prefix>.<name>".
std::vector<SKeyCommand> KeyCommandsOf(const std::string& prefix, const std::string& window,
                                       std::span<const SWindowKey> rows);
/// What MENUS of WINDOW, with their "&", take of its keys.
std::vector<SKeyCommand> MenuKeysOf(const std::string& window, std::span<const std::string> menus);

/// How many keys a command can have.
inline constexpr size_t kMostKeys = 8;

/// Which keys each command has: the defaults, or what the user has given it. Within a window no two commands have keys
/// that are pressed alike.
class CUserKeys {
 public:
  /// SETTING is CSettings::keys: "save=Ctrl+S save=F2 reload=": the keys of each command that has others than its
  /// defaults, an entry a key, or one without for none. A key that the setting gives is no longer another command's
  /// default. What cannot be understood, or clashes with what stands before it, is a fault, and kept.
  explicit CUserKeys(std::vector<SKeyCommand> commands, std::string_view setting = {});
  /// The same commands with what another setting says.
  void Read(std::string_view setting);

  std::span<const SKeyCommand> Commands() const { return commands_; }
  const std::vector<std::string>& Keys(size_t command) const { return keys_[command]; }
  /// ID is one of them.
  const std::vector<std::string>& KeysOf(std::string_view id) const;
  bool IsChanged(size_t command) const { return keys_[command] != commands_[command].defaults; }
  /// Which one, of the same window as COMMAND and other than it, has KEY or one that is pressed alike.
  std::optional<size_t> OtherWith(size_t command, std::string_view key) const;
  /// COMMAND has KEYS and no others; the commands of its window that had one of them lose it.
  void Give(size_t command, std::vector<std::string> keys);

  /// As the settings keep it: "" while all is as it is by default.
  std::string Text() const;
  /// What was wrong with the setting, a sentence each.
  const std::vector<std::string>& Faults() const { return faults_; }

 private:
  std::optional<size_t> Find(std::string_view id) const;
  void ReadEntry(std::string_view entry, std::vector<bool>& is_set);
  void Refuse(std::string_view entry, const std::string& why);
  void TakeDefaults(const std::vector<bool>& is_set);

  std::vector<SKeyCommand> commands_;
  std::vector<std::vector<std::string>> keys_;
  std::vector<std::string> kept_;  ///< entries that were not understood, as they stand
  std::vector<std::string> faults_;
};

}  // namespace veldra
