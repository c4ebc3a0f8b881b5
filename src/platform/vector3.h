#pragma once

#include <array>
#include <cmath>

/// Arithmetic with points and directions in space.
namespace veldra {

/// x, y and z. A plain array, so that what counts axes can.
using Vector3 = std::array<double, 3>;

constexpr Vector3 operator+(const Vector3& a, const Vector3& b) {
  return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
constexpr Vector3 operator-(const Vector3& a, const Vector3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
constexpr Vector3 operator*(double factor, const Vector3& a) {
  return {factor * a[0], factor * a[1], factor * a[2]};
}
constexpr double Dot(const Vector3& a, const Vector3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
constexpr Vector3 Cross(const Vector3& a, const Vector3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double Length(const Vector3& a) {
  return std::sqrt(Dot(a, a));
}
/// A, which is not zero, with length 1.
inline Vector3 Normalized(const Vector3& a) {
  return 1.0 / Length(a) * a;
}

}  // namespace veldra
