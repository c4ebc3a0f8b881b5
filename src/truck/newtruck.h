#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "truck/truck.h"

/// What a new truck begins with.
namespace veldra {

/// Measures of a common monster truck and a pair each of headlights, brake lights and backup lights, no names.
CTruck PlainTruck();

/// "BIGFOOT4" for "Big-Foot 4x4": at most eight letters A to Z and digits, "" when NAME has none.
std::string TruckFileBase(std::string_view name);

/// How many of the lights that are used are of TYPE.
int CountLights(const CTruck& truck, int32_t type);
/// A right and a left one where such lights are on most trucks, by the scrape points and the tires of TRUCK, with the
/// pictures of lights that it has. False, and nothing changed, when there is no room for two.
bool AddLightPair(CTruck& truck, int32_t type);
/// As many of LIGHTS as there is room for.
void AddLights(CTruck& truck, const std::vector<TruckLight>& lights);
/// All of TYPE, which are returned.
std::vector<TruckLight> TakeLights(CTruck& truck, int32_t type);

}  // namespace veldra
