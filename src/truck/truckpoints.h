#pragma once

#include <optional>
#include <string>
#include <vector>

#include "truck/truck.h"

namespace veldra {

enum class ETruckPoint { kAxleBar, kDriveShaft, kTire, kScrapePoint, kLight };

/// One of the places on a truck that a user can move.
struct STruckPointId {
  ETruckPoint kind = ETruckPoint::kAxleBar;
  int index = 0;  ///< of the tire (ETire), the scrape point (from 0) or the light

  bool operator==(const STruckPointId&) const = default;
};

/// All of TRUCK's, lights as far as they are used.
std::vector<STruckPointId> TruckPoints(const CTruck& truck);
/// Null when TRUCK has no such light.
TruckPoint* FindTruckPoint(CTruck& truck, const STruckPointId& id);
const TruckPoint* FindTruckPoint(const CTruck& truck, const STruckPointId& id);
/// "Axle bar", "Front right tire", "Scrape point 1" (from 1), "Light 0" (from 0), as the file counts them.
std::string TruckPointName(const STruckPointId& id);

/// The one on the other side of TRUCK: the other tire of the axle; of scrape points and lights the one that stands
/// where ID does with x negated, up to a hundredth of a foot. Nothing for what is in the middle or has no counterpart.
std::optional<STruckPointId> MirroredPoint(const CTruck& truck, const STruckPointId& id);

/// Where LIGHT looks after SECONDS: a heading of 0 is straight ahead (z), a quarter turn to the right (x); a pitch
/// above 0 is upwards. Length 1.
TruckPoint LightDirection(const TruckLight& light, double seconds);
/// LIGHT looks along DIRECTION, which is longer than 0.
void AimLight(TruckLight& light, const TruckPoint& direction);

/// How many model units a foot is, guessed from a body that is BODY_LENGTH model units long and from where the truck's
/// points lie: a power of two, for the game's models use those. kUnitsPerFoot when there is nothing to go by.
double GuessUnitsPerFoot(const CTruck& truck, double body_length);
inline constexpr double kUnitsPerFoot = 32.0;

}  // namespace veldra
