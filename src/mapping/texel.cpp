#include "mapping/texel.h"

#include <algorithm>

namespace veldra {

namespace {

constexpr double kNear = 1e-3;
/// What model files hold for 1.
constexpr double kFileOne = 0xFFFFFF;

double OntoTexel(double value) {
  const double whole = std::round(value);
  return std::abs(value - whole) <= kNear ? whole : value;
}

/// The texel that loading makes of COORD once it has been saved.
double LoadedTexel(double coord, double last) {
  return std::floor(std::trunc(coord * kFileOne) * last / kFileOne);
}

double Kept(double texels, double last) {
  const double place = std::clamp(OntoTexel(texels), 0.0, last);
  const double coord = place / last;
  if (place != std::round(place) || LoadedTexel(coord, last) == place) return coord;
  // Half a step above the first number of the file that counts for this texel, so that no rounding can lose it.
  return std::min((std::ceil(place * kFileOne / last) + 0.5) / kFileOne, 1.0);
}

}  // namespace

STexelRect BoundsOf(std::span<const STexel> points) {
  STexelRect bounds = {points.front(), points.front()};
  for (const STexel& at : points) {
    bounds.min = {std::min(bounds.min.x, at.x), std::min(bounds.min.y, at.y)};
    bounds.max = {std::max(bounds.max.x, at.x), std::max(bounds.max.y, at.y)};
  }
  return bounds;
}

STexelRect WholeTexture(int width) {
  return {{0, 0}, {width - 1.0, width - 1.0}};
}

STexel Rounded(const STexel& at) {
  return {std::round(at.x), std::round(at.y)};
}

STexel TexelOf(const STexCoord& coord, int width) {
  return {OntoTexel(coord.u * (width - 1)), OntoTexel(coord.v * (width - 1))};
}

STexCoord CoordOf(const STexel& at, int width) {
  return {Kept(at.x, width - 1), Kept(at.y, width - 1)};
}

}  // namespace veldra
