#include <gmock/gmock.h>

#include <limits>
#include <set>

#include "render/modelgeometry.h"
#include "render/modeltextures.h"
#include "render/scene.h"

namespace veldra {
namespace {

using ::testing::ElementsAre;
using testing::SScene;

TEST(ModelGeometry, AQuadIsItsFanAndTexturesPointIntoTexels) {
  SScene scene;
  const CBinFace& face = scene.AddWall(scene.Texture({testing::kRed}));
  const CModelSpace space(scene.model.Bounds());
  std::vector<SFaceVertex> vertices;
  AppendFace(face, space, vertices);
  ASSERT_EQ(vertices.size(), 6U);
  const int fan[] = {0, 1, 2, 0, 2, 3};
  for (size_t k = 0; k < 6; ++k) {
    const int corner = fan[k];
    EXPECT_EQ(vertices[k].position, space.Place(face.Corner(corner)->Position()));
    EXPECT_THAT(vertices[k].normal, ElementsAre(0.0F, 0.0F, 1.0F));
    EXPECT_FLOAT_EQ(vertices[k].tex_coord[0], face.TexCoord(corner).u == 0.0 ? 0.5F / 64.0F : 63.5F / 64.0F);
    EXPECT_FLOAT_EQ(vertices[k].tex_coord[1], face.TexCoord(corner).v == 0.0 ? 0.5F / 64.0F : 63.5F / 64.0F);
  }
}

TEST(ModelTextures, TimePicksTheFrame) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  const struct {
    double rate, seconds;
    size_t frame;
  } cases[] = {{2, 0, 0},   {2, 0.49, 0}, {2, 0.5, 1},         {2, 1.0, 2}, {2, 1.5, 0}, {2, 1e15, 2},
               {30, 10, 0}, {0, 5, 0},    {kInfinite, 0.0, 0}, {-2, 5, 0},  {2, -1, 0}};
  SScene scene;
  for (const auto& row : cases) {
    const CBinTexture* entry = scene.Animation({testing::kRed, testing::kGreen, testing::kBlue}, row.rate);
    const STextureImage* shown = &FrameAt(*entry, row.seconds);
    size_t frame = 0;
    while (frame < 3 && entry->Frames()[frame].image != shown)
      ++frame;
    EXPECT_EQ(frame, row.frame) << row.rate << " after " << row.seconds;
  }
  const CBinTexture* plain = scene.Texture({testing::kRed});
  EXPECT_EQ(&FrameAt(*plain, 3.0), plain->Image());
}

}  // namespace
}  // namespace veldra
