#include "textures/texturefinder.h"

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

CTextureFinder::CTextureFinder(CTextureStore& store, CQuestions& questions, std::string art_directory)
    : store_(store), questions_(questions), art_directory_(std::move(art_directory)) {}

std::string CTextureFinder::Look(const std::string& name) const {
  // Nothing outside the texture folder is a model's business, and an empty name leads to the folder itself.
  if (!IsBareName(name)) return {};
  const std::string path = FindAnyCase(JoinPath(art_directory_, name));
  return IsFile(path) ? path : "";
}

const STextureImage* CTextureFinder::Find(const std::string& name) {
  const std::string key = UpperCase(name);
  const auto known = found_.find(key);
  if (known != found_.end()) return known->second;

  const std::string path = Look(name);
  const STextureImage* image = path.empty() ? nullptr : store_.GetTexture(path);
  if (image == nullptr) image = Ask(name);
  found_.emplace(key, image);
  return image;
}

const STextureImage* CTextureFinder::Ask(const std::string& name) {
  const SMessage message = {
      .text = Format("Texture %s not found. Please select another texture.", DisplayName(name).c_str()),
      .caption = kErrorCaption,
      .icon = EIcon::kWarning,
      .details = Format("Looked for %s", DisplayName(JoinPath(art_directory_, name)).c_str()),
  };
  const SFilePrompt prompt = {
      .title = "Select Texture",
      .filters = {{"MTM Texture *.raw", "*.raw"}},
      .directory = art_directory_,
      .name = "",
      .default_extension = "raw",
  };
  for (;;) {
    const STextureAnswer answer = questions_.AskTexture(message, prompt);
    switch (answer.choice) {
      case STextureAnswer::EChoice::kGiveUp:
        return nullptr;
      case STextureAnswer::EChoice::kBlank:
        return store_.GetBlankTexture(JoinPath(art_directory_, name), answer.width);
      case STextureAnswer::EChoice::kFile:
        if (const STextureImage* image = store_.GetTexture(answer.path)) return image;
    }
  }
}

}  // namespace veldra
