#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "settings/settings.h"

namespace veldra {

/// Reading and writing the settings file, and where the game is.
class CopTools {
 public:
  /// Each line is split at its first blank into key and value; a later line overrides an earlier one. MAP stays as it
  /// is, and the result is false, when the file does not exist or cannot be read. Line ends LF or CR LF.
  static bool ReadCfgFile(const std::string& path, SettingsMap& map, SError* error = nullptr);

  /// The same from the file's TEXT.
  static void ParseCfg(std::string_view text, SettingsMap& map);

  /// Replaces the file by SETTINGS, whole or not at all. A key in the old file that the table does not know keeps its
  /// line behind them.
  static bool WriteCfgFile(const std::string& path, const CSettings& settings);
  /// The same for a program that is not alone: AS_READ is what it took from the file, so only the keys that differ from
  /// it are its own work and the others keep the value that the file has now. Programs that write at once take turns.
  static bool WriteCfgFile(const std::string& path, const CSettings& settings, const CSettings& as_read);

  /// The settings file of a program that is started in DIRECTORY: the one that lies there, else the user's, be it there
  /// or not.
  static std::string SettingsPath(const std::string& directory);

  /// The game's folder as its installer registered it, as a path of this system; "." when it did not.
  static std::string InstallationDirectory();
  /// The same in every registry that there is here: besides the user's own Wine prefix, those that game launchers make.
  static std::vector<std::string> RegisteredFolders();
};

inline constexpr const char* kSettingsFileName = "Veldra.cfg";

}  // namespace veldra
