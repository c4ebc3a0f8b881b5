#include "truck/truckpoints.h"

#include <algorithm>
#include <cmath>

#include "platform/text.h"
#include "truck/truckreport.h"

namespace veldra {

namespace {

/// Length from front to rear over the scrape points and the tires' middles; feet.
double PointsLength(const CTruck& truck) {
  double nearest = 0;
  double farthest = 0;
  const auto add = [&](const TruckPoint& point) {
    nearest = std::min(nearest, point[2]);
    farthest = std::max(farthest, point[2]);
  };
  std::for_each(truck.scrape_points.begin(), truck.scrape_points.end(), add);
  std::for_each(truck.tires.begin(), truck.tires.end(), add);
  return farthest - nearest;
}

/// TRUCK to be changed, or to be looked at only.
template <typename Truck>
auto FindIn(Truck& truck, const STruckPointId& id) -> decltype(&truck.axle_bar_offset) {
  const auto index = static_cast<size_t>(id.index);
  switch (id.kind) {
    case ETruckPoint::kAxleBar:
      return &truck.axle_bar_offset;
    case ETruckPoint::kDriveShaft:
      return &truck.drive_shaft_position;
    case ETruckPoint::kTire:
      return &truck.tires[index];
    case ETruckPoint::kScrapePoint:
      return &truck.scrape_points[index];
    case ETruckPoint::kLight:
      break;
  }
  return id.index < truck.UsedLights() ? &truck.lights[index].position : nullptr;
}

}  // namespace

std::vector<STruckPointId> TruckPoints(const CTruck& truck) {
  std::vector<STruckPointId> points = {{ETruckPoint::kAxleBar}, {ETruckPoint::kDriveShaft}};
  const auto add = [&](ETruckPoint kind, int count) {
    for (int i = 0; i < count; ++i)
      points.push_back({kind, i});
  };
  add(ETruckPoint::kTire, kTireCount);
  add(ETruckPoint::kScrapePoint, kScrapePoints);
  add(ETruckPoint::kLight, truck.UsedLights());
  return points;
}

TruckPoint* FindTruckPoint(CTruck& truck, const STruckPointId& id) {
  return FindIn(truck, id);
}

const TruckPoint* FindTruckPoint(const CTruck& truck, const STruckPointId& id) {
  return FindIn(truck, id);
}

std::string TruckPointName(const STruckPointId& id) {
  switch (id.kind) {
    case ETruckPoint::kAxleBar:
      return "Axle bar";
    case ETruckPoint::kDriveShaft:
      return "Drive shaft";
    case ETruckPoint::kTire: {
      std::string name = TireName(id.index) + " tire";
      name[0] = UpperCase(name.substr(0, 1))[0];
      return name;
    }
    case ETruckPoint::kScrapePoint:
      return Format("Scrape point %d", id.index + 1);
    case ETruckPoint::kLight:
      break;
  }
  return Format("Light %d", id.index);
}

std::optional<STruckPointId> MirroredPoint(const CTruck& truck, const STruckPointId& id) {
  constexpr double kNearEnough = 0.01;
  if (id.kind == ETruckPoint::kTire) return STruckPointId{id.kind, id.index ^ 1};
  const TruckPoint* const point = FindTruckPoint(truck, id);
  if (point == nullptr || std::abs((*point)[0]) <= kNearEnough) return std::nullopt;
  for (const STruckPointId& other : TruckPoints(truck)) {
    const TruckPoint& at = *FindTruckPoint(truck, other);
    const bool is_mirrored = std::abs(at[0] + (*point)[0]) <= kNearEnough &&
                             std::abs(at[1] - (*point)[1]) <= kNearEnough &&
                             std::abs(at[2] - (*point)[2]) <= kNearEnough;
    if (other.kind == id.kind && is_mirrored) return other;
  }
  return std::nullopt;
}

TruckPoint LightDirection(const TruckLight& light, double seconds) {
  const double heading = light.heading + light.heading_speed * seconds;
  return {std::sin(heading) * std::cos(light.pitch), std::sin(light.pitch), std::cos(heading) * std::cos(light.pitch)};
}

void AimLight(TruckLight& light, const TruckPoint& direction) {
  const double level = std::hypot(direction[0], direction[2]);
  // As many decimals as a truck file holds.
  const auto round = [](double angle) { return std::round(angle * 1e6) / 1e6; };
  light.heading = round(std::atan2(direction[0], direction[2]));
  light.pitch = round(std::atan2(direction[1], level));
}

double GuessUnitsPerFoot(const CTruck& truck, double body_length) {
  const double feet = PointsLength(truck);
  if (!(feet > 0.1) || !(body_length > 1.0)) return kUnitsPerFoot;
  constexpr double kSmallest = 0;  // 2 to the power of it
  constexpr double kLargest = 16;
  return std::exp2(std::clamp(std::round(std::log2(body_length / feet)), kSmallest, kLargest));
}

}  // namespace veldra
