#include "textures/quantize.h"

#include <algorithm>
#include <span>
#include <unordered_map>

namespace veldra {

namespace {

constexpr size_t kEntries = 256;
constexpr uint8_t kOpaqueFromAlpha = 128;

/// Red, green, blue from the high byte down.
using Packed = uint32_t;

int Channel(Packed color, int channel) {
  return static_cast<int>(color >> (16 - 8 * channel) & 0xFF);
}

Packed PixelAt(const SImage& image, size_t pixel) {
  const uint8_t* p = image.rgba.data() + pixel * 4;
  return Packed{p[0]} << 16 | Packed{p[1]} << 8 | p[2];
}

bool IsOpaque(const SImage& image, size_t pixel) {
  return image.rgba[pixel * 4 + 3] >= kOpaqueFromAlpha;
}

struct SWeighted {
  Packed color;
  uint32_t pixels;
};

/// The opaque colours of IMAGE, ascending, with the number of their pixels.
std::vector<SWeighted> CountColors(const SImage& image) {
  std::vector<Packed> all;
  all.reserve(image.rgba.size() / 4);
  for (size_t i = 0; i < image.rgba.size() / 4; ++i) {
    if (IsOpaque(image, i)) all.push_back(PixelAt(image, i));
  }
  std::ranges::sort(all);
  std::vector<SWeighted> counted;
  for (const Packed color : all) {
    if (counted.empty() || counted.back().color != color) counted.push_back({color, 0});
    ++counted.back().pixels;
  }
  return counted;
}

/// Some of the colours, and along which channel they lie farthest apart.
struct SBox {
  std::span<SWeighted> colors;
  int channel = 0;
  int extent = 0;
  uint64_t pixels = 0;

  explicit SBox(std::span<SWeighted> members) : colors(members) {
    for (const SWeighted& member : colors)
      pixels += member.pixels;
    for (int c = 0; c < 3; ++c) {
      const auto [low, high] =
          std::ranges::minmax(colors, {}, [c](const SWeighted& member) { return Channel(member.color, c); });
      const int length = Channel(high.color, c) - Channel(low.color, c);
      if (length > extent) {
        extent = length;
        channel = c;
      }
    }
  }

  /// How much there is to gain from cutting it; 0 for a single colour.
  uint64_t Worth() const { return pixels * static_cast<uint64_t>(extent) * static_cast<uint64_t>(extent); }

  /// Cuts where half of the pixels lie on either side, each half with at least one colour.
  std::pair<SBox, SBox> Cut() const {
    std::ranges::sort(colors, [this](const SWeighted& a, const SWeighted& b) {
      return std::pair(Channel(a.color, channel), a.color) < std::pair(Channel(b.color, channel), b.color);
    });
    size_t count = 1;
    for (uint64_t before = colors[0].pixels; count + 1 < colors.size() && before < pixels / 2; ++count) {
      before += colors[count].pixels;
    }
    return {SBox(colors.first(count)), SBox(colors.subspan(count))};
  }

  Packed Mean() const {
    Packed mean = 0;
    for (int c = 0; c < 3; ++c) {
      uint64_t sum = pixels / 2;
      for (const SWeighted& member : colors)
        sum += uint64_t{member.pixels} * static_cast<uint64_t>(Channel(member.color, c));
      mean = mean << 8 | static_cast<Packed>(sum / pixels);
    }
    return mean;
  }
};

/// At most COUNT colours that stand for COLORS.
std::vector<Packed> ChooseColors(std::vector<SWeighted>& colors, size_t count) {
  std::vector<Packed> chosen;
  if (colors.size() <= count) {
    for (const SWeighted& color : colors)
      chosen.push_back(color.color);
    return chosen;
  }
  std::vector<SBox> boxes = {SBox(colors)};
  while (boxes.size() < count) {
    const auto widest = std::ranges::max_element(boxes, {}, &SBox::Worth);
    if (widest->Worth() == 0) break;
    auto [low, high] = widest->Cut();
    *widest = low;
    boxes.push_back(high);
  }
  for (const SBox& box : boxes)
    chosen.push_back(box.Mean());
  return chosen;
}

/// Finds nearest entries, remembering each colour's.
class CNearest {
 public:
  CNearest(const ColorTable& colors, size_t first, size_t end) : colors_(colors), first_(first), end_(end) {}

  uint8_t Find(Packed color) {
    const auto [known, is_new] = found_.try_emplace(color, uint8_t{0});
    if (is_new) known->second = Search(color);
    return known->second;
  }

 private:
  uint8_t Search(Packed color) const {
    size_t best = first_;
    int smallest = 3 * 255 * 255 + 1;
    for (size_t i = first_; i < end_; ++i) {
      int distance = 0;
      for (int c = 0; c < 3; ++c) {
        const int difference = Channel(color, c) - colors_[i * 3 + static_cast<size_t>(c)];
        distance += difference * difference;
      }
      if (distance < smallest) {
        smallest = distance;
        best = i;
      }
    }
    return static_cast<uint8_t>(best);
  }

  const ColorTable& colors_;
  size_t first_;
  size_t end_;
  std::unordered_map<Packed, uint8_t> found_;
};

}  // namespace

SIndexedTexture QuantizeTexture(const SImage& image, const std::optional<ColorTable>& colors) {
  const size_t pixels = image.rgba.size() / 4;
  SIndexedTexture result = {std::vector<uint8_t>(pixels), colors.value_or(ColorTable{})};
  size_t first = 0;
  size_t end = kEntries;
  if (!colors) {
    std::vector<SWeighted> counted = CountColors(image);
    uint64_t opaque = 0;
    for (const SWeighted& color : counted)
      opaque += color.pixels;
    // Entry 0 is set aside as soon as anything is transparent.
    first = opaque < pixels ? 1 : 0;
    end = first;
    for (const Packed color : ChooseColors(counted, kEntries - first)) {
      for (int c = 0; c < 3; ++c)
        result.colors[end * 3 + static_cast<size_t>(c)] = static_cast<uint8_t>(Channel(color, c));
      ++end;
    }
  }
  CNearest nearest(result.colors, first, end);
  for (size_t i = 0; i < pixels; ++i) {
    if (IsOpaque(image, i)) result.indices[i] = nearest.Find(PixelAt(image, i));
  }
  return result;
}

}  // namespace veldra
