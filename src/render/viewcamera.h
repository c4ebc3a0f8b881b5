#pragma once

#include <array>

#include "model/geometry.h"
#include "platform/vector3.h"
#include "render/viewstate.h"

namespace veldra {

class CModelSpace;

/// A place in a window: pixels from its upper left corner, and OpenGL's depth, 0 at the front to 1.
struct SScreenPoint {
  double x = 0.0;
  double y = 0.0;
  double depth = 0.0;
};

/// What stands where in a window of WIDTH × HEIGHT pixels. Drawing, picking and dragging all go by it.
///
/// Its own coordinates have their origin in STATE's centre, and half of STATE's extent as their unit. The view is along
/// -z with y up while nothing is turned. What is where follows from STATE alone: a model that grows or moves does not
/// move the picture. BOUNDS only say how far in front and behind there is something to be drawn, and where that reaches
/// the eye, it steps back. In perspective the zoom narrows the angle and leaves the eye where it is: nothing is cut off
/// in front. Without perspective, what lies in the plane through the middle is as large.
class CViewCamera {
 public:
  using Matrix = std::array<double, 16>;  ///< column by column, as OpenGL has it

  CViewCamera(const SViewState& state, const SBounds& bounds, int width, int height);
  /// The same picture of the same model.
  bool operator==(const CViewCamera&) const = default;

  /// Sets OpenGL's viewport and matrices for the camera's own coordinates.
  void Load() const;
  /// After Load: on to the coordinates of SPACE.
  void EnterSpace(const CModelSpace& space) const;
  /// After Load: on to the model's own coordinates, in units of SCALE.
  void EnterModel(double scale) const;

  double Unit() const { return unit_; }    ///< model units in one of the camera's
  double Reach() const { return reach_; }  ///< of the model from the middle, in the camera's units; at least 1
  const Vector3& Middle() const { return middle_; }
  int Width() const { return width_; }
  int Height() const { return height_; }

  SScreenPoint Project(const Vector3& point) const;
  SScreenPoint Project(const SPoint& point) const { return Project(ToVector(point)); }
  /// How a point at AT moves in model units when it is moved by RIGHT and DOWN pixels in the view's plane.
  Vector3 Movement(const Vector3& at, double right, double down) const;
  /// How many pixels to the right and down a point at AT moves with one model unit along DIRECTION.
  std::array<double, 2> Pixels(const Vector3& at, const Vector3& direction) const;
  /// From AT toward who looks, in model axes; not of length 1.
  Vector3 TowardViewer(const SPoint& at) const;

 private:
  Vector3 Eye(const Vector3& point) const;
  double Depth(const Vector3& eye) const;

  int width_;
  int height_;
  bool orthographic_;
  Vector3 middle_;
  double unit_ = 1.0;
  double reach_ = 1.0;
  double distance_ = 1.0;  ///< of the eye from the middle
  double front_ = 0.0;     ///< from the eye, as is the next
  double back_ = 1.0;
  std::array<Vector3, 3> turn_ = {};  ///< rows
  double scale_x_ = 1.0;
  double scale_y_ = 1.0;
  double pan_x_ = 0.0;
  double pan_y_ = 0.0;
};

}  // namespace veldra
