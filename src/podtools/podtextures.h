#pragma once

#include <map>
#include <memory>
#include <string>

#include "archive/poddocument.h"
#include "textures/texturefinder.h"

namespace veldra {

/// The texture RAW_NAME of ARCHIVE with the colour table of the same name, else with DEFAULT_COLORS. Null when there is
/// no such file or it has no texture's length.
std::unique_ptr<STextureImage> ReadPodTexture(const CPodDocument& archive, const std::string& raw_name,
                                              const ColorTable& default_colors);

/// The textures of a model that is looked at inside its archive: from the archive itself, else from the texture
/// directory, without asking. A missing one is blank.
class CPodTextureFinder : public CTextureFinder {
 public:
  CPodTextureFinder(const CPodDocument& archive, const ColorTable& default_colors, CTextureStore& store,
                    CQuestions& questions, std::string art_directory)
      : CTextureFinder(store, questions, {}),
        art_directory_(std::move(art_directory)),
        archive_(archive),
        default_colors_(default_colors),
        store_(store) {}
  const STextureImage* Find(const std::string& name) override;
  /// The images, for as long as the model is shown.
  std::map<std::string, std::unique_ptr<STextureImage>> TakeImages() { return std::move(images_); }

 private:
  const STextureImage* FindInFolder(const std::string& name);

  std::string art_directory_;
  const CPodDocument& archive_;
  const ColorTable& default_colors_;
  CTextureStore& store_;
  std::map<std::string, std::unique_ptr<STextureImage>> images_;  ///< by upper-cased name
};

}  // namespace veldra
