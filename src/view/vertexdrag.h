#pragma once

#include <optional>
#include <vector>

#include "editing/texturelock.h"
#include "model/geometry.h"
#include "render/viewcamera.h"

namespace veldra {

/// Vertices of a model, held by the mouse. They move as one, by whole model units from where they were at
/// first, and never beyond what coordinates can be; so nothing adds up over many small movements.
class CVertexDrag {
 public:
  /// GRABBED: what is under the pointer, seen through CAMERA. VERTICES move, ascending; with KEEPS_TEXTURE under a
  /// CTextureLock. The model must keep its vertices while this lives.
  CVertexDrag(CBinModel& model, const CViewCamera& camera, const SPoint& grabbed, std::vector<int32_t> vertices,
              bool keeps_texture = false);

  /// Where the pointer is now, in pixels from where it grabbed.
  struct SPull {
    double right = 0.0;
    double down = 0.0;
    std::optional<EAxis> axis = {};  ///< along it only, else in the view's plane
    double grid = 0.0;               ///< the grabbed vertex stays on its lines, in model units; 0 for none
    std::optional<SPoint> onto =
        {};  ///< what was grabbed comes to lie there, wherever the pointer is; with an axis level
  };
  /// Along an axis that points at the viewer nothing moves.
  void MoveTo(const SPull& pull) { Place(OffsetAt(pull)); }
  // From where they were at first, as Rotate and Resize do it. What does not fit in 32 bits is left alone.
  void Turn(EAxis axis, double degrees, const Vector3& pivot);
  void Resize(const Vector3& factors, const Vector3& pivot);
  /// Every vertex back to where it was.
  void PutBack() { PlaceAt(starts_); }
  size_t Count() const { return vertices_.size(); }
  /// Whether the vertices are elsewhere than at first.
  bool HasMoved() const { return !(now_ == starts_); }
  /// Where MoveTo would bring them, from where they were at first.
  SPoint OffsetAt(const SPull& pull) const;

 private:
  void Place(const SPoint& offset);
  void PlaceAt(const std::vector<SPoint>& positions);
  Vector3 Movement(const SPull& pull) const;
  Vector3 AlongAxis(double right, double down, EAxis axis) const;

  CBinModel& model_;
  CViewCamera camera_;
  SPoint grabbed_at_;
  std::vector<int32_t> vertices_;
  std::vector<SPoint> starts_;
  SBounds start_bounds_;
  std::vector<SPoint> now_;
  std::optional<CTextureLock> lock_;
};

}  // namespace veldra
