#include <gtest/gtest.h>

#include "render/viewstate.h"

namespace veldra {
namespace {

TEST(ViewState, ZoomOutStopsAtOneStep) {
  for (const double step : {SViewState().zoom_step, 0.1, 0.3, 1.0 / 3.0}) {
    SViewState state;
    state.zoom_step = step;
    for (const auto& [from, to] : {std::pair{3.0, 2.0}, {2.0, 1.0}, {1.5, 1.0}, {1.0, 1.0}}) {
      state.zoom = from * step;
      state.ZoomOut();
      EXPECT_NEAR(state.zoom, to * step, 1e-12);
    }
    state.ZoomIn();
    EXPECT_EQ(state.zoom, step + step);
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
  } switches[] = {{&CSettings::only_3d, &SViewState::only_3d},
                  {&CSettings::axes_3d, &SViewState::axes},
                  {&CSettings::verts_3d, &SViewState::vertices},
                  {&CSettings::quality_3d, &SViewState::high_quality},
                  {&CSettings::show_trans, &SViewState::transparency},
                  {&CSettings::follow_face, &SViewState::follow_current_face},
                  {&CSettings::show_grid, &SViewState::grid},
                  {&CSettings::orthographic, &SViewState::orthographic},
                  {&CSettings::vertex_numbers, &SViewState::vertex_numbers}};
  for (const auto& one : switches) {
    CSettings settings;
    for (const auto& other : switches)
      settings.*other.setting = 0;
    settings.*one.setting = 1;
    const SViewState state = SViewState::FromSettings(settings);
    for (const auto& other : switches)
      EXPECT_EQ(state.*other.option, &other == &one);
  }
  constexpr ERenderMode kModes[] = {ERenderMode::kTextured, ERenderMode::kVertices, ERenderMode::kWireframe,
                                    ERenderMode::kSolid,    ERenderMode::kTextured, ERenderMode::kTextured};
  for (int number = -1; number <= 4; ++number) {
    CSettings settings;
    settings.render_mode = number;
    EXPECT_EQ(SViewState::FromSettings(settings).mode, kModes[number + 1]) << number;
  }
}

}  // namespace
}  // namespace veldra
