#include "render/viewaim.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

#include "model/normals.h"
#include "platform/numbers.h"

namespace veldra {

namespace {

constexpr double kDegrees = 180.0 / std::numbers::pi;
/// A face is seen when it is turned toward the viewer by so much: the sine of the angle between it and the line of
/// sight, 20 degrees.
constexpr double kLeastSine = 0.342;
/// Of the window's sides, when a model is framed in it.
constexpr double kFramed = 0.9;
/// The window's rim, in parts of its sides, does not count as in sight.
constexpr double kRim = 0.04;

SPoint MiddleOf(const CBinFace& face) {
  Vector3 sum = {};
  for (const CBinVertex* corner : face.Corners())
    sum = sum + ToVector(corner->Position());
  const double count = face.CornerCount();
  return {Truncate(sum[0] / count), Truncate(sum[1] / count), Truncate(sum[2] / count)};
}

bool FacesViewer(const SUnitNormal& normal, const Vector3& toward) {
  return Dot({normal.x, normal.y, normal.z}, toward) >= kLeastSine * Length(toward);
}

/// Pixels in a window, from its upper left corner.
struct SSeen {
  double left = std::numeric_limits<double>::infinity();
  double top = left;
  double right = -left;
  double bottom = -left;

  void Add(const SScreenPoint& at) {
    left = std::min(left, at.x);
    right = std::max(right, at.x);
    top = std::min(top, at.y);
    bottom = std::max(bottom, at.y);
  }
};

void Widen(SBounds& bounds, const SPoint& point) {
  for (const EAxis axis : {EAxis::kX, EAxis::kY, EAxis::kZ}) {
    Coordinate(bounds.min, axis) = std::min(Coordinate(bounds.min, axis), Coordinate(point, axis));
    Coordinate(bounds.max, axis) = std::max(Coordinate(bounds.max, axis), Coordinate(point, axis));
  }
}

}  // namespace

SRotation RotationFor(EViewSide side) {
  constexpr std::array<SRotation, 6> kRotations = {
      {{0, 0, 0}, {0, 180, 0}, {0, 90, 0}, {0, -90, 0}, {90, 0, 0}, {-90, 0, 0}}};
  return kRotations[static_cast<size_t>(side)];
}

SBounds ShownBounds(const SViewState& state, const CBinModel& model) {
  std::optional<SBounds> bounds;
  for (int32_t k = 0; k < model.VertexCount(); ++k) {
    const CBinVertex& vertex = model.Vertex(k);
    if (!state.Shows(model, vertex)) continue;
    if (!bounds) bounds = {vertex.Position(), vertex.Position()};
    Widen(*bounds, vertex.Position());
  }
  return bounds.value_or(model.Bounds());
}

void Frame(SViewState& state, const CBinModel& model, int width, int height) {
  state.ZoomToFit(ShownBounds(state, model));
  if (width <= 0 || height <= 0) return;
  const CViewCamera camera(state, model.Bounds(), width, height);
  SSeen seen;
  for (int32_t k = 0; k < model.VertexCount(); ++k)
    if (state.Shows(model, model.Vertex(k))) seen.Add(camera.Project(model.Vertex(k).Position()));
  const double zoom = kFramed * std::min(width / (seen.right - seen.left), height / (seen.bottom - seen.top));
  if (!(zoom > 0.0) || !std::isfinite(zoom)) return;
  const double smaller = std::min(width, height);
  state.zoom = std::clamp(zoom, state.zoom_step, SViewState::kLargestZoom);
  state.pan_x = -state.zoom * ((seen.left + seen.right) / 2.0 - width / 2.0) / smaller;
  state.pan_y = state.zoom * ((seen.top + seen.bottom) / 2.0 - height / 2.0) / smaller;
}

bool IsInSight(const CViewCamera& camera, const SBounds& bounds) {
  SSeen seen;
  for (const int32_t x : {bounds.min.x, bounds.max.x})
    for (const int32_t y : {bounds.min.y, bounds.max.y})
      for (const int32_t z : {bounds.min.z, bounds.max.z})
        seen.Add(camera.Project(SPoint{x, y, z}));
  return seen.left >= 0.0 && seen.top >= 0.0 && seen.right <= camera.Width() && seen.bottom <= camera.Height();
}

void FollowWhatLeft(SViewState& state, const SBounds& bounds) {
  const Vector3 low = ToVector(bounds.min);
  const Vector3 high = ToVector(bounds.max);
  Vector3 nearest = {};
  for (size_t axis = 0; axis < 3; ++axis)
    nearest[axis] = std::clamp(state.center[axis], low[axis], high[axis]);
  if (Length(nearest - state.center) > state.extent / 2.0) state.center = 0.5 * (low + high);
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
