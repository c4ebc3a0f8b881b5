#pragma once

#include <optional>
#include <string>

#include "platform/indexedpng.h"
#include "platform/png.h"
#include "textures/quantize.h"
#include "textures/scalepicture.h"
#include "textures/texturestore.h"

/// Texture files as they are stored: indices and a table.
namespace veldra {

struct SRawTexture {
  int size = 0;  ///< edge length in texels
  SIndexedTexture texels;
  bool has_own_colors = false;    ///< from the ACT file beside it
  std::string colors_fault = {};  ///< what the system says when that file could not be read
};

/// Nothing with ERROR when PATH cannot be read or has the length of no texture. DEFAULTS stand in for a missing ACT.
std::optional<SRawTexture> ReadRawTexture(const std::string& path, const ColorTable& defaults, SError* error);

/// The same of files that have been read.
std::optional<SRawTexture> RawTextureOf(const STextureFiles& files, const ColorTable& defaults, SError* error);

/// Different indices in use.
int ColorCount(const SIndexedTexture& texture);
/// Texels that the game lets through.
int TransparentCount(const SIndexedTexture& texture);

/// The texels in colour, those that the game lets through of alpha 0.
SImage PictureOf(const SRawTexture& texture);
/// With the table as it is, near-black entries of alpha 0.
SIndexedImage IndexedPictureOf(const SRawTexture& texture);

/// Another width and the same table.
SIndexedTexture ResizeTexture(const SRawTexture& texture, int size, EScaling scaling);
/// Each texel the nearest colour of COLORS; near-black stays near-black, other colours do not become so, as far as
/// COLORS has such.
SIndexedTexture RepaletteTexture(const SRawTexture& texture, const ColorTable& colors);

/// A picture with a table of colours as it is: the indices stay, and entries of alpha below 128 become near-black.
SIndexedTexture TextureOf(const SIndexedImage& picture);

}  // namespace veldra
