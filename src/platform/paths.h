#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Paths are UTF-8 on every system, and both "\" and "/" separate: settings and archives bring the game's paths to
/// systems that write them otherwise.
namespace veldra {

/// Everything after the last separator, or the whole path.
std::string FileNamePart(std::string_view path);
/// Everything before the last separator ("/" and "C:\" keep theirs), or "".
std::string DirectoryPart(std::string_view path);
/// The extension without its ".", as written; "" when the file name has none.
std::string ExtensionPart(std::string_view path);
/// PATH with everything from the last "." of its file name replaced by "." and EXTENSION; a name without "." gets one.
std::string ChangeExtension(std::string_view path, std::string_view extension);
/// DIRECTORY and NAME with one separator between them; NAME alone when DIRECTORY is empty.
std::string JoinPath(std::string_view directory, std::string_view name);
/// PATH at every separator; none of an empty path. Parts of "a//b" are "a", "" and "b".
std::vector<std::string_view> PathParts(std::string_view path);
/// Starts at a root of the file system or a drive.
bool IsAbsolutePath(std::string_view path);
/// PATH, which stands in a file, stays below the folder that it is looked up in, whatever the system: it has no root,
/// no drive, no ".." and no end before its end.
bool StaysBelow(std::string_view path);
/// The same for a name that may not even lead into another folder.
bool IsBareName(std::string_view name);
/// A file or folder of the name PART would be a device on Windows, whatever its extension.
bool IsDeviceName(std::string_view part);
/// PATH as this system's calls take it: on systems that separate with "/", every "\" becomes one.
std::string NativePath(std::string_view path);

/// PATH, and its last part, as DisplayName shows names; "standard input" for the file that holds that.
std::string DisplayPath(std::string_view path);
std::string DisplayFileName(std::string_view path);

}  // namespace veldra
