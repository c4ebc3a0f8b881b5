#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/modelbuilder.h"
#include "tools/modelsearch.h"

namespace veldra::testing {

using ::testing::ElementsAreArray;

TEST(ModelSearch, FindsByNumberTypeTextureAndGroup) {
  CModelBuilder builder;
  for (int32_t i = 0; i < 30; ++i)
    builder.model.AddVertex({i, i * i, 0});
  CBinTexture& hood = builder.Plain("HOOD18.RAW");
  CBinTexture& tire = builder.Plain("TIRE.RAW");
  builder.Face({0, 1, 2}, &hood);
  builder.Face({1, 2, 3}, &tire).SetType(kFaceShiny);
  builder.Face({2, 3, 4}, &tire);
  builder.Face({3, 4, 5}, nullptr).SetType(kFaceUntextured);
  for (int32_t i = 4; i < 20; ++i)
    builder.Face({i, i + 1, i + 2}, &hood).SetType(kFaceHellbender);
  builder.model.AddGroup(EGroupKind::kFaces, "Left T\xEFre", std::vector<int32_t>{1});
  builder.model.AddGroup(EGroupKind::kVertices, "Tips 18", std::vector<int32_t>{1});

  struct {
    const char* text;
    std::vector<int32_t> faces;
    std::vector<int32_t> vertices;
    std::vector<int32_t> textures;
    std::vector<int32_t> face_groups;
    std::vector<int32_t> vertex_groups;
  } const cases[] = {
      {"18", {18}, {18}, {0}, {}, {0}},     {"29", {}, {29}, {}, {}, {}},        {"  1 1 ", {1}, {1}, {0}, {}, {0}},
      {"1 2", {}, {}, {}, {}, {}},          {"0x18", {0, 2}, {}, {}, {}, {}},    {"sHINY tire", {1}, {}, {}, {}, {}},
      {"tire", {1, 2}, {}, {1}, {}, {}},    {"2 tire", {2}, {}, {}, {}, {}},     {"3 tire", {}, {}, {}, {}, {}},
      {"t\xC3\xAFre", {}, {}, {}, {0}, {}}, {"99999999999", {}, {}, {}, {}, {}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.text);
    const CModelSearch search(row.text);
    EXPECT_FALSE(search.IsEmpty());
    EXPECT_THAT(search.Faces(builder.model), ElementsAreArray(row.faces));
    EXPECT_THAT(search.Vertices(builder.model), ElementsAreArray(row.vertices));
    EXPECT_THAT(search.Textures(builder.model), ElementsAreArray(row.textures));
    EXPECT_THAT(search.Groups(builder.model, EGroupKind::kFaces), ElementsAreArray(row.face_groups));
    EXPECT_THAT(search.Groups(builder.model, EGroupKind::kVertices), ElementsAreArray(row.vertex_groups));
  }
  EXPECT_TRUE(CModelSearch(" \t").IsEmpty());
}

}  // namespace veldra::testing
