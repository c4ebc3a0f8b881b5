#pragma once

#include <optional>
#include <string>

namespace veldra {

/// The string value NAME of KEY under HKEY_LOCAL_MACHINE; KEY's parts are separated by "\". Nothing when the key or the
/// value is missing. On Windows the registry, its 32-bit view too; elsewhere the registry file of the Wine prefix
/// (WINEPREFIX, else ~/.wine).
std::optional<std::string> ReadMachineRegistry(const std::string& key, const std::string& name);

/// A Windows path found in the registry as a path of this system: on Windows unchanged, elsewhere through the drive
/// links of the Wine prefix. Nothing when the drive is not there.
std::optional<std::string> RegistryPathToNative(const std::string& windows_path);

}  // namespace veldra
