#include <array>
#include <cstddef>
#include <string_view>

#include "archive/stockfiles.h"
#include "archive/stocklist.h"

/// The resource IDR_PODZIPFILES, put together by the compiler.
namespace veldra {

namespace {

constexpr size_t kCountsSize = size_t{kFileTypeCount} * 4;

constexpr size_t CountNames(std::string_view names) {
  size_t count = names.empty() ? 0 : 1;
  for (const char c : names)
    count += c == ' ' ? 1 : 0;
  return count;
}

/// A blank between two names becomes the zero behind the first.
constexpr size_t ResourceSize() {
  size_t size = kCountsSize;
  for (const SShippedNames& row : kShippedNames)
    size += row.names.size() + 1;
  return size;
}

constexpr auto MakeResource() {
  std::array<uint8_t, ResourceSize()> resource = {};
  size_t position = kCountsSize;
  for (size_t type = 0; type < kFileTypes.size(); ++type) {
    for (const SShippedNames& row : kShippedNames) {
      if (row.extension != kFileTypes[type].extension) continue;
      // Far below 256 names a type.
      resource[type * 4] = static_cast<uint8_t>(CountNames(row.names));
      for (const char c : row.names)
        resource[position++] = c == ' ' ? uint8_t{0} : static_cast<uint8_t>(c);
      ++position;
    }
  }
  return resource;
}

constexpr auto kIdrPodZipFiles = MakeResource();

}  // namespace

std::span<const uint8_t> PodZipFilesResource() {
  return kIdrPodZipFiles;
}

}  // namespace veldra
