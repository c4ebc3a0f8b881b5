#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "render/viewstate.h"

namespace veldra {
namespace {

constexpr int32_t kLow = std::numeric_limits<int32_t>::min();
constexpr int32_t kHigh = std::numeric_limits<int32_t>::max();

TEST(ViewState, ZoomOutStopsAtOneStep) {
  for (const double step : {SViewState().zoom_step, 0.1, 0.3, 1.0 / 3.0}) {
    SViewState state;
    state.zoom_step = step;
    state.zoom = 3.0 * step;
    state.ZoomOut();
    EXPECT_NEAR(state.zoom, 2.0 * step, 1e-12);
    for (int repeat = 0; repeat < 3; ++repeat) {
      state.ZoomOut();
      EXPECT_EQ(state.zoom, step) << "press " << repeat + 2;
    }
    state.ZoomIn();
    EXPECT_EQ(state.zoom, step + step);
    state.zoom = 1.5 * step;
    state.ZoomOut();
    EXPECT_EQ(state.zoom, step);
  }
}

TEST(ViewState, FitFollowsTheBoundsWhereverTheyAre) {
  const struct {
    SBounds bounds;
    double extent;
    Vector3 center;
  } cases[] = {
      {{{-300, 0, 0}, {300, 0, 0}}, 600, {0, 0, 0}},
      {{{-100, -100, -100}, {100, 100, 100}}, 200 * std::sqrt(3.0), {0, 0, 0}},
      {{{900, 0, 0}, {1000, 0, 0}}, 100, {950, 0, 0}},
      {{{0, 5, 0}, {0, 5, 0}}, 1, {0, 5, 0}},
      {{{kLow, kLow, kLow}, {kHigh, kHigh, kHigh}}, 4294967295.0 * std::sqrt(3.0), {-0.5, -0.5, -0.5}},
  };
  for (const auto& row : cases) {
    SViewState state;
    state.zoom = 7.0;
    state.pan_x = 1.0;
    state.pan_y = -1.0;
    state.ZoomToFit(row.bounds);
    EXPECT_DOUBLE_EQ(state.extent, row.extent);
    EXPECT_EQ(state.center, row.center);
    EXPECT_EQ(state.zoom, 1.0);
    EXPECT_EQ(state.pan_x, 0.0);
    EXPECT_EQ(state.pan_y, 0.0);
  }
}

TEST(ViewState, VerticesOnlySwitchesTheMarkersOnForGood) {
  SViewState state;
  state.ChooseMode(ERenderMode::kSolid);
  EXPECT_FALSE(state.vertices);
  state.ChooseMode(ERenderMode::kVertices);
  EXPECT_TRUE(state.vertices);
  state.ChooseMode(ERenderMode::kWireframe);
  EXPECT_EQ(state.mode, ERenderMode::kWireframe);
  EXPECT_TRUE(state.vertices);
}

TEST(ViewState, ComesFromTheSettings) {
  const struct {
    int32_t CSettings::*setting;
    bool SViewState::*option;
  } switches[] = {
      {&CSettings::only_3d, &SViewState::only_3d},         {&CSettings::axes_3d, &SViewState::axes},
      {&CSettings::verts_3d, &SViewState::vertices},       {&CSettings::quality_3d, &SViewState::high_quality},
      {&CSettings::show_trans, &SViewState::transparency}, {&CSettings::follow_face, &SViewState::follow_current_face},
  };
  for (const auto& one : switches) {
    CSettings settings;
    for (const auto& other : switches)
      settings.*other.setting = 0;
    settings.*one.setting = 1;
    const SViewState state = SViewState::FromSettings(settings);
    for (const auto& other : switches)
      EXPECT_EQ(state.*other.option, &other == &one);
  }
  for (const auto& [number, mode] : {std::pair{0, ERenderMode::kVertices}, std::pair{1, ERenderMode::kWireframe},
                                     std::pair{2, ERenderMode::kSolid}, std::pair{3, ERenderMode::kTextured},
                                     std::pair{4, ERenderMode::kTextured}, std::pair{-1, ERenderMode::kTextured}}) {
    CSettings settings;
    settings.render_mode = number;
    EXPECT_EQ(SViewState::FromSettings(settings).mode, mode) << number;
  }
  CSettings settings;
  settings.view_angle_x = 1.5;
  settings.view_angle_y = -2.0;
  settings.view_angle_z = 3.0;
  settings.background = {1, 2, 3};
  const SViewState state = SViewState::FromSettings(settings);
  EXPECT_EQ(state.rotation.x, 1.5);
  EXPECT_EQ(state.rotation.y, -2.0);
  EXPECT_EQ(state.rotation.z, 3.0);
  EXPECT_EQ(state.background, settings.background);
}

}  // namespace
}  // namespace veldra
