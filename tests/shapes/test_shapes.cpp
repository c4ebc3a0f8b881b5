#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <tuple>

#include "shapes/shape.h"

namespace veldra {
namespace {

using Face = SShapeMesh::SFace;

struct SWide {
  int64_t x, y, z;
};

const SPoint& At(const SShapeMesh& mesh, const Face& face, size_t k) {
  return mesh.points[static_cast<size_t>(face.corners[k % face.count])];
}

SWide Difference(const SPoint& a, const SPoint& b) {
  return {int64_t{a.x} - b.x, int64_t{a.y} - b.y, int64_t{a.z} - b.z};
}

SWide Cross(const SWide& a, const SWide& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

int64_t Dot(const SWide& a, const SWide& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Exact for the sizes used here.
SWide Normal(const SShapeMesh& mesh, const Face& face, size_t k = 1) {
  return Cross(Difference(At(mesh, face, k), At(mesh, face, k + face.count - 1)),
               Difference(At(mesh, face, k + 1), At(mesh, face, k)));
}

/// Every edge once in each direction.
std::string OpenEdge(const SShapeMesh& mesh) {
  std::map<std::pair<int32_t, int32_t>, int> edges;
  for (const Face& face : mesh.faces)
    for (size_t k = 0; k < face.count; ++k)
      ++edges[{face.corners[k], face.corners[(k + 1) % face.count]}];
  for (const auto& [edge, count] : edges) {
    const auto back = edges.find({edge.second, edge.first});
    if (count != 1 || back == edges.end())
      return std::to_string(edge.first) + " to " + std::to_string(edge.second) + ", " + std::to_string(count) +
             " times";
  }
  return "";
}

/// Of the tetrahedra from the box's corner; six times the volume.
int64_t Volume(const SShapeMesh& mesh) {
  int64_t volume = 0;
  const SPoint from = mesh.points.front();
  for (const Face& face : mesh.faces)
    for (size_t k = 1; k + 1 < face.count; ++k)
      volume += Dot(Cross(Difference(At(mesh, face, 0), from), Difference(At(mesh, face, k), from)),
                    Difference(At(mesh, face, k + 1), from));
  return volume;
}

void ExpectFlatConvexFaces(const SShapeMesh& mesh) {
  for (const Face& face : mesh.faces) {
    const SWide normal = Normal(mesh, face);
    for (size_t k = 0; k < face.count; ++k) {
      ASSERT_GT(Dot(normal, Normal(mesh, face, k + face.count)), 0) << "a corner without area, or one that turns back";
      ASSERT_EQ(Dot(normal, Difference(At(mesh, face, k), At(mesh, face, 0))), 0) << "bent";
      ASSERT_TRUE(face.coords[k].u >= 0 && face.coords[k].u <= 1 && face.coords[k].v >= 0 && face.coords[k].v <= 1);
    }
  }
}

/// Each face of a convex solid looks away from the mean of the corners.
bool LooksOutward(const SShapeMesh& mesh) {
  const auto count = static_cast<int64_t>(mesh.points.size());
  SWide sum = {0, 0, 0};
  for (const SPoint& p : mesh.points)
    sum = {sum.x + p.x, sum.y + p.y, sum.z + p.z};
  return std::ranges::all_of(mesh.faces, [&](const Face& face) {
    const SPoint& at = At(mesh, face, 0);
    return Dot(Normal(mesh, face), {count * at.x - sum.x, count * at.y - sum.y, count * at.z - sum.z}) > 0;
  });
}

void ExpectPointsOfTheirOwn(const SShapeMesh& mesh, const SShape& shape) {
  std::set<std::tuple<int32_t, int32_t, int32_t>> places;
  std::set<int32_t> used;
  for (const SPoint& p : mesh.points)
    EXPECT_TRUE(places.insert({p.x, p.y, p.z}).second) << "two in one place";
  for (const Face& face : mesh.faces)
    used.insert(face.corners.begin(), face.corners.begin() + static_cast<std::ptrdiff_t>(face.count));
  EXPECT_EQ(used.size(), mesh.points.size());
  const auto expect_side = [&](int32_t SPoint::*axis) {
    const auto [low, high] = std::ranges::minmax(mesh.points, {}, axis);
    const bool has_side = axis != &SPoint::y || !KindOf(shape.kind).is_flat;
    EXPECT_EQ(int64_t{high.*axis} - low.*axis, has_side ? shape.size.*axis : 0);
    EXPECT_LE(std::abs(int64_t{high.*axis} + low.*axis - 2 * int64_t{shape.middle.*axis}), 1);
  };
  expect_side(&SPoint::x);
  expect_side(&SPoint::y);
  expect_side(&SPoint::z);
}

TEST(Shapes, AreWhatTheyPromiseAtAnySize) {
  std::mt19937 random(7);
  const auto number = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
  std::map<EShape, int> built;
  for (int round = 0; round < 3000; ++round) {
    SShape shape;
    shape.kind = ShapeKinds()[static_cast<size_t>(number(0, 12))].shape;
    const int largest = 1 << number(2, 15);
    shape.size = {number(1, largest), number(1, largest), number(1, largest)};
    shape.middle = {number(-500, 500), number(-500, 500), number(-500, 500)};
    const int most = 1 << number(2, 8);
    if (number(0, 3) != 0) shape.sides = number(kFewestSides, std::max(most, 3));
    if (number(0, 3) != 0) shape.rings = number(kFewestRings, std::max(most / 2, 3));
    shape.solid = kPolyhedronSides[static_cast<size_t>(number(0, 4))];
    shape.hole = number(5, 95) / 100.0;
    const bool is_tilted = round % 4 == 0;
    if (is_tilted) shape.tilt = {round % 360 * 1.0, round % 77 * 5.0, round % 5 * 45.0};
    SCOPED_TRACE(std::string(KindOf(shape.kind).name) + " " + std::to_string(shape.size.x) + "," +
                 std::to_string(shape.size.y) + "," + std::to_string(shape.size.z) + " sides " +
                 std::to_string(shape.sides.value_or(0)) + " rings " + std::to_string(shape.rings.value_or(0)) +
                 " solid " + std::to_string(shape.solid));
    SShapeMesh mesh;
    if (!MakeShape(shape, mesh).empty()) continue;
    ++built[shape.kind];
    if (!is_tilted) ExpectPointsOfTheirOwn(mesh, shape);
    ExpectFlatConvexFaces(mesh);
    if (KindOf(shape.kind).is_flat) {
      EXPECT_TRUE(is_tilted ||
                  std::ranges::all_of(mesh.faces, [&](const Face& face) { return Normal(mesh, face).y > 0; }));
    } else {
      EXPECT_EQ(OpenEdge(mesh), "");
      EXPECT_GT(Volume(mesh), 0);
    }
    if (is_tilted) continue;
    if (shape.kind == EShape::kPyramid || shape.kind == EShape::kSphere || shape.kind == EShape::kPolyhedron ||
        shape.kind == EShape::kCylinder || shape.kind == EShape::kCone) {
      EXPECT_TRUE(LooksOutward(mesh));
    }
    if (HasFailure()) return;
  }
  for (const SShapeKind& kind : ShapeKinds())
    EXPECT_GT(built[kind.shape], 40) << kind.name;
}

TEST(Shapes, HaveTheCornersAndFacesOfTheirKind) {
  const struct {
    SShape shape;
    size_t points, faces;
  } cases[] = {
      {{.kind = EShape::kTriangle}, 3, 1},
      {{.kind = EShape::kSquare}, 4, 1},
      {{.kind = EShape::kPolygon}, 6, 2},
      {{.kind = EShape::kSquare, .two_sided = true}, 4, 2},
      {{.kind = EShape::kCube}, 8, 6},
      {{.kind = EShape::kPyramid}, 5, 5},
      {{.kind = EShape::kPolyhedron, .solid = 4}, 4, 4},
      {{.kind = EShape::kPolyhedron, .solid = 6}, 8, 6},
      {{.kind = EShape::kPolyhedron, .solid = 8}, 6, 8},
      {{.kind = EShape::kPolyhedron}, 12, 20},
      {{.kind = EShape::kRamp}, 6, 5},
  };
  for (const auto& c : cases) {
    SShapeMesh mesh;
    EXPECT_EQ(MakeShape(c.shape, mesh), "");
    EXPECT_EQ(mesh.points.size(), c.points) << KindOf(c.shape.kind).name << c.shape.solid;
    EXPECT_EQ(mesh.faces.size(), c.faces) << KindOf(c.shape.kind).name << c.shape.solid;
  }
  SShapeMesh mesh;
  EXPECT_EQ(MakeShape({.kind = EShape::kSphere, .sides = 5, .rings = 4}, mesh), "");
  EXPECT_EQ(mesh.points.size(), 17U);
  EXPECT_EQ(MakeShape({.kind = EShape::kPolyhedron, .solid = 12}, mesh), "");
  EXPECT_EQ(mesh.points.size(), 20U);
}

TEST(Shapes, TiltLikeModelsTurn) {
  SShapeMesh mesh;
  ASSERT_EQ(MakeShape({.kind = EShape::kRamp, .size = {10, 20, 40}, .middle = {100, 0, 0}, .tilt = {90, 0, 90}}, mesh),
            "");
  // X is where -Z was, which is where Y was; the middle stays.
  const auto side = [&](int32_t SPoint::*axis) {
    const auto [low, high] = std::ranges::minmax(mesh.points, {}, axis);
    return std::pair{low.*axis, high.*axis};
  };
  EXPECT_EQ(side(&SPoint::x), std::pair(80, 120));
  EXPECT_EQ(side(&SPoint::y), std::pair(-5, 5));
  EXPECT_EQ(side(&SPoint::z), std::pair(-10, 10));
}

TEST(Shapes, LayTheWholeTextureOverEachSideOfACube) {
  SShapeMesh mesh;
  ASSERT_EQ(MakeShape({.size = {30, 40, 50}}, mesh), "");
  for (const Face& face : mesh.faces) {
    const SWide normal = Normal(mesh, face);
    for (size_t k = 0; k < 4; ++k) {
      const SPoint& at = At(mesh, face, k);
      const double u = normal.x > 0   ? 1 - (at.z + 25) / 50.0
                       : normal.x < 0 ? (at.z + 25) / 50.0
                       : normal.z < 0 ? 1 - (at.x + 15) / 30.0
                                      : (at.x + 15) / 30.0;
      const double v = normal.y > 0   ? (at.z + 25) / 50.0
                       : normal.y < 0 ? 1 - (at.z + 25) / 50.0
                                      : 1 - (at.y + 20) / 40.0;
      EXPECT_NEAR(face.coords[k].u, u, 1e-9);
      EXPECT_NEAR(face.coords[k].v, v, 1e-9);
    }
  }
}

TEST(Shapes, ASphereIsWrappedOnceWithItsSeamBehind) {
  SShapeMesh mesh;
  ASSERT_EQ(MakeShape({.kind = EShape::kSphere, .size = {1000, 1000, 1000}}, mesh), "");
  for (const Face& face : mesh.faces) {
    const auto [low, high] =
        std::minmax_element(face.coords.begin(), face.coords.begin() + static_cast<std::ptrdiff_t>(face.count),
                            [](const STexCoord& a, const STexCoord& b) { return a.u < b.u; });
    EXPECT_LE(high->u - low->u, 1.0 / 16 + 1e-9) << "no face runs back over the whole texture";
    for (size_t k = 0; k < face.count; ++k) {
      if (face.coords[k].u == 0.0 || face.coords[k].u == 1.0) {
        EXPECT_LT(At(mesh, face, k).z, 0);
      }
    }
  }
}

TEST(Shapes, AreRefusedWhereTheyWouldLoseTheirForm) {
  const struct {
    SShape shape;
    const char* text;
  } cases[] = {
      {{.kind = EShape::kSphere, .size = {8, 8, 8}, .sides = 64}, "would fall together"},
      {{.size = {0, 10, 10}}, "would fall together"},
      {{.size = {2000000000, 10, 10}, .middle = {2000000000, 0, 0}}, "32 bits"},
      {{.kind = EShape::kTorus, .rings = 2}, "at least 3 rings"},
  };
  for (const auto& c : cases) {
    SShapeMesh mesh;
    EXPECT_NE(MakeShape(c.shape, mesh).find(c.text), std::string::npos) << c.text;
  }
  SShapeMesh mesh;
  EXPECT_EQ(MakeShape({.kind = EShape::kSquare, .size = {10, 0, 10}}, mesh), "") << "a flat shape has no height";
}

TEST(Shapes, BecomeGroupsWithNamesOfTheirOwn) {
  CBinModel model;
  SShapeMesh mesh;
  ASSERT_EQ(MakeShape({}, mesh), "");
  AddShape(model, mesh, kFaceUntextured, nullptr, "cube");
  AddShape(model, mesh, kFaceUntextured, nullptr, "cube");
  EXPECT_EQ(model.CheckInvariants(), "");
  ASSERT_EQ(model.FaceGroups().size(), 2U);
  EXPECT_EQ(model.FaceGroups()[1].Name(), "cube 2");
  EXPECT_EQ(model.VertexGroups()[1].Members().front(), 8);
  EXPECT_EQ(model.FaceGroups()[1].Members().back(), 11);
}

}  // namespace
}  // namespace veldra
