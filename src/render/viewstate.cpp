#include "render/viewstate.h"

#include <algorithm>
#include <cmath>

namespace veldra {

SViewState SViewState::FromSettings(const CSettings& settings) {
  SViewState state;
  const bool known = settings.render_mode >= 0 && settings.render_mode <= static_cast<int32_t>(ERenderMode::kTextured);
  state.mode = known ? static_cast<ERenderMode>(settings.render_mode) : ERenderMode::kTextured;
  state.only_3d = settings.only_3d != 0;
  state.axes = settings.axes_3d != 0;
  state.vertices = settings.verts_3d != 0;
  state.high_quality = settings.quality_3d != 0;
  state.transparency = settings.show_trans != 0;
  state.follow_current_face = settings.follow_face != 0;
  state.orthographic = settings.orthographic != 0;
  state.grid = settings.show_grid != 0;
  state.zoom_step = settings.zoom_step;
  state.rotation = {settings.view_angle_x, settings.view_angle_y, settings.view_angle_z};
  state.background = settings.background;
  return state;
}

void SViewState::ChooseMode(ERenderMode chosen) {
  mode = chosen;
  if (chosen == ERenderMode::kVertices) vertices = true;
}

void SViewState::ZoomOut() {
  // A zoom that is one step but for rounding counts as one step.
  const double next = zoom - zoom_step;
  zoom = next > zoom_step * (1.0 + 1e-9) ? next : zoom_step;
}

void SViewState::ZoomToFit(const int32_t (&bounds)[6]) {
  double largest = 0.0;
  double squares = 0.0;
  for (int axis = 0; axis < 3; ++axis) {
    const double low = bounds[axis];
    const double high = bounds[axis + 3];
    largest = std::max({largest, std::abs(low), std::abs(high)});
    squares += (high - low) * (high - low);
  }
  extent = std::max({1.0, 2.0 * largest, std::sqrt(squares)});
  zoom = 1.0;
  pan_x = 0.0;
  pan_y = 0.0;
  center.reset();
}

}  // namespace veldra
