#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "render/scene.h"
#include "render/viewaim.h"

namespace veldra::testing {
namespace {

constexpr int32_t kLow = std::numeric_limits<int32_t>::min();
constexpr int32_t kHigh = std::numeric_limits<int32_t>::max();

int Brightness(const SColor& color) {
  return color.red + color.green + color.blue;
}

TEST(ModelPicture, EachModeShowsTheWallItsOwnWay) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed}));
  // Places inside the wall, on the middle of its left edge and at its lower left corner.
  const struct {
    ERenderMode mode;
    bool markers;
    bool inside, edge, corner;  ///< drawn there, else background
  } cases[] = {
      {ERenderMode::kVertices, false, false, false, true}, {ERenderMode::kWireframe, false, false, true, true},
      {ERenderMode::kSolid, false, true, true, true},      {ERenderMode::kTextured, false, true, true, true},
      {ERenderMode::kWireframe, true, false, true, true},
  };
  for (const auto& row : cases) {
    SViewState state = WallState();
    state.mode = row.mode;
    state.vertices = row.markers;
    const SImage image = Picture(scene, state, 201);
    EXPECT_EQ(At(image, 0.02, 0.02), state.background);
    EXPECT_EQ(At(image, 0.45, 0.45) != state.background, row.inside) << int(row.mode);
    EXPECT_EQ(Pure(At(image, 0.45, 0.45)) == kRed, row.mode == ERenderMode::kTextured);
    EXPECT_EQ(At(image, 0.252, 0.5) != state.background, row.edge) << int(row.mode);
    EXPECT_EQ(At(image, 0.252, 0.748) != state.background, row.corner) << int(row.mode);
  }
}

TEST(ModelPicture, FirstTexelsAreUpperLeftAndTheBackIsDarker) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed, kGreen, kBlue, kYellow}));
  const struct {
    SRotation rotation;
    SColor upper_left, upper_right, lower_left, lower_right;
  } cases[] = {{{0, 0, 0}, kRed, kGreen, kBlue, kYellow},
               {{0, 0, 90}, kGreen, kYellow, kRed, kBlue},  // counter-clockwise
               {{0, 180, 0}, kGreen, kRed, kYellow, kBlue},
               {{180, 0, 0}, kBlue, kYellow, kRed, kGreen}};
  const int front = Brightness(At(Picture(scene, WallState()), 0.4, 0.4));
  for (const auto& row : cases) {
    SViewState state = WallState();
    state.rotation = row.rotation;
    const SImage image = Picture(scene, state);
    EXPECT_EQ(Pure(At(image, 0.4, 0.4)), row.upper_left);
    EXPECT_EQ(Pure(At(image, 0.6, 0.4)), row.upper_right);
    EXPECT_EQ(Pure(At(image, 0.4, 0.6)), row.lower_left);
    EXPECT_EQ(Pure(At(image, 0.6, 0.6)), row.lower_right);
    if (row.rotation.x == 0 && row.rotation.y == 0) continue;
    EXPECT_LT(Brightness(At(image, 0.4, 0.4)), front * 3 / 4);
    EXPECT_GT(Brightness(At(image, 0.4, 0.4)), front / 5);
  }
}

TEST(ModelPicture, TurnsAboutZThenYThenX) {
  SScene scene;  // left red, right green, bottom blue, top yellow, back cyan, front magenta
  scene.AddBox({-100, -100, -100}, {100, 100, 100}, {kRed, kGreen, kBlue, kYellow, kCyan, kMagenta});
  const std::pair<SRotation, SColor> cases[] = {{RotationFor(EViewSide::kFront), kMagenta},
                                                {RotationFor(EViewSide::kBack), kCyan},
                                                {RotationFor(EViewSide::kLeft), kRed},
                                                {RotationFor(EViewSide::kRight), kGreen},
                                                {RotationFor(EViewSide::kTop), kYellow},
                                                {RotationFor(EViewSide::kBottom), kBlue},
                                                {{0, 0, 90}, kMagenta},
                                                {{90, 90, 0}, kYellow},
                                                {{0, 90, 90}, kYellow},
                                                {{90, 0, 90}, kGreen},
                                                {{0, 540, 0}, kCyan}};
  for (const auto& [rotation, color] : cases) {
    SViewState state = FittedState(scene.model);
    state.rotation = rotation;
    for (const bool orthographic : {false, true}) {
      state.orthographic = orthographic;
      EXPECT_EQ(Pure(At(Picture(scene, state), 0.5, 0.5)), color)
          << rotation.x << ' ' << rotation.y << ' ' << rotation.z;
    }
  }
}

TEST(ModelPicture, OnlyTransparentTypesHaveHolesAndOnlyWhenWanted) {
  const struct {
    uint32_t type;
    bool transparency;
    bool has_hole;
  } cases[] = {{0x11, true, true},   {0x33, true, true},  {0x11, false, false},
               {0x33, false, false}, {0x18, true, false}, {0x0E, true, false},
               {0x29, true, false},  {0x19, true, false}, {0x44, true, false}};
  for (const auto& row : cases) {
    SScene scene;
    scene.AddWall(scene.Texture({kBlack, kRed, kRed, kRed}), row.type);
    SViewState state = WallState();
    state.background = kCyan;
    state.transparency = row.transparency;
    const SImage image = Picture(scene, state);
    EXPECT_EQ(At(image, 0.4, 0.4) == kCyan, row.has_hole) << row.type;
    EXPECT_NE(At(image, 0.6, 0.6), kCyan) << row.type;
    state.mode = ERenderMode::kSolid;
    EXPECT_NE(At(Picture(scene, state), 0.4, 0.4), kCyan) << row.type;
  }
}

TEST(ModelPicture, TypesLookDifferent) {
  const auto seen = [](uint32_t type) {
    SScene scene;
    scene.AddWall(scene.Texture({{90, 20, 20}}), type);
    return At(Picture(scene, WallState()), 0.55, 0.4);
  };
  for (const uint32_t type : {0x0EU, 0x77U, 0x00U})
    EXPECT_EQ(seen(type), seen(0x18)) << type;
  EXPECT_GT(Brightness(seen(0x29)), Brightness(seen(0x18)) + 60);
  const SColor plain = seen(0x19);
  EXPECT_LT(std::abs(plain.red - plain.green), 20);
}

TEST(ModelPicture, HighQualityBlendsTexels) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed, kBlue, kRed, kBlue}));
  SViewState state = WallState();
  state.zoom = 16;  // each texel is some pixels wide
  for (const bool high_quality : {false, true}) {
    state.high_quality = high_quality;
    const SImage picture = Picture(scene, state, 128);
    int mixed = 0;
    for (int column = 0; column < 128; ++column) {
      const SColor seen = At(picture, column / 127.0, 0.4);
      mixed += std::min(seen.red, seen.blue) > 20 ? 1 : 0;
    }
    EXPECT_EQ(mixed > 3, high_quality) << mixed;
  }
}

TEST(ModelPicture, AnimationsRunWithTheTime) {
  SScene scene;
  scene.AddWall(scene.Animation({kRed, kGreen, kBlue}, 2.0));
  for (const auto& [seconds, color] : {std::pair{0.0, kRed}, std::pair{0.6, kGreen}, std::pair{1.9, kRed}}) {
    EXPECT_EQ(Pure(At(Picture(scene, WallState(), 96, seconds), 0.5, 0.5)), color) << seconds;
  }
}

TEST(ModelPicture, AFittedModelIsLargeAndNeverCropped) {
  const std::pair<SPoint, SPoint> boxes[] = {
      {{-100, -100, -100}, {100, 100, 100}}, {{840, -50, -120}, {960, 50, 120}}, {{-30, -1000, -30}, {30, 1000, 30}}};
  const SRotation rotations[] = {{0, 0, 0},   {0, 0, 45}, {35.26, 45, 0}, {20, -35, 0},
                                 {90, 0, 45}, {0, 45, 0}, {60, 10, 5}};
  for (const auto& [low, high] : boxes) {
    SScene scene;
    scene.AddBox(low, high, {kRed, kGreen});
    int largest = 0;
    for (const SRotation& rotation : rotations) {
      SViewState state = WallState();
      state.zoom = state.pan_x = state.pan_y = 7;
      state.ZoomToFit(scene.model.Bounds());
      state.rotation = rotation;
      const SCovered box = Covered(Picture(scene, state, 100), state.background);
      EXPECT_TRUE(box.left > 0 && box.top > 0 && box.right < 100 && box.bottom < 100)
          << box.left << ' ' << box.top << ' ' << box.right << ' ' << box.bottom;
      largest = std::max({largest, box.Width(), box.Height()});
    }
    EXPECT_GT(largest, 80);
  }
}

TEST(ModelPicture, ZoomEnlargesAndPanMoves) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed}), 0x18, 50);
  SViewState state = WallState();
  const auto covered = [&](int width, int height) {
    const auto image = DrawModelPicture(scene.model, state, width, height, nullptr);
    return image ? Covered(*image, state.background) : SCovered{};
  };
  const SCovered square = covered(200, 200);
  EXPECT_NEAR(square.Width(), 50, 3);
  state.zoom = 2;
  EXPECT_NEAR(covered(200, 200).Width(), 2 * square.Width(), 2);
  state.zoom = 1;
  state.pan_x = 0.25;
  state.pan_y = 0.125;
  const SCovered moved = covered(400, 200);
  EXPECT_EQ(moved.left, square.left + 100 + 50);
  EXPECT_EQ(moved.top, square.top - 25);
  EXPECT_EQ(moved.Width(), square.Width());
}

TEST(ModelPicture, FarAwayLooksAsItDoesAtTheOrigin) {
  SScene near_scene;
  SScene far_scene;
  near_scene.AddBox({-100, -100, -100}, {100, 100, 100}, {kRed, kGreen, kBlue});
  far_scene.AddBox({kHigh - 200, kLow, kHigh - 200}, {kHigh, kLow + 200, kHigh}, {kRed, kGreen, kBlue});
  SViewState state = WallState();
  state.rotation = {20, 30, 0};
  const SImage near_picture = Picture(near_scene, state);
  state.center = {kHigh - 100.0, kLow + 100.0, kHigh - 100.0};
  EXPECT_EQ(near_picture.rgba, Picture(far_scene, state).rgba);
}

TEST(ModelPicture, ExtremesAreDrawnAsFarAsTheyCan) {
  const std::vector<SPoint> spot(4, SPoint{5, 5, 5});
  for (const ERenderMode mode :
       {ERenderMode::kVertices, ERenderMode::kWireframe, ERenderMode::kSolid, ERenderMode::kTextured}) {
    for (const bool spheres : {false, true}) {
      SViewState options = WallState();
      options.mode = mode;
      options.vertices = options.axes = true;
      options.spherical_markers = spheres;
      const auto draw = [&](const SScene& scene) {
        SViewState state = FittedState(scene.model);
        options.extent = state.extent;
        options.center = state.center;
        return Covered(Picture(scene, options), options.background);
      };
      SScene empty;
      EXPECT_GT(draw(empty).Width(), 20);  // the axes
      SScene lone;
      lone.AddQuad(spot, lone.Texture({kRed}));
      EXPECT_GT(draw(lone).Width(), 20);
      SScene whole;
      whole.AddBox({kLow, kLow, kLow}, {kHigh, kHigh, kHigh}, {kRed});
      EXPECT_GT(draw(whole).Width(), 50);
    }
  }
}

TEST(ModelPicture, StatesThatCannotBeDrawnAreBent) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  SScene scene;
  scene.AddWall(scene.Texture({kRed}));
  for (double SViewState::*member : {&SViewState::zoom, &SViewState::extent, &SViewState::pan_x, &SViewState::pan_y}) {
    for (const double value : {kNaN, kInfinite, -kInfinite, 0.0, -1.0, 1e300}) {
      SViewState state = WallState();
      state.*member = value;
      EXPECT_EQ(Picture(scene, state, 32).width, 32);
    }
  }
  SViewState state = WallState();
  state.rotation = {kNaN, kInfinite, 1e300};
  EXPECT_NE(At(Picture(scene, state, 32), 0.5, 0.5), state.background);
  state = WallState();
  state.zoom = 1e6;  // deep inside the wall
  EXPECT_EQ(Pure(At(Picture(scene, state, 32), 0.1, 0.1)), kRed);
}

TEST(ModelPicture, AxesPointAlongTheirLetters) {
  SScene scene;
  scene.AddWall(nullptr, 0x19, 10);
  SViewState state = WallState();
  state.extent = 60;
  EXPECT_EQ(At(Picture(scene, state, 101), 0.8, 0.5), state.background);
  state.axes = true;
  const SImage image = Picture(scene, state, 101);
  EXPECT_EQ(Pure(At(image, 0.85, 0.5)), kRed);
  EXPECT_EQ(Pure(At(image, 0.5, 0.15)), kGreen);
}

TEST(ModelPicture, RefusesSidesThatArePointless) {
  SScene scene;
  for (const auto& [width, height] : {std::pair{0, 10}, std::pair{10, 0}, std::pair{-5, 10}, std::pair{10, 16385}}) {
    SError error;
    EXPECT_FALSE(DrawModelPicture(scene.model, WallState(), width, height, &error));
    EXPECT_NE(error.what.find("16384"), std::string::npos);
  }
  EXPECT_TRUE(DrawModelPicture(scene.model, WallState(), 1, 1, nullptr));
  EXPECT_TRUE(DrawModelPicture(scene.model, WallState(), 2049, 3, nullptr));
}

}  // namespace
}  // namespace veldra::testing
