#include "textures/texturefinder.h"

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

CTextureFinder::CTextureFinder(CTextureStore& store, CQuestions& questions, std::string art_directory)
    : store_(store), questions_(questions), art_directory_(std::move(art_directory)) {}

const STextureImage* CTextureFinder::Find(const std::string& name) {
  const std::string key = UpperCase(name);
  const auto known = found_.find(key);
  if (known != found_.end()) return known->second;

  const std::string path = FindAnyCase(JoinPath(art_directory_, name));
  // An empty name, from a file, leads to the directory itself.
  const STextureImage* image = IsFile(path) ? store_.GetTexture(path) : nullptr;
  if (image == nullptr) image = Ask(name);
  found_.emplace(key, image);
  return image;
}

const STextureImage* CTextureFinder::Ask(const std::string& name) {
  const SMessage message = {
      .text = Format("Texture %s not found. Please select another texture.", ToUtf8(name).c_str()),
      .caption = kErrorCaption,
      .icon = EIcon::kWarning,
      .details = Format("Looked for %s", ToUtf8(JoinPath(art_directory_, name)).c_str()),
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
