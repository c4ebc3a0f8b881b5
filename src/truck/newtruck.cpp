#include "truck/newtruck.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/text.h"

namespace veldra {

namespace {

enum ENewLight : int32_t { kNewHeadlight = 0, kNewBrakelight = 1, kNewBackupLight = 4 };

/// A right point and its mirror image.
void SetPair(TruckPoint& right, TruckPoint& left, const TruckPoint& at) {
  right = at;
  left = {0.0 - at[0], at[1], at[2]};
}

/// Where lights are: half of the body's width, its height in the middle, its ends; feet.
struct SLightPlaces {
  double side = 2.5;
  double height = 0;
  double front = 6;
  double rear = -6;
};

SLightPlaces PlacesOfLights(const CTruck& truck) {
  const auto extent = [&](size_t axis) {
    const auto less = [axis](const TruckPoint& a, const TruckPoint& b) { return a[axis] < b[axis]; };
    const auto [low, high] = std::ranges::minmax_element(truck.scrape_points, less);
    return std::pair((*low)[axis], (*high)[axis]);
  };
  const auto [left, right] = extent(0);
  const auto [bottom, top] = extent(1);
  const auto [rear, front] = extent(2);
  if (!(right > left && front > rear)) return {};
  return {.side = (right - left) / 2, .height = (bottom + top) / 2, .front = front, .rear = rear};
}

/// The pictures that another light of TRUCK has: of the same type, if there is one.
void TakePictures(const CTruck& truck, TruckLight& light) {
  for (int i = truck.UsedLights() - 1; i >= 0; --i) {
    const TruckLight& other = truck.lights[static_cast<size_t>(i)];
    const bool is_better = other.type == light.type;
    if (!other.source_bitmap.empty() && (is_better || light.source_bitmap.empty()))
      light.source_bitmap = other.source_bitmap;
    if (light.type == kNewHeadlight && !other.cone_texture.empty() && (is_better || light.cone_texture.empty()))
      light.cone_texture = other.cone_texture;
  }
}

TruckLight NewLight(const CTruck& truck, int32_t type, bool right) {
  constexpr double kHeadlightOut = 0.8;  // of the way from the middle to the side, and what follows
  constexpr double kBackupOut = 0.55;
  const SLightPlaces places = PlacesOfLights(truck);
  const bool is_front = type == kNewHeadlight;
  const double out = places.side * (type == kNewBackupLight ? kBackupOut : kHeadlightOut);
  TruckLight light;
  light.type = type;
  light.position = {right ? out : 0.0 - out, places.height, is_front ? places.front : places.rear};
  light.bitmap_radius = is_front ? 0.8 : 0.5;
  if (!is_front) light.heading = std::numbers::pi;
  TakePictures(truck, light);
  if (!is_front) return light;
  light.cone_length = 14;
  light.cone_base_radius = 0.3;
  light.cone_rim_radius = 2.6;
  return light;
}

}  // namespace

CTruck PlainTruck() {
  CTruck truck;
  auto& tires = truck.tires;
  SetPair(tires[kFrontRightTire], tires[kFrontLeftTire], {3.5, -3.5, 4});
  SetPair(tires[kRearRightTire], tires[kRearLeftTire], {3.5, -3.5, -4});
  truck.axle_bar_offset = {0, 0, -2.8};
  truck.drive_shaft_position = {0, -3, 0};
  // Below, at the belt line and on the roof, at the front and at the rear.
  constexpr TruckPoint kCorners[] = {{2.5, -2, 6.5},   {2.5, -2, -6.5}, {2.5, 0.5, 6.5},
                                     {2.5, 0.5, -6.5}, {1.9, 2.5, 1},   {1.9, 2.5, -2}};
  for (size_t i = 0; i < std::size(kCorners); ++i)
    SetPair(truck.scrape_points[2 * i], truck.scrape_points[2 * i + 1], kCorners[i]);
  for (const int32_t type : {kNewHeadlight, kNewBrakelight, kNewBackupLight})
    AddLightPair(truck, type);
  return truck;
}

std::string TruckFileBase(std::string_view name) {
  constexpr size_t kLongestBase = 8;
  std::string base;
  for (const char letter : name) {
    const bool is_plain =
        (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
    if (is_plain && base.size() < kLongestBase) base += letter;
  }
  return UpperCase(base);
}

int CountLights(const CTruck& truck, int32_t type) {
  const auto end = truck.lights.begin() + truck.UsedLights();
  return static_cast<int>(
      std::count_if(truck.lights.begin(), end, [type](const TruckLight& light) { return light.type == type; }));
}

bool AddLightPair(CTruck& truck, int32_t type) {
  if (truck.UsedLights() + 2 > kTruckLights) return false;
  AddLights(truck, {NewLight(truck, type, true), NewLight(truck, type, false)});
  return true;
}

void AddLights(CTruck& truck, const std::vector<TruckLight>& lights) {
  for (const TruckLight& light : lights) {
    const int at = truck.AddLight();
    if (at >= 0) truck.lights[static_cast<size_t>(at)] = light;
  }
}

std::vector<TruckLight> TakeLights(CTruck& truck, int32_t type) {
  std::vector<TruckLight> taken;
  for (int i = 0; i < truck.UsedLights();) {
    const TruckLight& light = truck.lights[static_cast<size_t>(i)];
    if (light.type != type) {
      ++i;
      continue;
    }
    taken.push_back(light);
    truck.DeleteLight(i);
  }
  return taken;
}

}  // namespace veldra
