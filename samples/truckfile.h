#pragma once

#include "model/helperclasses.h"
#include "truck/truck.h"

namespace veldra::samples {

inline constexpr const char* kTruckFileName = "MUDKING.TRK";
inline constexpr const char* kTruckArchiveName = "MUDKING.POD";
inline constexpr const char* kTruckBodyModel = "MKBODY.BIN";
inline constexpr const char* kTruckAxleModel = "MKAXLE.BIN";
inline constexpr const char* kTruckTireBase = "MKING";

/// The truck of the sample models. BODY_ORIGIN: the place in the truck's plan that is the body model's origin.
CTruck SampleTruck(const SPoint& body_origin);

}  // namespace veldra::samples
