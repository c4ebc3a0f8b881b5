#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/png.h"
#include "textures/texturestore.h"

namespace veldra {

/// Pixels of alpha below it are transparent.
inline constexpr uint8_t kOpaqueFromAlpha = 128;

/// What becomes of opaque pixels of a near-black colour, which the game would let through.
enum class EDarkPixels {
  kLift,  ///< they become (9, 9, 9), the darkest colour that it draws
  kKeep   ///< they are meant so
};

/// Turns a picture into colour indices. Transparent pixels become near-black: their own colour where that is
/// near-black, else black; then DARK_PIXELS says what becomes of opaque ones. With COLORS each pixel takes the nearest
/// entry (squared RGB distance, the lowest on ties): one that is near-black among the near-black entries, any other
/// among the others, as far as the table has such. Without, a table of at most MOST_COLORS (2 to 256) is made,
/// near-black entries first: exact where there are no more, else by cuts where they gain most, after which each entry
/// is moved to the middle of the pixels that it stands for, some times over.
SIndexedTexture QuantizeTexture(const SImage& image, const std::optional<ColorTable>& colors,
                                EDarkPixels dark_pixels = EDarkPixels::kLift, int most_colors = 256);

/// Some entry of COLORS is near-black.
bool HasNearBlack(const ColorTable& colors);

}  // namespace veldra
