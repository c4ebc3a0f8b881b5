#include "render/viewcamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/glcontext.h"
#include "render/modelgeometry.h"

namespace veldra {

namespace {

using Matrix = CViewCamera::Matrix;

constexpr double kRadians = std::numbers::pi / 180.0;
constexpr double kHalfAngle = 15.0 * kRadians;
/// Air around a model that just fits.
constexpr double kMargin = 1.02;
/// What is drawn beside the model (axes, markers, grid) reaches this far in parts of the ball's radius.
constexpr double kReach = 1.7;
const double kDistance = kMargin / std::sin(kHalfAngle);
/// How far the eye stays from a model that has grown toward it, in parts of the model's reach.
constexpr double kEyeBeyondReach = 1.1;

/// VALUE, or FALLBACK where it cannot be computed with.
double Usable(double value, double smallest, double largest, double fallback) {
  return std::isfinite(value) ? std::clamp(value, smallest, largest) : fallback;
}

/// Turns from axis A toward axis B, as rows of the matrix MADE so far.
void Spin(std::array<Vector3, 3>& made, size_t a, size_t b, double degrees) {
  const double angle = std::isfinite(degrees) ? std::fmod(degrees, 360.0) * kRadians : 0.0;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  for (size_t k = 0; k < 3; ++k) {
    const double old = made[a][k];
    made[a][k] = c * old - s * made[b][k];
    made[b][k] = s * old + c * made[b][k];
  }
}

std::array<Vector3, 3> TurnOf(const SRotation& rotation) {
  std::array<Vector3, 3> made = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  Spin(made, 0, 1, rotation.z);
  Spin(made, 2, 0, rotation.y);
  Spin(made, 1, 2, rotation.x);
  return made;
}

}  // namespace

CViewCamera::CViewCamera(const SViewState& state, const SBounds& bounds, int width, int height)
    : width_(width),
      height_(height),
      orthographic_(state.orthographic),
      middle_(state.center),
      turn_(TurnOf(state.rotation)) {
  const CModelSpace space(bounds);
  unit_ = Usable(state.extent, 1e-3, 1e11, 1.0) / 2.0;
  reach_ = std::max(1.0, (Length(space.Center() - middle_) + space.Radius()) / unit_);
  distance_ = std::max(kDistance, kEyeBeyondReach * reach_);
  const double drawn = std::max(reach_, kReach);
  front_ = distance_ - drawn;
  back_ = distance_ + drawn;

  const double half_side = std::tan(kHalfAngle) * kDistance / Usable(state.zoom, 1e-6, 1e9, 1.0);
  const double smaller = std::min(width, height);
  scale_x_ = distance_ * smaller / (half_side * width);
  scale_y_ = distance_ * smaller / (half_side * height);
  pan_x_ = 2.0 * Usable(state.pan_x, -1e6, 1e6, 0.0) * smaller / width;
  pan_y_ = 2.0 * Usable(state.pan_y, -1e6, 1e6, 0.0) * smaller / height;
}

void CViewCamera::Load() const {
  Matrix projection = {};
  if (orthographic_) {
    projection[0] = scale_x_ / distance_;
    projection[5] = scale_y_ / distance_;
    projection[10] = -2.0 / (back_ - front_);
    projection[12] = pan_x_;
    projection[13] = pan_y_;
    projection[14] = -(back_ + front_) / (back_ - front_);
    projection[15] = 1.0;
  } else {
    projection[0] = scale_x_;
    projection[5] = scale_y_;
    projection[8] = -pan_x_;
    projection[9] = -pan_y_;
    projection[10] = -(back_ + front_) / (back_ - front_);
    projection[11] = -1.0;
    projection[14] = -2.0 * back_ * front_ / (back_ - front_);
  }
  Matrix view = {};
  for (size_t row = 0; row < 3; ++row)
    for (size_t column = 0; column < 3; ++column)
      view[column * 4 + row] = turn_[row][column];
  view[14] = -distance_;
  view[15] = 1.0;
  glViewport(0, 0, width_, height_);
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(projection.data());
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(view.data());
}

void CViewCamera::EnterSpace(const CModelSpace& space) const {
  const Vector3 offset = 1.0 / unit_ * (space.Center() - middle_);
  const double scale = space.Radius() / unit_;
  glTranslated(offset[0], offset[1], offset[2]);
  glScaled(scale, scale, scale);
}

void CViewCamera::EnterModel(double scale) const {
  glScaled(1.0 / unit_, 1.0 / unit_, 1.0 / unit_);
  glTranslated(-middle_[0], -middle_[1], -middle_[2]);
  glScaled(scale, scale, scale);
}

/// POINT of the model as the eye at the origin has it, which looks along -z.
Vector3 CViewCamera::Eye(const Vector3& point) const {
  const Vector3 seen = point - middle_;
  return {Dot(turn_[0], seen) / unit_, Dot(turn_[1], seen) / unit_, Dot(turn_[2], seen) / unit_ - distance_};
}

/// What the scale of the picture is divided by there.
double CViewCamera::Depth(const Vector3& eye) const {
  return orthographic_ ? distance_ : -eye[2];
}

SScreenPoint CViewCamera::Project(const Vector3& point) const {
  const Vector3 eye = Eye(point);
  const double depth = Depth(eye);
  const double z = orthographic_ ? (-2.0 * eye[2] - (back_ + front_)) / (back_ - front_)
                                 : ((back_ + front_) * depth - 2.0 * back_ * front_) / ((back_ - front_) * depth);
  return {.x = (1.0 + pan_x_ + scale_x_ * eye[0] / depth) / 2.0 * width_,
          .y = (1.0 - pan_y_ - scale_y_ * eye[1] / depth) / 2.0 * height_,
          .depth = (z + 1.0) / 2.0};
}

Vector3 CViewCamera::Movement(const Vector3& at, double right, double down) const {
  const double depth = Depth(Eye(at));
  const double x = right * 2.0 / width_ * depth / scale_x_ * unit_;
  const double y = -down * 2.0 / height_ * depth / scale_y_ * unit_;
  return {turn_[0][0] * x + turn_[1][0] * y, turn_[0][1] * x + turn_[1][1] * y, turn_[0][2] * x + turn_[1][2] * y};
}

std::array<double, 2> CViewCamera::Pixels(const Vector3& at, const Vector3& direction) const {
  const Vector3 eye = Eye(at);
  const double depth = Depth(eye);
  const double toward = orthographic_ ? 0.0 : Dot(turn_[2], direction) / depth;
  return {scale_x_ * width_ / 2.0 * (Dot(turn_[0], direction) + eye[0] * toward) / depth / unit_,
          -scale_y_ * height_ / 2.0 * (Dot(turn_[1], direction) + eye[1] * toward) / depth / unit_};
}

Vector3 CViewCamera::TowardViewer(const SPoint& at) const {
  if (orthographic_) return turn_[2];
  return distance_ * unit_ * turn_[2] - (ToVector(at) - middle_);
}

}  // namespace veldra
