#include <gtest/gtest.h>

#include <limits>

#include "render/scene.h"
#include "view/vertexdrag.h"

namespace veldra::testing {
namespace {

constexpr int32_t kHigh = std::numeric_limits<int32_t>::max();

class VertexDrag : public ::testing::Test {
 protected:
  /// A square of which the two right vertices, 1 and 2, are held, seen from the front with one unit a pixel.
  void SetUp() override {
    scene_.AddWall(nullptr, kFaceUntextured, 100);
    state_.orthographic = true;
    state_.extent = 800.0 / 1.0559;  // with the air around a model that fits
  }
  CVertexDrag Grab() { return {scene_.model, CViewCamera(state_, scene_.model.Bounds(), 800, 800), At(1), {1, 2}}; }
  SPoint At(int32_t index) const { return scene_.model.Vertex(index).Position(); }

  SScene scene_;
  SViewState state_;
};

TEST_F(VertexDrag, MovesTheSelectionInTheViewsPlaneOrAlongAnAxis) {
  const struct {
    SRotation rotation;
    std::optional<EAxis> axis;
    double right, down;
    SPoint offset;
    double grid = 0.0;
    std::optional<SPoint> onto = {};
  } cases[] = {
      {{0, 0, 0}, {}, 50.5, -20.5, {50, 20, 0}},
      {{0, 0, 0}, EAxis::kX, 50.5, -20.5, {50, 0, 0}},
      {{0, 0, 0}, EAxis::kY, 50.5, -20.5, {0, 20, 0}},
      {{0, 0, 0}, EAxis::kZ, 50.5, -20.5, {0, 0, 0}},
      {{0, 90, 0}, {}, 50.5, 0, {0, 0, 50}},
      {{0, 90, 0}, EAxis::kZ, -50.5, 7, {0, 0, -50}},
      {{90, 0, 0}, {}, 0, 30.5, {0, 0, 30}},
      {{0, 180, 0}, EAxis::kX, 30.5, 0, {-30, 0, 0}},
      {{0, 0, 0}, {}, 57, 22, {80, -20, 0}, 60},
      {{0, 0, 0}, EAxis::kX, 57, 22, {80, 0, 0}, 60},
      {{0, 0, 0}, {}, 50.5, -20.5, {-98, 105, 7}, 60, SPoint{2, 5, 7}},
      {{0, 0, 0}, EAxis::kZ, 50.5, -20.5, {0, 0, 7}, 0, SPoint{2, 5, 7}},
      {{0, 0, 0}, {}, 1e15, -1e15, {kHigh - 100, kHigh - 100, 0}},
  };
  for (const auto& row : cases) {
    state_.rotation = row.rotation;
    CVertexDrag drag = Grab();
    drag.MoveTo({row.right, row.down, row.axis, row.grid, row.onto});
    EXPECT_EQ(drag.HasMoved(), !(row.offset == SPoint{}));
    EXPECT_EQ(At(1), (SPoint{100 + row.offset.x, -100 + row.offset.y, row.offset.z})) << row.right;
    EXPECT_EQ(At(2), (SPoint{100 + row.offset.x, 100 + row.offset.y, row.offset.z})) << row.right;
    EXPECT_EQ(At(0), (SPoint{-100, -100, 0}));
    drag.PutBack();
    EXPECT_FALSE(drag.HasMoved());
    EXPECT_EQ(At(1), (SPoint{100, -100, 0}));
  }
}

TEST_F(VertexDrag, ManySmallMovementsEndWhereOneLargeOneDoes) {
  state_.rotation = {17, 33, 5};
  CVertexDrag once = Grab();
  once.MoveTo({123.4, 56.7});
  const SPoint wanted = At(1);
  once.PutBack();
  CVertexDrag drag = Grab();
  for (int k = 1; k <= 1000; ++k)
    drag.MoveTo({123.4 * k / 1000, 56.7 * k / 1000});
  EXPECT_EQ(At(1), wanted);
  drag.MoveTo({});
  EXPECT_EQ(At(1), (SPoint{100, -100, 0}));
  EXPECT_EQ(scene_.model.CheckInvariants(), "");
}

}  // namespace
}  // namespace veldra::testing
