#pragma once

#include <cmath>

#include "model/helperclasses.h"

namespace veldra {

/// COORD, within 0 to 1, on the texel of FACE's texture that it is nearest to; a face without texture has no texels.
/// Loading takes the whole texels of what was saved: what lies between two would be the lower one afterwards.
inline STexCoord NearestTexel(const CBinFace& face, const STexCoord& coord) {
  if (face.Texture() == nullptr) return coord;
  const double last = face.Texture()->Width() - 1;
  return {std::round(coord.u * last) / last, std::round(coord.v * last) / last};
}

}  // namespace veldra
