#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "archive/filepart.h"
#include "platform/questions.h"

namespace veldra {

/// What goes into an archive. NAME is as the file was added, which decides its place (see PodEntryName): for a file its
/// name, or its path below the folder that was added; for another archive's entry the entry's whole name.
struct SPodSource {
  std::string name;
  SFilePart bytes;
};

/// Offsets and lengths are of 32 bits, and so is what the reader takes for the archive's length.
inline constexpr uint64_t kLongestArchive = 0xFFFFFFFF;

/// The text that a new archive begins with: "Compiled by Veldra Version 2.0.23 }".
std::string PodComment();

/// What CheckPodSources found out.
struct SPodPlan {
  /// What becomes of one source.
  struct SEntry {
    std::string name;     ///< in the archive
    uint64_t length = 0;  ///< in bytes
    std::string refusal;  ///< a message's text, "" for a good source
    std::string details;  ///< for the same message
  };
  std::vector<SEntry> entries;  ///< one a source
  uint64_t total = 0;           ///< the archive's length, the good sources in it

  bool AllGood() const;
};

/// The names and lengths that SOURCES would have in an archive, and what is against each: a name that the game cannot
/// use, a file that cannot be read, a name that an earlier source has. Asks and shows nothing.
SPodPlan CheckPodSources(const std::vector<SPodSource>& sources);

/// Writes the archive PATH from SOURCES, in their order, with progress. An archive that is there is replaced when the
/// new one is complete and on the disk; PATH may be one of those that SOURCES come from. False, after a message (none
/// when cancelled), when a source is refused, the archive would pass 4 GB, a source changes while it is read, or
/// writing fails; nothing is changed then.
bool CreatePod(CQuestions& questions, const std::string& path, const std::vector<SPodSource>& sources);

}  // namespace veldra
