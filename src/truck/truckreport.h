#pragma once

#include <string>

#include "truck/truck.h"

namespace veldra {

/// The truck for reading: a line a field, the twelve scrape points, and the lights that are used.
std::string TruckText(const CTruck& truck);
/// The same as JSON, UTF-8, ended by a line feed.
std::string TruckJson(const CTruck& truck);

/// "Headlight" to "Backup Light"; "type N" for the numbers without a name.
std::string LightTypeName(int32_t type);
/// "front right" and so on.
std::string TireName(int tire);

}  // namespace veldra
