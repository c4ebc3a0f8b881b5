#include "view/orbit.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veldra {

namespace {

constexpr double kRadians = std::numbers::pi / 180.0;

struct SMatrix {
  double at[3][3];
};

SMatrix Multiply(const SMatrix& a, const SMatrix& b) {
  SMatrix product = {};
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column)
      for (int k = 0; k < 3; ++k)
        product.at[row][column] += a.at[row][k] * b.at[k][column];
  return product;
}

SMatrix AboutX(double degrees) {
  const double c = std::cos(degrees * kRadians);
  const double s = std::sin(degrees * kRadians);
  return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
}

SMatrix AboutY(double degrees) {
  const double c = std::cos(degrees * kRadians);
  const double s = std::sin(degrees * kRadians);
  return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
}

SMatrix AboutZ(double degrees) {
  const double c = std::cos(degrees * kRadians);
  const double s = std::sin(degrees * kRadians);
  return {{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}};
}

/// The angles about Z first, then Y, then X that make up MATRIX. Where Y is a right angle, X and Z turn about the same
/// line, and Z is taken as zero.
SRotation AnglesOf(const SMatrix& matrix) {
  const auto& m = matrix.at;
  const double sine = std::clamp(m[0][2], -1.0, 1.0);
  constexpr double kRightAngle = 1.0 - 1e-12;
  if (std::abs(sine) > kRightAngle)
    return {.x = std::atan2(m[2][1], m[1][1]) / kRadians, .y = std::asin(sine) / kRadians, .z = 0.0};
  return {.x = std::atan2(-m[1][2], m[2][2]) / kRadians,
          .y = std::asin(sine) / kRadians,
          .z = std::atan2(-m[0][1], m[0][0]) / kRadians};
}

}  // namespace

SRotation Turned(const SRotation& rotation, const STurn& turn) {
  const SMatrix before = Multiply(AboutX(rotation.x), Multiply(AboutY(rotation.y), AboutZ(rotation.z)));
  const SMatrix on_screen = Multiply(AboutX(turn.screen_x), AboutZ(turn.screen_z));
  return AnglesOf(Multiply(on_screen, Multiply(before, AboutY(turn.model_y))));
}

}  // namespace veldra
