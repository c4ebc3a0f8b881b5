#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "model/helperclasses.h"
#include "platform/vector3.h"

/// Questions about integer points whose answer must not depend on rounding.
namespace veldra {

__extension__ using Int128 = __int128;

/// x, y and z; exact for all points that there are.
using ExactVector = std::array<Int128, 3>;

constexpr ExactVector ExactDifference(const SPoint& to, const SPoint& from) {
  return {Int128{to.x} - from.x, Int128{to.y} - from.y, Int128{to.z} - from.z};
}

constexpr ExactVector ExactCross(const ExactVector& a, const ExactVector& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Twice the area of a triangle or a quad, in the direction of its normal; zero for one without area.
constexpr ExactVector ExactArea(std::span<const SPoint> corners) {
  if (corners.size() == 3)
    return ExactCross(ExactDifference(corners[1], corners[0]), ExactDifference(corners[2], corners[0]));
  return ExactCross(ExactDifference(corners[2], corners[0]), ExactDifference(corners[3], corners[1]));
}

/// Six times the volume of a tetrahedron: positive when D lies on the side of A, B, C from which these go round
/// counter-clockwise, 0 when all lie in one plane.
constexpr Int128 ExactVolume(const SPoint& a, const SPoint& b, const SPoint& c, const SPoint& d) {
  const ExactVector area = ExactCross(ExactDifference(b, a), ExactDifference(c, a));
  const ExactVector to = ExactDifference(d, a);
  return area[0] * to[0] + area[1] * to[1] + area[2] * to[2];
}

constexpr Vector3 ToVector(const ExactVector& v) {
  return {static_cast<double>(v[0]), static_cast<double>(v[1]), static_cast<double>(v[2])};
}

/// The axis along which V is longest, either way; of equal ones x before y before z.
constexpr size_t LongestAxis(const ExactVector& v) {
  size_t longest = 0;
  const auto length = [&](size_t axis) { return v[axis] < 0 ? -v[axis] : v[axis]; };
  for (size_t axis = 1; axis < 3; ++axis)
    if (length(axis) > length(longest)) longest = axis;
  return longest;
}

}  // namespace veldra
