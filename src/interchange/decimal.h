#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace veldra {

/// Below the power of that position numbers have no more digits than it says.
inline constexpr std::array<uint32_t, 10> kDecimalPowers = {0,      10,      100,      1000,      10000,
                                                            100000, 1000000, 10000000, 100000000, 1000000000};
inline constexpr char kDecimalPairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546474849"
    "5051525354555657585960616263646566676869707172737475767778798081828384858687888990919293949596979899";

inline int DecimalLength(uint32_t number) {
  constexpr int kDigitsOfBits = 1233;  // 4096 times the decimal digits that a bit is worth
  const int guess = std::bit_width(number) * kDigitsOfBits >> 12;
  return guess + (number >= kDecimalPowers[static_cast<size_t>(guess)] ? 1 : 0);
}

/// Writes NUMBER in decimal to AT, which has room for 11 characters; returns where it ends.
inline char* WriteDecimal(int32_t number, char* at) {
  auto rest = static_cast<uint32_t>(number);
  if (number < 0) {
    *at++ = '-';
    rest = 0 - rest;
  }
  const int length = DecimalLength(rest);
  char* pair = at + length;
  while (rest >= 100) {
    pair -= 2;
    std::memcpy(pair, kDecimalPairs + 2 * (rest % 100), 2);
    rest /= 100;
  }
  if (rest >= 10)
    std::memcpy(at, kDecimalPairs + 2 * rest, 2);
  else
    *at = static_cast<char>('0' + rest);
  return at + length;
}

}  // namespace veldra
