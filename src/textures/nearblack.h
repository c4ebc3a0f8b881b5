#pragma once

#include <cstdint>

namespace veldra {

/// The game lets such a colour through: all of its parts lie below 9.
constexpr bool IsNearBlack(uint32_t red, uint32_t green, uint32_t blue) {
  return red < 9 && green < 9 && blue < 9;
}

}  // namespace veldra
