#include "textures/picturetexture.h"

#include <algorithm>

#include "platform/indexedpng.h"
#include "platform/picture.h"
#include "platform/text.h"
#include "textures/rawtexture.h"

namespace veldra {

namespace {

bool IsTextureSize(int width, int height) {
  return width == height && std::ranges::find(kTextureSizes, width) != kTextureSizes.end();
}

std::optional<SIndexedTexture> TextureInColor(const std::string& path, const STextureOptions& options, bool has_table,
                                              SError* error) {
  // Before the pixels are taken in.
  const auto sides = ReadPictureSize(path, error);
  if (!sides) return std::nullopt;
  if (options.size == 0 && !IsTextureSize(sides->width, sides->height)) {
    Fail(error, Format("is %d x %d pixels. A texture is square, 64, 128, 256 or 512 pixels wide.", sides->width,
                       sides->height));
    return std::nullopt;
  }
  auto picture = ReadPicture(path, error);
  if (!picture) return std::nullopt;
  if (options.size != 0) picture = ScalePicture(*picture, options.size, options.size, options.scaling);
  return QuantizeTexture(*picture, options.colors, has_table ? EDarkPixels::kKeep : EDarkPixels::kLift);
}

}  // namespace

std::optional<SIndexedTexture> TextureOfPicture(const std::string& path, const STextureOptions& options,
                                                SError* error) {
  auto indexed = ReadIndexedPng(path);
  if (!indexed || options.colors) return TextureInColor(path, options, indexed.has_value(), error);
  const bool is_scaled = options.size != 0 && (indexed->width != options.size || indexed->height != options.size);
  if (is_scaled && options.scaling == EScaling::kSmooth) return TextureInColor(path, options, true, error);
  if (is_scaled) {
    indexed->indices = ScaleIndices(indexed->indices, indexed->width, indexed->height, options.size);
    indexed->width = indexed->height = options.size;
  }
  if (!IsTextureSize(indexed->width, indexed->height)) return TextureInColor(path, options, true, error);
  return TextureOf(*indexed);
}

}  // namespace veldra
