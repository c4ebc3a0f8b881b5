#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "packing/searchplaces.h"
#include "settings/settings.h"
#include "textures/texturefinder.h"

/// Where the textures of a model are: in the texture directory, else beside the model, in ART beside its folder, in the
/// archives of its folder and in those of the archive directory; in any letter case.
namespace veldra {

class CTexturePlaces {
 public:
  /// SETTINGS outlives this. MODEL is the model's file; "" for one that has none.
  CTexturePlaces(const CSettings& settings, std::string model);
  ~CTexturePlaces();

  /// The RAW file NAME. Nothing when it is nowhere, or NAME is more than a bare name.
  std::optional<SPodSource> Find(const std::string& name);
  /// The same without the texture directory.
  std::optional<SPodSource> FindNear(const std::string& name);
  /// The colour table for what was found as RAW in an archive.
  std::optional<SPodSource> FindColorsOf(const SPodSource& raw);
  /// What was found as RAW, loaded into STORE, where it is stored under PathOf(RAW). Null when it cannot be.
  const STextureImage* Load(const SPodSource& raw, CTextureStore& store) {
    return Load(raw, raw.bytes.length ? FindColorsOf(raw) : std::nullopt, store);
  }
  /// The same with its colour table from COLORS, where it is in an archive.
  static const STextureImage* Load(const SPodSource& raw, const std::optional<SPodSource>& colors,
                                   CTextureStore& store);
  /// Its file, or its name behind its archive's.
  static std::string PathOf(const SPodSource& raw);

 private:
  struct SNear;
  SNear& Near();

  const CSettings& settings_;
  std::string model_;
  std::unique_ptr<SNear> near_;  ///< made when the first texture is not in the texture directory
};

/// The folders and archives in which a texture is looked for, the first one first. MODEL as above, ARCHIVE the one that
/// the model is in; "" for none.
std::vector<std::string> PlacesOfTextures(const CSettings& settings, const std::string& model,
                                          const std::string& archive);

/// What was found as RAW, read now, with its colours from TABLE where it is in an archive.
STextureFiles ReadTextureSource(const SPodSource& raw, const std::optional<SPodSource>& table);

/// The textures of one model, from those places and by asking; of one in an archive first from that archive.
class CModelTextureFinder : public CTextureFinder {
 public:
  CModelTextureFinder(CTextureStore& store, CQuestions& questions, const CSettings& settings, const std::string& model);
  /// Of a model in ARCHIVE.
  static CModelTextureFinder InArchive(CTextureStore& store, CQuestions& questions, const CSettings& settings,
                                       const std::string& archive);
  CModelTextureFinder(const CModelTextureFinder&) = delete;
  CModelTextureFinder& operator=(const CModelTextureFinder&) = delete;

  /// What the user may want to know: which places beside the texture directory the textures came from. "" for none.
  std::string Note() const;

 protected:
  const STextureImage* FindFirst(const std::string& name) override;
  const STextureImage* FindElsewhere(const std::string& name) override;

 private:
  CModelTextureFinder(CTextureStore& store, CQuestions& questions, const CSettings& settings, const std::string& model,
                      SSearchPlaces first);

  SSearchPlaces first_;
  CPlaceSearch first_search_{first_};
  CTexturePlaces places_;
  std::map<std::string, size_t> counts_;  ///< of textures by the folder or archive they came from
};

}  // namespace veldra
