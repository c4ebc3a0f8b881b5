#include "platform/numberrule.h"

#include <charconv>
#include <cmath>

#include "platform/text.h"

namespace veldra {

std::string NumberFault(std::string_view text, const SNumberRule& rule) {
  text = Trim(text);
  if (text.empty()) return "Enter a number.";
  const auto number = ParseNumber(text);
  if (!number) {
    const bool has_comma = text.find(',') != std::string_view::npos;
    return has_comma ? "Not a number: the decimal point is \".\"." : "Not a number.";
  }
  if (rule.integer && std::trunc(*number) != *number) return "Not a whole number.";
  if (*number >= rule.smallest && *number <= rule.largest) return "";
  return "Must be between " + NumberText(rule.smallest) + " and " + NumberText(rule.largest) + ".";
}

std::optional<double> FieldNumber(std::string_view text, const SNumberRule& rule) {
  if (!NumberFault(text, rule).empty()) return std::nullopt;
  return ParseNumber(Trim(text));
}

std::string NumberText(double value) {
  constexpr double kSmallestPlain = 1e-6;
  constexpr double kLargestPlain = 1e15;
  const double size = std::abs(value);
  const bool is_plain = value == 0.0 || (size >= kSmallestPlain && size < kLargestPlain);
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, value,
                                 is_plain ? std::chars_format::fixed : std::chars_format::scientific)
                       .ptr;
  return {text, end};
}

}  // namespace veldra
