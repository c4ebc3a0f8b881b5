#pragma once

#include <optional>
#include <span>
#include <string>

#include "textures/quantize.h"
#include "textures/scalepicture.h"

/// Pictures of other programs made into textures.
namespace veldra {

struct STextureOptions {
  int size = 0;  ///< the texture's width; 0: that of the picture
  EScaling scaling = EScaling::kSmooth;
  std::optional<ColorTable> colors = {};  ///< to be taken in place of the picture's own or one made for it
};

/// The picture PATH (PNG, JPEG, BMP, TGA) as a texture. A PNG with a table of colours keeps its indices and the table
/// where nothing else is wanted; any other becomes what QuantizeTexture makes of it. Nothing with ERROR when it cannot
/// be read or, with no size wanted, no texture has its sides.
std::optional<SIndexedTexture> TextureOfPicture(const std::string& path, const STextureOptions& options, SError* error);

/// The same of a picture that a file holds among other things; IS_TGA is what its name says.
std::optional<SIndexedTexture> TextureOfPicture(std::span<const uint8_t> bytes, bool is_tga,
                                                const STextureOptions& options, SError* error);

/// The width that a picture of WIDTH × HEIGHT pixels gets where any is free: the nearer one to its longer side of those
/// that the game takes.
constexpr int GameTextureSize(int width, int height) {
  constexpr int kSmall = 64;
  constexpr int kLarge = 256;
  const int side = width > height ? width : height;
  return 2 * side < kSmall + kLarge ? kSmall : kLarge;
}

}  // namespace veldra
