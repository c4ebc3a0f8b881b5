#include "packing/searchplaces.h"

#include <utility>

#include "archive/filetypes.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

const CPodDocument* CPlaceSearch::Archive(size_t index) {
  const auto [row, is_new] = archives_.try_emplace(index);
  if (is_new) {
    auto archive = std::make_unique<CPodDocument>();
    SError error;
    const std::string& path = places_.archives[index];
    if (archive->Load(path, &error)) {
      row->second = std::move(archive);
    } else {
      Trace("CPlaceSearch: %s: %s\n", path.c_str(), error.what.c_str());
    }
  }
  return row->second.get();
}

std::optional<SPodSource> CPlaceSearch::FindInArchives(const std::string& file_name) {
  for (size_t i = 0; i < places_.archives.size(); ++i) {
    const CPodDocument* const archive = Archive(i);
    const auto found = archive != nullptr ? archive->FindFile(file_name) : std::nullopt;
    if (!found) continue;
    const SPodEntry& entry = archive->Entries()[*found];
    return SPodSource{std::string(entry.Name()), {archive->Path(), entry.offset, entry.length}};
  }
  return std::nullopt;
}

const CPlaceSearch::Listing& CPlaceSearch::ListingOf(const std::string& folder) {
  const auto [row, is_new] = listings_.try_emplace(folder);
  if (is_new) {
    for (const std::string& name : ListDirectory(folder))
      row->second.emplace(FoldName(name), name);
  }
  return row->second;
}

std::optional<SPodSource> CPlaceSearch::FindInFolder(const std::string& folder, const std::string& file_name) {
  const std::string key = FoldName(file_name);
  const Listing& here = ListingOf(folder);
  const auto type_folder = here.find(FolderOfType(TypeOfFile(file_name)));
  const std::string below = type_folder != here.end() ? JoinPath(folder, type_folder->second) : "";
  for (const std::string& each : {folder, below}) {
    if (each.empty()) continue;
    const Listing& files = ListingOf(each);
    const auto found = files.find(key);
    if (found == files.end()) continue;
    std::string path = JoinPath(each, found->second);
    if (IsFile(path)) return SPodSource{found->second, {std::move(path)}};
  }
  return std::nullopt;
}

std::optional<SPodSource> CPlaceSearch::FindInFolders(const std::string& file_name) {
  for (const std::string& folder : places_.folders)
    if (auto found = FindInFolder(folder, file_name)) return found;
  return std::nullopt;
}

std::optional<SPodSource> CPlaceSearch::FindBeside(const std::string& needed_by, const std::string& file_name) {
  std::string folder = DirectoryPart(needed_by);
  if (folder.empty()) folder = ".";
  if (auto found = FindInFolder(folder, file_name)) return found;
  const bool is_type_folder = EqualNoCase(FileNamePart(folder), FolderOfType(TypeOfFile(needed_by)));
  if (!is_type_folder) return std::nullopt;
  const std::string above = DirectoryPart(folder);
  return FindInFolder(above.empty() ? "." : above, file_name);
}

}  // namespace veldra
