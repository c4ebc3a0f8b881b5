#include "packing/texturecatalog.h"

#include <algorithm>

#include "archive/poddocument.h"
#include "model/texturenames.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kFilesAStep = 200;
constexpr const char* kTextureFolder = "ART";
constexpr size_t kColorTableSize = std::tuple_size_v<ColorTable>;

bool IsRaw(std::string_view name) {
  return EqualNoCase(ExtensionPart(name), "RAW");
}

/// Archives keep other files of that kind, such as the heights of a landscape, in other folders.
bool IsTextureEntry(const SPodEntry& entry) {
  return entry.fault == EPodFault::kNone && IsRaw(entry.FileName()) &&
         (entry.Folder().empty() || EqualNoCase(entry.Folder(), kTextureFolder));
}

}  // namespace

std::string GameFault(const std::string& name, int size) {
  if (size == 0) return "Its length is that of no texture.";
  std::string fault = TextureNameFault(TextureNameOf(name));
  if (!IsGameTextureSize(size))
    fault += (fault.empty() ? "" : "\n") + Format("It is %d texels wide; the game takes 64 and 256.", size);
  return fault;
}

bool CTextureCatalog::Step() {
  if (next_name_ < names_.size()) {
    LookAtFiles();
    return true;
  }
  if (next_place_ == places_.size()) return false;
  const std::string place = FindAnyCase(places_[next_place_++]);
  IsDirectory(place) ? OpenFolder(place) : OpenArchive(place);
  return true;
}

void CTextureCatalog::OpenFolder(const std::string& folder) {
  folder_ = folder;
  names_ = ListDirectory(folder);
  next_name_ = 0;
  tables_.clear();
  for (const std::string& name : names_)
    if (EqualNoCase(ExtensionPart(name), "ACT")) tables_.try_emplace(UpperCase(name), name);
}

void CTextureCatalog::LookAtFiles() {
  const size_t end = std::min(names_.size(), next_name_ + kFilesAStep);
  for (; next_name_ < end; ++next_name_) {
    const std::string& name = names_[next_name_];
    std::string path = JoinPath(folder_, name);
    if (!IsRaw(name) || known_.contains(UpperCase(name)) || !IsFile(path)) continue;
    const int size = TextureSizeOfLength(FileLength(path).value_or(0));
    SCatalogTexture texture = {.raw = {name, {.path = std::move(path)}}, .colors = {}, .place = folder_, .size = size};
    const auto table = tables_.find(UpperCase(ChangeExtension(name, "ACT")));
    if (table != tables_.end()) texture.colors = SPodSource{table->second, {.path = JoinPath(folder_, table->second)}};
    Add(std::move(texture));
  }
}

void CTextureCatalog::OpenArchive(const std::string& path) {
  CPodDocument archive;
  if (path.empty() || !archive.Load(path)) return;
  const std::span<const SPodEntry> entries = archive.Entries();
  for (const SPodEntry& listed : entries) {
    if (!IsTextureEntry(listed) || known_.contains(UpperCase(listed.FileName()))) continue;
    // Of several the one that is found under the name.
    const std::string name(listed.FileName());
    const SPodEntry& entry = entries[archive.FindFile(name).value_or(static_cast<size_t>(&listed - entries.data()))];
    SCatalogTexture texture = {
        .raw = {name, archive.PartOf(entry)}, .colors = {}, .place = path, .size = TextureSizeOfLength(entry.length)};
    const auto table = archive.FindFile(ChangeExtension(name, "ACT"));
    if (table && entries[*table].length >= kColorTableSize)
      texture.colors = SPodSource{std::string(entries[*table].FileName()), archive.PartOf(entries[*table])};
    Add(std::move(texture));
  }
}

void CTextureCatalog::Add(SCatalogTexture texture) {
  if (known_.insert(UpperCase(texture.raw.name)).second) textures_.push_back(std::move(texture));
}

}  // namespace veldra
