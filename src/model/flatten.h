#pragma once

#include <optional>
#include <span>
#include <vector>

#include "model/geometry.h"

/// Planes that lie anyhow, and vertices brought into them.
namespace veldra {

struct SPlane {
  Vector3 point = {};
  Vector3 normal = {};  ///< of length 1
};

/// To which VERTICES, not empty, have the smallest distances, squared and summed. Of several such planes any.
SPlane FittingPlane(const CBinModel& model, std::span<const int32_t> vertices);
/// Nothing for a face without area.
std::optional<SPlane> PlaneOf(const CBinFace& face);

/// Where VERTICES come to lie on the shortest way to PLANE, on the nearest whole units, in the same order. A fault
/// where that is outside the 32-bit numbers; POSITIONS means nothing then.
GeometryFault PositionsInPlane(const CBinModel& model, std::span<const int32_t> vertices, const SPlane& plane,
                               std::vector<SPoint>& positions);

}  // namespace veldra
