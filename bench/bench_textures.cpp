#include <cstring>

#include "comparison.h"
#include "platform/text.h"
#include "textures/texturestore.h"

namespace veldra::bench {

namespace {

/// A texture's texels and what they are decoded into.
struct SDecoding {
  std::vector<uint8_t> indices;
  ColorTable colors = GreyRamp();
  STextureImage image;
  std::vector<uint8_t> source;  ///< as many bytes as the decoded layouts have
  std::vector<uint8_t> copy;
};

std::shared_ptr<SDecoding> MakeDecoding(int size) {
  auto decoding = std::make_shared<SDecoding>();
  const auto texels = static_cast<size_t>(size) * static_cast<size_t>(size);
  for (size_t i = 0; i < texels; ++i)
    decoding->indices.push_back(static_cast<uint8_t>(i * 7 + i / 64));
  decoding->image.size = size;
  decoding->source.assign(texels * 10, 1);
  decoding->copy.assign(texels * 10, 0);
  return decoding;
}

}  // namespace

void AddTextureComparisons() {
  for (const int size : kTextureSizes) {
    const auto d = MakeDecoding(size);
    const Work decode = [d] { return Seconds([&] { DecodeTexture(d->indices, d->colors, d->image); }); };
    const Work copy = [d] {
      return Seconds([&] {
        std::memcpy(d->copy.data(), d->source.data(), d->copy.size());
        // Keeps the compiler from leaving out a copy that nobody reads.
        asm volatile("" : : "r"(d->copy.data()) : "memory");
      });
    };
    Compare(Format("texture %d", size), decode, {{"copy the output", copy, 3}});
  }
}

}  // namespace veldra::bench
