#include "samples/solids.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace veldra::samples {

namespace {

/// Two directions across NORMAL: with it they form a right-handed system.
std::pair<Vector3, Vector3> Across(const Vector3& normal) {
  const Vector3 upwards = std::abs(normal[1]) > 0.9 ? Vector3{0, 0, -1} : Vector3{0, 1, 0};
  const Vector3 right = Normalized(Cross(upwards, normal));
  return {right, Cross(normal, right)};
}

struct SRing {
  Vector3 center;
  Vector3 normal;
  double radius;
  int sides;

  /// Place K of SIDES, counter-clockwise for who looks against NORMAL.
  Vector3 At(int k) const {
    const auto [right, up] = Across(normal);
    const double angle = 2.0 * std::numbers::pi * k / sides;
    return center + radius * std::cos(angle) * right + radius * std::sin(angle) * up;
  }
};

/// Closes RING; seen FROM_BEHIND its normal points away from the viewer.
void AddCap(CMeshBuilder& mesh, const SRing& ring, bool from_behind) {
  const auto [right, up] = Across(from_behind ? -1.0 * ring.normal : ring.normal);
  const auto corner = [&, right = right, up = up](int k) {
    const Vector3 place = ring.At(from_behind ? -k : k);
    const Vector3 away = 1.0 / ring.radius * (place - ring.center);
    return SCorner{place, {0.5 + 0.5 * Dot(away, right), 0.5 - 0.5 * Dot(away, up)}};
  };
  // Quads from the first corner on, which an odd number of sides ends with a triangle.
  for (int k = 1; k + 1 < ring.sides; k += 2) {
    mesh.AddQuad(corner(0), corner(k), corner(k + 1), corner(std::min(k + 2, ring.sides - 1)));
  }
}

}  // namespace

void AddGrid(CMeshBuilder& mesh, int columns, int rows, const std::function<SCorner(int column, int row)>& at) {
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      mesh.AddQuad(at(column, row), at(column + 1, row), at(column + 1, row + 1), at(column, row + 1));
    }
  }
}

void AddBox(CMeshBuilder& mesh, const Vector3& low, const Vector3& high) {
  // Corner bits: 1 right, 2 top, 4 front.
  constexpr std::array<std::array<int, 4>, 6> kSides = {
      {{4, 5, 7, 6}, {1, 0, 2, 3}, {5, 1, 3, 7}, {0, 4, 6, 2}, {6, 7, 3, 2}, {0, 1, 5, 4}}};
  const auto corner = [&](int bits) {
    return Vector3{(bits & 1) != 0 ? high[0] : low[0], (bits & 2) != 0 ? high[1] : low[1],
                   (bits & 4) != 0 ? high[2] : low[2]};
  };
  for (const auto& side : kSides) {
    mesh.AddQuad({corner(side[0]), {0, 1}}, {corner(side[1]), {1, 1}}, {corner(side[2]), {1, 0}},
                 {corner(side[3]), {0, 0}});
  }
}

void AddTube(CMeshBuilder& mesh, const Vector3& from, const Vector3& to, double radius, int sides, ECaps caps) {
  AddStump(mesh, from, to, radius, radius, sides, caps);
}

void AddStump(CMeshBuilder& mesh, const Vector3& from, const Vector3& to, double from_radius, double to_radius,
              int sides, ECaps caps) {
  const Vector3 axis = Normalized(to - from);
  const SRing start = {from, axis, from_radius, sides};
  const SRing end = {to, axis, to_radius, sides};
  AddGrid(mesh, sides, 1, [&](int column, int row) {
    return SCorner{row == 0 ? start.At(column) : end.At(column),
                   {static_cast<double>(column) / sides, static_cast<double>(row)}};
  });
  if (caps != ECaps::kNone) AddCap(mesh, end, false);
  if (caps == ECaps::kBoth) AddCap(mesh, start, true);
}

void AddDisc(CMeshBuilder& mesh, const Vector3& center, const Vector3& normal, double radius, int sides) {
  AddCap(mesh, {center, Normalized(normal), radius, sides}, false);
}

}  // namespace veldra::samples
