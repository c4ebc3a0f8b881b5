#pragma once

#include <array>
#include <optional>
#include <vector>

#include "render/viewcamera.h"

namespace veldra {

/// A part of a gizmo that can be taken hold of.
struct SGizmoHandle {
  enum class EKind { kMove, kTurn, kResize } kind = EKind::kMove;
  std::optional<EAxis> axis = {};  ///< none: the box in the middle, which moves in the plane of the screen
  bool operator==(const SGizmoHandle&) const = default;
};

/// Arrows, boxes and rings about a pivot, of the same size whatever the zoom, smaller in a small window: what they look
/// like, which of them is at a place, and what a movement of the pointer does with one. All pixels are the window's,
/// from its upper left corner.
class CGizmo {
 public:
  /// As CAMERA sees it. MOVES_ONLY: for a point, which has no size to be changed.
  CGizmo(const CViewCamera& camera, const Vector3& pivot, double pixel_ratio, bool moves_only = false);

  const Vector3& Pivot() const { return pivot_; }
  std::optional<SGizmoHandle> HandleAt(double x, double y) const;
  /// After EnterWindow. HELD stands out, and the others are gone.
  void Draw(const std::optional<SGizmoHandle>& held) const;

  /// By how many degrees about AXIS the pointer turns from FROM to TO, -180 to 180: round the pivot, or along the ring
  /// where that is seen from its side.
  double DegreesBetween(EAxis axis, const SScreenPoint& from, const SScreenPoint& to) const;
  /// By which factor the box on AXIS, grabbed at FROM, is pulled out at TO; never below 0.
  double FactorBetween(EAxis axis, const SScreenPoint& from, const SScreenPoint& to) const;

 private:
  /// From the pivot, in parts of the arm.
  SScreenPoint Place(EAxis axis, double along) const;
  std::vector<SScreenPoint> Ring(EAxis axis) const;
  bool IsSeenFromItsEnd(EAxis axis) const;
  double Facing(EAxis axis) const;
  std::vector<SGizmoHandle> Handles() const;
  double Distance(const SGizmoHandle& handle, const SScreenPoint& at) const;
  void DrawShape(const SGizmoHandle& handle) const;

  CViewCamera camera_;
  Vector3 pivot_;
  double ratio_;
  double arm_pixels_;
  double arm_;  ///< model units
  bool moves_only_;
  SScreenPoint middle_;
};

}  // namespace veldra
