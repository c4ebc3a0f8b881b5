#include "model/flatten.h"

#include <cmath>

#include "model/facedraft.h"
#include "model/normals.h"
#include "platform/numbers.h"

namespace veldra {

namespace {

using Matrix3 = std::array<Vector3, 3>;

/// Turns the symmetric MATRIX so that its place P, Q becomes 0, and AXES, its rows, with it.
void TurnAway(Matrix3& matrix, Matrix3& axes, size_t p, size_t q) {
  if (matrix[p][q] == 0.0) return;
  const double angle = 0.5 * std::atan2(2.0 * matrix[p][q], matrix[q][q] - matrix[p][p]);
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const auto turn = [&](Matrix3& rows) {
    const Vector3 old = rows[p];
    rows[p] = c * old - s * rows[q];
    rows[q] = s * old + c * rows[q];
  };
  turn(matrix);
  for (Vector3& row : matrix) {
    const double old = row[p];
    row[p] = c * old - s * row[q];
    row[q] = s * old + c * row[q];
  }
  turn(axes);
}

/// The direction in which the symmetric MATRIX stretches least: Jacobi's method, which needs no more than this.
Vector3 LeastAxis(Matrix3 matrix) {
  constexpr int kRounds = 12;
  Matrix3 axes = {Vector3{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  for (int round = 0; round < kRounds; ++round) {
    TurnAway(matrix, axes, 0, 1);
    TurnAway(matrix, axes, 0, 2);
    TurnAway(matrix, axes, 1, 2);
  }
  size_t least = 0;
  for (size_t k = 1; k < 3; ++k)
    if (matrix[k][k] < matrix[least][least]) least = k;
  return Normalized(axes[least]);
}

}  // namespace

SPlane FittingPlane(const CBinModel& model, std::span<const int32_t> vertices) {
  Vector3 middle = {};
  for (const int32_t vertex : vertices)
    middle = middle + facedraft::PositionOf(model, vertex);
  middle = 1.0 / static_cast<double>(vertices.size()) * middle;
  Matrix3 spread = {};
  for (const int32_t vertex : vertices) {
    const Vector3 arm = facedraft::PositionOf(model, vertex) - middle;
    for (size_t k = 0; k < 3; ++k)
      spread[k] = spread[k] + arm[k] * arm;
  }
  return {.point = middle, .normal = LeastAxis(spread)};
}

std::optional<SPlane> PlaneOf(const CBinFace& face) {
  CalcFaceNormal(face);
  const SUnitNormal& unit = face.UnitNormal();
  if (unit.x == 0.0 && unit.y == 0.0 && unit.z == 0.0) return std::nullopt;
  Vector3 middle = {};
  for (const CBinVertex* corner : face.Corners())
    middle = middle + 1.0 / face.CornerCount() * ToVector(corner->Position());
  return SPlane{.point = middle, .normal = {unit.x, unit.y, unit.z}};
}

GeometryFault PositionsInPlane(const CBinModel& model, std::span<const int32_t> vertices, const SPlane& plane,
                               std::vector<SPoint>& positions) {
  positions.clear();
  for (const int32_t vertex : vertices) {
    const Vector3 from = facedraft::PositionOf(model, vertex);
    const Vector3 to = from - Dot(from - plane.point, plane.normal) * plane.normal;
    for (const double value : to)
      if (!TryTruncate(std::round(value))) return "The vertices would not fit in 32 bits.";
    positions.push_back(facedraft::Nearest(to));
  }
  return "";
}

}  // namespace veldra
