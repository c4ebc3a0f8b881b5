#include "packing/modeltextures.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

void AddArchivesOf(const std::string& folder, std::vector<std::string>& archives) {
  for (const std::string& name : ListDirectory(folder)) {
    std::string path = JoinPath(folder, name);
    const bool is_new = std::find(archives.begin(), archives.end(), path) == archives.end();
    if (is_new && EqualNoCase(ExtensionPart(name), "POD")) archives.push_back(std::move(path));
  }
}

SSearchPlaces PlacesNear(const CSettings& settings, const std::string& model) {
  SSearchPlaces places;
  if (!model.empty()) {
    const std::string folder = DirectoryPart(AbsolutePath(model));
    places.folders = {folder, JoinPath(DirectoryPart(folder), "ART")};
    AddArchivesOf(folder, places.archives);
  }
  const std::string archives = FindAnyCase(settings.pod_dir);
  if (!archives.empty()) AddArchivesOf(archives, places.archives);
  for (std::string& folder : places.folders)
    if (std::string found = FindAnyCase(folder); !found.empty()) folder = std::move(found);
  return places;
}

/// A texture that lies in an archive, and its colour table where there is one.
STextureFiles ReadParts(const SFilePart& raw, const std::optional<SPodSource>& table) {
  STextureFiles files;
  files.length = raw.length;
  files.texels = ReadFilePart(raw, &files.error);
  if (files.texels && TextureSizeOfLength(files.texels->View().size()) == 0) files.texels.reset();
  const auto colors = table ? ReadFilePart(table->bytes) : std::nullopt;
  if (colors && colors->View().size() >= std::tuple_size_v<ColorTable>)
    std::copy_n(colors->View().begin(), std::tuple_size_v<ColorTable>, files.colors.emplace().begin());
  return files;
}

}  // namespace

struct CTexturePlaces::SNear {
  explicit SNear(SSearchPlaces near) : places(std::move(near)), search(places) {}
  SSearchPlaces places;
  CPlaceSearch search;
};

std::vector<std::string> PlacesOfTextures(const CSettings& settings, const std::string& model,
                                          const std::string& archive) {
  std::vector<std::string> places;
  if (!archive.empty()) places.push_back(archive);
  places.push_back(settings.art_dir);
  const SSearchPlaces near = PlacesNear(settings, archive.empty() ? model : archive);
  for (const std::string& folder : near.folders) {
    places.push_back(folder);
    places.push_back(JoinPath(folder, "ART"));
  }
  places.insert(places.end(), near.archives.begin(), near.archives.end());
  return places;
}

STextureFiles ReadTextureSource(const SPodSource& raw, const std::optional<SPodSource>& table) {
  return raw.bytes.length ? ReadParts(raw.bytes, table) : ReadTextureFiles(raw.bytes.path);
}

CTexturePlaces::CTexturePlaces(const CSettings& settings, std::string model)
    : settings_(settings), model_(std::move(model)) {}

CTexturePlaces::~CTexturePlaces() = default;

CTexturePlaces::SNear& CTexturePlaces::Near() {
  if (near_ == nullptr) near_ = std::make_unique<SNear>(PlacesNear(settings_, model_));
  return *near_;
}

std::optional<SPodSource> CTexturePlaces::Find(const std::string& name) {
  if (!IsBareName(name)) return std::nullopt;
  std::string path = FindAnyCase(JoinPath(settings_.art_dir, name));
  if (IsFile(path)) return SPodSource{FileNamePart(path), {.path = std::move(path)}};
  return FindNear(name);
}

std::optional<SPodSource> CTexturePlaces::FindNear(const std::string& name) {
  if (!IsBareName(name)) return std::nullopt;
  auto found = Near().search.FindInFolders(name);
  return found ? found : Near().search.FindInArchives(name);
}

std::optional<SPodSource> CTexturePlaces::FindColorsOf(const SPodSource& raw) {
  return Near().search.FindInArchives(ChangeExtension(FileNamePart(raw.name), "ACT"));
}

std::string CTexturePlaces::PathOf(const SPodSource& raw) {
  return raw.bytes.length ? JoinPath(raw.bytes.path, raw.name) : raw.bytes.path;
}

const STextureImage* CTexturePlaces::Load(const SPodSource& raw, const std::optional<SPodSource>& colors,
                                          CTextureStore& store) {
  if (!raw.bytes.length) return store.GetTexture(raw.bytes.path);
  return store.GetTexture(PathOf(raw), [bytes = raw.bytes, table = colors] { return ReadParts(bytes, table); });
}

CModelTextureFinder::CModelTextureFinder(CTextureStore& store, CQuestions& questions, const CSettings& settings,
                                         const std::string& model)
    : CModelTextureFinder(store, questions, settings, model, {}) {}

CModelTextureFinder::CModelTextureFinder(CTextureStore& store, CQuestions& questions, const CSettings& settings,
                                         const std::string& model, SSearchPlaces first)
    : CTextureFinder(store, questions, settings.art_dir), first_(std::move(first)), places_(settings, model) {}

/// What is not in it is looked for near it.
CModelTextureFinder CModelTextureFinder::InArchive(CTextureStore& store, CQuestions& questions,
                                                   const CSettings& settings, const std::string& archive) {
  return {store, questions, settings, archive, {.archives = {archive}, .folders = {}}};
}

const STextureImage* CModelTextureFinder::FindFirst(const std::string& name) {
  const auto raw = IsBareName(name) ? first_search_.FindInArchives(name) : std::nullopt;
  if (!raw) return nullptr;
  return CTexturePlaces::Load(*raw, first_search_.FindInArchives(ChangeExtension(FileNamePart(raw->name), "ACT")),
                              Store());
}

const STextureImage* CModelTextureFinder::FindElsewhere(const std::string& name) {
  const auto raw = places_.FindNear(name);
  const STextureImage* const image = raw ? places_.Load(*raw, Store()) : nullptr;
  if (image != nullptr) ++counts_[raw->bytes.length ? raw->bytes.path : DirectoryPart(raw->bytes.path)];
  return image;
}

std::string CModelTextureFinder::Note() const {
  std::string note;
  for (const auto& [place, count] : counts_)
    note += (note.empty() ? "" : ", ") + Counted(static_cast<int64_t>(count), "texture", "textures") + " from " + place;
  return note;
}

}  // namespace veldra
