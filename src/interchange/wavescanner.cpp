#include "interchange/wavescanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <string>

#include "platform/text.h"

namespace veldra {

namespace {

/// Exponents beyond it are all the same: nothing, or far too large.
constexpr int kLargestExponent = 100000;
/// Every whole number up to it is a double.
constexpr uint64_t kLargestExact = uint64_t{1} << 53;
/// Digits that fit into 64 bits whatever they are.
constexpr int kMostDigits = 19;

/// The powers of ten that are exact as doubles.
constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                            1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// A number in pieces.
struct SDecimal {
  bool negative = false;
  const char* digits = nullptr;      ///< where the first digit or the point stands
  const char* digits_end = nullptr;  ///< behind the last
  uint64_t mantissa = 0;             ///< all digits as one number, when there are no more than kMostDigits
  int count = 0;                     ///< digits, without leading zeros
  int scale = 0;                     ///< digits behind the point
  int exponent = 0;

  /// The power of ten of the first digit that is not zero, plus one.
  int Magnitude() const { return count - scale + exponent; }
};

/// From AT on; returns where the number ends, or null when none stands there.
const char* TakeDigits(const char* at, const char* end, SDecimal& decimal) {
  bool any = false;
  bool behind_point = false;
  decimal.digits = at;
  for (; at != end; ++at) {
    if (*at == '.' && !behind_point) {
      behind_point = true;
      continue;
    }
    if (!IsDigit(*at)) break;
    any = true;
    decimal.scale += behind_point ? 1 : 0;
    if (decimal.count == 0 && *at == '0') continue;
    if (++decimal.count <= kMostDigits) decimal.mantissa = decimal.mantissa * 10 + static_cast<uint64_t>(*at - '0');
  }
  decimal.digits_end = at;
  return any ? at : nullptr;
}

/// "e5", "E-5", and "-e5", as some exporters write it. Returns AT when no exponent stands there.
const char* TakeExponent(const char* at, const char* end, SDecimal& decimal) {
  const char* p = at;
  const auto take_sign = [&] {
    const bool is_sign = p != end && (*p == '+' || *p == '-');
    return is_sign ? *p++ : '\0';
  };
  const char outer = take_sign();
  if (p == end || (*p != 'e' && *p != 'E')) return at;
  ++p;
  const char inner = take_sign();
  if ((outer != '\0' && inner != '\0') || p == end || !IsDigit(*p)) return at;
  for (; p != end && IsDigit(*p); ++p)
    decimal.exponent = std::min(decimal.exponent * 10 + (*p - '0'), kLargestExponent);
  if (outer == '-' || inner == '-') decimal.exponent = -decimal.exponent;
  return p;
}

/// Where one multiplication or division of exact doubles does not give the answer.
ENumber ConvertSlowly(const SDecimal& decimal, double& number) {
  constexpr int kSmallest = -400;  // smaller ones are zero, larger ones infinite
  constexpr int kLargest = 400;
  if (decimal.Magnitude() < kSmallest) {
    number = 0;
    return ENumber::kGood;
  }
  if (decimal.Magnitude() > kLargest) return ENumber::kTooLarge;
  const std::string text = std::string(decimal.digits, decimal.digits_end) + Format("e%d", decimal.exponent);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  // Out of range is too small as well.
  if (result.ec == std::errc::result_out_of_range && decimal.Magnitude() > 0) return ENumber::kTooLarge;
  number = result.ec == std::errc() ? value : 0;
  return ENumber::kGood;
}

ENumber Convert(const SDecimal& decimal, double& number) {
  constexpr int kMostPower = static_cast<int>(kPowers.size()) - 1;
  const int power = decimal.exponent - decimal.scale;
  if (decimal.count == 0) {
    number = 0;
  } else if (decimal.count <= kMostDigits && decimal.mantissa <= kLargestExact && power >= -kMostPower &&
             power <= kMostPower) {
    const auto whole = static_cast<double>(decimal.mantissa);
    number = power < 0 ? whole / kPowers[static_cast<size_t>(-power)] : whole * kPowers[static_cast<size_t>(power)];
  } else if (const ENumber fault = ConvertSlowly(decimal, number); fault != ENumber::kGood) {
    return fault;
  }
  if (decimal.negative) number = -number;
  return ENumber::kGood;
}

}  // namespace

/// Digits with or without a point, few enough that one division of exact doubles gives the answer: nearly all numbers.
bool CWaveScanner::ReadShortNumber(double& number) {
  const char* at = at_;
  const bool negative = at != end_ && *at == '-';
  if (negative) ++at;
  const char* const first = at;
  uint64_t mantissa = 0;
  for (; at != end_ && IsDigit(*at); ++at)
    mantissa = mantissa * 10 + static_cast<uint64_t>(*at - '0');
  auto digits = at - first;
  size_t scale = 0;
  if (at != end_ && *at == '.') {
    const char* const point = at++;
    for (; at != end_ && IsDigit(*at); ++at)
      mantissa = mantissa * 10 + static_cast<uint64_t>(*at - '0');
    scale = static_cast<size_t>(at - point) - 1;
    digits = at - first - 1;
  }
  if (digits == 0 || digits > kMostDigits || mantissa > kLargestExact) return false;
  if (at != end_ && *at != ' ' && *at != line_end_ && !IsBlank(*at)) return false;
  const double value = static_cast<double>(mantissa) / kPowers[scale];
  number = negative ? -value : value;
  at_ = at;
  return true;
}

ENumber CWaveScanner::ReadAnyNumber(double& number) {
  SDecimal decimal;
  const char* at = at_;
  if (at != end_ && (*at == '-' || *at == '+')) decimal.negative = *at++ == '-';
  at = TakeDigits(at, end_, decimal);
  if (at == nullptr) return ENumber::kNone;
  if (at != end_ && *at > ' ') at = TakeExponent(at, end_, decimal);
  const char* const start = at_;
  at_ = at;
  const ENumber result = AtWordEnd() ? Convert(decimal, number) : ENumber::kNone;
  if (result != ENumber::kGood) at_ = start;
  return result;
}

std::string_view CWaveScanner::ReadWord() {
  const char* const start = at_;
  while (at_ != end_ && *at_ != line_end_ && !IsBlank(*at_) && !IsContinuation())
    ++at_;
  return {start, static_cast<size_t>(at_ - start)};
}

std::string_view CWaveScanner::ReadRest() {
  const char* const start = at_;
  at_ = LineEnd();
  return Trim({start, static_cast<size_t>(at_ - start)});
}

/// A backslash just before the line's end.
bool CWaveScanner::IsContinuation() const {
  if (*at_ != '\\') return false;
  const char* at = at_ + 1;
  if (at != end_ && *at == '\r' && line_end_ == '\n') ++at;
  return at == end_ || *at == line_end_;
}

bool CWaveScanner::SkipContinuation() {
  if (!IsContinuation()) return false;
  SkipPhysicalLine();
  return true;
}

const char* CWaveScanner::LineEnd() const {
  const void* const found = std::memchr(at_, line_end_, static_cast<size_t>(end_ - at_));
  return found == nullptr ? end_ : static_cast<const char*>(found);
}

void CWaveScanner::SkipPhysicalLine() {
  at_ = LineEnd();
  if (at_ != end_) ++at_;
  ++line_;
}

/// Comments end with their line: many name a Windows folder at their end.
void CWaveScanner::SkipLine() {
  if (Peek() == '#') return SkipPhysicalLine();
  for (;;) {
    const char* const start = at_;
    SkipPhysicalLine();
    const char* last = at_;
    while (last != start && (last[-1] == line_end_ || last[-1] == '\r'))
      --last;
    if (at_ == end_ || last == start || last[-1] != '\\') return;
  }
}

}  // namespace veldra
