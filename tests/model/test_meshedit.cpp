#include "model/meshedit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>

#include "model/flatten.h"
#include "modelbuilder.h"

namespace veldra::testing {
namespace {

/// A cube of 20 a side about the origin. Faces 0 and 1 are the top and the bottom, 2 looks along z.
class MeshEdit : public ::testing::Test {
 protected:
  MeshEdit() {
    for (const int32_t y : {-10, 10})
      built_.Vertices({{-10, y, 10}, {10, y, 10}, {10, y, -10}, {-10, y, -10}});
    CBinTexture& texture = built_.Plain("T.RAW");
    for (const auto& corners : std::vector<std::vector<int32_t>>{
             {4, 5, 6, 7}, {3, 2, 1, 0}, {0, 1, 5, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}}) {
      CBinFace& face = built_.Face(corners, &texture);
      const STexCoord coords[] = {{0.25, 0.75}, {0.75, 0.75}, {0.75, 0.25}, {0.25, 0.25}};
      for (int k = 0; k < 4; ++k)
        face.SetTexCoord(k, coords[k]);
    }
  }
  Vector3 At(const CBinFace& face, int k) const { return ToVector(face.Corner(k)->Position()); }
  double Volume() const {
    double sum = 0.0;
    for (int32_t i = 0; i < model_.FaceCount(); ++i) {
      const CBinFace& face = model_.Face(i);
      for (int k = 2; k < face.CornerCount(); ++k)
        sum += Dot(At(face, 0), Cross(At(face, k - 1), At(face, k)));
    }
    return sum / 6.0;  // at the end: until then they are whole numbers
  }
  /// How many edges no other face runs back over.
  size_t OpenEdges() const {
    std::multiset<std::pair<int32_t, int32_t>> edges;
    for (int32_t i = 0; i < model_.FaceCount(); ++i) {
      const std::vector<int32_t> corners = built_.Corners(i);
      for (size_t k = 0; k < corners.size(); ++k)
        edges.insert({corners[k], corners[(k + 1) % corners.size()]});
    }
    return static_cast<size_t>(std::ranges::count_if(edges, [&](const auto& edge) {
      return !edges.contains({edge.second, edge.first});
    }));
  }
  void ExpectWhole(double volume, int32_t vertices, int32_t faces, size_t open = 0) const {
    EXPECT_EQ(model_.CheckInvariants(), "");
    EXPECT_DOUBLE_EQ(Volume(), volume);
    EXPECT_EQ(model_.VertexCount(), vertices);
    EXPECT_EQ(model_.FaceCount(), faces);
    EXPECT_EQ(OpenEdges(), open);
  }

  CModelBuilder built_;
  CBinModel& model_ = built_.model;
};

constexpr double kVolume = 8000;

TEST_F(MeshEdit, ExtrudesWithSidesAndStaysClosed) {
  EXPECT_EQ(ExtrudeFaces(model_, std::vector{0}, 5), "");
  ExpectWhole(kVolume + 20 * 20 * 5, 12, 10);
  const CBinFace& side = model_.Face(6);  // a quarter as high as long: so much of the texture, too
  EXPECT_EQ(side.Texture(), model_.Face(0).Texture());
  EXPECT_EQ(side.TexCoord(0), (STexCoord{0.25, 0.875}));
  EXPECT_EQ(side.TexCoord(3), (STexCoord{0.25, 0.75}));
  EXPECT_EQ(ExtrudeFaces(model_, std::vector{0}, -5), "");
  EXPECT_DOUBLE_EQ(Volume(), kVolume);
  EXPECT_NE(ExtrudeFaces(model_, std::vector{0}, 3e9), "");
  ExpectWhole(kVolume, 16, 14);
}

TEST_F(MeshEdit, FacesThatShareAnEdgeAreExtrudedTogether) {
  EXPECT_EQ(ExtrudeFaces(model_, std::vector{0, 2}, 10), "");
  // The edge between them goes out by the diagonal; six edges are closed.
  ExpectWhole(kVolume + 2 * 20 * 20 * 10 + 20 * 10 * 10, 14, 12);
  EXPECT_EQ(ExtrudeFaces(model_, std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, 0), "");
  EXPECT_EQ(model_.VertexCount(), 14);  // nothing was open, nothing is copied
}

TEST_F(MeshEdit, DetachedAndCopiedFacesHaveTheirOwnVertices) {
  EXPECT_EQ(DetachFaces(model_, std::vector{0}), 4);
  EXPECT_EQ(DetachFaces(model_, std::vector{0}), 0);
  ExpectWhole(kVolume, 12, 6, 8);
  DuplicateFaces(model_, std::vector{0, 1, 2, 3, 4, 5}, {});
  ExpectWhole(2 * kVolume, 24, 12, 16);
  TranslateVertices(model_, VerticesInScope(model_, SScope::All()), 50, 0, 0, true);
  DuplicateFaces(model_, std::vector{0}, EAxis::kX);
  EXPECT_EQ(model_.Bounds().min.x, -60);
  EXPECT_DOUBLE_EQ(Volume(), 2 * kVolume + 20 * 20 * 10 / 3.0);  // it looks outward: its share of a volume is positive
}

TEST_F(MeshEdit, SplitsAndJoins) {
  EXPECT_EQ(SplitEdge(model_, 0, 0), 8);
  EXPECT_EQ(model_.Vertex(8).Position(), (SPoint{0, 10, 10}));
  ExpectWhole(kVolume, 9, 8);
  EXPECT_EQ(model_.Face(0).TexCoord(1), (STexCoord{0.5, 0.75}));
  std::vector<int32_t> all = {0, 1, 2, 3, 4, 5, 6, 7};
  EXPECT_EQ(SplitQuads(model_, all), 6);
  ExpectWhole(kVolume, 9, 14);
  all.clear();
  for (int32_t i = 0; i < model_.FaceCount(); ++i)
    all.push_back(i);
  EXPECT_GE(JoinTriangles(model_, all), 4);
  EXPECT_EQ(OpenEdges(), 0U);
  EXPECT_DOUBLE_EQ(Volume(), kVolume);
  model_.SetVertexPositions(std::vector{0, 1}, std::vector<SPoint>{{0, 0, 0}, {1, 0, 0}});
  EXPECT_EQ(SplitEdge(model_, 1, 0), -1);
}

constexpr SUnitNormal kFront = {0, 0, 1};

TEST_F(MeshEdit, BridgesRowsAndFillsHoles) {
  model_.RemoveFaces(0, 1);
  ExpectWhole(kVolume - 20 * 20 * 10 / 3.0, 8, 5, 4);
  EXPECT_EQ(BridgeVertices(model_, std::vector{4, 5, 6, 7}, kFront), "");
  ExpectWhole(kVolume, 8, 6);
  // Another cube beside it; the walls between them make room for a tube.
  DuplicateFaces(model_, std::vector{0, 1, 2, 3, 4, 5}, {});
  TranslateVertices(model_, std::vector{8, 9, 10, 11, 12, 13, 14, 15}, 50, 0, 0, true);
  std::vector<int32_t> walls;
  std::vector<int32_t> corners;
  for (int32_t i = 0; i < model_.FaceCount(); ++i) {
    const int32_t x = i < 6 ? 10 : 40;
    if (std::ranges::all_of(model_.Face(i).Corners(), [&](const auto* at) { return at->Position().x == x; }))
      walls.push_back(i);
  }
  for (const int32_t wall : walls)
    std::ranges::copy(built_.Corners(wall), std::back_inserter(corners));
  std::ranges::sort(corners);
  model_.RemoveFaces(walls);
  EXPECT_EQ(BridgeVertices(model_, corners, {0, 0, -1}), "");
  ExpectWhole(2 * kVolume + 30 * 20 * 20, 16, 14);

  for (const auto& row : std::vector<std::vector<int32_t>>{{0, 1, 2}, {0, 2, 5, 7}, {0, 1, 4, 5}, {0, 1, 2, 3, 8, 9}})
    EXPECT_NE(BridgeVertices(model_, row, kFront), "") << row.back();
  EXPECT_EQ(model_.FaceCount(), 14);
}

TEST_F(MeshEdit, TunnelsThroughABlockAndBetweenTwo) {
  const auto walls_at = [&](int32_t a, int32_t b) {
    std::vector<int32_t> walls;
    for (int32_t i = 0; i < model_.FaceCount(); ++i)
      for (const int32_t x : {a, b})
        if (std::ranges::all_of(model_.Face(i).Corners(), [&](const auto* at) { return at->Position().x == x; }))
          walls.push_back(i);
    return walls;
  };
  for (const auto& faces : std::vector<std::vector<int32_t>>{{0}, {0, 1}, walls_at(-10, 10)})
    EXPECT_NE(TunnelFaces(model_, faces, kFront), "") << "one wall, or what is between is there";
  model_.RemoveFaces(std::vector{0, 1, 2, 4});
  EXPECT_EQ(TunnelFaces(model_, walls_at(-10, 10), kFront), "");
  ExpectWhole(kVolume * 2 / 3, 8, 4, 8);  // a tube that can be seen from outside
  EXPECT_EQ(BridgeVertices(model_, std::vector{1, 2, 5, 6}, kFront), "");
  EXPECT_EQ(BridgeVertices(model_, std::vector{0, 3, 4, 7}, kFront), "");
  DuplicateFaces(model_, std::vector{0, 1, 2, 3, 4, 5}, {});
  TranslateVertices(model_, std::vector{8, 9, 10, 11, 12, 13, 14, 15}, 50, 0, 0, true);
  SplitQuads(model_, walls_at(10, 40));
  EXPECT_EQ(TunnelFaces(model_, walls_at(10, 40), {0, 0, -1}), "");
  ExpectWhole(2 * kVolume + 30 * 20 * 20, 16, 14);
  EXPECT_EQ(TunnelFaces(model_, walls_at(-10, 60), kFront), "");
  ExpectWhole(0, 16, 16);  // as wide as the block: it leaves nothing of it
}

TEST_F(MeshEdit, ABridgeGoesOnWithTheTextureOnBothSides) {
  const struct {
    double left, right;  // the texture at the edges of the gap
    double wanted;       // at the far one
    SUnitNormal viewer = kFront;
  } cases[] = {{0.25, 0.5, 0.5}, {0.25, 0.25, 0.5}, {0.75, 0.75, 1.0}, {0.25, 0.5, 0.5, {0, 0, -1}}};
  for (const auto& row : cases) {
    CModelBuilder strip;
    for (const int32_t x : {0, 10, 20, 30})
      strip.Vertices({{x, 0, 0}, {x, 10, 0}});
    CBinTexture& texture = strip.Plain("T.RAW");
    for (const int32_t first : {0, 4}) {
      CBinFace& face = strip.Face({first, first + 2, first + 3, first + 1}, &texture);
      const double from = first == 0 ? row.left - 0.25 : row.right;
      for (int k = 0; k < 4; ++k)
        face.SetTexCoord(k, {from + (k == 1 || k == 2 ? 0.25 : 0.0), k < 2 ? 0.25 : 0.0});
    }
    EXPECT_EQ(BridgeFaces(strip.model, 0, 1, row.viewer), "");
    ASSERT_EQ(strip.model.FaceCount(), 3);
    EXPECT_EQ(strip.Corners(2), (std::vector{4, 5, 3, 2})) << "as its neighbours look";
    for (int k = 0; k < 4; ++k)
      EXPECT_NEAR(strip.model.Face(2).TexCoord(k).u, k < 2 ? row.wanted : row.left, 1e-9) << row.left << ' ' << k;
    EXPECT_NE(BridgeFaces(strip.model, 0, 2, row.viewer), "") << "an edge in common";
  }
}

TEST_F(MeshEdit, FlattensToTheBestPlaneAndToThatOfAFace) {
  const struct {
    std::vector<SPoint> before;
    Vector3 normal;
    std::vector<SPoint> after;
  } cases[] = {
      {{{0, 0, 1}, {10, 0, -1}, {10, 10, 1}, {0, 10, -1}}, {0, 0, 1}, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}},
      {{{0, 0, 0}, {20, 20, 0}, {20, 20, 50}, {0, 0, 50}},
       {1, -1, 0},
       {{0, 0, 0}, {20, 20, 0}, {20, 20, 50}, {0, 0, 50}}},
      {{{0, 2, 0}, {20, 18, 0}, {20, 22, 50}, {0, -2, 50}},
       {1, -1, 0},
       {{1, 1, 0}, {19, 19, 0}, {21, 21, 50}, {-1, -1, 50}}},
  };
  const std::vector four = {0, 1, 2, 3};
  std::vector<SPoint> found;
  for (const auto& row : cases) {
    model_.SetVertexPositions(four, row.before);
    const SPlane plane = FittingPlane(model_, four);
    EXPECT_NEAR(std::abs(Dot(plane.normal, Normalized(row.normal))), 1, 0.02) << &row - cases;
    EXPECT_EQ(PositionsInPlane(model_, four, plane, found), "");
    for (size_t k = 0; k < found.size(); ++k)
      EXPECT_LE(Length(ToVector(found[k]) - ToVector(row.after[k])), &row - cases < 2 ? 0.0 : 2.0) << k;
  }
  EXPECT_EQ(PositionsInPlane(model_, four, PlaneOf(model_.Face(0)).value(), found), "");
  for (const SPoint& at : found)
    EXPECT_EQ(at.y, 10);
  EXPECT_NE(PositionsInPlane(model_, four, {.point = {3e9, 0, 0}, .normal = {1, 0, 0}}, found), "");
}

TEST_F(MeshEdit, OrdersTowardTheViewerAndSnaps) {
  const struct {
    std::vector<int32_t> vertices;
    SUnitNormal viewer;
    std::vector<int32_t> ordered;  // from any of them
  } cases[] = {
      {{0, 1, 4, 5}, {0, 0, 1}, {0, 1, 5, 4}},
      {{0, 1, 4, 5}, {0, 0, -1}, {0, 4, 5, 1}},
      {{5, 6, 7}, {0, 1, 0}, {5, 6, 7}},
      {{0, 1, 4, 5}, {0, 1, 0}, {}},  // seen from its side
  };
  for (const auto& row : cases) {
    std::vector<int32_t> found = OrderedToward(model_, row.vertices, row.viewer);
    if (!found.empty()) std::ranges::rotate(found, std::ranges::find(found, row.vertices.front()));
    EXPECT_EQ(found, row.ordered);
  }
  const struct {
    std::vector<int32_t> clicked, corners;
  } clicks[] = {{{1, 5, 4, 0}, {1, 5, 4, 0}}, {{5, 1, 0, 4}, {5, 4, 0, 1}}, {{0, 5, 1, 4}, {}}, {{4, 1, 0}, {4, 0, 1}}};
  for (const auto& row : clicks)
    EXPECT_EQ(TurnedToward(model_, row.clicked, kFront), row.corners);
  EXPECT_EQ(SnapToGrid(model_, std::vector{0, 1, 2}, 8), 3);
  EXPECT_EQ(model_.Vertex(0).Position(), (SPoint{-8, -8, 8}));
  EXPECT_EQ(SnapToGrid(model_, std::vector{0, 1, 2}, 8), 0);
}

}  // namespace
}  // namespace veldra::testing
