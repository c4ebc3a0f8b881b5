#pragma once

#include <span>

#include "mapping/mappedfaces.h"

/// What is done to places that depends on what hangs together. POINTS are positions among the points of FACES; each
/// result has as many places, in the same order.
namespace veldra {

/// Points of one vertex of the model come to lie on one texel, in their middle.
Texels Welded(const CMappedFaces& faces, std::span<const int32_t> points);

/// The selected islands in AREA, side by side, GAP texels apart, as large as they all can be; of the sizes that they
/// have to each other nothing changes.
Texels Packed(const CMappedFaces& faces, std::span<const int32_t> points, const STexelRect& area, double gap);

/// The island of the first selected face stays. Each other selected one that has an edge of the model in common with
/// what stays already is turned, scaled and moved so that this edge lies on the other's.
Texels Sewn(const CMappedFaces& faces, std::span<const int32_t> points);

}  // namespace veldra
