#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "render/modelgeometry.h"
#include "render/viewcamera.h"

namespace veldra {

/// Draws the index of each vertex beside it. Where many lie close together only the nearest to the viewer has room for
/// its number, so there are never more numbers than a window holds, and two calls draw them. They are placed once for
/// each camera and revision. Of what
/// lies behind a surface there is none: half a number would be another one.
class CVertexNumbers {
 public:
  /// Over MODEL, which is drawn; changes the matrices.
  void Draw(const CBinModel& model, const SViewState& state, const CViewCamera& camera, double pixel_ratio);
  /// Of the last Draw.
  int32_t Count() const { return static_cast<int32_t>(shown_.size()); }

 private:
  struct SLabel {
    int32_t vertex = -1;
    SScreenPoint at;
  };
  class CCells;
  void Place(const CBinModel& model, const SViewState& state, double pixel_ratio);
  void MakeStrokes(double pixel_ratio);

  uint64_t model_ = 0;
  uint64_t revision_ = 0;
  std::optional<CViewCamera> camera_;
  ERenderMode mode_ = ERenderMode::kVertices;
  bool has_markers_ = false;
  double pixel_ratio_ = 0.0;
  std::vector<SLabel> shown_;
  std::vector<FloatPoint> strokes_;  ///< two ends each, in the window
};

}  // namespace veldra
