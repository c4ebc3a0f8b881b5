#include "render/viewcamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/glcontext.h"
#include "render/modelgeometry.h"

namespace veldra {

namespace {

using Vector = CViewCamera::Vector;
using Matrix = CViewCamera::Matrix;

constexpr double kRadians = std::numbers::pi / 180.0;
constexpr double kHalfAngle = 15.0 * kRadians;
/// Air around a model that just fits.
constexpr double kMargin = 1.02;
/// What is drawn beside the model (axes, markers, grid) reaches this far in parts of the ball's radius.
constexpr double kReach = 1.7;
const double kDistance = kMargin / std::sin(kHalfAngle);

/// VALUE, or FALLBACK where it cannot be computed with.
double Usable(double value, double smallest, double largest, double fallback) {
  return std::isfinite(value) ? std::clamp(value, smallest, largest) : fallback;
}

double Dot(const Vector& a, const Vector& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Minus(const Vector& a, const Vector& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Vector Of(const SPoint& point) {
  return {double(point.x), double(point.y), double(point.z)};
}

/// Turns from axis A toward axis B, as rows of the matrix MADE so far.
void Spin(std::array<Vector, 3>& made, size_t a, size_t b, double degrees) {
  const double angle = std::isfinite(degrees) ? std::fmod(degrees, 360.0) * kRadians : 0.0;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  for (size_t k = 0; k < 3; ++k) {
    const double old = made[a][k];
    made[a][k] = c * old - s * made[b][k];
    made[b][k] = s * old + c * made[b][k];
  }
}

std::array<Vector, 3> TurnOf(const SRotation& rotation) {
  std::array<Vector, 3> made = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  Spin(made, 0, 1, rotation.z);
  Spin(made, 2, 0, rotation.y);
  Spin(made, 1, 2, rotation.x);
  return made;
}

}  // namespace

CViewCamera::CViewCamera(const SViewState& state, const SBounds& bounds, int width, int height)
    : CViewCamera(state, CModelSpace(bounds).Center(), CModelSpace(bounds).Radius(), width, height) {}

CViewCamera::CViewCamera(const SViewState& state, const Vector& center, double radius, int width, int height)
    : width_(width), height_(height), orthographic_(state.orthographic), turn_(TurnOf(state.rotation)) {
  middle_ = state.center.value_or(center);
  const Vector off = Minus(center, middle_);
  const double extent = Usable(state.extent, 1e-3, 1e11, 1.0);
  unit_ = std::max(extent / 2.0, std::sqrt(Dot(off, off)) + radius);
  space_offset_ = {off[0] / unit_, off[1] / unit_, off[2] / unit_};
  space_scale_ = radius / unit_;

  const double shown_radius = extent / 2.0 / unit_;
  const double half_side = std::tan(kHalfAngle) * shown_radius / Usable(state.zoom, 1e-6, 1e9, 1.0);
  const double smaller = std::min(width, height);
  scale_x_ = smaller / (half_side * width);
  scale_y_ = smaller / (half_side * height);
  pan_x_ = 2.0 * Usable(state.pan_x, -1e6, 1e6, 0.0) * smaller / width;
  pan_y_ = 2.0 * Usable(state.pan_y, -1e6, 1e6, 0.0) * smaller / height;
}

void CViewCamera::Load() const {
  const double front = kDistance - kReach;
  const double back = kDistance + kReach;
  Matrix projection = {};
  if (orthographic_) {
    projection[0] = scale_x_ / kDistance;
    projection[5] = scale_y_ / kDistance;
    projection[10] = -2.0 / (back - front);
    projection[12] = pan_x_;
    projection[13] = pan_y_;
    projection[14] = -(back + front) / (back - front);
    projection[15] = 1.0;
  } else {
    projection[0] = scale_x_;
    projection[5] = scale_y_;
    projection[8] = -pan_x_;
    projection[9] = -pan_y_;
    projection[10] = -(back + front) / (back - front);
    projection[11] = -1.0;
    projection[14] = -2.0 * back * front / (back - front);
  }
  Matrix view = {};
  for (size_t row = 0; row < 3; ++row)
    for (size_t column = 0; column < 3; ++column)
      view[column * 4 + row] = turn_[row][column];
  view[14] = -kDistance;
  view[15] = 1.0;
  glViewport(0, 0, width_, height_);
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(projection.data());
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(view.data());
}

void CViewCamera::EnterModelSpace() const {
  glTranslated(space_offset_[0], space_offset_[1], space_offset_[2]);
  glScaled(space_scale_, space_scale_, space_scale_);
}

/// POINT of the model as the eye at the origin has it, which looks along -z.
Vector CViewCamera::Eye(const Vector& point) const {
  const Vector seen = Minus(point, middle_);
  return {Dot(turn_[0], seen) / unit_, Dot(turn_[1], seen) / unit_, Dot(turn_[2], seen) / unit_ - kDistance};
}

/// What the scale of the picture is divided by there.
double CViewCamera::Depth(const Vector& eye) const {
  return orthographic_ ? kDistance : -eye[2];
}

SScreenPoint CViewCamera::Project(const SPoint& point) const {
  const double front = kDistance - kReach;
  const double back = kDistance + kReach;
  const Vector eye = Eye(Of(point));
  const double depth = Depth(eye);
  const double z = orthographic_ ? (-2.0 * eye[2] - (back + front)) / (back - front)
                                 : ((back + front) * depth - 2.0 * back * front) / ((back - front) * depth);
  return {.x = (1.0 + pan_x_ + scale_x_ * eye[0] / depth) / 2.0 * width_,
          .y = (1.0 - pan_y_ - scale_y_ * eye[1] / depth) / 2.0 * height_,
          .depth = (z + 1.0) / 2.0};
}

Vector CViewCamera::Movement(const SPoint& at, double right, double down) const {
  const double depth = Depth(Eye(Of(at)));
  const double x = right * 2.0 / width_ * depth / scale_x_ * unit_;
  const double y = -down * 2.0 / height_ * depth / scale_y_ * unit_;
  return {turn_[0][0] * x + turn_[1][0] * y, turn_[0][1] * x + turn_[1][1] * y, turn_[0][2] * x + turn_[1][2] * y};
}

std::array<double, 2> CViewCamera::Pixels(const SPoint& at, const Vector& direction) const {
  const Vector eye = Eye(Of(at));
  const double depth = Depth(eye);
  const double toward = orthographic_ ? 0.0 : Dot(turn_[2], direction) / depth;
  return {scale_x_ * width_ / 2.0 * (Dot(turn_[0], direction) + eye[0] * toward) / depth / unit_,
          -scale_y_ * height_ / 2.0 * (Dot(turn_[1], direction) + eye[1] * toward) / depth / unit_};
}

Vector CViewCamera::TowardViewer(const SPoint& at) const {
  if (orthographic_) return turn_[2];
  const Vector seen = Minus(Of(at), middle_);
  const double distance = kDistance * unit_;
  return {turn_[2][0] * distance - seen[0], turn_[2][1] * distance - seen[1], turn_[2][2] * distance - seen[2]};
}

double SetCamera(const SViewState& state, double radius, int width, int height) {
  const CViewCamera camera(state, CViewCamera::Vector{}, radius, width, height);
  camera.Load();
  return radius / camera.Unit();
}

}  // namespace veldra
