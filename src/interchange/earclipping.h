#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace veldra {

struct SPlanePoint {
  double x = 0;
  double y = 0;
};

/// Twice the area of A, B, C: positive when they turn to the left.
inline double Turn(const SPlanePoint& a, const SPlanePoint& b, const SPlanePoint& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Where the way from A to C over B turns: 1 to the left, -1 to the right, 0 when the sine of the turn is not above
/// STRAIGHT.
inline int Direction(const SPlanePoint& a, const SPlanePoint& b, const SPlanePoint& c, double straight) {
  const double turn = Turn(a, b, c);
  const SPlanePoint in = {b.x - a.x, b.y - a.y};
  const SPlanePoint out = {c.x - b.x, c.y - b.y};
  const double squares = (in.x * in.x + in.y * in.y) * (out.x * out.x + out.y * out.y);
  if (turn * turn <= straight * straight * squares) return 0;
  return turn > 0 ? 1 : -1;
}

/// Three positions in a list of points, turning to the left.
using Triangle = std::array<uint32_t, 3>;

/// Cuts the polygon OUTLINE, which goes round to the left and whose coordinates lie in -1..1, into triangles over its
/// own corners. Outlines that touch themselves are taken, as at a cut that leads to a hole; of outlines that cross
/// themselves some triangles come. Takes about n log n steps, and for the most tangled outline a few thousand times n.
std::vector<Triangle> ClipEars(const std::vector<SPlanePoint>& outline);

}  // namespace veldra
