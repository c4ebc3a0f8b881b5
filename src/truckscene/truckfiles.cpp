#include "truckscene/truckfiles.h"

#include <utility>

#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

std::string TruckFileName(const std::string& name, int type) {
  std::string file_name = FileNamePart(name);
  if (!file_name.empty() && ExtensionPart(file_name).empty())
    file_name = ChangeExtension(file_name, ExtensionOfType(type));
  return file_name;
}

CTruckFiles::CTruckFiles(std::string truck_path, SSearchPlaces places, const CStockFiles& stock)
    : truck_path_(std::move(truck_path)), places_(std::move(places)), stock_(stock) {
  Forget();
}

const STruckFile& CTruckFiles::Find(const std::string& name, int type) {
  const std::string file_name = UpperCase(TruckFileName(name, type));
  const auto [row, is_new] = found_.try_emplace(file_name);
  if (is_new && !file_name.empty()) row->second = Look(file_name);
  return row->second;
}

STruckFile CTruckFiles::Look(const std::string& file_name) {
  using EPlace = SDependency::EPlace;
  STruckFile file;
  file.is_stock = stock_.IsStockFile(file_name);
  const auto take = [&](std::optional<SPodSource> found, EPlace place) {
    if (!found) return false;
    file.source = std::move(*found);
    file.place = place;
    return true;
  };
  if (!truck_path_.empty() && take(search_->FindBeside(truck_path_, file_name), EPlace::kFolder)) return file;
  if (take(search_->FindInArchives(file_name), EPlace::kArchive)) return file;
  take(search_->FindInFolders(file_name), EPlace::kFolder);
  return file;
}

void CTruckFiles::Forget() {
  found_.clear();
  search_ = std::make_unique<CPlaceSearch>(places_);
}

}  // namespace veldra
