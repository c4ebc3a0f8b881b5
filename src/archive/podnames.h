#pragma once

#include <string>
#include <string_view>

/// Which names an archive may have: what goes into one, and where what comes out of one may go.
namespace veldra {

inline constexpr const char* kLoadErrorText = "Error loading file \"%s\"";

/// What an operation on a name gives: NAME, or why there is none.
struct SNameResult {
  std::string name;
  std::string refusal;       ///< empty when NAME counts
  std::string details = {};  ///< a reason that REFUSAL, a fixed text, does not give

  bool Ok() const { return refusal.empty(); }
};

/// The name under which the file ADDED_AS (a bare file name, or a path whose folders are to be kept for a file of no
/// known type) stands in an archive: "ART\SKY.RAW", upper case. Refused with the whole text of the error message:
/// "File \"%s\" cannot be loaded.\nNo extension specified" and so on.
SNameResult PodEntryName(std::string_view added_as);

/// Where an entry of name ENTRY_NAME may be extracted to, relative to the destination and with this system's separator;
/// FOLDERS: with the folders of its name, else the file name only. Refused, with a reason like "its name leads
/// upwards", is every name that would lead out of the destination, that some system takes for something else than a
/// file (drives, devices, streams) or changes (dots and blanks at the end), and that has control characters. The same
/// on all systems, and with FOLDERS or without.
SNameResult SafeRelativePath(std::string_view entry_name, bool folders);

/// One spelling for all names that some system takes for the same file.
std::string NameKey(std::string_view relative_path);

}  // namespace veldra
