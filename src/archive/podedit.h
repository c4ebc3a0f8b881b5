#pragma once

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "archive/poddocument.h"
#include "archive/podwriter.h"
#include "platform/questions.h"

/// Changes to an archive that is there. Each writes it anew beside itself and takes its place when it is complete: at
/// every moment the whole old or the whole new one is on the disk. The entries that a change is not about keep their
/// bytes, their names as stored and their order, and the archive its comment. False, nothing changed, after a message:
/// also when an entry that would be kept is damaged, whose bytes nobody has. Names are matched as FindMatching does.
namespace veldra {

/// SOURCES come last, in their order, with the names that CreatePod would give them; none may be there already.
bool AddToPod(CQuestions& questions, const CPodDocument& archive, const std::vector<SPodSource>& sources);
/// Each of NAMES must mean some entry.
bool RemoveFromPod(CQuestions& questions, const CPodDocument& archive, const std::vector<std::string>& names);
/// OLD_NAME means one entry. NEW_NAME as for a file that is added.
bool RenameInPod(CQuestions& questions, const CPodDocument& archive, const std::string& old_name,
                 const std::string& new_name);
/// NAME means one entry, which gets the bytes of the file at PATH.
bool ReplaceInPod(CQuestions& questions, const CPodDocument& archive, const std::string& name, const std::string& path);
/// The same for a position and BYTES.
bool ReplaceInPod(CQuestions& questions, const CPodDocument& archive, size_t entry, std::span<const uint8_t> bytes);

/// Writes ARCHIVE with its entries as they are now (see podchanges.h) to PATH, which may be its own: the archive that
/// it stands for is then another one, and has to be loaded again.
bool SavePod(CQuestions& questions, const CPodDocument& archive, const std::string& path);

/// The one entry that NAME means: of several with the very same name the last, which is the one that the game finds.
/// Nothing after a message.
std::optional<size_t> FindOneEntry(CQuestions& questions, const CPodDocument& archive, const std::string& name);

/// What is wrong with an archive.
struct SPodFinding {
  const char* kind;             ///< "beyond-end", "overlap", "twice", "unsafe-name" or "unusable-name"
  std::string text;             ///< one line, UTF-8
  std::vector<size_t> entries;  ///< positions in the directory
};
/// In directory order.
std::vector<SPodFinding> TestPod(const CPodDocument& archive);

/// Entries of ENTRIES (positions) that have bytes in common with the one before them in the archive, as pairs, the one
/// that begins first the first. Those without bytes, or that are to be taken from other files, share none.
std::vector<std::pair<size_t, size_t>> FindSharedBytes(const CPodDocument& archive, std::vector<size_t> entries);

}  // namespace veldra
