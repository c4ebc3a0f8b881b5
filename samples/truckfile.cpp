#include "samples/truckfile.h"

#include <numbers>

#include "samples/sounds.h"
#include "samples/truckplan.h"

namespace veldra::samples {

namespace {

constexpr double kUnitsPerFoot = 32;
constexpr double kPi = std::numbers::pi;

/// Places of the truck's plan in feet from the middle of its body.
class CPlan {
 public:
  explicit CPlan(const SPoint& origin) : origin_(origin) {}
  TruckPoint Feet(double x, double y, double z) const {
    return {(x - origin_.x) / kUnitsPerFoot, (y - origin_.y) / kUnitsPerFoot, (z - origin_.z) / kUnitsPerFoot};
  }

 private:
  SPoint origin_;
};

/// Corners of the body: below at the front and at the rear, the belt line, the roof.
void SetScrapePoints(CTruck& truck, const CPlan& plan) {
  constexpr double kSide = 80;
  size_t next = 0;
  const auto add_pair = [&](double side, double y, double z) {
    for (const double x : {side, -side})
      truck.scrape_points[next++] = plan.Feet(x, y, z);
  };
  add_pair(kSide, kBodyBottom, kFrontEnd);
  add_pair(kSide, kBodyBottom, kRearEnd);
  add_pair(kSide, kBeltLine, kFrontEnd);
  add_pair(kSide, kBeltLine, kRearEnd);
  add_pair(kSide * 0.75, kRoof, kCowl - 40);
  add_pair(kSide * 0.75, kRoof, kCabBack);
}

void SetTires(CTruck& truck, const CPlan& plan) {
  truck.tires[kFrontRightTire] = plan.Feet(kWheelTrack, kTyreRadius, kFrontAxle);
  truck.tires[kFrontLeftTire] = plan.Feet(-kWheelTrack, kTyreRadius, kFrontAxle);
  truck.tires[kRearRightTire] = plan.Feet(kWheelTrack, kTyreRadius, kRearAxle);
  truck.tires[kRearLeftTire] = plan.Feet(-kWheelTrack, kTyreRadius, kRearAxle);
}

TruckLight& AddLight(CTruck& truck, int32_t type, const TruckPoint& position) {
  TruckLight& light = truck.lights[static_cast<size_t>(truck.AddLight())];
  light.type = type;
  light.position = position;
  light.bitmap_radius = 0.8;
  light.source_bitmap = "MKGLOW.RAW";
  return light;
}

void AddCone(TruckLight& light, double length, double rim_radius) {
  light.cone_length = length;
  light.cone_base_radius = 0.3;
  light.cone_rim_radius = rim_radius;
  light.cone_texture = "MKCONE.RAW";
}

void AddLights(CTruck& truck, const CPlan& plan) {
  enum { kHeadlight = 0, kBrakelight = 1, kSpecial = 3, kBackup = 4 };
  for (const double x : {52.0, -52.0})
    AddCone(AddLight(truck, kHeadlight, plan.Feet(x, 196, kFrontEnd + 4)), 14, 2.6);
  // The row on the roof: written as headlights, for that is what roof lights are read as.
  for (const double x : {46.0, 23.0, 0.0, -23.0, -46.0}) {
    TruckLight& light = AddLight(truck, kHeadlight, plan.Feet(x, 297, 28));
    light.pitch = -0.12;
    AddCone(light, 8, 1.2);
  }
  for (const double x : {60.0, -60.0})
    AddLight(truck, kBrakelight, plan.Feet(x, 190, kRearEnd - 4)).heading = kPi;
  for (const double x : {44.0, -44.0})
    AddLight(truck, kBackup, plan.Feet(x, 190, kRearEnd - 4)).heading = kPi;
  TruckLight& beacon = AddLight(truck, kSpecial, plan.Feet(0, 296, -40));
  beacon.heading_speed = 2.0 * kPi;
  beacon.ms_on = 300;
  beacon.ms_off = 200;
  AddCone(beacon, 6, 1.0);
}

}  // namespace

CTruck SampleTruck(const SPoint& body_origin) {
  const CPlan plan(body_origin);
  CTruck truck;
  truck.name = "Mud King";
  truck.model_base_name = kTruckBodyModel;
  truck.tire_base_name = kTruckTireBase;
  truck.axle_model_name = kTruckAxleModel;
  truck.shock_texture = "SHOCK.RAW";
  truck.bar_texture = "CHROME.RAW";
  truck.axle_bar_offset = {0, 0, -2.8};
  truck.drive_shaft_position = plan.Feet(0, 112, 0);
  SetTires(truck, plan);
  SetScrapePoints(truck, plan);
  AddLights(truck, plan);
  size_t wave = 0;
  for (const SSoundDesign& design : SoundDesigns())
    truck.wave_files[wave++] = design.name;
  return truck;
}

}  // namespace veldra::samples
