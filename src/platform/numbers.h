#pragma once

#include <bit>
#include <cstdint>
#include <limits>
#include <optional>

namespace veldra {

/// VALUE without its fraction, or nothing when it is not a number or does not fit in 32 bits.
constexpr std::optional<int32_t> TryTruncate(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) return std::nullopt;
  return static_cast<int32_t>(value);
}

/// VALUE without its fraction; what does not fit, and what is not a number, becomes 0x80000000, the processor's own
/// answer, which the game's files hold for the normals of faces without area.
constexpr int32_t Truncate(double value) {
  return TryTruncate(value).value_or(std::numeric_limits<int32_t>::min());
}

// 32-bit arithmetic that wraps, as the game computes it.
constexpr int32_t WrapAdd(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}
constexpr int32_t WrapSubtract(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
constexpr int32_t WrapMultiply(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}
constexpr int32_t WrapNegate(int32_t a) {
  return WrapSubtract(0, a);
}

}  // namespace veldra
