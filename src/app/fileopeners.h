#pragma once

#include <string>

namespace veldra {

class CFileCommands;
class CToolCommands;

/// A type of file that the program opens, told by its extension. What is dropped, named on the command line or picked
/// in the Open dialog goes by these rows.
struct SFileOpener {
  const char* extension;  ///< without ".", in lower case
  /// False when it could not be opened; the user has been told then.
  bool (*open)(CFileCommands& files, CToolCommands& tools, const std::string& path, bool read_only);
};

/// The row for the file's extension in any letter case; null when there is none.
const SFileOpener* FindFileOpener(const std::string& path);

}  // namespace veldra
