#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "interchange/wavemesh.h"

namespace veldra {

/// A triangle or a quad cut out of a polygon: positions in the polygon's list of corners, in its direction.
struct SPiece {
  std::array<uint32_t, 4> corners = {};
  uint32_t count = 0;
};

/// Splits the polygon with corners at POINTS, whose vertices are VERTICES (as many, three or more), into triangles and
/// quads that together cover what its outline encloses and do not overlap, as far as the outline lies in a plane and
/// does not cross itself. A quad that is not concave stays whole. Quads are convex; each piece has distinct vertices.
/// No piece at all comes of a polygon whose corners all lie on a line, but for one of three or four corners.
std::vector<SPiece> SplitPolygon(std::span<const SWavePoint> points, std::span<const int32_t> vertices);

}  // namespace veldra
