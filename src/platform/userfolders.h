#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

/// Where the program keeps data of its own for the user, and what the keepers of such data need besides files.h.
namespace veldra {

/// The folder, made for the user alone when it is not there: what the environment variable VELDRA_DATA says, else
/// CarriedDirectory, else %LOCALAPPDATA%\Veldra, or elsewhere $XDG_DATA_HOME/veldra or
/// ~/.local/share/veldra. That it could be made shows only when something is written there.
std::string UserDataDirectory();

/// The folder for what the user sets, whether it is there or not: what VELDRA_DATA says, else %APPDATA%\Veldra, or
/// elsewhere $XDG_CONFIG_HOME/veldra or ~/.config/veldra.
std::string UserSettingsDirectory();

/// The user's own folder; "" when the system does not tell.
std::string HomeDirectory();

/// On Windows, for a program beside which a file "Veldra.portable" lies: the folder "data" beside it, in which all that
/// is kept for the user stays; otherwise "".
std::string CarriedDirectory();

/// Takes the folder away when nothing is in it.
bool RemoveEmptyFolder(std::string_view path);
/// The file FROM becomes TO, replacing it, in one step. Both lie on one disk.
bool RenameFile(std::string_view from, std::string_view to, SError* error = nullptr);

/// One spelling for all paths that lead to one file: absolute, links followed, and in one letter case where the system
/// does not tell cases apart. For comparing and for making keys; the file need not be there.
std::string ComparablePath(std::string_view path);

}  // namespace veldra
