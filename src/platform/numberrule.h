#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veldra {

/// What a number field takes. Both ends belong to the range.
struct SNumberRule {
  bool integer = false;
  double smallest = -2147483648.0;
  double largest = 2147483647.0;

  static SNumberRule Integer(double smallest = -2147483648.0, double largest = 2147483647.0) {
    return {.integer = true, .smallest = smallest, .largest = largest};
  }
};

/// What is wrong with TEXT for a field under RULE, in words to stand beside it, or "": empty, not a number, a fraction
/// where a whole number is needed, out of range. Blanks around it do not matter; "." is the decimal point whatever the
/// locale, and nothing separates thousands.
std::string NumberFault(std::string_view text, const SNumberRule& rule);
/// The number of a text without fault, else nothing.
std::optional<double> FieldNumber(std::string_view text, const SNumberRule& rule);
/// The shortest text that reads back as VALUE, with "." whatever the locale. An exponent only where a user would want
/// one.
std::string NumberText(double value);

}  // namespace veldra
