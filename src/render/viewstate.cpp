#include "render/viewstate.h"

#include <algorithm>

#include "model/geometry.h"

namespace veldra {

SViewState SViewState::FromSettings(const CSettings& settings) {
  SViewState state;
  const bool known = settings.render_mode >= 0 && settings.render_mode <= static_cast<int32_t>(ERenderMode::kTextured);
  state.mode = known ? static_cast<ERenderMode>(settings.render_mode) : ERenderMode::kTextured;
  state.only_3d = settings.only_3d != 0;
  state.axes = settings.axes_3d != 0;
  state.vertices = settings.verts_3d != 0;
  state.vertex_numbers = settings.vertex_numbers != 0;
  state.high_quality = settings.quality_3d != 0;
  state.transparency = settings.show_trans != 0;
  state.follow_current_face = settings.follow_face != 0;
  state.orthographic = settings.orthographic != 0;
  state.grid = settings.show_grid != 0;
  state.gizmo = settings.show_gizmo != 0;
  state.edges = settings.show_edges != 0;
  state.select_through = settings.select_through != 0;
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

bool SViewState::ShowsMarkers(const CBinModel& model) const {
  return mode == ERenderMode::kVertices || (vertices && !only_3d) || model.FaceCount() == 0;
}

bool SViewState::Shows(const CBinModel& model, const CBinVertex& vertex) const {
  return !vertex.IsHidden() && (!vertex.Faces().Empty() || ShowsMarkers(model));
}

void SViewState::ZoomToFit(const SBounds& bounds) {
  const Vector3 low = ToVector(bounds.min);
  const Vector3 high = ToVector(bounds.max);
  extent = std::max(1.0, Length(high - low));
  center = 0.5 * (low + high);
  zoom = 1.0;
  pan_x = 0.0;
  pan_y = 0.0;
}

}  // namespace veldra
