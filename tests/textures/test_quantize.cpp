#include "textures/quantize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>

namespace veldra {
namespace {

SImage MakeImage(int size, const std::function<std::array<int, 4>(int x, int y)>& pixel) {
  SImage image = {size, size, {}};
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      for (const int part : pixel(x, y))
        image.rgba.push_back(static_cast<uint8_t>(part));
    }
  }
  return image;
}

/// Over the opaque pixels.
int WorstDifference(const SImage& image, const SIndexedTexture& texture) {
  int worst = 0;
  for (size_t i = 0; i < texture.indices.size(); ++i) {
    for (size_t c = 0; c < 3 && image.rgba[i * 4 + 3] >= 128; ++c) {
      worst = std::max(worst, std::abs(image.rgba[i * 4 + c] - texture.colors[texture.indices[i] * size_t{3} + c]));
    }
  }
  return worst;
}

TEST(QuantizeTexture, TransparentPixelsTakeBlackEntry0ForThemselves) {
  // 256 opaque colours and the transparent one are one too many for an exact table.
  const SImage image = MakeImage(64, [](int x, int y) {
    return std::array{(x % 16) * 17, (y % 16) * 17, 0, x == 0 && y < 16 ? 127 : 255};
  });
  const SIndexedTexture texture = QuantizeTexture(image, std::nullopt);
  EXPECT_EQ(texture.colors[0] + texture.colors[1] + texture.colors[2], 0);
  for (size_t i = 0; i < texture.indices.size(); ++i) {
    EXPECT_EQ(texture.indices[i] == 0, image.rgba[i * 4 + 3] < 128) << i;
  }
  EXPECT_LE(WorstDifference(image, texture), 17);
}

TEST(QuantizeTexture, SpreadsItsColoursOverAGradient) {
  // 65536 colours over red and green: 256 squares of 16 × 16 colours would differ by 8 at most.
  const SImage image = MakeImage(256, [](int x, int y) { return std::array{x, y, 128, 255}; });
  const SIndexedTexture texture = QuantizeTexture(image, std::nullopt);
  EXPECT_LE(WorstDifference(image, texture), 12);
  EXPECT_EQ(QuantizeTexture(image, std::nullopt).indices, texture.indices) << "the same each time";
}

TEST(QuantizeTexture, TakesTheNearestEntryOfAGivenTable) {
  ColorTable colors = GreyRamp();
  colors[200 * 3] = 255;  // (255, 200, 200)
  const SImage image = MakeImage(64, [](int x, int) {
    const std::array<std::array<int, 4>, 4> pixels = {
        {{10, 10, 11, 255}, {250, 205, 200, 255}, {0, 0, 0, 255}, {90, 90, 90, 0}}};
    return pixels[static_cast<size_t>(x % 4)];
  });
  const SIndexedTexture texture = QuantizeTexture(image, colors);
  EXPECT_EQ(texture.colors, colors);
  EXPECT_EQ(std::vector(texture.indices.begin(), texture.indices.begin() + 4), (std::vector<uint8_t>{10, 200, 9, 0}));
}

TEST(QuantizeTexture, WhatIsDrawnStaysDrawnAndWhatIsNotStaysNot) {
  // Many colours about near-black, of which every third pixel is transparent.
  const SImage image = MakeImage(64, [](int x, int y) {
    return std::array{x % 20, y % 20, (x + y) % 11, x % 3 * 127};
  });
  for (const bool has_table : {false, true}) {
    const SIndexedTexture texture = QuantizeTexture(image, has_table ? std::optional(GreyRamp()) : std::nullopt);
    for (size_t i = 0; i < texture.indices.size(); ++i) {
      const uint8_t* const color = texture.colors.data() + texture.indices[i] * size_t{3};
      ASSERT_EQ(std::max({color[0], color[1], color[2]}) < 9, image.rgba[i * 4 + 3] < 128) << i;
    }
  }
  const SImage dark = MakeImage(64, [](int x, int) { return std::array{5, 6, 7, x % 2 * 255}; });
  const SIndexedTexture kept = QuantizeTexture(dark, std::nullopt, EDarkPixels::kKeep);
  EXPECT_EQ(kept.indices[0], kept.indices[1]);
  EXPECT_EQ(kept.colors[2], 7) << "its own colour";
}

}  // namespace
}  // namespace veldra
