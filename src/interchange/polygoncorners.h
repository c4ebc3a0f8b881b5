#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// What to do with polygons that a model's faces, of three or four distinct corners, cannot be.
namespace veldra {

/// For polygons of up to eight corners; a larger one counts as not distinct.
inline bool AreDistinct(std::span<const int32_t> corners) {
  constexpr size_t kMost = 8;
  if (corners.size() > kMost) return false;
  for (size_t i = 1; i < corners.size(); ++i) {
    for (size_t k = 0; k < i; ++k) {
      if (corners[i] == corners[k]) return false;
    }
  }
  return true;
}

/// Positions of CORNERS without those that add nothing: a corner that comes twice in a row, and the further rounds of a
/// polygon that goes round more than once. A corner may stay there twice where the outline comes back to it, as on both
/// sides of a cut that leads to a hole.
std::vector<size_t> CornersToKeep(std::span<const int32_t> corners);

}  // namespace veldra
