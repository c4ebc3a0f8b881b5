#include "render/modelpicture.h"

#include <algorithm>
#include <new>

#include "platform/glcontext.h"
#include "platform/text.h"
#include "render/modelrenderer.h"

namespace veldra {

namespace {

/// Pictures up to this side are drawn twice as large and averaged, which smooths their edges.
constexpr int kLargestSmoothSide = 2048;

/// Every 2 × 2 pixels of LARGE become one.
SImage Halve(const std::vector<uint8_t>& large, int width, int height) {
  SImage image = {.width = width, .height = height, .rgba = {}};
  const size_t large_row = static_cast<size_t>(width) * 8;
  image.rgba.reserve(large_row / 2 * static_cast<size_t>(height));
  for (size_t y = 0; y < static_cast<size_t>(height); ++y) {
    const uint8_t* upper = large.data() + 2 * y * large_row;
    const uint8_t* lower = upper + large_row;
    for (size_t k = 0; k < large_row; k += 8) {
      for (size_t channel = k; channel < k + 4; ++channel) {
        const int sum = upper[channel] + upper[channel + 4] + lower[channel] + lower[channel + 4];
        image.rgba.push_back(static_cast<uint8_t>((sum + 2) / 4));
      }
    }
  }
  return image;
}

std::optional<SImage> DrawScaled(const CBinModel& model, const SViewState& state, int width, int height, int scale,
                                 double seconds, SError* error) {
  const auto context = CMemoryGlContext::Create(width * scale, height * scale, error);
  if (context == nullptr) return std::nullopt;
  CModelRenderer renderer;
  renderer.Draw(model, state,
                {.width = width * scale, .height = height * scale, .seconds = seconds, .pixel_ratio = double(scale)});
  std::vector<uint8_t> pixels = context->ReadPixels();
  if (scale == 2) return Halve(pixels, width, height);
  return SImage{.width = width, .height = height, .rgba = std::move(pixels)};
}

}  // namespace

std::optional<SImage> DrawModelPicture(const CBinModel& model, const SViewState& state, int width, int height,
                                       SError* error, double seconds) {
  if (std::min(width, height) < 1 || std::max(width, height) > kLargestImageSide) {
    if (error != nullptr) error->what = Format("a picture's sides are 1 to %d pixels", kLargestImageSide);
    return std::nullopt;
  }
  const int scale = std::max(width, height) <= kLargestSmoothSide ? 2 : 1;
  try {
    return DrawScaled(model, state, width, height, scale, seconds, error);
  } catch (const std::bad_alloc&) {
    if (error != nullptr) error->what = Format("no memory for a picture of %d x %d pixels", width, height);
    return std::nullopt;
  }
}

}  // namespace veldra
