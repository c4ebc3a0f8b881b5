#include "textures/texturefinder.h"

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

CTextureFinder::CTextureFinder(CTextureStore& store, CQuestions& questions, std::string art_directory)
    : store_(store), questions_(questions), art_directory_(std::move(art_directory)) {}

/// IS_THERE: the file is, whether or not it can be loaded.
const STextureImage* CTextureFinder::LoadFrom(const std::string& folder, const std::string& name, bool& is_there) {
  // Nothing outside the texture folder is a model's business, and an empty name leads to the folder itself.
  const std::string path = IsBareName(name) ? FindAnyCase(JoinPath(folder, name)) : "";
  is_there = IsFile(path);
  return is_there ? store_.GetTexture(path) : nullptr;
}

const STextureImage* CTextureFinder::Find(const std::string& name) {
  const std::string key = UpperCase(name);
  const auto known = found_.find(key);
  if (known != found_.end()) return known->second;

  const STextureImage* const image = FindOrAsk(name);
  if (image != nullptr && !image->is_stand_in && !image->read) last_folder_ = DirectoryPart(image->path);
  found_.emplace(key, image);
  return image;
}

const STextureImage* CTextureFinder::FindOrAsk(const std::string& name) {
  if (const STextureImage* image = FindUnasked(name)) return image;
  return blank_width_ != 0 ? Blank(name, blank_width_) : Ask(name);
}

const STextureImage* CTextureFinder::FindUnasked(const std::string& name) {
  bool is_there = false;
  const STextureImage* image = FindFirst(name);
  if (image != nullptr) return image;
  image = LoadFrom(art_directory_, name, is_there);
  if (is_there) return image;
  if (!chosen_folder_.empty()) image = LoadFrom(chosen_folder_, name, is_there);
  return is_there ? image : FindElsewhere(name);
}

const STextureImage* CTextureFinder::Blank(const std::string& name, int width) {
  return store_.GetBlankTexture(JoinPath(art_directory_, name), width);
}

const STextureImage* CTextureFinder::Ask(const std::string& name) {
  using EChoice = STextureAnswer::EChoice;
  const SMessage message = {
      .text = Format("Texture %s not found. Please select another texture.", DisplayName(name).c_str()),
      .caption = kErrorCaption,
      .icon = EIcon::kWarning,
      .details = Format("Looked for %s", DisplayName(JoinPath(art_directory_, name)).c_str()),
  };
  SFilePrompt prompt = {
      .title = "Select Texture",
      .filters = {{"MTM Texture *.raw", "*.raw"}},
      .directory = last_folder_.empty() ? art_directory_ : last_folder_,
      .name = "",
      .default_extension = "raw",
  };
  for (;;) {
    const STextureAnswer answer = questions_.AskTexture(message, prompt);
    bool is_there = false;
    const STextureImage* image = nullptr;
    switch (answer.choice) {
      case EChoice::kGiveUp:
        return nullptr;
      case EChoice::kBlankForAll:
        blank_width_ = answer.width;
        [[fallthrough]];
      case EChoice::kBlank:
        return Blank(name, answer.width);
      case EChoice::kFolder:
        chosen_folder_ = prompt.directory = answer.path;
        image = LoadFrom(answer.path, name, is_there);
        break;
      case EChoice::kFile:
        image = store_.GetTexture(answer.path);
    }
    if (image != nullptr) return image;
  }
}

}  // namespace veldra
