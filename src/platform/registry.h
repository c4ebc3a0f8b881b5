#pragma once

#include <optional>
#include <string>
#include <vector>

namespace veldra {

/// The string value NAME of KEY under HKEY_LOCAL_MACHINE; KEY's parts are separated by "\". Nothing when the key or the
/// value is missing. On Windows the registry, its 32-bit view too; elsewhere the registry file of the Wine prefix
/// (WINEPREFIX, else ~/.wine).
std::optional<std::string> ReadMachineRegistry(const std::string& key, const std::string& name);

/// A Windows path found in the registry as a path of this system: on Windows unchanged, elsewhere through the drive
/// links of the Wine prefix. Nothing when the drive is not there.
std::optional<std::string> RegistryPathToNative(const std::string& windows_path);

/// The value as a path of this system in every registry that can be found here: elsewhere than on Windows in the Wine
/// prefixes of the user and of the programs that make prefixes for games.
std::vector<std::string> RegisteredPaths(const std::string& key, const std::string& name);

/// The drives C: on which Windows programs may be installed; elsewhere than on Windows one a Wine prefix.
std::vector<std::string> SystemDrives();

}  // namespace veldra
