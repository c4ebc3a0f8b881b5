#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "archive/poddocument.h"
#include "platform/questions.h"

namespace veldra {

inline constexpr const char* kFailedToOpenPod = "Failed to open POD file";

struct SExtractRequest {
  std::string destination = {};  ///< a folder that exists
  bool folders = false;          ///< PERECREATEDIRSTRUCTURE: below the destination, the folders of the entries' names
  std::vector<size_t> entries = {};  ///< the selected ones, by position, in the order in which they are written
  bool marks = true;                 ///< the entries that are written get their marks
  /// PEEXTRACTDEPS: adds the entries that those in the list need. Empty: none are added.
  std::function<void(std::vector<size_t>& entries)> add_dependencies = {};
};

struct SExtractResult {
  size_t extracted = 0;  ///< files written
  size_t total = 0;      ///< entries of the work list, each counted once
  size_t refused = 0;    ///< not extracted though nobody said so: unsafe name, faulty entry, error
  bool started = false;  ///< the archive and the destination are there
  bool done = false;     ///< the end was reached: not stopped by a message or by Cancel

  /// "Extracted %d of %d files"
  std::string Text() const;
};

/// Extracts entries of ARCHIVE as files, in two passes, so that every question is asked before the first byte is
/// written. Pass one finds each entry's destination, tells in one message which entries are refused and why, in another
/// one which have bytes in common, and asks
/// about each file that exists, about more bytes than an archive of this length should give, and stops where the disk
/// has no room for them; pass two writes, each file whole or not at all, and marks the entries in ARCHIVE. The
/// caller shows Text() when the result is that it was started.
SExtractResult ExtractPod(CQuestions& questions, CPodDocument& archive, const SExtractRequest& request);

}  // namespace veldra
