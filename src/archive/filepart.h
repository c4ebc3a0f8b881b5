#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/inputfile.h"

namespace veldra {

/// Where bytes lie: a whole file, or a part of one (an entry of an archive).
struct SFilePart {
  std::string path;
  uint64_t offset = 0;
  std::optional<uint64_t> length = {};  ///< nothing: up to the file's end
  /// The file in which the part was found; nothing: any file of this name.
  std::optional<SFileVersion> version = {};
};

/// Opens the file that PART lies in; not one that has taken its place or was written meanwhile, in which the part may
/// be half of one thing and half of another.
bool OpenPart(const SFilePart& part, CInputFile& file, SError* error = nullptr);

/// More is not taken into memory for looking into a file.
inline constexpr size_t kLargestFilePart = size_t{64} << 20;

/// The bytes themselves; refused when there are more than LIMIT, or the file has not so many.
std::optional<CFileBytes> ReadFilePart(const SFilePart& part, SError* error = nullptr, size_t limit = kLargestFilePart);

}  // namespace veldra
