#pragma once

#include <array>

#include "model/binmodel.h"
#include "render/viewstate.h"

namespace veldra {

/// A place in a window: pixels from its upper left corner, and OpenGL's depth, 0 at the front to 1.
struct SScreenPoint {
  double x = 0.0;
  double y = 0.0;
  double depth = 0.0;
};

/// What stands where in a window of WIDTH × HEIGHT pixels. Drawing, picking and dragging all go by it.
///
/// Its own coordinates have their origin in the view's middle, STATE's centre or that of BOUNDS, and such a unit that
/// the ball of radius 1 about it holds both the model and what fills the window at zoom 1. The view is along -z with y
/// up while nothing is turned. In perspective the eye stands outside the ball whatever the zoom, which narrows its
/// angle: nothing is cut off in front. Without perspective, what lies in the plane through the middle is as large.
class CViewCamera {
 public:
  using Matrix = std::array<double, 16>;  ///< column by column, as OpenGL has it
  using Vector = std::array<double, 3>;

  CViewCamera(const SViewState& state, const SBounds& bounds, int width, int height);
  /// For what is drawn from a ball of RADIUS model units about CENTER.
  CViewCamera(const SViewState& state, const Vector& center, double radius, int width, int height);
  /// The same picture of the same model.
  bool operator==(const CViewCamera&) const = default;

  /// Sets OpenGL's viewport and matrices for the camera's own coordinates.
  void Load() const;
  /// After Load: on to the coordinates of the model's CModelSpace.
  void EnterModelSpace() const;

  double Unit() const { return unit_; }  ///< model units in one of the camera's
  const Vector& Middle() const { return middle_; }
  int Width() const { return width_; }
  int Height() const { return height_; }

  SScreenPoint Project(const SPoint& point) const;
  /// How a point at AT moves in model units when it is moved by RIGHT and DOWN pixels in the view's plane.
  Vector Movement(const SPoint& at, double right, double down) const;
  /// How many pixels to the right and down a point at AT moves with one model unit along DIRECTION.
  std::array<double, 2> Pixels(const SPoint& at, const Vector& direction) const;
  /// From AT toward who looks, in model axes; not of length 1.
  Vector TowardViewer(const SPoint& at) const;

 private:
  Vector Eye(const Vector& point) const;
  double Depth(const Vector& eye) const;

  int width_;
  int height_;
  bool orthographic_;
  Vector middle_ = {};
  Vector space_offset_ = {};
  double space_scale_ = 1.0;
  double unit_ = 1.0;
  std::array<Vector, 3> turn_ = {};  ///< rows
  double scale_x_ = 1.0;
  double scale_y_ = 1.0;
  double pan_x_ = 0.0;
  double pan_y_ = 0.0;
};

/// Sets OpenGL's viewport and matrices for STATE, for what has its own coordinates: about the origin, RADIUS model
/// units away at most. Returns this radius in the camera's units, 0 to 1.
double SetCamera(const SViewState& state, double radius, int width, int height);

}  // namespace veldra
