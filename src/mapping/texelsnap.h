#pragma once

#include <optional>
#include <span>
#include <vector>

#include "mapping/texel.h"

namespace veldra {

/// The guides of one texture: lines that what is dragged snaps to, in texels.
struct STextureGuides {
  std::vector<double> across;  ///< x of the upright ones
  std::vector<double> down;    ///< y of the level ones
  bool operator==(const STextureGuides&) const = default;
};

/// What a drag may snap to.
struct STexelSnap {
  double reach = 0.0;  ///< texels
  const STextureGuides* guides = nullptr;
  std::span<const STexel> corners = {};  ///< that stay where they are
  bool to_texels = true;
};

/// What of the dragged points snaps: the one that was taken hold of, else the sides and the middle of their bounds.
struct SDragged {
  std::optional<STexel> grabbed;
  STexelRect bounds;
};

/// BY, changed so that DRAGGED comes to lie on what is near enough: a corner, then guides, then whole texels.
STexel SnappedOffset(const SDragged& dragged, const STexel& by, const STexelSnap& snap);

}  // namespace veldra
