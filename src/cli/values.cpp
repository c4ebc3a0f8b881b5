#include "cli/values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/png.h"
#include "platform/text.h"

namespace veldra {

std::vector<std::string> SplitText(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const size_t end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::optional<std::vector<double>> ParseNumbers(std::string_view text, size_t count) {
  std::vector<double> numbers;
  for (const std::string& part : SplitText(text, ',')) {
    const auto number = ParseNumber(part);
    if (!number || !std::isfinite(*number)) return std::nullopt;
    numbers.push_back(*number);
  }
  if (numbers.size() != count) return std::nullopt;
  return numbers;
}

std::optional<std::vector<int32_t>> ParseIntegers(std::string_view text, size_t count) {
  std::vector<int32_t> integers;
  for (const std::string& part : SplitText(text, ',')) {
    const auto integer = ParseInteger(part);
    if (!integer) return std::nullopt;
    integers.push_back(*integer);
  }
  if (integers.size() != count) return std::nullopt;
  return integers;
}

std::optional<EAxis> ParseAxis(std::string_view text) {
  if (EqualNoCase(text, "x")) return EAxis::kX;
  if (EqualNoCase(text, "y")) return EAxis::kY;
  if (EqualNoCase(text, "z")) return EAxis::kZ;
  return std::nullopt;
}

std::optional<uint32_t> ParseFaceType(std::string_view text, bool untyped) {
  const auto integer = ParseInteger(text);
  if (!integer || !IsFaceTag(static_cast<uint32_t>(*integer))) return std::nullopt;
  if (*integer == 0 && !untyped) return std::nullopt;
  return static_cast<uint32_t>(*integer);
}

std::string TakePictureSize(std::string_view text, std::pair<int, int>& size) {
  const std::vector<std::string> sides = SplitText(LowerCase(text), 'x');
  const auto is_number = [](const std::string& side) {
    return !side.empty() && side.find_first_not_of("0123456789") == std::string::npos;
  };
  if (sides.size() != 2 || !is_number(sides[0]) || !is_number(sides[1])) return "does not have the form WxH";
  const int32_t width = ParseInteger(sides[0]).value_or(0);
  const int32_t height = ParseInteger(sides[1]).value_or(0);
  const auto fits = [](int32_t side) { return side >= 1 && side <= kLargestImageSide; };
  if (!fits(width) || !fits(height)) return Format("has a side that is not from 1 to %d", kLargestImageSide);
  size = {width, height};
  return "";
}

std::optional<SColor> ParseColor(std::string_view text) {
  if (text.starts_with('#')) text.remove_prefix(1);
  if (text.size() != 6) return std::nullopt;
  std::array<uint8_t, 3> parts = {};
  for (size_t i = 0; i < parts.size(); ++i) {
    const char* const begin = text.data() + 2 * i;
    const auto [end, error] = std::from_chars(begin, begin + 2, parts[i], 16);
    if (error != std::errc() || end != begin + 2) return std::nullopt;
  }
  return SColor{parts[0], parts[1], parts[2]};
}

}  // namespace veldra
