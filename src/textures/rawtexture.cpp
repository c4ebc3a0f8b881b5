#include "textures/rawtexture.h"

#include <algorithm>
#include <array>

#include "platform/files.h"
#include "textures/nearblack.h"
#include "textures/texturefiles.h"

namespace veldra {

namespace {

bool IsTransparent(const ColorTable& colors, size_t entry) {
  return IsNearBlack(colors[entry * 3], colors[entry * 3 + 1], colors[entry * 3 + 2]);
}

}  // namespace

std::optional<SRawTexture> ReadRawTexture(const std::string& path, const ColorTable& defaults, SError* error) {
  return RawTextureOf(ReadTextureFiles(path), defaults, error);
}

std::optional<SRawTexture> RawTextureOf(const STextureFiles& files, const ColorTable& defaults, SError* error) {
  if (!files.texels) {
    Fail(error, files.Fault());
    return std::nullopt;
  }
  const std::span<const uint8_t> texels = files.texels->View();
  SRawTexture texture{.size = TextureSizeOfLength(texels.size()), .texels = {}};
  texture.texels = {std::vector<uint8_t>(texels.begin(), texels.end()), files.colors.value_or(defaults)};
  texture.has_own_colors = files.colors.has_value();
  texture.colors_fault = files.colors_error.what;
  return texture;
}

int ColorCount(const SIndexedTexture& texture) {
  std::array<bool, 256> is_used = {};
  for (const uint8_t index : texture.indices)
    is_used[index] = true;
  return static_cast<int>(std::ranges::count(is_used, true));
}

int TransparentCount(const SIndexedTexture& texture) {
  return static_cast<int>(
      std::ranges::count_if(texture.indices, [&](uint8_t index) { return IsTransparent(texture.colors, index); }));
}

SIndexedImage IndexedPictureOf(const SRawTexture& texture) {
  SIndexedImage picture;
  picture.width = picture.height = texture.size;
  picture.indices = texture.texels.indices;
  const ColorTable& colors = texture.texels.colors;
  for (size_t entry = 0; entry < colors.size() / 3; ++entry) {
    for (size_t c = 0; c < 3; ++c)
      picture.table[entry * 4 + c] = colors[entry * 3 + c];
    picture.table[entry * 4 + 3] = IsTransparent(colors, entry) ? 0 : 255;
  }
  return picture;
}

SImage PictureOf(const SRawTexture& texture) {
  const SIndexedImage indexed = IndexedPictureOf(texture);
  SImage picture = {texture.size, texture.size, {}};
  picture.rgba.reserve(indexed.indices.size() * 4);
  for (const uint8_t index : indexed.indices) {
    const auto entry = indexed.table.begin() + ptrdiff_t{index} * 4;
    picture.rgba.insert(picture.rgba.end(), entry, entry + 4);
  }
  return picture;
}

SIndexedTexture ResizeTexture(const SRawTexture& texture, int size, EScaling scaling) {
  if (scaling == EScaling::kNearest || size == texture.size)
    return {ScaleIndices(texture.texels.indices, texture.size, texture.size, size), texture.texels.colors};
  return QuantizeTexture(ScalePicture(PictureOf(texture), size, size, scaling), texture.texels.colors);
}

SIndexedTexture RepaletteTexture(const SRawTexture& texture, const ColorTable& colors) {
  return QuantizeTexture(PictureOf(texture), colors);
}

SIndexedTexture TextureOf(const SIndexedImage& picture) {
  SIndexedTexture texture{picture.indices, {}};
  for (size_t entry = 0; entry < texture.colors.size() / 3; ++entry) {
    const uint8_t* const color = picture.table.data() + entry * 4;
    const bool is_hidden = color[3] < kOpaqueFromAlpha && !IsNearBlack(color[0], color[1], color[2]);
    for (size_t c = 0; c < 3; ++c)
      texture.colors[entry * 3 + c] = is_hidden ? uint8_t{0} : color[c];
  }
  return texture;
}

}  // namespace veldra
