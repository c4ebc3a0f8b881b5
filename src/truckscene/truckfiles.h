#pragma once

#include <map>
#include <memory>
#include <string>

#include "archive/filetypes.h"
#include "archive/stockfiles.h"
#include "packing/dependencies.h"
#include "packing/searchplaces.h"

namespace veldra {

/// Where a file that a truck names is.
struct STruckFile {
  SDependency::EPlace place = SDependency::EPlace::kMissing;
  SPodSource source;      ///< unless it is missing
  bool is_stock = false;  ///< every installation has it
};

/// Looks for the files that the truck at TRUCK_PATH ("" for one that has never been saved) names, in the order in which
/// packing does. An answer is kept until Forget.
class CTruckFiles {
 public:
  CTruckFiles(std::string truck_path, SSearchPlaces places, const CStockFiles& stock);
  CTruckFiles(const CTruckFiles&) = delete;
  CTruckFiles& operator=(const CTruckFiles&) = delete;

  /// A name without an extension gets that of TYPE.
  const STruckFile& Find(const std::string& name, int type);
  /// Files may have come or gone.
  void Forget();

 private:
  STruckFile Look(const std::string& file_name);

  std::string truck_path_;
  SSearchPlaces places_;
  const CStockFiles& stock_;
  std::unique_ptr<CPlaceSearch> search_;
  std::map<std::string, STruckFile> found_;  ///< by upper-cased file name
};

/// The bare file name of NAME, with the extension of TYPE when it has none; "" for "".
std::string TruckFileName(const std::string& name, int type);

}  // namespace veldra
