#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "truck/truck.h"

namespace veldra {

/// The lines of a truck file. A line ends at a carriage return, a line feed or a zero byte, of which "\r\n" and a line
/// end behind a zero byte count as one.
class CTruckLines {
 public:
  explicit CTruckLines(std::string_view text) : text_(text) {}

  /// A line that begins in the last two bytes is no key any more.
  bool HasKey() const { return position_ + 2 < text_.size(); }
  /// Trimmed; nothing at the end of the text.
  std::optional<std::string_view> Next();
  /// What Next will read, for going back to a line.
  size_t Position() const { return position_; }
  void Return(size_t position) { position_ = position; }

 private:
  std::string_view text_;
  size_t position_ = 0;
};

/// Walks along a value. What is not there is left where it is and nothing is returned. "." is the decimal point
/// whatever the locale.
class CTruckScanner {
 public:
  explicit CTruckScanner(std::string_view text) : rest_(text) {}

  std::string_view Rest() const { return rest_; }
  /// At least one white-space character.
  bool Blanks();
  /// White space, the comma, white space.
  bool Comma();
  /// A sign, digits with a point among them or not, an exponent; white space before it is skipped. Too large a number
  /// is none; one too small to hold is 0.
  std::optional<double> Number();
  /// Digits with a sign or none, within 32 bits; white space before them is skipped.
  std::optional<int32_t> Integer();
  /// Digits only.
  std::optional<int32_t> Index();

 private:
  void SkipBlanks();

  std::string_view rest_;
};

/// Three numbers with commas between them; nothing unless all are there.
std::optional<TruckPoint> TakePoint(CTruckScanner& scanner);

}  // namespace veldra
