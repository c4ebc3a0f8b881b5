#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "archive/poddocument.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/inputfile.h"

/// Inside the two readers of archives: the records as they lie in the file.
namespace veldra {

struct SPodRecord {
  const char* name_field = nullptr;  ///< kPodNameSize bytes
  uint32_t stored_size = 0;
  uint32_t offset = 0;
};

/// The name in a record's field: up to its zero.
std::string_view NameInField(const char* field);
/// For a name that ends in RAW what stands between its zero and the next, else, and when that is empty, "<none>".
std::string_view TrailingNameInField(const char* field);

/// The count of the archive that begins with HEAD, once it is sure that a file of ARCHIVE_LENGTH bytes holds so many
/// records. Nothing is reserved before.
bool CheckPodCount(std::span<const uint8_t> head, uint64_t archive_length, uint32_t& count, SDiagnosis& diagnosis);

/// The header and the directory of FILE, and nothing of what follows.
bool ReadPodHead(const CInputFile& file, CFileBytes& head, SError* error);

/// Record INDEX of a HEAD that CheckPodCount has accepted.
inline SPodRecord PodRecordAt(std::span<const uint8_t> head, size_t index) {
  const auto bytes = head.subspan(kPodHeaderSize + index * kPodRecordSize, kPodRecordSize);
  CByteReader numbers(bytes.subspan(kPodNameSize));
  const uint32_t stored_size = numbers.ReadU32();
  return {reinterpret_cast<const char*>(bytes.data()), stored_size, numbers.ReadU32()};
}

}  // namespace veldra
