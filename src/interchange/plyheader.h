#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The first part of a PLY file, which is text and says what follows it.
namespace veldra {

enum class EPlyType { kInt8, kUint8, kInt16, kUint16, kInt32, kUint32, kFloat, kDouble };

constexpr size_t PlyTypeWidth(EPlyType type) {
  constexpr size_t kWidths[] = {1, 1, 2, 2, 4, 4, 4, 8};
  return kWidths[static_cast<size_t>(type)];
}

struct SPlyProperty {
  std::string name;
  EPlyType type = EPlyType::kFloat;
  std::optional<EPlyType> list_type = {};  ///< of the number before a list; nothing where it is one value
};

struct SPlyElement {
  std::string name;
  uint64_t count = 0;
  std::vector<SPlyProperty> properties;
};

struct SPlyHeader {
  enum class EForm { kText, kLittleEndian, kBigEndian } form = EForm::kText;
  std::vector<SPlyElement> elements;
  std::vector<std::string> pictures;  ///< as comments name them
  size_t length = 0;                  ///< in bytes: where the data begin
  uint32_t lines = 0;
};

/// Nothing with FAULT filled where BYTES do not begin with such a header.
std::optional<SPlyHeader> ParsePlyHeader(std::string_view bytes, std::string& fault);

}  // namespace veldra
