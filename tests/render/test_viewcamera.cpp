#include "render/viewcamera.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/glcontext.h"
#include "render/modelgeometry.h"
#include "render/scene.h"
#include "render/viewaim.h"
#include "render/viewgrid.h"

namespace veldra::testing {
namespace {

constexpr int kWidth = 300;
constexpr int kHeight = 200;
const SBounds kBounds = {.min = {-400, -300, -200}, .max = {600, 500, 800}};

/// Views that differ in all that a camera depends on.
std::vector<SViewState> States() {
  std::vector<SViewState> states;
  for (const bool orthographic : {false, true}) {
    SViewState state;
    state.extent = 1500;
    state.center = {100.0, 100.0, 300.0};
    state.orthographic = orthographic;
    states.push_back(state);
    state.rotation = {20, -35, 50};
    state.zoom = 1.5;
    state.pan_x = 0.1;
    state.pan_y = -0.2;
    states.push_back(state);
    state.center = {100.0, 50.0, -300.0};
    states.push_back(state);
  }
  return states;
}

TEST(ViewCamera, SaysWhereOpenGlDraws) {
  SError error;
  const auto context = CMemoryGlContext::Create(kWidth, kHeight, &error);
  ASSERT_NE(context, nullptr) << error.what;
  const CModelSpace space(kBounds);
  for (const SViewState& state : States()) {
    const CViewCamera camera(state, kBounds, kWidth, kHeight);
    camera.Load();
    camera.EnterSpace(space);
    GLdouble view[16];
    GLdouble projection[16];
    GLint viewport[4];
    glGetDoublev(GL_MODELVIEW_MATRIX, view);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    for (const SPoint& point : {SPoint{-400, 500, 800}, SPoint{600, -300, -200}, SPoint{0, 0, 0}}) {
      const FloatPoint place = space.Place(point);
      double x = 0;
      double y = 0;
      double z = 0;
      gluProject(place[0], place[1], place[2], view, projection, viewport, &x, &y, &z);
      const SScreenPoint seen = camera.Project(point);
      EXPECT_NEAR(seen.x, x, 1e-3);
      EXPECT_NEAR(seen.y, kHeight - y, 1e-3);
      EXPECT_NEAR(seen.depth, z, 1e-5);
    }
  }
}

TEST(ViewCamera, MovementsFollowThePointer) {
  const SPoint at = {-200, 100, 300};
  for (const SViewState& state : States()) {
    const CViewCamera camera(state, kBounds, kWidth, kHeight);
    const SScreenPoint before = camera.Project(at);
    const Vector3 moved = camera.Movement(ToVector(at), 40, -25);
    const SScreenPoint after =
        camera.Project(SPoint{int32_t(at.x + moved[0]), int32_t(at.y + moved[1]), int32_t(at.z + moved[2])});
    EXPECT_NEAR(after.x - before.x, 40, 1);
    EXPECT_NEAR(after.y - before.y, -25, 1);
    const auto step = camera.Pixels(ToVector(at), {0, 0, 1});
    const SScreenPoint one = camera.Project(SPoint{at.x, at.y, at.z + 1});
    EXPECT_NEAR(one.x - before.x, step[0], 1e-3);
    EXPECT_NEAR(one.y - before.y, step[1], 1e-3);
  }
}

TEST(ViewCamera, AnEditThatChangesTheBoundsMovesNothing) {
  for (const SViewState& state : States()) {
    const CViewCamera before(state, kBounds, kWidth, kHeight);
    for (const SBounds& bounds : {SBounds{{-400, -300, -200}, {600, 900, 800}}, SBounds{{0, 0, 0}, {1, 1, 1}}}) {
      const SScreenPoint then = before.Project(SPoint{-200, 100, 300});
      const SScreenPoint now = CViewCamera(state, bounds, kWidth, kHeight).Project(SPoint{-200, 100, 300});
      EXPECT_NEAR(now.x, then.x, 1e-9);
      EXPECT_NEAR(now.y, then.y, 1e-9);
    }
    // Not even a vertex at the other end of space moves the middle or puts the rest out of sight.
    const CViewCamera far_one(state, {{-400, -300, -200}, {1 << 30, 500, 800}}, kWidth, kHeight);
    const SPoint middle = {int32_t(state.center[0]), int32_t(state.center[1]), int32_t(state.center[2])};
    EXPECT_NEAR(far_one.Project(middle).x, before.Project(middle).x, 1e-6);
    EXPECT_NEAR(far_one.Project(SPoint{-200, 100, 300}).x, before.Project(SPoint{-200, 100, 300}).x, kWidth / 4.0);
  }
}

TEST(ViewAim, FramesWhatIsShownFromThisSideWithATenthFree) {
  constexpr int32_t kOff = 1 << 20;
  SScene scene;
  scene.AddBox({kOff - 200, kOff - 100, -50}, {kOff + 200, kOff + 100, 50}, {kRed});
  scene.model.AddVertex({0, 0, 0});  // in no face and not marked
  for (const SRotation& rotation : {SRotation{0, 0, 0}, {20, 40, 0}, {90, 0, 0}}) {
    for (const bool orthographic : {false, true}) {
      SViewState state = WallState();
      state.rotation = rotation;
      state.orthographic = orthographic;
      Frame(state, scene.model, 200, 200);
      const SCovered covered = Covered(Picture(scene, state, 200), state.background);
      EXPECT_NEAR(std::max(covered.Width(), covered.Height()), 180, 2);
      EXPECT_NEAR(covered.left + covered.right, 200, 2);
      EXPECT_NEAR(covered.top + covered.bottom, 200, 2);
    }
  }
}

TEST(ViewAim, FollowsOnlyAModelThatLeft) {
  SViewState state;
  state.extent = 200;
  FollowWhatLeft(state, {{-50, -50, -50}, {100000, 50, 50}});
  EXPECT_EQ(state.center, Vector3{});
  FollowWhatLeft(state, {{900, -50, -50}, {1100, 50, 50}});
  EXPECT_EQ(state.center, (Vector3{1000, 0, 0}));
}

TEST(ViewAim, TurnsAndMovesOnlyAsFarAsAFaceNeedsIt) {
  SScene scene;
  scene.AddBox({-100, -100, -100}, {100, 100, 100}, {kRed, kGreen, kBlue, kYellow, kCyan, kMagenta});
  for (const bool orthographic : {false, true}) {
    SViewState state = FittedState(scene.model);
    state.orthographic = orthographic;
    state.rotation = {12, 30, 0};
    SViewState grazing = state;
    EXPECT_TRUE(BringIntoSight(grazing, scene.model, scene.model.Face(3), 100, 100)) << "nearly edgewise";
    EXPECT_GT(grazing.rotation.x, 45);
    state.rotation = {32, 35, 0};
    const CBinFace& front = scene.model.Face(5);
    EXPECT_FALSE(BringIntoSight(state, scene.model, front, 100, 100));
    for (int32_t k = 0; k < 6; ++k) {
      SViewState turned = state;
      const bool was_hidden = BringIntoSight(turned, scene.model, scene.model.Face(k), 100, 100);
      EXPECT_EQ(was_hidden, k == 1 || k == 2 || k == 4) << k;
      const SColor colors[] = {kRed, kGreen, kBlue, kYellow, kCyan, kMagenta};
      if (was_hidden) {
        EXPECT_EQ(Pure(At(Picture(scene, turned), 0.5, 0.5)), colors[k]);
      }
      SViewState straight = turned;
      EXPECT_FALSE(BringIntoSight(straight, scene.model, scene.model.Face(k), 100, 100)) << "not in sight afterwards";
    }
    state.pan_x = 3;
    state.pan_y = -2;
    EXPECT_TRUE(BringIntoSight(state, scene.model, front, 100, 100));
    EXPECT_EQ(Pure(At(Picture(scene, state), 0.5, 0.5)), kMagenta);
    EXPECT_EQ(state.rotation.y, 35);
  }
}

TEST(ViewGrid, SpacingIsRoundAndFollowsTheZoom) {
  const struct {
    double extent, zoom, spacing;
  } cases[] = {{1200, 1, 100},  {1201, 1, 200}, {3000, 1, 500},        {1200, 4, 50},
               {1200, 1e6, 10}, {1, 1, 1},      {8589934592.0, 1, 1e9}};
  for (const auto& row : cases) {
    SViewState state;
    state.extent = row.extent;
    state.zoom = row.zoom;
    EXPECT_EQ(GridFor(state, CViewCamera(state, SBounds{}, 100, 100)).spacing, row.spacing) << row.extent;
  }
}

TEST(ViewGrid, LinesLieAtMultiplesOfTheSpacing) {
  SScene scene;
  scene.model.AddVertex({-130, -40, -130});
  scene.model.AddVertex({110, 60, 110});
  SViewState state = FittedState(scene.model);
  state.mode = ERenderMode::kSolid;
  state.orthographic = true;
  const SImage without = Picture(scene, state, 201);
  state.grid = true;
  for (const EViewSide side : {EViewSide::kTop, EViewSide::kFront, EViewSide::kLeft}) {
    state.rotation = RotationFor(side);
    const SImage image = Picture(scene, state, 201);
    const CViewCamera camera(state, scene.model.Bounds(), 201, 201);
    const auto spacing = static_cast<int32_t>(GridFor(state, camera).spacing);
    const auto is_inked = [&](const SPoint& point) {
      const SScreenPoint at = camera.Project(point);
      return At(image, (std::floor(at.x) + 0.25) / 200, (std::floor(at.y) + 0.25) / 200) != state.background;
    };
    for (const int32_t line : {-1, 1, 2}) {
      // Halfway between the lines of the other direction.
      const int32_t at = line * spacing;
      const int32_t half = spacing / 2;
      const SPoint on = side == EViewSide::kLeft ? SPoint{0, half, at} : SPoint{at, half, half};
      const SPoint off = side == EViewSide::kLeft ? SPoint{0, half, at + half} : SPoint{at + half, half, half};
      EXPECT_TRUE(is_inked(on)) << int(side) << ' ' << line;
      EXPECT_FALSE(is_inked(off)) << int(side) << ' ' << line;
    }
  }
  state.only_3d = true;
  state.rotation = {};
  EXPECT_EQ(Picture(scene, state, 201).rgba, without.rgba);
}

}  // namespace
}  // namespace veldra::testing
