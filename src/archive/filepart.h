#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/files.h"

namespace veldra {

/// Where bytes lie: a whole file, or a part of one (an entry of an archive).
struct SFilePart {
  std::string path;
  uint64_t offset = 0;
  std::optional<uint64_t> length = {};  ///< nothing: up to the file's end
};

/// More is not taken into memory for looking into a file.
inline constexpr size_t kLargestFilePart = size_t{64} << 20;

/// The bytes themselves; refused when there are more than LIMIT, or the file has not so many.
std::optional<CFileBytes> ReadFilePart(const SFilePart& part, SError* error = nullptr, size_t limit = kLargestFilePart);

}  // namespace veldra
