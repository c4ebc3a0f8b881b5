#include "view/viewcamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/glcontext.h"

namespace veldra {

namespace {

constexpr double kHalfAngle = 15.0 * std::numbers::pi / 180.0;
/// Air around a model that just fits.
constexpr double kMargin = 1.02;
/// What is drawn beside the model (axes, markers) reaches this far in parts of its radius.
constexpr double kReach = 1.3;

/// VALUE, or FALLBACK where it cannot be computed with.
double Usable(double value, double smallest, double largest, double fallback) {
  return std::isfinite(value) ? std::clamp(value, smallest, largest) : fallback;
}

double UsableAngle(double degrees) {
  return std::isfinite(degrees) ? std::fmod(degrees, 360.0) : 0.0;
}

void SetProjection(const SViewState& state, double shown_radius, double distance, int width, int height) {
  const double near_plane = distance - kReach;
  const double far_plane = distance + kReach;
  const double zoom = Usable(state.zoom, 1e-6, 1e9, 1.0);
  const double smaller = std::min(width, height);
  const double half_side = near_plane * std::tan(kHalfAngle) * shown_radius / zoom;
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glTranslated(2.0 * Usable(state.pan_x, -1e6, 1e6, 0.0) * smaller / width,
               2.0 * Usable(state.pan_y, -1e6, 1e6, 0.0) * smaller / height, 0.0);
  glScaled(near_plane * smaller / (half_side * width), near_plane * smaller / (half_side * height), 1.0);
  // What glFrustum would set up, with the window's scale taken out: its sides may be too small for it to divide by.
  glFrustum(-near_plane, near_plane, -near_plane, near_plane, near_plane, far_plane);
}

}  // namespace

double SetCamera(const SViewState& state, double model_radius, int width, int height) {
  const double extent = Usable(state.extent, 1e-3, 1e11, 1.0);
  const double unit = std::max(extent / 2.0, model_radius);
  const double distance = kMargin / std::sin(kHalfAngle);
  glViewport(0, 0, width, height);
  SetProjection(state, extent / 2.0 / unit, distance, width, height);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glTranslated(0.0, 0.0, -distance);
  glRotated(UsableAngle(state.rotation.x), 1.0, 0.0, 0.0);
  glRotated(UsableAngle(state.rotation.y), 0.0, 1.0, 0.0);
  glRotated(UsableAngle(state.rotation.z), 0.0, 0.0, 1.0);
  return model_radius / unit;
}

}  // namespace veldra
