#include "shapes/outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "platform/assert.h"

namespace veldra {

namespace {

using Ring = std::vector<int32_t>;

/// Adds points and the polygons between them.
class COutlineBuilder {
 public:
  COutlineBuilder(int sides) : sides_(static_cast<size_t>(sides)) {}

  int32_t Point(double x, double y, double z) {
    outline_.points.push_back({x, y, z});
    return static_cast<int32_t>(outline_.points.size()) - 1;
  }

  /// Counter-clockwise as seen from above, beginning behind (-z) with half a side: a square lies along the axes.
  Ring Circle(double radius, double y) {
    Ring ring;
    for (size_t j = 0; j < sides_; ++j) {
      const double angle = std::numbers::pi * (0.5 + (2.0 * static_cast<double>(j) + 1) / static_cast<double>(sides_));
      ring.push_back(Point(radius * std::cos(angle), y, -radius * std::sin(angle)));
    }
    return ring;
  }

  void Polygon(Ring corners, ELaying laying) {
    outline_.polygons.push_back({.corners = std::move(corners), .laying = laying});
  }
  void Cap(Ring ring, bool looks_up, ELaying laying) {
    if (!looks_up) std::ranges::reverse(ring);
    Polygon(std::move(ring), laying);
  }

  /// The band between two circles, whose part of the texture goes from TOP_V to LOW_V. Seen from outside, UPPER is
  /// above.
  void Band(const Ring& upper, const Ring& lower, double top_v, double low_v) {
    for (size_t j = 0; j < sides_; ++j) {
      const auto [u, next_u] = Span(j);
      Given({{upper[j], u, top_v},
             {lower[j], u, low_v},
             {Next(lower, j), next_u, low_v},
             {Next(upper, j), next_u, top_v}});
    }
  }
  /// The same where one of the circles is a point.
  void Fan(int32_t top, const Ring& lower, double top_v, double low_v) {
    for (size_t j = 0; j < sides_; ++j) {
      const auto [u, next_u] = Span(j);
      Given({{top, (u + next_u) / 2, top_v}, {lower[j], u, low_v}, {Next(lower, j), next_u, low_v}});
    }
  }
  void FanBelow(const Ring& upper, int32_t bottom, double top_v, double low_v) {
    for (size_t j = 0; j < sides_; ++j) {
      const auto [u, next_u] = Span(j);
      Given({{bottom, (u + next_u) / 2, low_v}, {Next(upper, j), next_u, top_v}, {upper[j], u, top_v}});
    }
  }
  /// The flat ring between two circles of one height.
  void FlatRing(const Ring& outer, const Ring& inner, bool looks_up) {
    for (size_t j = 0; j < sides_; ++j)
      Cap({outer[j], Next(outer, j), Next(inner, j), inner[j]}, looks_up, ELaying::kBox);
  }

  struct SCorner {
    int32_t vertex;
    double u;
    double v;
  };
  void Given(std::initializer_list<SCorner> corners) {
    SPolygon polygon{.corners = {}, .laying = ELaying::kGiven};
    for (const SCorner& corner : corners) {
      polygon.corners.push_back(corner.vertex);
      polygon.coords.push_back({corner.u, corner.v});
    }
    outline_.polygons.push_back(std::move(polygon));
  }

  SOutline Take() { return std::move(outline_); }

 private:
  int32_t Next(const Ring& ring, size_t j) const { return ring[(j + 1) % sides_]; }
  /// The seam lies where the last side ends: its u is 1 there and not 0 again.
  std::pair<double, double> Span(size_t j) const {
    const auto sides = static_cast<double>(sides_);
    return {static_cast<double>(j) / sides, static_cast<double>(j + 1) / sides};
  }

  size_t sides_;
  SOutline outline_;
};

SOutline FlatPolygon(int sides) {
  COutlineBuilder builder(sides);
  builder.Cap(builder.Circle(1, 0), true, ELaying::kFace);
  return builder.Take();
}

SOutline Cube() {
  std::vector<Vector3> points;
  for (const double y : {-1.0, 1.0})
    for (const double x : {-1.0, 1.0})
      for (const double z : {-1.0, 1.0})
        points.push_back({x, y, z});
  return MakeHull(std::move(points));
}

SOutline Pyramid(int sides) {
  COutlineBuilder builder(sides);
  const Ring base = builder.Circle(1, 0);
  const int32_t apex = builder.Point(0, 1, 0);
  builder.Cap(base, false, ELaying::kFace);
  for (size_t j = 0; j < base.size(); ++j)
    builder.Polygon({apex, base[j], base[(j + 1) % base.size()]}, ELaying::kFace);
  return builder.Take();
}

SOutline Cone(int sides) {
  COutlineBuilder builder(sides);
  const Ring base = builder.Circle(1, 0);
  builder.Cap(base, false, ELaying::kBox);
  builder.Fan(builder.Point(0, 1, 0), base, 0, 1);
  return builder.Take();
}

SOutline Sphere(int sides, int bands) {
  COutlineBuilder builder(sides);
  const int32_t top = builder.Point(0, 1, 0);
  std::vector<Ring> circles;
  for (int i = 1; i < bands; ++i) {
    const double angle = std::numbers::pi * i / bands;
    circles.push_back(builder.Circle(std::sin(angle), std::cos(angle)));
  }
  const int32_t bottom = builder.Point(0, -1, 0);
  const auto v = [bands](size_t i) { return static_cast<double>(i) / bands; };
  builder.Fan(top, circles.front(), 0, v(1));
  for (size_t i = 1; i < circles.size(); ++i)
    builder.Band(circles[i - 1], circles[i], v(i), v(i + 1));
  builder.FanBelow(circles.back(), bottom, v(circles.size()), 1);
  return builder.Take();
}

SOutline Cylinder(int sides) {
  COutlineBuilder builder(sides);
  const Ring top = builder.Circle(1, 1);
  const Ring bottom = builder.Circle(1, -1);
  builder.Cap(top, true, ELaying::kBox);
  builder.Cap(bottom, false, ELaying::kBox);
  builder.Band(top, bottom, 0, 1);
  return builder.Take();
}

SOutline Tube(int sides, double hole) {
  COutlineBuilder builder(sides);
  const Ring top = builder.Circle(1, 1);
  const Ring bottom = builder.Circle(1, -1);
  const Ring inner_top = builder.Circle(hole, 1);
  const Ring inner_bottom = builder.Circle(hole, -1);
  builder.Band(top, bottom, 0, 1);
  builder.Band(inner_bottom, inner_top, 1, 0);
  builder.FlatRing(top, inner_top, true);
  builder.FlatRing(bottom, inner_bottom, false);
  return builder.Take();
}

SOutline Torus(int sides, int around, double hole) {
  COutlineBuilder builder(sides);
  const double middle = (1 + hole) / 2;
  const double radius = (1 - hole) / 2;
  std::vector<Ring> circles;
  for (int i = 0; i < around; ++i) {
    const double angle = 2 * std::numbers::pi * i / around;
    // From the outermost circle downwards, so that each band's first circle is the upper one as seen from outside.
    circles.push_back(builder.Circle(middle + radius * std::cos(angle), -radius * std::sin(angle)));
  }
  for (size_t i = 0; i < circles.size(); ++i) {
    const auto v = [around](size_t k) { return static_cast<double>(k) / around; };
    builder.Band(circles[i], circles[(i + 1) % circles.size()], v(i), v(i + 1));
  }
  return builder.Take();
}

/// Rises towards +z, which is straight ahead for a truck.
SOutline Ramp() {
  return MakeHull({{-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}, {1, 1, 1}, {-1, 1, 1}});
}

/// A bridge across x, as deep as the box in z.
SOutline Arch(int sides, double hole) {
  COutlineBuilder builder(sides);
  struct SRib {
    int32_t front, back, inner_front, inner_back;
  };
  std::vector<SRib> ribs;
  for (int i = 0; i <= sides; ++i) {
    const double angle = std::numbers::pi * (1 - static_cast<double>(i) / sides);
    const double x = std::cos(angle);
    const double y = i == sides ? 0.0 : std::sin(angle);
    ribs.push_back({builder.Point(x, y, 1), builder.Point(x, y, -1), builder.Point(hole * x, hole * y, 1),
                    builder.Point(hole * x, hole * y, -1)});
  }
  for (size_t i = 0; i + 1 < ribs.size(); ++i) {
    const SRib& a = ribs[i];
    const SRib& b = ribs[i + 1];
    const double u = static_cast<double>(i) / sides;
    const double next_u = static_cast<double>(i + 1) / sides;
    builder.Given({{a.front, u, 1}, {b.front, next_u, 1}, {b.back, next_u, 0}, {a.back, u, 0}});
    builder.Given({{a.inner_front, u, 1}, {a.inner_back, u, 0}, {b.inner_back, next_u, 0}, {b.inner_front, next_u, 1}});
    builder.Polygon({a.front, a.inner_front, b.inner_front, b.front}, ELaying::kBox);
    builder.Polygon({b.back, b.inner_back, a.inner_back, a.back}, ELaying::kBox);
  }
  const SRib& left = ribs.front();
  const SRib& right = ribs.back();
  builder.Polygon({left.front, left.back, left.inner_back, left.inner_front}, ELaying::kFace);
  builder.Polygon({right.front, right.inner_front, right.inner_back, right.back}, ELaying::kFace);
  return builder.Take();
}

/// X, Y, Z with every choice of signs for those that are not 0, then the same turned through the axes.
std::vector<Vector3> Turned(double x, double y, double z) {
  std::vector<Vector3> points;
  for (const double sx : {-1.0, 1.0})
    for (const double sy : {-1.0, 1.0})
      for (const double sz : {-1.0, 1.0}) {
        const Vector3 p = {sx * x, sy * y, sz * z};
        for (const Vector3& point : {p, Vector3{p[2], p[0], p[1]}, Vector3{p[1], p[2], p[0]}})
          if (std::ranges::find(points, point) == points.end()) points.push_back(point);
      }
  return points;
}

SOutline Polyhedron(int faces) {
  constexpr double kGolden = std::numbers::phi;
  switch (faces) {
    case 4:
      return MakeHull({{1, 1, 1}, {1, -1, -1}, {-1, 1, -1}, {-1, -1, 1}});
    case 8:
      return MakeHull(Turned(1, 0, 0));
    case 12: {
      std::vector<Vector3> points = Turned(1, 1, 1);
      const std::vector<Vector3> others = Turned(0, 1 / kGolden, kGolden);
      points.insert(points.end(), others.begin(), others.end());
      return MakeHull(std::move(points));
    }
    case 20:
      return MakeHull(Turned(0, 1, kGolden));
    default:
      return Cube();
  }
}

}  // namespace

SOutline MakeOutline(const SShape& shape) {
  const SShapeKind& kind = KindOf(shape.kind);
  const int sides = shape.sides.value_or(kind.usual_sides);
  const int rings = shape.rings.value_or(kind.usual_rings);
  switch (shape.kind) {
    case EShape::kTriangle:
      return FlatPolygon(3);
    case EShape::kSquare:
      return FlatPolygon(4);
    case EShape::kPolygon:
      return FlatPolygon(sides);
    case EShape::kCube:
      return Cube();
    case EShape::kPyramid:
      return Pyramid(sides);
    case EShape::kSphere:
      return Sphere(sides, rings);
    case EShape::kPolyhedron:
      return Polyhedron(shape.solid);
    case EShape::kCylinder:
      return Cylinder(sides);
    case EShape::kTube:
      return Tube(sides, shape.hole);
    case EShape::kCone:
      return Cone(sides);
    case EShape::kRamp:
      return Ramp();
    case EShape::kArch:
      return Arch(sides, shape.hole);
    case EShape::kTorus:
      return Torus(sides, rings, shape.hole);
  }
  VELDRA_ASSERT(false);
  return {};
}

}  // namespace veldra
