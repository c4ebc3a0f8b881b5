#include "truck/truckscanner.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "platform/text.h"

namespace veldra {

namespace {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool IsBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// DIGITS of an exponent with their sign, cut off where it no longer matters.
int64_t Exponent(std::string_view digits) {
  const bool negative = digits.starts_with('-');
  if (negative || digits.starts_with('+')) digits.remove_prefix(1);
  int64_t value = 0;
  for (const char c : digits)
    value = std::min(value * 10 + (c - '0'), std::numeric_limits<int64_t>::max() / 100);
  return negative ? -value : value;
}

/// Whether NUMBER, which is not 0 and whose size no double has, is a small one: its first digit that counts stands
/// behind the decimal point then, once the exponent has moved that.
bool IsTooSmall(std::string_view number) {
  const size_t e = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, e);
  const auto point = static_cast<int64_t>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<int64_t>(digits.find_first_of("123456789"));
  return point - first + (e < number.size() ? Exponent(number.substr(e + 1)) : 0) < 0;
}

}  // namespace

std::optional<std::string_view> CTruckLines::Next() {
  if (position_ >= text_.size()) return std::nullopt;
  const auto is_end = [](char c) { return c == '\r' || c == '\n' || c == '\0'; };
  const auto from = text_.begin() + static_cast<ptrdiff_t>(position_);
  const auto end = static_cast<size_t>(std::find_if(from, text_.end(), is_end) - text_.begin());
  const std::string_view line = text_.substr(position_, end - position_);
  position_ = end;
  for (const char c : {'\0', '\r', '\n'})
    if (position_ < text_.size() && text_[position_] == c) ++position_;
  return Trim(line);
}

void CTruckScanner::SkipBlanks() {
  while (!rest_.empty() && IsBlank(rest_.front()))
    rest_.remove_prefix(1);
}

bool CTruckScanner::Blanks() {
  const size_t before = rest_.size();
  SkipBlanks();
  return rest_.size() < before;
}

bool CTruckScanner::Comma() {
  SkipBlanks();
  if (!rest_.starts_with(',')) return false;
  rest_.remove_prefix(1);
  SkipBlanks();
  return true;
}

std::optional<double> CTruckScanner::Number() {
  SkipBlanks();
  std::string_view text = rest_;
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  // from_chars would take a second sign and the names of what is no number.
  if (text.empty() || (!IsDigit(text[0]) && text[0] != '.')) return std::nullopt;
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::invalid_argument) return std::nullopt;
  const std::string_view number = text.substr(0, static_cast<size_t>(end - text.data()));
  if (error != std::errc()) {
    if (!IsTooSmall(number)) return std::nullopt;
    value = 0;
  }
  rest_ = text.substr(number.size());
  return negative ? -value : value;
}

std::optional<int32_t> CTruckScanner::Integer() {
  SkipBlanks();
  std::string_view text = rest_;
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc()) return std::nullopt;
  rest_ = text.substr(static_cast<size_t>(end - text.data()));
  return value;
}

std::optional<int32_t> CTruckScanner::Index() {
  if (rest_.empty() || !IsDigit(rest_.front())) return std::nullopt;
  return Integer();
}

std::optional<TruckPoint> TakePoint(CTruckScanner& scanner) {
  TruckPoint point{};
  for (size_t axis = 0; axis < point.size(); ++axis) {
    if (axis > 0 && !scanner.Comma()) return std::nullopt;
    const auto number = scanner.Number();
    if (!number) return std::nullopt;
    point[axis] = *number;
  }
  return point;
}

}  // namespace veldra
