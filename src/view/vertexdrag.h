#pragma once

#include <optional>
#include <vector>

#include "model/geometry.h"
#include "render/viewcamera.h"

namespace veldra {

/// A model's selected vertices, held by the mouse. They move as one, by whole model units from where they were at
/// first, and never beyond what coordinates can be; so nothing adds up over many small movements.
class CVertexDrag {
 public:
  /// GRABBED: the vertex under the pointer, seen through CAMERA. The model must keep its vertices while this lives.
  CVertexDrag(CBinModel& model, const CViewCamera& camera, int32_t grabbed);

  /// The pointer is now RIGHT and DOWN pixels from where it grabbed: in the view's plane, or along AXIS only. Along an
  /// axis that points at the viewer nothing moves.
  void MoveTo(double right, double down, std::optional<EAxis> axis);
  /// Every vertex back to where it was.
  void PutBack() { Place({}); }
  /// Whether the vertices are elsewhere than at first.
  bool HasMoved() const { return !(offset_ == SPoint{}); }
  /// Where MoveTo would bring them, from where they were at first.
  SPoint OffsetAt(double right, double down, std::optional<EAxis> axis) const;

 private:
  void Place(const SPoint& offset);
  Vector3 AlongAxis(double right, double down, EAxis axis) const;

  CBinModel& model_;
  CViewCamera camera_;
  SPoint grabbed_at_;
  std::vector<int32_t> vertices_;
  std::vector<SPoint> starts_;
  SBounds start_bounds_;
  SPoint offset_;
};

}  // namespace veldra
