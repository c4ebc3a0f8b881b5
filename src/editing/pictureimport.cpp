#include "editing/pictureimport.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "editing/modelcommands.h"
#include "platform/paths.h"
#include "platform/picture.h"
#include "platform/text.h"
#include "textures/nearblack.h"
#include "textures/rawtexture.h"

namespace veldra {

namespace {

constexpr size_t kPixel = 4;
constexpr size_t kLongestName = 8;  ///< of the game's files, without the extension

SImage Cropped(const SImage& picture, const SPictureCrop& crop) {
  SImage part = {crop.width, crop.height, {}};
  part.rgba.reserve(static_cast<size_t>(crop.width) * static_cast<size_t>(crop.height) * kPixel);
  for (int y = crop.top; y < crop.top + crop.height; ++y) {
    const size_t row = static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(crop.left);
    const auto from = picture.rgba.begin() + static_cast<ptrdiff_t>(row * kPixel);
    part.rgba.insert(part.rgba.end(), from, from + static_cast<ptrdiff_t>(crop.width) * static_cast<ptrdiff_t>(kPixel));
  }
  return part;
}

void MakeOpaque(SImage& picture) {
  for (size_t i = kPixel - 1; i < picture.rgba.size(); i += kPixel)
    picture.rgba[i] = 255;
}

/// Hides the pixels of the key colour.
void HideKey(SImage& picture, const SPictureInput& input) {
  for (size_t i = 0; i + kPixel <= picture.rgba.size(); i += kPixel) {
    bool is_key = true;
    for (size_t c = 0; c < input.key.size(); ++c)
      is_key = is_key && std::abs(picture.rgba[i + c] - input.key[c]) <= input.key_reach;
    if (is_key) picture.rgba[i + 3] = 0;
  }
}

/// "My picture (2).png" becomes "MYPICTUR.RAW", which the game can read.
std::string RawName(const std::string& path) {
  std::string name;
  const std::string file = FileNamePart(path);
  for (const char c : UpperCase(file.substr(0, file.rfind('.'))))
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_') name += c;
  name = name.substr(0, kLongestName);
  return (name.empty() ? "PICTURE" : name) + ".RAW";
}

}  // namespace

SIndexedTexture TextureFrom(const std::string& path, const SImage& picture, const SPictureInput& input) {
  using E = SPictureInput::ETransparent;
  if (!path.empty() && !input.crop && input.transparent == E::kPicture) {
    auto texture = TextureOfPicture(path, {input.size, input.scaling, input.colors}, nullptr);
    if (texture && (input.colors || ColorCount(*texture) <= input.most_colors)) return *texture;
  }
  SImage part = input.crop ? Cropped(picture, *input.crop) : picture;
  if (input.transparent == E::kNothing) MakeOpaque(part);
  if (input.transparent == E::kColor) HideKey(part, input);
  const EDarkPixels dark = input.transparent == E::kDark ? EDarkPixels::kKeep : EDarkPixels::kLift;
  return QuantizeTexture(ScalePicture(part, input.size, input.size, input.scaling), input.colors, dark,
                         input.most_colors);
}

std::optional<SOpenPicture> OpenPicture(CTarnDoc& document, const std::string& path) {
  SError error;
  auto image = ReadPicture(path, &error);
  if (image) return SOpenPicture{path, std::move(*image)};
  document.ShowError(Format("\"%s\" could not be opened.", path.c_str()), error.what);
  return std::nullopt;
}

std::optional<SOpenPicture> AskPicture(CTarnDoc& document) {
  SFilePrompt prompt;
  prompt.title = "Import Picture";
  prompt.filters = {{"Pictures *.png *.jpg *.bmp *.tga", kPicturePatterns}};
  prompt.directory = document.Settings().art_dir;
  const auto files = document.Services().questions.AskOpenFiles(prompt);
  return files ? OpenPicture(document, files->paths.front()) : std::nullopt;
}

bool SaveTextureOfPicture(CTarnDoc& document, const std::string& path, const SIndexedTexture& texture) {
  SFilePrompt prompt;
  prompt.title = "Save Texture";
  prompt.filters = {{"MTM Texture *.raw", "*.raw"}};
  prompt.directory = document.Settings().art_dir;
  prompt.name = RawName(path);
  prompt.default_extension = "RAW";
  const auto target = document.Services().questions.AskSaveFile(prompt);
  if (!target) return false;
  SError error;
  if (!WriteTextureFiles(target->path, texture.indices, texture.colors, &error))
    return document.ShowError(Format("\"%s\" could not be written.", target->path.c_str()), error.what);
  document.Services().textures.AddTexture(target->path, texture);
  return LoadTexture(document, target->path) != nullptr;
}

}  // namespace veldra
