#include "render/viewaim.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "model/normals.h"
#include "platform/numbers.h"
#include "render/viewcamera.h"

namespace veldra {

namespace {

constexpr double kDegrees = 180.0 / std::numbers::pi;
/// A face is seen when it is turned toward the viewer by so much: the sine of the angle between it and the line of
/// sight.
constexpr double kLeastSine = 0.15;
/// The window's rim, in parts of its sides, does not count as in sight.
constexpr double kRim = 0.04;

SPoint MiddleOf(const CBinFace& face) {
  CViewCamera::Vector sum = {};
  for (const CBinVertex* corner : face.Corners()) {
    const SPoint& at = corner->Position();
    sum = {sum[0] + at.x, sum[1] + at.y, sum[2] + at.z};
  }
  const double count = face.CornerCount();
  return {Truncate(sum[0] / count), Truncate(sum[1] / count), Truncate(sum[2] / count)};
}

bool FacesViewer(const SUnitNormal& normal, const CViewCamera::Vector& toward) {
  const double length = std::hypot(toward[0], toward[1], toward[2]);
  return normal.x * toward[0] + normal.y * toward[1] + normal.z * toward[2] >= kLeastSine * length;
}

}  // namespace

SRotation RotationFor(EViewSide side) {
  constexpr std::array<SRotation, 6> kRotations = {
      {{0, 0, 0}, {0, 180, 0}, {0, 90, 0}, {0, -90, 0}, {90, 0, 0}, {-90, 0, 0}}};
  return kRotations[static_cast<size_t>(side)];
}

bool BringIntoSight(SViewState& state, const CBinModel& model, const CBinFace& face, int width, int height) {
  if (width <= 0 || height <= 0) return false;
  bool is_changed = false;
  CalcFaceNormal(face);
  const SUnitNormal& normal = face.UnitNormal();
  const SPoint middle = MiddleOf(face);
  const bool has_front = normal.x != 0.0 || normal.y != 0.0 || normal.z != 0.0;
  if (has_front && !FacesViewer(normal, CViewCamera(state, model.Bounds(), width, height).TowardViewer(middle))) {
    // Upright, as far as the face lets it; one that lies flat is seen from where the view is now.
    const bool is_flat = std::hypot(normal.x, normal.z) < 1e-6;
    state.rotation = {.x = std::asin(std::clamp(normal.y, -1.0, 1.0)) * kDegrees,
                      .y = is_flat ? state.rotation.y : -std::atan2(normal.x, normal.z) * kDegrees,
                      .z = 0.0};
    is_changed = true;
  }
  const SScreenPoint at = CViewCamera(state, model.Bounds(), width, height).Project(middle);
  const bool is_inside =
      at.x >= width * kRim && at.x <= width * (1.0 - kRim) && at.y >= height * kRim && at.y <= height * (1.0 - kRim);
  if (is_inside) return is_changed;
  const double smaller = std::min(width, height);
  state.pan_x -= (at.x - width / 2.0) / smaller;
  state.pan_y += (at.y - height / 2.0) / smaller;
  return true;
}

}  // namespace veldra
