#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/unattendedquestions.h"
#include "settings/settings.h"
#include "textures/texturefinder.h"
#include "truckscene/truckfiles.h"

namespace veldra {

/// Questions that nobody is asked, and messages that nobody sees: for a picture that shows what can be shown.
class CQuietQuestions : public CUnattendedQuestions {
 public:
  void Message(const SMessage&) override {}
  EAnswer AskYesNo(const SMessage&) override { return EAnswer::kYes; }
  SUnknownFaceAnswer AskUnknownFace(uint32_t) override { return {SUnknownFaceAnswer::EChoice::kIgnore}; }
  std::unique_ptr<CProgress> BeginWork(const std::string&, bool) override {
    return std::make_unique<CUnseenProgress>();
  }
};

/// The textures of a truck's models, from folders and archives; a grey check stands in for one that is not found.
/// Images live as long as this.
class CTruckTextures : public CTextureFinder {
 public:
  CTruckTextures(CTruckFiles& files, const ColorTable& default_colors);

  const STextureImage* Find(const std::string& name) override;
  /// The mean of the texels that are not transparent; nothing when there is no such texture.
  std::optional<SColor> MeanColor(const std::string& name);
  void Forget();

 private:
  std::unique_ptr<STextureImage> Read(const std::string& name);
  const STextureImage* Known(const std::string& name);

  CQuietQuestions quiet_;
  CTextureStore unused_store_;
  CTruckFiles& files_;
  ColorTable default_colors_;
  STextureImage stand_in_;
  std::map<std::string, std::unique_ptr<STextureImage>> images_;  ///< by upper-cased file name; null: not found
};

}  // namespace veldra
