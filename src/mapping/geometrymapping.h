#pragma once

#include <array>
#include <span>
#include <vector>

#include "mapping/texel.h"
#include "model/binmodel.h"
#include "model/geometry.h"

namespace veldra {

/// How places on a texture come from the coordinates of a model.
struct SProjection {
  enum class EKind { kPlane, kView, kBox, kCylinder, kSphere, kUnfold };
  EKind kind = EKind::kPlane;
  EAxis axis = EAxis::kY;             ///< of plane, cylinder and sphere
  SUnitNormal to_viewer = {0, 0, 1};  ///< of the view
  bool keeps_proportions = false;     ///< else the area is filled both ways
};

/// A place for each corner of a face; the fourth of a triangle means nothing.
using CornerTexels = std::array<STexel, 4>;

/// Places for FACES (not empty) of MODEL, over the bounds of all of them, in AREA: one each in the same order. Along an
/// axis they lie as the command line's mapping has them, from the view as one sees them with y upwards. A box takes
/// each face along the axis that it looks along most. Cylinder and sphere stand about the middle of the bounds. What is
/// unfolded keeps its shape: faces that share an edge stay together, as paper would, and pieces stand side by side.
std::vector<CornerTexels> MapFromGeometry(const CBinModel& model, std::span<const int32_t> faces,
                                          const SProjection& projection, const STexelRect& area);

}  // namespace veldra
