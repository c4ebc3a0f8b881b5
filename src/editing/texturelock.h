#pragma once

#include <array>
#include <span>
#include <vector>

#include "model/binmodel.h"

namespace veldra {

/// Keeps the texture in its place on faces of which some corners move, within the plane that the face was in: such a
/// corner gets the texel that its new place had. Where that lies off the texture, the nearest one on it. Faces that
/// move as a whole take their texture along, and so do bent ones and those that leave their plane.
class CTextureLock {
 public:
  /// MOVING: the vertices that are about to move, ascending. The model must keep its faces while this lives.
  CTextureLock(CBinModel& model, std::span<const int32_t> moving);
  /// To call whenever they have moved, also back.
  void Follow();

 private:
  using Coords = std::array<STexCoord, 4>;
  struct SFace {
    int32_t index;
    std::array<Vector3, 4> corners;
    Coords coords;
  };
  static bool IsEven(const CBinFace& face, const SFace& kept);
  static Coords CoordsNow(const CBinFace& face, const SFace& kept);

  CBinModel& model_;
  std::vector<SFace> faces_;
};

}  // namespace veldra
