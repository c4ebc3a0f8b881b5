#pragma once

#include <array>
#include <optional>
#include <vector>

#include "render/viewstate.h"
#include "truck/truckpoints.h"
#include "truckscene/trucktextures.h"

namespace veldra {

/// How a picture of a truck came about: OpenGL's matrices and the way from feet to their coordinates. For finding what
/// lies under the mouse without OpenGL. Window coordinates in pixels from the picture's upper left corner.
class CTruckCamera {
 public:
  CTruckCamera() = default;
  /// Sets OpenGL's matrices for STATE and remembers them. MODEL_RADIUS: half the diagonal of the scene's bounds.
  CTruckCamera(const SViewState& state, double model_radius, double units_per_foot, int width, int height);

  /// Multiplies the current matrix so that what is drawn from now on is in feet.
  void ScaleToFeet() const;

  struct SWindowPoint {
    double x = 0;
    double y = 0;
    double depth = 0;  ///< 0 in front to 1 behind
  };
  /// Nothing for what lies outside the picture's depth.
  std::optional<SWindowPoint> Project(const TruckPoint& feet) const;
  std::optional<TruckPoint> Unproject(const SWindowPoint& point) const;

 private:
  std::array<double, 16> model_view_ = {};
  std::array<double, 16> projection_ = {};
  std::array<int, 4> viewport_ = {};
  double feet_scale_ = 1;
};

struct SOverlay {
  bool scrape_points = true;
  bool positions = true;  ///< axle bar, drive shaft, tires
  bool lights = true;
  bool cones = true;
  std::optional<STruckPointId> selected;
  double seconds = 0;  ///< for turning and blinking lights; 0 shows all of them as they stand
  double pixel_ratio = 1;
};

bool IsShown(const SOverlay& overlay, const STruckPointId& id);

/// Draws TRUCK's points and light cones, in feet, over a picture whose depths are still there. WITHOUT_TIRE: tires that
/// have no model, which get a ring.
void DrawTruckOverlay(const CTruck& truck, const SOverlay& overlay, CTruckTextures& textures,
                      const std::array<bool, kTireCount>& has_tire);

/// Where LIGHT looks after SECONDS: a heading of 0 is straight ahead (z), a quarter turn to the right (x); a pitch
/// above 0 is upwards. Length 1.
TruckPoint LightDirection(const TruckLight& light, double seconds);
/// Whether a blinking light is on after SECONDS.
bool IsLit(const TruckLight& light, double seconds);

}  // namespace veldra
