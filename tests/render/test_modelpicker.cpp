#include "render/modelpicker.h"

#include <gmock/gmock.h>

#include <limits>

#include "render/glfixture.h"

namespace veldra::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr int kPickSide = 200;
const SPick kNothing = {EGroupKind::kFaces, -1};

SPick Face(int32_t index) {
  return {EGroupKind::kFaces, index};
}

SPick Vertex(int32_t index) {
  return {EGroupKind::kVertices, index};
}

class ModelPicker : public CGlTest {
 protected:
  ModelPicker() : CGlTest(kPickSide) {}
  CViewCamera Camera() const { return {state_, scene_.model.Bounds(), kPickSide, kPickSide}; }
  SPick At(int x, int y) {
    const auto pick = picker_.Pick(scene_.model, state_, Camera(), 1.0, x, y);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    return pick.value_or(kNothing);
  }
  /// What is picked where vertex INDEX of the model is seen, and RIGHT of it.
  SPick AtVertex(int32_t index, int right = 0) {
    const SScreenPoint at = Camera().Project(scene_.model.Vertex(index).Position());
    return At(static_cast<int>(at.x) + right, static_cast<int>(at.y));
  }
  std::vector<int32_t> In(EGroupKind kind, const SPixels& rectangle) {
    return picker_.PickRectangle(scene_.model, state_, Camera(), kind, rectangle);
  }
  /// The picture's middle half is the front wall, which hides half of the large back wall.
  void AddTwoWalls() {
    scene_.AddWall(nullptr, kFaceUntextured);
    scene_.AddQuad({{-100, -300, -100}, {300, -300, -100}, {300, 300, -100}, {-100, 300, -100}}, nullptr,
                   kFaceUntextured);
    state_ = WallState();
    state_.center = {0.0, 0.0, 0.0};
    state_.mode = ERenderMode::kSolid;
  }

  SScene scene_;
  SViewState state_;
  CModelPicker picker_;
};

TEST_F(ModelPicker, TheFrontMostFaceAndOnlyMarkedVerticesThatShow) {
  AddTwoWalls();
  EXPECT_EQ(At(100, 100), Face(0));
  EXPECT_EQ(At(180, 100), Face(1));
  EXPECT_EQ(At(20, 100), kNothing);
  EXPECT_EQ(AtVertex(2, -4), Face(0));  // no markers
  state_.rotation.y = 180;
  EXPECT_EQ(At(100, 100), Face(1));
  EXPECT_EQ(At(180, 100), kNothing);

  state_.rotation.y = 0;
  state_.vertices = true;
  EXPECT_EQ(AtVertex(2), Vertex(2));
  EXPECT_EQ(AtVertex(2, 5), Vertex(2));
  EXPECT_EQ(AtVertex(2, -20), Face(0));
  scene_.model.SetVertexPosition(4, {50, 50, -100});
  EXPECT_EQ(AtVertex(4), Face(0));  // hidden by the front wall
  state_.mode = ERenderMode::kWireframe;
  EXPECT_EQ(AtVertex(4), Vertex(4));
  EXPECT_EQ(At(100, 100), Face(0));
  state_.mode = ERenderMode::kVertices;
  EXPECT_EQ(At(100, 100), kNothing);
  EXPECT_EQ(AtVertex(4), Vertex(4));
}

TEST_F(ModelPicker, SelectedVerticesAreThereWithoutMarkersAndTheNearestOfTwoCounts) {
  AddTwoWalls();
  const int32_t selected[] = {2};
  scene_.model.Select(EGroupKind::kVertices, selected, true);
  EXPECT_EQ(AtVertex(2, 3), Vertex(2));
  EXPECT_EQ(AtVertex(1, 3).kind, EGroupKind::kFaces);
  state_.vertices = true;
  scene_.model.SetVertexPosition(1, {106, 100, 0});  // some three pixels beside vertex 2
  EXPECT_EQ(AtVertex(2), Vertex(2));
  EXPECT_EQ(AtVertex(1), Vertex(1));
}

TEST_F(ModelPicker, ARectangleTakesWhatShowsAndInSeeThroughModesAllInside) {
  AddTwoWalls();
  const SPixels all = {0, 0, kPickSide, kPickSide};
  const SPixels inside_front = {80, 80, 120, 120};
  EXPECT_THAT(In(EGroupKind::kFaces, all), ElementsAre(0, 1));
  EXPECT_THAT(In(EGroupKind::kFaces, inside_front), ElementsAre(0));
  EXPECT_THAT(In(EGroupKind::kFaces, {5, 5, 30, 195}), IsEmpty());
  EXPECT_THAT(In(EGroupKind::kFaces, {80, 80, 80, 120}), IsEmpty());
  scene_.model.SetVertexPosition(4, {0, 0, -100});
  EXPECT_THAT(In(EGroupKind::kVertices, {20, 20, 180, 180}), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(In(EGroupKind::kVertices, inside_front), IsEmpty());
  state_.mode = ERenderMode::kWireframe;
  EXPECT_THAT(In(EGroupKind::kVertices, inside_front), ElementsAre(4));
  EXPECT_THAT(In(EGroupKind::kFaces, inside_front), ElementsAre(0));
}

TEST_F(ModelPicker, FacesSmallerThanAPixelAreInARectangleToo) {
  constexpr int32_t kTiles = 300;
  for (int32_t row = 0; row < kTiles; row += 10) {
    for (int32_t column = 0; column < kTiles; ++column)
      scene_.AddQuad({{column, row, 0}, {column + 1, row, 0}, {column + 1, row + 10, 0}, {column, row + 10, 0}},
                     nullptr, kFaceUntextured);
  }
  state_ = FittedState(scene_.model);
  state_.mode = ERenderMode::kSolid;
  EXPECT_THAT(In(EGroupKind::kFaces, {0, 0, kPickSide, kPickSide}), SizeIs(kTiles * kTiles / 10));
}

TEST_F(ModelPicker, DrawsOnlyWhatIsNearAndFindsPlacesOncePerCamera) {
  constexpr int32_t kTiles = 60;
  scene_.AddTiles(kTiles, 10, nullptr, kFaceUntextured);
  state_ = FittedState(scene_.model);
  state_.mode = ERenderMode::kSolid;
  EXPECT_NE(At(120, 90), At(100, 100));
  EXPECT_LE(picker_.Work().faces_drawn, kTiles * kTiles / 10);
  EXPECT_EQ(picker_.Work().placements, 1);
}

TEST_F(ModelPicker, WorksInEachProjectionAtTheEndsOfTheNumbersAndWithHardlyAnything) {
  constexpr int32_t kLow = std::numeric_limits<int32_t>::min();
  constexpr int32_t kHigh = std::numeric_limits<int32_t>::max();
  state_ = FittedState(scene_.model);
  EXPECT_EQ(At(100, 100), kNothing);
  scene_.model.AddVertex({kHigh, kLow, 0});
  state_ = FittedState(scene_.model);
  state_.mode = ERenderMode::kVertices;
  EXPECT_EQ(AtVertex(0), Vertex(0));
  scene_.model.Clear();
  scene_.AddQuad({{kLow, kLow, 0}, {kHigh, kLow, 0}, {kHigh, kHigh, 0}, {kLow, kHigh, 0}}, nullptr, kFaceUntextured);
  state_ = FittedState(scene_.model);
  state_.mode = ERenderMode::kSolid;
  state_.vertices = true;
  for (const bool orthographic : {false, true}) {
    state_.orthographic = orthographic;
    state_.rotation = {20, -35, 10};
    EXPECT_EQ(At(100, 100), Face(0));
    for (int32_t k = 0; k < 4; ++k)
      EXPECT_EQ(AtVertex(k), Vertex(k));
  }
}

}  // namespace
}  // namespace veldra::testing
