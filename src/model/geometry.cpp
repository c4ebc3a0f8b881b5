#include "model/geometry.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <numeric>

#include "platform/assert.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr char kAxisNames[] = {'x', 'y', 'z'};
constexpr SPoint kAxisUnits[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

/// What the mark at each index says, as ascending indices.
std::vector<int32_t> MarkedIndices(const std::vector<bool>& marks) {
  std::vector<int32_t> indices;
  for (size_t i = 0; i < marks.size(); ++i) {
    if (marks[i]) indices.push_back(static_cast<int32_t>(i));
  }
  return indices;
}

/// Where MOVE would bring POINTS, truncated. NAMES of the points for who reads a fault; may be empty.
GeometryFault TruncatedPoints(std::span<const SPoint> points, std::span<const int32_t> names,
                              const std::function<Vector3(const SPoint&)>& move, std::vector<SPoint>& moved) {
  moved.resize(points.size());
  for (size_t i = 0; i < points.size(); ++i) {
    const Vector3 exact = move(points[i]);
    for (size_t axis = 0; axis < 3; ++axis) {
      const auto whole = TryTruncate(exact[axis]);
      if (!whole) {
        return Format("Vertex %d would get %c = %.10g, which does not fit in 32 bits.",
                      names.empty() ? static_cast<int32_t>(i) : names[i], kAxisNames[axis], exact[axis]);
      }
      Coordinate(moved[i], static_cast<EAxis>(axis)) = *whole;
    }
  }
  return "";
}

std::vector<int32_t> AllVertices(const CBinModel& model) {
  std::vector<int32_t> all(static_cast<size_t>(model.VertexCount()));
  std::iota(all.begin(), all.end(), 0);
  return all;
}

std::vector<SPoint> PositionsOf(const CBinModel& model, std::span<const int32_t> vertices) {
  std::vector<SPoint> positions;
  positions.reserve(vertices.size());
  for (const int32_t index : vertices)
    positions.push_back(model.Vertex(index).Position());
  return positions;
}

using Movement = std::function<Vector3(const SPoint&)>;

Movement ResizeMovement(double sx, double sy, double sz, const Vector3& pivot) {
  return [=](const SPoint& p) {
    const Vector3 arm = ToVector(p) - pivot;
    return pivot + Vector3{arm[0] * sx, arm[1] * sy, arm[2] * sz};
  };
}

struct SSineCosine {
  double sine;
  double cosine;
};

/// Multiples of 30 degrees are taken from a table: the library's sine of 180 degrees is not 0 and that of 30 degrees
/// is a little below 1/2, which truncation would turn into a whole unit.
SSineCosine SineCosine(double angle, bool radians) {
  constexpr double kClose = 1e-12;  // radians
  const double half_root = std::sqrt(3.0) / 2;
  const double sines[12] = {0, 0.5, half_root, 1, half_root, 0.5, 0, -0.5, -half_root, -1, -half_root, -0.5};
  const double to_radians = radians ? 1.0 : std::numbers::pi / 180;
  const double step = radians ? std::numbers::pi / 6 : 30.0;
  const double rest = std::remainder(angle, step);
  if (!(std::abs(rest * to_radians) <= kClose)) return {std::sin(angle * to_radians), std::cos(angle * to_radians)};
  const double turn = std::fmod(std::round((angle - rest) / step), 12.0);
  const auto twelfth = static_cast<size_t>(turn < 0 ? turn + 12 : turn);
  return {sines[twelfth], sines[(twelfth + 3) % 12]};
}

Movement Turn(EAxis axis, double angle, bool radians, const Vector3& pivot) {
  const auto [s, c] = SineCosine(angle, radians);
  const auto along = static_cast<size_t>(axis);
  const size_t from = (along + 1) % 3;
  const size_t to = (along + 2) % 3;
  return [=, sine = s, cosine = c](const SPoint& p) {
    const Vector3 arm = ToVector(p) - pivot;
    Vector3 turned = arm;
    turned[from] = arm[from] * cosine - arm[to] * sine;
    turned[to] = arm[from] * sine + arm[to] * cosine;
    return pivot + turned;
  };
}

/// Faces of which every corner is among VERTICES.
std::vector<int32_t> FacesWithin(const CBinModel& model, std::span<const int32_t> vertices) {
  std::vector<bool> inside(static_cast<size_t>(model.VertexCount()));
  for (const int32_t index : vertices)
    inside[static_cast<size_t>(index)] = true;
  std::vector<int32_t> faces;
  for (int32_t i = 0; i < model.FaceCount(); ++i) {
    const auto corners = model.Face(i).Corners();
    const auto is_inside = [&](const CBinVertex* corner) { return inside[static_cast<size_t>(corner->Index())]; };
    if (std::all_of(corners.begin(), corners.end(), is_inside)) faces.push_back(i);
  }
  return faces;
}

}  // namespace

std::vector<int32_t> VerticesInScope(const CBinModel& model, const SScope& scope) {
  const auto count = static_cast<size_t>(model.VertexCount());
  if (scope.kind == SScope::EKind::kAll) {
    std::vector<int32_t> all = AllVertices(model);
    if (model.HiddenCount() > 0) std::erase_if(all, [&](int32_t index) { return model.Vertex(index).IsHidden(); });
    return all;
  }
  std::vector<bool> marks(count);
  for (const int32_t index : scope.selection) {
    if (scope.kind == SScope::EKind::kSelectedVertices) {
      marks[static_cast<size_t>(model.Vertex(index).Index())] = true;
      continue;
    }
    for (const CBinVertex* corner : model.Face(index).Corners())
      marks[static_cast<size_t>(corner->Index())] = true;
  }
  return MarkedIndices(marks);
}

GeometryFault ResizedPoints(std::span<const SPoint> points, double sx, double sy, double sz, const Vector3& pivot,
                            std::vector<SPoint>& moved) {
  return TruncatedPoints(points, {}, ResizeMovement(sx, sy, sz, pivot), moved);
}

GeometryFault RotatedPoints(std::span<const SPoint> points, EAxis axis, double angle, bool radians,
                            const Vector3& pivot, std::vector<SPoint>& moved) {
  return TruncatedPoints(points, {}, Turn(axis, angle, radians, pivot), moved);
}

GeometryFault ResizedPositions(const CBinModel& model, std::span<const int32_t> vertices, double sx, double sy,
                               double sz, std::vector<SPoint>& positions, const Vector3& pivot) {
  return TruncatedPoints(PositionsOf(model, vertices), vertices, ResizeMovement(sx, sy, sz, pivot), positions);
}

GeometryFault Resize(CBinModel& model, const SScope& scope, double sx, double sy, double sz, const Vector3& pivot) {
  const std::vector<int32_t> vertices = VerticesInScope(model, scope);
  std::vector<SPoint> positions;
  GeometryFault fault = ResizedPositions(model, vertices, sx, sy, sz, positions, pivot);
  if (fault.empty() && !vertices.empty()) model.SetVertexPositions(vertices, positions);
  return fault;
}

void Translate(CBinModel& model, const SScope& scope, int32_t dx, int32_t dy, int32_t dz) {
  TranslateVertices(model, VerticesInScope(model, scope), dx, dy, dz, true);
}

void TranslateVertices(CBinModel& model, std::span<const int32_t> vertices, int32_t dx, int32_t dy, int32_t dz,
                       bool forward) {
  if (vertices.empty() || (dx == 0 && dy == 0 && dz == 0)) return;
  const SPoint by = forward ? SPoint{dx, dy, dz} : SPoint{WrapNegate(dx), WrapNegate(dy), WrapNegate(dz)};
  std::vector<SPoint> positions;
  positions.reserve(vertices.size());
  for (const int32_t index : vertices) {
    const SPoint& from = model.Vertex(index).Position();
    positions.push_back({WrapAdd(from.x, by.x), WrapAdd(from.y, by.y), WrapAdd(from.z, by.z)});
  }
  model.SetVertexPositions(vertices, positions);
}

GeometryFault RotatedPositions(const CBinModel& model, std::span<const int32_t> vertices, EAxis axis, double angle,
                               bool radians, std::vector<SPoint>& positions, const Vector3& pivot) {
  return TruncatedPoints(PositionsOf(model, vertices), vertices, Turn(axis, angle, radians, pivot), positions);
}

GeometryFault Rotate(CBinModel& model, const SScope& scope, EAxis axis, double angle, bool radians,
                     const Vector3& pivot) {
  const std::vector<int32_t> vertices = VerticesInScope(model, scope);
  std::vector<SPoint> positions;
  GeometryFault fault = RotatedPositions(model, vertices, axis, angle, radians, positions, pivot);
  if (fault.empty() && !vertices.empty()) model.SetVertexPositions(vertices, positions);
  return fault;
}

void Mirror(CBinModel& model, const SScope& scope, EAxis axis, const Vector3& pivot) {
  const std::vector<int32_t> vertices = VerticesInScope(model, scope);
  if (vertices.empty()) return;
  const auto doubled = static_cast<int32_t>(std::llround(2.0 * pivot[static_cast<size_t>(axis)]));
  std::vector<SPoint> positions;
  positions.reserve(vertices.size());
  for (const int32_t index : vertices) {
    SPoint position = model.Vertex(index).Position();
    Coordinate(position, axis) = WrapSubtract(doubled, Coordinate(position, axis));
    positions.push_back(position);
  }
  const std::vector<int32_t> turned = FacesWithin(model, vertices);
  model.SetVertexPositions(vertices, positions);
  if (!turned.empty()) model.TurnFacesRound(turned);
}

void Center(CBinModel& model, EAxis axis) {
  const SBounds& bounds = model.Bounds();
  const int64_t sum = int64_t{Coordinate(bounds.min, axis)} + Coordinate(bounds.max, axis);
  // The only half that does not fit, 2^31, comes round to where it belongs.
  const auto offset = static_cast<int32_t>(static_cast<uint32_t>(-sum / 2));
  const SPoint& unit = kAxisUnits[static_cast<size_t>(axis)];
  // Also what is hidden: the game sees it.
  TranslateVertices(model, AllVertices(model), WrapMultiply(unit.x, offset), WrapMultiply(unit.y, offset),
                    WrapMultiply(unit.z, offset), true);
}

int32_t Distance(const CBinVertex& a, const CBinVertex& b) {
  VELDRA_ASSERT(&a.Owner() == &b.Owner());
  const int32_t dx = WrapSubtract(a.Position().x, b.Position().x);
  const int32_t dy = WrapSubtract(a.Position().y, b.Position().y);
  const int32_t dz = WrapSubtract(a.Position().z, b.Position().z);
  const int32_t sum = WrapAdd(WrapAdd(WrapMultiply(dx, dx), WrapMultiply(dy, dy)), WrapMultiply(dz, dz));
  return sum < 0 ? std::numeric_limits<int32_t>::max() : static_cast<int32_t>(std::sqrt(sum));
}

bool MergeDistancesWrap(const SBounds& bounds) {
  const auto square = [](int32_t low, int32_t high) {
    const double length = static_cast<double>(high) - low;
    return length * length;
  };
  const SPoint& a = bounds.min;
  const SPoint& b = bounds.max;
  return square(a.x, b.x) + square(a.y, b.y) + square(a.z, b.z) > std::numeric_limits<int32_t>::max();
}

bool IsSamePosition(const CBinVertex& a, const CBinVertex& b) {
  return a.Position() == b.Position();
}

}  // namespace veldra
