#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "truck/truck.h"

namespace veldra {

/// Why a text is no truck.
struct STruckJsonFault {
  std::string what;                     ///< names the key: "lights[2].type is not a whole number"
  std::string unknown = {};             ///< the key that no truck has
  std::vector<std::string> known = {};  ///< those that could have been meant

  bool Empty() const { return what.empty(); }
};

/// What TruckJson makes of a truck, read back into TRUCK, which is reset first. A key that is not there leaves its
/// field empty or 0, without "lightCount" the lights are counted. Refused: what is no JSON, keys that no truck has,
/// values of another kind, texts of more than a line, lights that the count leaves out.
STruckJsonFault ReadTruckJson(std::string_view json, CTruck& truck);

}  // namespace veldra
