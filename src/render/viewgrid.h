#pragma once

#include <vector>

#include "render/viewcamera.h"

namespace veldra {

/// A grid to scale: lines at multiples of a round spacing.
struct SGrid {
  double spacing = 1.0;     ///< model units between lines: 1, 2 or 5 times a power of ten
  bool is_upright = false;  ///< behind the model, facing the viewer; else the ground that it stands on
};

/// In a view straight from a side the grid stands behind the model, in all others it is the ground under it. The closer
/// the view, the finer the grid, but never finer than a model unit or of more than some hundred lines.
SGrid GridFor(const SViewState& state, const CViewCamera& camera);

/// Into the camera's own coordinates, which are loaded. Colours between BACKGROUND and what shows on it.
void DrawGrid(const SGrid& grid, const SViewState& state, const SBounds& bounds, const CViewCamera& camera,
              double pixel_ratio);

}  // namespace veldra
