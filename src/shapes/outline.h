#pragma once

#include <cstdint>
#include <vector>

#include "platform/vector3.h"
#include "shapes/shape.h"

/// Inside MakeShape: a shape before it gets its size.
namespace veldra {

/// How u and v come to a polygon.
enum class ELaying {
  kGiven,  ///< in SPolygon::coords
  kFace,   ///< the whole texture over the polygon, upright
  kBox     ///< the whole texture over the shape, seen along the axis that the polygon looks along most
};

/// Corners counter-clockwise as seen from outside.
struct SPolygon {
  std::vector<int32_t> corners;
  ELaying laying = ELaying::kFace;
  std::vector<STexCoord> coords = {};
};

/// A shape of any size about any place: it is stretched to its bounding box.
struct SOutline {
  std::vector<Vector3> points;
  std::vector<SPolygon> polygons;
};

SOutline MakeOutline(const SShape& shape);

/// The convex solid with corners at POINTS, each a corner, with a polygon a side.
SOutline MakeHull(std::vector<Vector3> points);

}  // namespace veldra
