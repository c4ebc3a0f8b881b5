#pragma once

#include <array>
#include <optional>

#include "render/viewcamera.h"
#include "truck/truckpoints.h"
#include "truckscene/trucktextures.h"

namespace veldra {

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

/// Draws TRUCK's points and light cones over the picture that CAMERA took, whose depths are still there; changes the
/// matrices. HAS_TIRE: tires that have no model get a ring.
void DrawTruckOverlay(const CTruck& truck, const SOverlay& overlay, const CViewCamera& camera, double units_per_foot,
                      CTruckTextures& textures, const std::array<bool, kTireCount>& has_tire);
/// Whether a blinking light is on after SECONDS.
bool IsLit(const TruckLight& light, double seconds);

}  // namespace veldra
