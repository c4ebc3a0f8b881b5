#pragma once

#include <optional>
#include <string>
#include <vector>

#include "archive/filepart.h"
#include "packing/dependencies.h"
#include "truck/truck.h"

/// Trucks that a new one can begin as.
namespace veldra {

struct STruckTemplate {
  std::string file_name;  ///< "MUDKING.TRK"
  SFilePart file;
  bool is_in_archive = false;  ///< that FILE's path names

  /// Nothing when it cannot be read, or nothing in it is a truck's.
  std::optional<CTruck> Read() const;
};

/// The truck files in FOLDER, then those in the archives of PLACES; each of these two by name.
std::vector<STruckTemplate> FindTruckTemplates(const std::string& folder, const SSearchPlaces& places);
/// The truck file at PATH.
STruckTemplate TemplateAt(const std::string& path);

/// PLACES with those first in which the files of ORIGIN's truck lie.
SSearchPlaces WithPlacesOf(const STruckTemplate& origin, SSearchPlaces places);

}  // namespace veldra
