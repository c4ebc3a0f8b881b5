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

struct SPictureFile {
  std::optional<SImage> Size(SError* error) const { return ReadPictureSize(path, error); }
  std::optional<SImage> Pixels(SError* error) const { return ReadPicture(path, error); }
  std::optional<SIndexedImage> Indexed() const { return ReadIndexedPng(path); }

  const std::string& path;
};

struct SPictureBytes {
  std::optional<SImage> Size(SError* error) const { return DecodePictureSize(bytes, is_tga, error); }
  std::optional<SImage> Pixels(SError* error) const { return DecodePicture(bytes, is_tga, error); }
  std::optional<SIndexedImage> Indexed() const { return DecodeIndexedPng(bytes); }

  std::span<const uint8_t> bytes;
  bool is_tga;
};

template <typename Source>
std::optional<SIndexedTexture> TextureInColor(const Source& source, const STextureOptions& options, bool has_table,
                                              SError* error) {
  // Before the pixels are taken in.
  const auto sides = source.Size(error);
  if (!sides) return std::nullopt;
  if (options.size == 0 && !IsTextureSize(sides->width, sides->height)) {
    Fail(error, Format("is %d x %d pixels. A texture is square, 64, 128, 256 or 512 pixels wide.", sides->width,
                       sides->height));
    return std::nullopt;
  }
  auto picture = source.Pixels(error);
  if (!picture) return std::nullopt;
  if (options.size != 0) picture = ScalePicture(*picture, options.size, options.size, options.scaling);
  return QuantizeTexture(*picture, options.colors, has_table ? EDarkPixels::kKeep : EDarkPixels::kLift);
}

template <typename Source>
std::optional<SIndexedTexture> MakeTexture(const Source& source, const STextureOptions& options, SError* error) {
  auto indexed = source.Indexed();
  if (!indexed || options.colors) return TextureInColor(source, options, indexed.has_value(), error);
  const bool is_scaled = options.size != 0 && (indexed->width != options.size || indexed->height != options.size);
  if (is_scaled && options.scaling == EScaling::kSmooth) return TextureInColor(source, options, true, error);
  if (is_scaled) {
    indexed->indices = ScaleIndices(indexed->indices, indexed->width, indexed->height, options.size);
    indexed->width = indexed->height = options.size;
  }
  if (!IsTextureSize(indexed->width, indexed->height)) return TextureInColor(source, options, true, error);
  return TextureOf(*indexed);
}

}  // namespace

std::optional<SIndexedTexture> TextureOfPicture(const std::string& path, const STextureOptions& options,
                                                SError* error) {
  return MakeTexture(SPictureFile{path}, options, error);
}

std::optional<SIndexedTexture> TextureOfPicture(std::span<const uint8_t> bytes, bool is_tga,
                                                const STextureOptions& options, SError* error) {
  return MakeTexture(SPictureBytes{bytes, is_tga}, options, error);
}

}  // namespace veldra
