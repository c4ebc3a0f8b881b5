#include "view/vertexdrag.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/numbers.h"

namespace veldra {

namespace {

/// OFFSET, but not so far that LOW or HIGH leaves the 32-bit numbers.
int32_t Bent(double offset, int32_t low, int32_t high) {
  constexpr double kLowest = std::numeric_limits<int32_t>::min();
  constexpr double kHighest = std::numeric_limits<int32_t>::max();
  const double most = std::min(kHighest - high, kHighest);
  const double least = std::max(kLowest - low, kLowest);
  return Truncate(std::clamp(offset, least, most));
}

/// What brings START + OFFSET to a multiple of GRID. A coordinate that does not move stays off it.
double SnappedOffset(double start, double offset, double grid) {
  constexpr double kStill = 1e-6;
  return std::abs(offset) < kStill ? 0.0 : std::round((start + offset) / grid) * grid - start;
}

}  // namespace

CVertexDrag::CVertexDrag(CBinModel& model, const CViewCamera& camera, const SPoint& grabbed,
                         std::vector<int32_t> vertices, bool keeps_texture)
    : model_(model),
      camera_(camera),
      grabbed_at_(grabbed),
      vertices_(std::move(vertices)),
      start_bounds_(model.BoundsOfVertices(vertices_).value_or(SBounds{})) {
  for (const int32_t vertex : vertices_)
    starts_.push_back(model.Vertex(vertex).Position());
  now_ = starts_;
  if (keeps_texture) lock_.emplace(model, vertices_);
}

/// As far as brings the grabbed vertex closest to the pointer, on the line in which the axis is seen.
Vector3 CVertexDrag::AlongAxis(double right, double down, EAxis axis) const {
  Vector3 direction = {};
  direction[static_cast<size_t>(axis)] = 1.0;
  const auto step = camera_.Pixels(ToVector(grabbed_at_), direction);
  const double squares = step[0] * step[0] + step[1] * step[1];
  // In the view's plane a pixel is so long; an axis that is seen shorter than a twentieth of that points at the viewer.
  const Vector3 pixel = camera_.Movement(ToVector(grabbed_at_), 1.0, 0.0);
  const double pixel_squares = pixel[0] * pixel[0] + pixel[1] * pixel[1] + pixel[2] * pixel[2];
  if (!(squares * pixel_squares > 0.05 * 0.05)) return {};
  const double units = (right * step[0] + down * step[1]) / squares;
  direction[static_cast<size_t>(axis)] = units;
  return direction;
}

/// Of what was grabbed, by PULL.
Vector3 CVertexDrag::Movement(const SPull& pull) const {
  const Vector3 start = ToVector(grabbed_at_);
  Vector3 offset =
      pull.axis ? AlongAxis(pull.right, pull.down, *pull.axis) : camera_.Movement(start, pull.right, pull.down);
  for (size_t i = 0; i < 3; ++i) {
    if (pull.onto) {
      offset[i] = !pull.axis || i == static_cast<size_t>(*pull.axis) ? ToVector(*pull.onto)[i] - start[i] : 0.0;
    } else if (pull.grid > 0.0) {
      offset[i] = SnappedOffset(start[i], offset[i], pull.grid);
    }
  }
  return offset;
}

SPoint CVertexDrag::OffsetAt(const SPull& pull) const {
  const Vector3 offset = Movement(pull);
  return {Bent(offset[0], start_bounds_.min.x, start_bounds_.max.x),
          Bent(offset[1], start_bounds_.min.y, start_bounds_.max.y),
          Bent(offset[2], start_bounds_.min.z, start_bounds_.max.z)};
}

void CVertexDrag::Place(const SPoint& offset) {
  std::vector<SPoint> positions;
  positions.reserve(starts_.size());
  for (const SPoint& start : starts_)
    positions.push_back({WrapAdd(start.x, offset.x), WrapAdd(start.y, offset.y), WrapAdd(start.z, offset.z)});
  PlaceAt(positions);
}

void CVertexDrag::Turn(EAxis axis, double degrees, const Vector3& pivot) {
  std::vector<SPoint> positions;
  if (RotatedPoints(starts_, axis, degrees, false, pivot, positions).empty()) PlaceAt(positions);
}

void CVertexDrag::Resize(const Vector3& factors, const Vector3& pivot) {
  std::vector<SPoint> positions;
  if (ResizedPoints(starts_, factors[0], factors[1], factors[2], pivot, positions).empty()) PlaceAt(positions);
}

void CVertexDrag::PlaceAt(const std::vector<SPoint>& positions) {
  if (positions == now_) return;
  now_ = positions;
  model_.SetVertexPositions(vertices_, positions);
  if (lock_) lock_->Follow();
}

}  // namespace veldra
