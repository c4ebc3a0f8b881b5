#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "shapes/outline.h"

namespace veldra {

namespace {

constexpr double kSamePlane = 1e-9;

/// The points in the plane through POINTS[I], [J] and [K], in ascending order; nothing when there are some on both
/// sides. NORMAL comes to look away from the others.
std::vector<int32_t> SideThrough(const std::vector<Vector3>& points, size_t i, size_t j, size_t k, Vector3& normal) {
  normal = Normalized(Cross(points[j] - points[i], points[k] - points[i]));
  std::vector<int32_t> side;
  bool any_above = false;
  bool any_below = false;
  for (size_t p = 0; p < points.size(); ++p) {
    const double height = Dot(normal, points[p] - points[i]);
    any_above = any_above || height > kSamePlane;
    any_below = any_below || height < -kSamePlane;
    if (std::abs(height) <= kSamePlane) side.push_back(static_cast<int32_t>(p));
  }
  if (any_above) normal = -1.0 * normal;
  return any_above && any_below ? std::vector<int32_t>() : side;
}

/// Counter-clockwise for who looks against NORMAL.
void SortAround(const std::vector<Vector3>& points, const Vector3& normal, std::vector<int32_t>& side) {
  Vector3 middle = {};
  for (const int32_t p : side)
    middle = middle + 1.0 / static_cast<double>(side.size()) * points[static_cast<size_t>(p)];
  const Vector3 right = Normalized(points[static_cast<size_t>(side.front())] - middle);
  const Vector3 up = Cross(normal, right);
  const auto angle = [&](int32_t p) {
    const Vector3 from_middle = points[static_cast<size_t>(p)] - middle;
    return std::atan2(Dot(up, from_middle), Dot(right, from_middle));
  };
  std::ranges::sort(side, {}, angle);
}

}  // namespace

SOutline MakeHull(std::vector<Vector3> points) {
  SOutline outline;
  std::set<std::vector<int32_t>> found;
  for (size_t i = 0; i < points.size(); ++i) {
    for (size_t j = i + 1; j < points.size(); ++j) {
      for (size_t k = j + 1; k < points.size(); ++k) {
        Vector3 normal;
        std::vector<int32_t> side = SideThrough(points, i, j, k, normal);
        if (side.empty() || !found.insert(side).second) continue;
        SortAround(points, normal, side);
        outline.polygons.push_back({.corners = std::move(side)});
      }
    }
  }
  outline.points = std::move(points);
  return outline;
}

}  // namespace veldra
