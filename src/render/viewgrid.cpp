#include "render/viewgrid.h"

#include <algorithm>
#include <cmath>

#include "render/glstate.h"
#include "render/modelgeometry.h"
#include "render/viewmarkers.h"

namespace veldra {

namespace {

/// How far the grid reaches, in parts of what the model does.
constexpr double kHalfSide = 0.95;
constexpr double kMostLines = 120.0;
constexpr double kCellsInSight = 12.0;
/// Every so many lines one is stronger.
constexpr int kStrongEvery = 10;

/// The smallest round number that is not below VALUE, nor below 1.
double RoundedUp(double value) {
  if (!(value > 1.0)) return 1.0;
  const double power = std::pow(10.0, std::floor(std::log10(value)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (factor * power >= value * (1.0 - 1e-9)) return factor * power;
  return 10.0 * power;
}

/// DEGREES is a whole number of STEPs, within what turning there adds up to.
bool IsMultiple(double degrees, double step) {
  return std::abs(std::remainder(degrees, step)) < 0.01;
}

SColor Between(const SColor& a, const SColor& b, double share) {
  const auto mix = [share](uint8_t from, uint8_t to) { return static_cast<uint8_t>(from + (to - from) * share); };
  return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue)};
}

/// The axis that stands upright on the grid, and where on it the grid is.
struct SPlane {
  size_t axis = 1;
  double at = 0.0;
};

SPlane PlaneOf(const SGrid& grid, const SBounds& bounds, const CViewCamera& camera) {
  if (!grid.is_upright) return {.axis = 1, .at = double(bounds.min.y)};
  const Vector3 toward = camera.TowardViewer({});
  const size_t axis = std::abs(toward[0]) > std::abs(toward[2]) ? 0 : 2;
  const CModelSpace space(bounds);
  const SPoint far_end = toward[axis] > 0.0 ? bounds.min : bounds.max;
  return {.axis = axis, .at = axis == 0 ? double(far_end.x) : double(far_end.z)};
}

/// The two ends of each line of every STEP-th multiple of the spacing, but for those that a coarser grid has.
std::vector<FloatPoint> Lines(const SPlane& plane, double spacing, int skipped_step, const CViewCamera& camera) {
  const double half_side = kHalfSide * camera.Reach();
  const double half = half_side * camera.Unit();
  const size_t across[] = {(plane.axis + 1) % 3, (plane.axis + 2) % 3};
  std::vector<FloatPoint> ends;
  for (const size_t axis : across) {
    const size_t along = across[0] == axis ? across[1] : across[0];
    const double middle = camera.Middle()[axis];
    const double first = std::ceil((middle - half) / spacing);
    const double last = std::floor((middle + half) / spacing);
    for (double line = first; line <= last; ++line) {
      if (skipped_step != 0 && std::fmod(line, skipped_step) == 0.0) continue;
      FloatPoint point = {};
      point[axis] = static_cast<float>((line * spacing - middle) / camera.Unit());
      point[plane.axis] = static_cast<float>((plane.at - camera.Middle()[plane.axis]) / camera.Unit());
      for (const double end : {-half_side, half_side}) {
        point[along] = static_cast<float>(end);
        ends.push_back(point);
      }
    }
  }
  return ends;
}

void DrawLines(const std::vector<FloatPoint>& ends, const SColor& color) {
  if (ends.empty()) return;
  SetColor(color);
  glInterleavedArrays(GL_V3F, 0, ends.data());
  glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(ends.size()));
}

}  // namespace

SGrid GridFor(const SViewState& state, const CViewCamera& camera) {
  const double extent = std::isfinite(state.extent) ? state.extent : 1.0;
  const double zoom = std::isfinite(state.zoom) && state.zoom > 0.0 ? state.zoom : 1.0;
  const double wanted =
      std::max(extent / zoom / kCellsInSight, 2.0 * kHalfSide * camera.Reach() * camera.Unit() / kMostLines);
  const SRotation& turned = state.rotation;
  const bool is_upright = IsMultiple(turned.x, 360.0) && IsMultiple(turned.y, 90.0) && IsMultiple(turned.z, 180.0);
  return {.spacing = RoundedUp(wanted), .is_upright = is_upright};
}

void DrawGrid(const SGrid& grid, const SViewState& state, const SBounds& bounds, const CViewCamera& camera,
              double pixel_ratio) {
  const SPlane plane = PlaneOf(grid, bounds, camera);
  const SColor line = SInk::For(state.background).line;
  glLineWidth(static_cast<float>(pixel_ratio));
  glDepthMask(GL_FALSE);
  DrawLines(Lines(plane, grid.spacing, kStrongEvery, camera), Between(state.background, line, 0.22));
  DrawLines(Lines(plane, grid.spacing * kStrongEvery, 0, camera), Between(state.background, line, 0.5));
  glDepthMask(GL_TRUE);
}

}  // namespace veldra
