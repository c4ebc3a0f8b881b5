#include "packing/packtruck.h"

#include <algorithm>
#include <set>

#include "archive/filepart.h"
#include "archive/filetypes.h"
#include "packing/searchplaces.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// The archives of FOLDER that are not in the list yet.
void AddArchives(const std::string& folder, std::vector<std::string>& archives) {
  const std::string found = FindAnyCase(folder);
  if (folder.empty() || !IsDirectory(found)) return;
  for (const std::string& name : ListDirectory(found)) {
    if (!EqualNoCase(ExtensionPart(name), "POD")) continue;
    const std::string path = JoinPath(found, name);
    const auto is_same = [&](const std::string& other) { return AbsolutePath(other) == AbsolutePath(path); };
    if (std::none_of(archives.begin(), archives.end(), is_same)) archives.push_back(path);
  }
}

STruckPackRow RowOf(const SDependency& needed) {
  STruckPackRow row;
  row.name = needed.name;
  row.needed_by = needed.needed_by;
  row.is_stock = needed.is_stock;
  row.is_missing = needed.place == SDependency::EPlace::kMissing;
  if (row.is_missing) return row;
  row.source = needed.source;
  const SFilePart& bytes = needed.source.bytes;
  const bool is_in_archive = needed.place == SDependency::EPlace::kArchive;
  row.where = is_in_archive ? bytes.path : DirectoryPart(bytes.path);
  row.length = bytes.length ? bytes.length : FileLength(bytes.path);
  return row;
}

}  // namespace

std::vector<SPodSource> STruckPackPlan::Sources(bool leave_out_stock) const {
  std::vector<SPodSource> sources;
  for (const STruckPackRow& row : rows)
    if (!row.is_missing && !IsLeftOut(row, leave_out_stock)) sources.push_back(row.source);
  return sources;
}

std::vector<const STruckPackRow*> STruckPackPlan::Lacking(bool leave_out_stock) const {
  std::vector<const STruckPackRow*> lacking;
  for (const STruckPackRow& row : rows)
    if (row.is_missing && !IsLeftOut(row, leave_out_stock)) lacking.push_back(&row);
  return lacking;
}

void STruckPackPlan::AddFiles(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    const std::string name = FileNamePart(path);
    const auto is_same = [&](const STruckPackRow& row) { return FoldName(row.name) == FoldName(name); };
    if (std::ranges::any_of(rows, is_same)) continue;
    STruckPackRow row;
    row.name = name;
    row.where = DirectoryPart(path);
    row.is_missing = !IsFile(path);
    row.length = FileLength(path);
    row.is_extra = true;
    row.source = {name, {path}};
    rows.push_back(std::move(row));
  }
}

std::vector<std::string> STruckPackPlan::AddedFiles() const {
  std::vector<std::string> paths;
  for (const STruckPackRow& row : rows)
    if (row.is_extra) paths.push_back(row.source.bytes.path);
  return paths;
}

SSearchPlaces PlacesForTruck(const std::string& truck_path, const CSettings& settings, const std::string& game_folder) {
  SSearchPlaces places = PlacesBeside(truck_path, settings, game_folder);
  for (const std::string& folder : {settings.pod_dir, game_folder})
    AddArchives(folder, places.archives);
  return places;
}

STruckPackPlan PlanTruckPack(const std::string& truck_path, const SSearchPlaces& places, const CStockFiles& stock) {
  STruckPackPlan plan;
  plan.stock_note = stock.Note();
  STruckPackRow truck;
  truck.name = FileNamePart(truck_path);
  truck.where = DirectoryPart(truck_path);
  truck.length = FileLength(truck_path);
  truck.source = {truck.name, {truck_path}};
  const std::vector<SPodSource> own = {truck.source};
  plan.rows.push_back(std::move(truck));
  std::set<std::string> without_stock;
  for (const SDependency& needed : FindDependencies(own, {0}, places, stock, nullptr, EStockNeeds::kNothing))
    without_stock.insert(needed.name);
  for (const SDependency& needed : FindDependencies(own, {0}, places, stock, &plan.complaints)) {
    plan.rows.push_back(RowOf(needed));
    plan.rows.back().is_for_stock = !without_stock.contains(needed.name);
  }
  return plan;
}

bool CopyNeededFiles(CQuestions& questions, const STruckPackPlan& plan, const std::string& truck_path, size_t& copied) {
  constexpr const char* kFailed = "The files that the truck needs could not all be copied.";
  const std::string folder = DirectoryPart(AbsolutePath(truck_path));
  const bool is_type_folder = EqualNoCase(FileNamePart(folder), FolderOfType(kTypeTrk));
  const SSearchPlaces nowhere;
  CPlaceSearch beside(nowhere);
  const auto progress = questions.BeginWork("Copying files", false);
  copied = 0;
  for (size_t i = 1; i < plan.rows.size(); ++i) {
    const STruckPackRow& row = plan.rows[i];
    progress->Step(i, plan.rows.size());
    if (row.is_missing || STruckPackPlan::IsLeftOut(row, true) || beside.FindBeside(truck_path, row.name)) continue;
    const std::string type_folder = FolderOfType(TypeOfFile(row.name));
    const std::string target = is_type_folder ? FindAnyCase(JoinPath(DirectoryPart(folder), type_folder)) : folder;
    const std::string path = JoinPath(target, UpperCase(row.name));
    SError error;
    const auto bytes = ReadFilePart(row.source.bytes, &error);
    if (!MakeDirectories(target)) error.what = "The folder could not be made.";
    if (!bytes || !error.what.empty() || !ReplaceFile(path, bytes->View(), &error))
      return questions.Fail(kFailed, path + ": " + error.what);
    ++copied;
  }
  return true;
}

std::string LackingText(const STruckPackRow& row) {
  if (row.is_extra) return DisplayName(row.name);
  return Format("%s, needed by %s", DisplayName(row.name).c_str(), DisplayName(row.needed_by).c_str());
}

}  // namespace veldra
