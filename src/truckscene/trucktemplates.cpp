#include "truckscene/trucktemplates.h"

#include <algorithm>

#include "archive/filetypes.h"
#include "archive/poddocument.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kLargestTemplate = size_t{1} << 20;

void SortByName(std::vector<STruckTemplate>& trucks, size_t first) {
  std::sort(
      trucks.begin() + static_cast<ptrdiff_t>(first), trucks.end(),
      [](const STruckTemplate& a, const STruckTemplate& b) { return FoldName(a.file_name) < FoldName(b.file_name); });
}

}  // namespace

std::optional<CTruck> STruckTemplate::Read() const {
  const auto bytes = ReadFilePart(file, nullptr, kLargestTemplate);
  CTruck truck;
  if (!bytes || truck.Parse(bytes->Text()) == 0) return std::nullopt;
  return truck;
}

STruckTemplate TemplateAt(const std::string& path) {
  return {.file_name = FileNamePart(path), .file = {path}};
}

std::vector<STruckTemplate> FindTruckTemplates(const std::string& folder, const SSearchPlaces& places) {
  std::vector<STruckTemplate> trucks;
  const std::string found = FindAnyCase(folder);
  if (!folder.empty() && IsDirectory(found)) {
    for (const std::string& name : ListDirectory(found))
      if (TypeOfFile(name) == kTypeTrk) trucks.push_back(TemplateAt(JoinPath(found, name)));
  }
  SortByName(trucks, 0);
  const size_t loose = trucks.size();
  for (const std::string& path : places.archives) {
    CPodDocument archive;
    if (!archive.Load(path)) continue;
    for (const SPodEntry& entry : archive.Entries())
      if (TypeOfFile(entry.FileName()) == kTypeTrk && entry.fault == EPodFault::kNone)
        trucks.push_back({std::string(entry.FileName()), archive.PartOf(entry), true});
  }
  SortByName(trucks, loose);
  return trucks;
}

SSearchPlaces WithPlacesOf(const STruckTemplate& origin, SSearchPlaces places) {
  if (origin.is_in_archive) {
    places.archives.insert(places.archives.begin(), origin.file.path);
    return places;
  }
  const std::string folder = DirectoryPart(origin.file.path);
  std::vector<std::string> first = {folder};
  if (EqualNoCase(FileNamePart(folder), FolderOfType(kTypeTrk))) first.push_back(DirectoryPart(folder));
  places.folders.insert(places.folders.begin(), first.begin(), first.end());
  return places;
}

}  // namespace veldra
