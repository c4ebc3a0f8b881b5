#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/png.h"
#include "textures/texturestore.h"

namespace veldra {

struct SIndexedTexture {
  std::vector<uint8_t> indices;  ///< size × size, first row first
  ColorTable colors;
};

/// Turns a picture into colour indices: with COLORS, each pixel takes the nearest entry (squared RGB distance, the
/// lowest on ties); without, a table is made for it, exact for up to 256 colours, else by median cut. Pixels of alpha
/// below 128 become index 0, which is then black, the game's transparent colour.
SIndexedTexture QuantizeTexture(const SImage& image, const std::optional<ColorTable>& colors);

}  // namespace veldra
