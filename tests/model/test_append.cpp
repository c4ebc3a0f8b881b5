#include <gtest/gtest.h>

#include <limits>

#include "model/appendmodel.h"
#include "model/modelbuilder.h"
#include "model/normals.h"

namespace veldra {
namespace {

using testing::CModelBuilder;
using Indices = std::vector<int32_t>;

void FillTruck(CModelBuilder& b) {
  b.Vertices({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 5}});
  CBinTexture& road = b.Plain("ROAD.RAW");
  b.Face({0, 1, 2}, &road).SetStored({1, 2, 3}, 77);
  b.Face({0, 1, 2, 3}, &b.Animated("FLAG", {"F1.RAW", "F2.RAW"}, 8.0));
  b.Face({1, 2, 3});
  b.model.AddGroup(EGroupKind::kFaces, "hood", Indices{2, 0});
  b.model.AddGroup(EGroupKind::kVertices, "axle", Indices{3});
}

TEST(Append, ItsCopyDoublesTheModel) {
  CModelBuilder a;
  CModelBuilder b;
  FillTruck(a);
  FillTruck(b);
  a.TakeReports();
  ASSERT_TRUE(AppendModel(a.model, b.model, false));

  EXPECT_EQ(a.model.CheckInvariants(), "");
  ASSERT_EQ(a.model.FaceCount(), 6);
  EXPECT_EQ(b.model.VertexCount() + b.model.FaceCount() + b.model.TextureCount(), 0);
  EXPECT_EQ(a.Corners(3), (Indices{4, 5, 6}));
  EXPECT_EQ(a.Corners(4), (Indices{4, 5, 6, 7}));
  EXPECT_EQ(a.model.Face(3).StoredMagic(), 77);
  ASSERT_EQ(a.model.TextureCount(), 2);
  EXPECT_EQ(a.model.Face(4).Texture(), a.model.Face(1).Texture());
  EXPECT_EQ(a.model.Face(5).Texture(), nullptr);
  const CBinGroup* const hood = a.model.FindGroup(EGroupKind::kFaces, "hood 2");
  ASSERT_NE(hood, nullptr);
  EXPECT_EQ(hood->Members(), (Indices{5, 3}));
  const CBinGroup* const axle = a.model.FindGroup(EGroupKind::kVertices, "axle 2");
  ASSERT_NE(axle, nullptr);
  EXPECT_EQ(axle->Members(), (Indices{7}));
  EXPECT_EQ(a.TakeReports().size(), 1U);
}

TEST(Append, MagicIsRecomputedOnDemandOnly) {
  CModelBuilder a;
  CModelBuilder b;
  FillTruck(b);
  b.model.SetVertexPosition(0, {0, 0, 9});
  const int32_t expected = CalcMagic(b.model.Face(0));
  ASSERT_NE(expected, 77);
  ASSERT_TRUE(AppendModel(a.model, b.model, true));
  EXPECT_EQ(a.model.Face(0).StoredMagic(), expected);
  EXPECT_EQ(a.model.Face(0).StoredNormal(), (SPoint{1, 2, 3}));
  EXPECT_EQ(a.model.Bounds(), (SBounds{{0, 0, 0}, {10, 10, 9}}));
}

TEST(Append, AnimationsThatDifferStayApart) {
  CModelBuilder a;
  CModelBuilder b;
  a.Animated("FLAG", {"F1.RAW", "F2.RAW"}, 8.0);
  b.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  b.Face({0, 1, 2}, &b.Animated("FLAG", {"F1.RAW", "F3.RAW"}, 8.0));
  b.Face({0, 1, 2}, &b.Plain("FLAG"));
  ASSERT_TRUE(AppendModel(a.model, b.model, false));
  ASSERT_EQ(a.model.TextureCount(), 3);
  EXPECT_EQ(a.model.Face(0).Texture()->Name(), "FLAG 2");
  EXPECT_EQ(a.model.Face(0).Texture()->Frames()[1].name, "F3.RAW");
  EXPECT_EQ(a.model.Face(1).Texture()->Kind(), ETextureKind::kPlain);
  EXPECT_EQ(a.model.CheckInvariants(), "");
}

}  // namespace
}  // namespace veldra
