#include "interchange/materialname.h"

#include <algorithm>
#include <charconv>

#include "model/helperclasses.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// "ROAD.001" without the number that tells copies apart.
std::string_view WithoutCopyNumber(std::string_view name) {
  const size_t dot = name.rfind('.');
  const bool is_number = dot != std::string_view::npos && name.size() - dot == 4 &&
                         std::all_of(name.begin() + static_cast<std::ptrdiff_t>(dot) + 1, name.end(),
                                     [](char c) { return c >= '0' && c <= '9'; });
  return is_number ? name.substr(0, dot) : name;
}

}  // namespace

SMaterialName ParseMaterialName(std::string_view name) {
  constexpr std::string_view kMark = "_0x";
  constexpr size_t kSuffix = kMark.size() + 2;
  const std::string_view whole = WithoutCopyNumber(name);
  if (whole.size() < kSuffix) return {name, std::nullopt};
  const std::string_view suffix = whole.substr(whole.size() - kSuffix);
  uint32_t type = 0;
  const char* const end = suffix.data() + suffix.size();
  const auto [read_to, error] = std::from_chars(suffix.data() + kMark.size(), end, type, 16);
  const bool is_type =
      EqualNoCase(suffix.substr(0, kMark.size()), kMark) && error == std::errc() && read_to == end && IsFaceTag(type);
  if (!is_type) return {name, std::nullopt};
  return {whole.substr(0, whole.size() - kSuffix), type};
}

std::string MaterialName(std::string_view texture, uint32_t type) {
  return std::string(texture) + Format("_0x%02X", type);
}

}  // namespace veldra
