#include <gmock/gmock.h>

#include "editfixture.h"

namespace veldra::testing {

using ::testing::ElementsAre;

class EditCursor : public CEditTest {};

TEST_F(EditCursor, CyclesInBothDirectionsAndRoundTheEnds) {
  Select(EGroupKind::kFaces, {0, 2});
  Select(EGroupKind::kVertices, {5});
  const auto walk = [&](auto step, auto place) {
    std::vector<int32_t> places;
    for (int i = 0; i < 4; ++i) {
      step();
      places.push_back(place());
    }
    cursor.SetFace(-1);
    cursor.SetVertex(-1);
    return places;
  };
  const auto face = [&] { return cursor.Face(); };
  const auto vertex = [&] { return cursor.Vertex(); };
  EXPECT_THAT(walk([&] { cursor.CycleFaces(true); }, face), ElementsAre(0, 1, 2, 0));
  EXPECT_THAT(walk([&] { cursor.CycleFaces(false); }, face), ElementsAre(2, 1, 0, 2));
  EXPECT_THAT(walk([&] { cursor.CycleSelectedFaces(true); }, face), ElementsAre(0, 2, 0, 2));
  EXPECT_THAT(walk([&] { cursor.CycleVertices(false); }, vertex), ElementsAre(6, 5, 4, 3));
  EXPECT_THAT(walk([&] { cursor.CycleSelectedVertices(true); }, vertex), ElementsAre(5, 5, 5, 5));
  EXPECT_THAT(walk([&] { cursor.CycleCorners(true); }, vertex), ElementsAre(-1, -1, -1, -1)) << "no current face";
}

TEST_F(EditCursor, TheCornerIsWhereTheCurrentVertexIsInTheCurrentFace) {
  cursor.SetFace(1);
  cursor.SetVertex(0);
  EXPECT_EQ(cursor.Corner(), -1);
  cursor.CycleCorners(true);
  EXPECT_EQ(cursor.Vertex(), 1);
  cursor.CycleCorners(false);
  EXPECT_EQ(cursor.Corner(), 2);
  cursor.FirstCorner();
  EXPECT_EQ(cursor.Vertex(), 1);
  cursor.LastCorner();
  EXPECT_EQ(cursor.Vertex(), 2);
  cursor.SetFace(0);
  EXPECT_EQ(cursor.Corner(), 2);
}

TEST_F(EditCursor, TagsAtMostFourInOrder) {
  for (const int32_t vertex : {3, 1, 6, 0})
    EXPECT_TRUE(cursor.ToggleTag(vertex));
  EXPECT_FALSE(cursor.ToggleTag(2));
  EXPECT_TRUE(cursor.ToggleTag(1));
  EXPECT_THAT(cursor.Tagged(), ElementsAre(3, 6, 0));
}

TEST_F(EditCursor, FollowsWhatItPointsAtThroughChanges) {
  int changes = 0;
  cursor.SetFace(2);
  cursor.SetVertex(6);
  for (const int32_t vertex : {6, 2})
    cursor.ToggleTag(vertex);
  cursor.SetOnChanged([&] { ++changes; });

  model.RemoveFaces(0, 1);
  EXPECT_EQ(cursor.Face(), 1) << "the same face, one lower";
  EXPECT_EQ(changes, 1);
  CBinModel::Vertices vertices;
  vertices.push_back(std::make_unique<CBinVertex>(model, SPoint{}));
  model.InsertVertices(std::move(vertices), 0);
  EXPECT_EQ(cursor.Vertex(), 7);
  EXPECT_THAT(cursor.Tagged(), ElementsAre(7, 3));
  ASSERT_TRUE(model.DeleteVertices(7, 1, questions));
  EXPECT_EQ(cursor.Vertex(), 6) << "gone: the last takes its place";
  EXPECT_THAT(cursor.Tagged(), ElementsAre(3));
  model.RemoveFaces(0, 2);
  EXPECT_EQ(cursor.Face(), -1);
  model.Clear();
  EXPECT_EQ(cursor.Vertex(), -1);
  EXPECT_THAT(cursor.Tagged(), ElementsAre());
}

}  // namespace veldra::testing
