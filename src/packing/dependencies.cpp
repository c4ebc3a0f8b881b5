#include "packing/dependencies.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "archive/filelists.h"
#include "archive/filetypes.h"
#include "model/texturenames.h"
#include "packing/searchplaces.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "truck/truck.h"

namespace veldra {

namespace {

/// Appends NAMES as bare file names; one without an extension gets that of TYPE.
void AddNames(const std::vector<std::string>& names, int type, std::vector<std::string>& wanted) {
  for (const std::string& name : names) {
    std::string file_name = FileNamePart(name);
    if (!file_name.empty() && ExtensionPart(file_name).empty())
      file_name = ChangeExtension(file_name, ExtensionOfType(type));
    wanted.push_back(std::move(file_name));
  }
}

std::vector<std::string> NeedsOfTruck(std::string_view text) {
  CTruck truck;
  truck.Parse(text);
  const STruckDependencies needs = truck.GetDependencies();
  std::vector<std::string> wanted;
  AddNames(needs.models, kTypeBin, wanted);
  AddNames(needs.textures, kTypeRaw, wanted);
  AddNames(needs.palettes, kTypeAct, wanted);
  AddNames(needs.sounds, kTypeWav, wanted);
  return wanted;
}

class CDependencyFinder {
 public:
  CDependencyFinder(const std::vector<SPodSource>& own, const SSearchPlaces& places, const CStockFiles& stock,
                    EStockNeeds stock_needs, std::vector<std::string>* complaints)
      : own_(own), search_(places), stock_(stock), stock_needs_(stock_needs), complaints_(complaints) {
    for (size_t i = 0; i < own.size(); ++i)
      Index(i);
  }

  std::vector<SDependency> Find(const std::vector<size_t>& start);

 private:
  void Index(size_t own);
  void Visit(const std::string& file_name, const SFilePart& bytes);
  std::vector<std::string> NeedsOf(const std::string& file_name, const SFilePart& bytes);
  void Want(const std::string& file_name, const std::string& needed_by, const SFilePart& needed_by_bytes);
  void Locate(SDependency& wanted, const SFilePart& needed_by);
  void Complain(const std::string& file_name, const std::string& what) {
    if (complaints_ != nullptr) complaints_->push_back(DisplayName(file_name) + ": " + what);
  }

  const std::vector<SPodSource>& own_;
  CPlaceSearch search_;
  const CStockFiles& stock_;
  const EStockNeeds stock_needs_;
  std::vector<std::string>* complaints_;
  std::unordered_map<std::string, size_t> own_by_name_;  ///< by folded bare file name
  std::set<std::string> met_;                            ///< likewise
  std::vector<SDependency> found_;
};

/// Of several files of one name the game takes the one in the folder of its type; of several there, the last.
void CDependencyFinder::Index(size_t own) {
  const SPodSource& source = own_[own];
  if (source.bytes.path.empty()) return;
  const std::string name = UpperCase(FileNamePart(source.name));
  const auto [row, is_new] = own_by_name_.try_emplace(FoldName(name), own);
  const auto is_placed = [&](const SPodSource& each) {
    return EqualNoCase(DirectoryPart(each.name), FolderOfType(TypeOfFile(name)));
  };
  if (!is_new && (is_placed(source) || !is_placed(own_[row->second]))) row->second = own;
}

std::vector<SDependency> CDependencyFinder::Find(const std::vector<size_t>& start) {
  for (const size_t i : start)
    met_.insert(FoldName(FileNamePart(own_.at(i).name)));
  for (const size_t i : start)
    if (!own_[i].bytes.path.empty()) Visit(FileNamePart(own_[i].name), own_[i].bytes);
  for (size_t i = 0; i < found_.size(); ++i) {
    const SDependency found = found_[i];
    const bool is_own = found.place == SDependency::EPlace::kOwn;
    const bool is_left_out = found.is_stock && !is_own && stock_needs_ == EStockNeeds::kNothing;
    if (found.place == SDependency::EPlace::kMissing || is_left_out) continue;
    Visit(found.name, is_own ? own_[found.own].bytes : found.source.bytes);
  }
  return std::move(found_);
}

void CDependencyFinder::Visit(const std::string& file_name, const SFilePart& bytes) {
  std::vector<std::string> names = NeedsOf(file_name, bytes);
  TidyFileList(names);
  for (const std::string& name : names)
    Want(name, file_name, bytes);
}

std::vector<std::string> CDependencyFinder::NeedsOf(const std::string& file_name, const SFilePart& bytes) {
  const int type = TypeOfFile(file_name);
  if (type == kTypeRaw) return ColorTablesOf({file_name});
  if (type != kTypeTrk && type != kTypeBin) return {};
  SError error;
  const auto file = ReadFilePart(bytes, &error);
  if (!file) {
    Complain(file_name, error.what);
    return {};
  }
  if (type == kTypeTrk) return NeedsOfTruck(file->Text());
  std::vector<std::string> textures;
  const SDiagnosis diagnosis = ReadTextureNames(file->View(), textures);
  if (!diagnosis.Empty()) Complain(file_name, diagnosis.Text());
  TidyFileList(textures);
  std::vector<std::string> wanted;
  AddNames(textures, kTypeRaw, wanted);
  return wanted;
}

void CDependencyFinder::Want(const std::string& file_name, const std::string& needed_by,
                             const SFilePart& needed_by_bytes) {
  if (!met_.insert(FoldName(file_name)).second) return;
  SDependency& wanted = found_.emplace_back();
  wanted.name = file_name;
  wanted.needed_by = UpperCase(needed_by);
  wanted.is_stock = stock_.IsStockFile(file_name);
  Locate(wanted, needed_by_bytes);
}

void CDependencyFinder::Locate(SDependency& wanted, const SFilePart& needed_by) {
  using EPlace = SDependency::EPlace;
  const auto own = own_by_name_.find(FoldName(wanted.name));
  if (own != own_by_name_.end()) {
    wanted.place = EPlace::kOwn;
    wanted.own = own->second;
    return;
  }
  const bool needed_by_file = !needed_by.length;
  std::optional<SPodSource> found;
  if (needed_by_file) found = search_.FindBeside(needed_by.path, wanted.name);
  wanted.place = EPlace::kFolder;
  if (!found) {
    found = search_.FindInArchives(wanted.name);
    if (found) wanted.place = EPlace::kArchive;
  }
  if (!found) found = search_.FindInFolders(wanted.name);
  if (found) {
    wanted.source = std::move(*found);
  } else {
    wanted.place = EPlace::kMissing;
  }
}

std::string NoteOn(const SDependency& wanted) {
  std::string note =
      Format("%s, needed by %s: ", DisplayName(wanted.name).c_str(), DisplayName(wanted.needed_by).c_str());
  return note + (wanted.place == SDependency::EPlace::kMissing ? "not found" : "in " + wanted.source.bytes.path);
}

}  // namespace

SSearchPlaces PlacesBeside(const std::string& archive, const CSettings& settings, const std::string& game_folder) {
  SSearchPlaces places;
  const std::string part = DirectoryPart(archive);
  const std::string folder = part.empty() ? "." : part;
  for (const std::string& name : ListDirectory(folder)) {
    const bool is_other = EqualNoCase(ExtensionPart(name), "POD") && name != FileNamePart(archive);
    if (is_other) places.archives.push_back(part.empty() ? name : JoinPath(folder, name));
  }
  for (const std::string& each :
       {settings.trk_dir, settings.bin_dir, settings.art_dir, game_folder, settings.pod_dir, folder}) {
    const std::string found = FindAnyCase(each);
    const bool is_new = std::find(places.folders.begin(), places.folders.end(), found) == places.folders.end();
    if (!each.empty() && is_new && IsDirectory(found)) places.folders.push_back(found);
  }
  return places;
}

std::vector<SDependency> FindDependencies(const std::vector<SPodSource>& own, const std::vector<size_t>& start,
                                          const SSearchPlaces& places, const CStockFiles& stock,
                                          std::vector<std::string>* complaints, EStockNeeds stock_needs) {
  return CDependencyFinder(own, places, stock, stock_needs, complaints).Find(start);
}

std::vector<SPodSource> SourcesOf(const CPodDocument& archive) {
  std::vector<SPodSource> sources;
  sources.reserve(archive.Entries().size());
  for (const SPodEntry& entry : archive.Entries())
    sources.push_back({std::string(entry.Name()), archive.PartOf(entry)});
  return sources;
}

std::vector<std::string> AddOwnDependencies(const CPodDocument& archive, const SSearchPlaces& places,
                                            const CStockFiles& stock, std::vector<size_t>& entries) {
  std::vector<std::string> notes;
  for (const SDependency& wanted :
       FindDependencies(SourcesOf(archive), entries, places, stock, &notes, EStockNeeds::kNothing)) {
    if (wanted.place == SDependency::EPlace::kOwn) {
      entries.push_back(wanted.own);
    } else if (!wanted.is_stock) {
      notes.push_back(NoteOn(wanted));
    }
  }
  return notes;
}

}  // namespace veldra
