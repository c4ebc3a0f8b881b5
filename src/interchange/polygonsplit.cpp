#include "interchange/polygonsplit.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>

#include "interchange/earclipping.h"

namespace veldra {

namespace {

/// A turn counts as straight on when its sine is below this: what rounding in a file makes of a straight line.
constexpr double kStraight = 1e-6;

using Outline = std::vector<SPlanePoint>;

/// The points moved to the first one and shrunk so that products neither overflow nor vanish.
std::vector<SWavePoint> Normalized(std::span<const SWavePoint> points) {
  double largest = 0;
  for (const SWavePoint& p : points) {
    for (size_t axis = 0; axis < 3; ++axis)
      largest = std::max(largest, std::abs(p[axis] / 2 - points[0][axis] / 2));
  }
  std::vector<SWavePoint> moved(points.size());
  if (largest == 0) return moved;
  for (size_t i = 0; i < points.size(); ++i) {
    for (size_t axis = 0; axis < 3; ++axis)
      moved[i][axis] = std::clamp((points[i][axis] / 2 - points[0][axis] / 2) / largest, -1.0, 1.0);
  }
  return moved;
}

/// Twice the area of the outline as seen along each axis.
SWavePoint AreaVector(const std::vector<SWavePoint>& points) {
  SWavePoint area = {};
  for (size_t i = 0; i < points.size(); ++i) {
    const SWavePoint& p = points[i];
    const SWavePoint& q = points[(i + 1) % points.size()];
    area[0] += p[1] * q[2] - p[2] * q[1];
    area[1] += p[2] * q[0] - p[0] * q[2];
    area[2] += p[0] * q[1] - p[1] * q[0];
  }
  return area;
}

/// The polygon as seen along the axis on which its area is largest, going round to the left. Nothing without area.
std::optional<Outline> Project(std::span<const SWavePoint> points) {
  const std::vector<SWavePoint> moved = Normalized(points);
  const SWavePoint area = AreaVector(moved);
  size_t axis = 0;
  for (size_t i = 1; i < 3; ++i) {
    if (std::abs(area[i]) > std::abs(area[axis])) axis = i;
  }
  if (area[axis] == 0) return std::nullopt;
  Outline outline(moved.size());
  for (size_t i = 0; i < moved.size(); ++i) {
    const double x = moved[i][(axis + 1) % 3];
    const double y = moved[i][(axis + 2) % 3];
    outline[i] = area[axis] > 0 ? SPlanePoint{x, y} : SPlanePoint{-x, y};
  }
  return outline;
}

int DirectionAt(const Outline& outline, size_t i) {
  const size_t n = outline.size();
  return Direction(outline[(i + n - 1) % n], outline[i], outline[(i + 1) % n], kStraight);
}

/// A concave quad becomes two triangles that meet at its inner corner; one that crosses itself stays as it is.
std::vector<SPiece> SplitQuad(const std::optional<Outline>& outline) {
  const SPiece whole = {{0, 1, 2, 3}, 4};
  if (!outline) return {whole};
  std::optional<uint32_t> inner;
  for (uint32_t i = 0; i < 4; ++i) {
    if (DirectionAt(*outline, i) >= 0) continue;
    if (inner) return {whole};
    inner = i;
  }
  if (!inner) return {whole};
  const uint32_t i = *inner;
  return {{{i, (i + 1) % 4, (i + 2) % 4}, 3}, {{i, (i + 2) % 4, (i + 3) % 4}, 3}};
}

/// Turns to the left at every corner and goes round once.
bool IsConvex(const Outline& outline) {
  int reversals = 0;
  bool was_right = outline[0].x > outline.back().x;
  for (size_t i = 0; i < outline.size(); ++i) {
    if (DirectionAt(outline, i) <= 0) return false;
    const SPlanePoint& next = outline[(i + 1) % outline.size()];
    if (next.x == outline[i].x) continue;
    const bool is_right = next.x > outline[i].x;
    if (is_right != was_right) ++reversals;
    was_right = is_right;
  }
  return reversals <= 2;
}

std::vector<SPiece> Fan(uint32_t count) {
  std::vector<SPiece> pieces;
  for (uint32_t i = 1; i + 1 < count; i += 2) {
    if (i + 2 < count)
      pieces.push_back({{0, i, i + 1, i + 2}, 4});
    else
      pieces.push_back({{0, i, i + 1}, 3});
  }
  return pieces;
}

// --- Triangles to quads ----------------------------------------------------------------------------------------------

bool AreDistinct(const SPiece& piece, std::span<const int32_t> vertices) {
  for (uint32_t i = 1; i < piece.count; ++i) {
    for (uint32_t k = 0; k < i; ++k) {
      if (vertices[piece.corners[i]] == vertices[piece.corners[k]]) return false;
    }
  }
  return true;
}

/// Joins triangles that lie on both sides of a cut, where the two are a convex quad.
class CTriangleJoiner {
 public:
  CTriangleJoiner(const std::vector<Triangle>& triangles, const Outline& outline, std::span<const int32_t> vertices)
      : triangles_(triangles), outline_(outline), vertices_(vertices), is_taken_(triangles.size()) {
    for (uint32_t t = 0; t < triangles_.size(); ++t) {
      for (uint32_t k = 0; k < 3; ++k)
        by_side_[SideKey(t, k)] = {t, k};
    }
  }

  std::vector<SPiece> Join() {
    std::vector<SPiece> pieces;
    for (uint32_t t = 0; t < triangles_.size(); ++t) {
      if (is_taken_[t]) continue;
      SPiece piece = {{triangles_[t][0], triangles_[t][1], triangles_[t][2]}, 3};
      JoinLongest(t, piece);
      is_taken_[t] = true;
      if (AreDistinct(piece, vertices_)) pieces.push_back(piece);
    }
    return pieces;
  }

 private:
  struct SSide {
    uint32_t triangle;
    uint32_t first;  ///< the side goes from this corner of the triangle to the one behind it
  };

  static uint64_t Key(uint32_t from, uint32_t to) { return uint64_t{from} << 32 | to; }
  uint64_t SideKey(uint32_t t, uint32_t k) const { return Key(triangles_[t][k], triangles_[t][(k + 1) % 3]); }

  /// Makes PIECE, the triangle T, the quad of T and its neighbour at the longest side that allows it.
  void JoinLongest(uint32_t t, SPiece& piece) {
    double longest = 0;
    uint32_t partner = t;
    for (uint32_t k = 0; k < 3; ++k) {
      const uint32_t a = triangles_[t][k];
      const uint32_t b = triangles_[t][(k + 1) % 3];
      const auto other = by_side_.find(Key(b, a));
      if (other == by_side_.end() || is_taken_[other->second.triangle]) continue;
      const uint32_t d = triangles_[other->second.triangle][(other->second.first + 2) % 3];
      const SPiece quad = {{a, d, b, triangles_[t][(k + 2) % 3]}, 4};
      const double length = std::hypot(outline_[a].x - outline_[b].x, outline_[a].y - outline_[b].y);
      if (length <= longest || !IsConvexQuad(quad)) continue;
      longest = length;
      partner = other->second.triangle;
      piece = quad;
    }
    is_taken_[partner] = true;
  }

  bool IsConvexQuad(const SPiece& quad) const {
    for (size_t i = 0; i < 4; ++i) {
      const auto at = [&](size_t k) { return outline_[quad.corners[k % 4]]; };
      if (Direction(at(i + 3), at(i), at(i + 1), kStraight) <= 0) return false;
    }
    return AreDistinct(quad, vertices_);
  }

  const std::vector<Triangle>& triangles_;
  const Outline& outline_;
  std::span<const int32_t> vertices_;
  std::vector<bool> is_taken_;
  std::unordered_map<uint64_t, SSide> by_side_;
};

}  // namespace

std::vector<SPiece> SplitPolygon(std::span<const SWavePoint> points, std::span<const int32_t> vertices) {
  if (points.size() == 3) return {{{0, 1, 2}, 3}};
  const std::optional<Outline> outline = Project(points);
  if (points.size() == 4) return SplitQuad(outline);
  if (!outline) return {};
  if (IsConvex(*outline)) return Fan(static_cast<uint32_t>(points.size()));
  const std::vector<Triangle> triangles = ClipEars(*outline);
  return CTriangleJoiner(triangles, *outline, vertices).Join();
}

}  // namespace veldra
