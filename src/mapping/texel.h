#pragma once

#include <cmath>
#include <span>
#include <vector>

#include "model/helperclasses.h"

/// Places on a texture in texels, as they are counted in a paint program: (0, 0) is the first texel of the first row,
/// the last one of a texture of 64 is (63, 63).
namespace veldra {

struct STexel {
  double x = 0.0;  ///< to the right
  double y = 0.0;  ///< downwards
  bool operator==(const STexel&) const = default;
  STexel operator+(const STexel& other) const { return {x + other.x, y + other.y}; }
  STexel operator-(const STexel& other) const { return {x - other.x, y - other.y}; }
};

using Texels = std::vector<STexel>;

inline double Distance(const STexel& a, const STexel& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

/// Edges included.
struct STexelRect {
  STexel min;
  STexel max;
  bool operator==(const STexelRect&) const = default;
  double Width() const { return max.x - min.x; }
  double Height() const { return max.y - min.y; }
  STexel Middle() const { return {(min.x + max.x) / 2, (min.y + max.y) / 2}; }
  bool Holds(const STexel& at) const { return at.x >= min.x && at.x <= max.x && at.y >= min.y && at.y <= max.y; }
};

/// POINTS is not empty.
STexelRect BoundsOf(std::span<const STexel> points);
/// From the first texel to the last.
STexelRect WholeTexture(int width);
STexel Rounded(const STexel& at);

/// A coordinate on a texture WIDTH texels wide. One that is within a thousandth of a whole texel is on it.
STexel TexelOf(const STexCoord& coord, int width);
/// The coordinate, within 0 to 1, of a place. That of a whole texel is one that a file keeps: at some widths the
/// nearest number would be cut off to the texel before when it is saved and loaded again.
STexCoord CoordOf(const STexel& at, int width);

}  // namespace veldra
