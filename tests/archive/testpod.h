#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "archive/poddocument.h"
#include "platform/bytes.h"
#include "support/testfiles.h"

namespace veldra::testing {

/// A record as the test wants it. Fields that are not set follow from the data, laid out in directory order.
struct STestEntry {
  std::string name;  ///< up to 32 bytes; what stands behind its zero included
  std::string data = {};
  std::optional<uint32_t> stored_size = {};
  std::optional<uint32_t> offset = {};
};

/// An archive's bytes, put together without the program's own writer.
inline std::string MakePod(const std::vector<STestEntry>& entries, std::optional<uint32_t> count = {}) {
  CByteWriter writer;
  writer.WriteU32(count.value_or(static_cast<uint32_t>(entries.size())));
  writer.WriteFixedText("A comment", 80);
  auto offset = static_cast<uint32_t>(84 + 40 * entries.size());
  for (const STestEntry& entry : entries) {
    writer.WriteFixedText(entry.name, 32);
    writer.WriteU32(entry.stored_size.value_or(static_cast<uint32_t>(entry.data.size())));
    writer.WriteU32(entry.offset.value_or(offset));
    offset += static_cast<uint32_t>(entry.data.size());
  }
  for (const STestEntry& entry : entries)
    writer.WriteText(entry.data);
  return {reinterpret_cast<const char*>(writer.Bytes().data()), writer.Size()};
}

}  // namespace veldra::testing
