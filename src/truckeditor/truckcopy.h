#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "document/copyfile.h"
#include "truck/truck.h"

/// Copies of trucks: their content is the truck file, and what such a file does not give back.
namespace veldra {

/// The whole file.
std::vector<uint8_t> WriteTruckCopy(SCopyLabel label, const CTruck& truck);

/// Nothing when FILE is damaged.
std::optional<CTruck> ReadTruckCopy(const SCopyFile& file, SDiagnosis& diagnosis);

}  // namespace veldra
