#include "textures/quantize.h"

#include <algorithm>
#include <span>
#include <unordered_map>

#include "textures/nearblack.h"

namespace veldra {

namespace {

constexpr size_t kEntries = 256;
/// Entries that near-black colours get at most where there are too many colours for all.
constexpr size_t kDarkEntries = 16;

/// Red, green, blue from the high byte down.
using Packed = uint32_t;
constexpr Packed kDarkestOpaque = 0x090909;

int Channel(Packed color, int channel) {
  return static_cast<int>(color >> (16 - 8 * channel) & 0xFF);
}

bool IsDark(Packed color) {
  return IsNearBlack(color >> 16, color >> 8 & 0xFF, color & 0xFF);
}

Packed Entry(const ColorTable& colors, size_t entry) {
  return Packed{colors[entry * 3]} << 16 | Packed{colors[entry * 3 + 1]} << 8 | colors[entry * 3 + 2];
}

/// The colour that a pixel gets if the table has it.
Packed WantedColor(const uint8_t* rgba, EDarkPixels dark_pixels) {
  const Packed color = Packed{rgba[0]} << 16 | Packed{rgba[1]} << 8 | rgba[2];
  const bool is_dark = IsDark(color);
  if (rgba[3] < kOpaqueFromAlpha) return is_dark ? color : 0;
  return is_dark && dark_pixels == EDarkPixels::kLift ? kDarkestOpaque : color;
}

std::vector<Packed> WantedColors(const SImage& image, EDarkPixels dark_pixels) {
  std::vector<Packed> colors(image.rgba.size() / 4);
  for (size_t i = 0; i < colors.size(); ++i)
    colors[i] = WantedColor(image.rgba.data() + i * 4, dark_pixels);
  return colors;
}

struct SWeighted {
  Packed color;
  uint32_t pixels;
};

/// Each colour of PIXELS once, near-black ones first, with the number of its pixels.
std::vector<SWeighted> CountColors(std::vector<Packed> pixels) {
  std::ranges::sort(pixels);
  std::vector<SWeighted> counted;
  for (const Packed color : pixels) {
    if (counted.empty() || counted.back().color != color) counted.push_back({color, 0});
    ++counted.back().pixels;
  }
  std::stable_partition(counted.begin(), counted.end(), [](const SWeighted& member) { return IsDark(member.color); });
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

  /// What stands for all of them. The mean of colours that are drawn can be one that is not.
  Packed Mean() const {
    Packed mean = 0;
    for (int c = 0; c < 3; ++c) {
      uint64_t sum = pixels / 2;
      for (const SWeighted& member : colors)
        sum += uint64_t{member.pixels} * static_cast<uint64_t>(Channel(member.color, c));
      mean = mean << 8 | static_cast<Packed>(sum / pixels);
    }
    return IsDark(mean) && !IsDark(colors.front().color) ? colors.front().color : mean;
  }
};

/// At most COUNT colours that stand for COLORS.
std::vector<Packed> ChooseColors(std::span<SWeighted> colors, size_t count) {
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

/// A table for PIXELS, near-black entries first; the rest of it black.
ColorTable MakeTable(const std::vector<Packed>& pixels) {
  std::vector<SWeighted> counted = CountColors(pixels);
  const std::span<SWeighted> all = counted;
  const auto dark =
      static_cast<size_t>(std::ranges::count_if(counted, [](const SWeighted& member) { return IsDark(member.color); }));
  const bool fits = counted.size() <= kEntries;
  const size_t dark_entries = fits ? dark : std::min(dark, kDarkEntries);
  std::vector<Packed> chosen;
  if (dark > 0) chosen = ChooseColors(all.first(dark), dark_entries);
  if (dark < counted.size()) {
    const std::vector<Packed> light = ChooseColors(all.subspan(dark), kEntries - chosen.size());
    chosen.insert(chosen.end(), light.begin(), light.end());
  }
  ColorTable table = {};
  for (size_t i = 0; i < chosen.size(); ++i)
    for (int c = 0; c < 3; ++c)
      table[i * 3 + static_cast<size_t>(c)] = static_cast<uint8_t>(Channel(chosen[i], c));
  return table;
}

/// Finds nearest entries, remembering each colour's.
class CNearest {
 public:
  explicit CNearest(const ColorTable& colors) : colors_(colors) {
    for (size_t i = 0; i < kEntries; ++i)
      (IsDark(Entry(colors, i)) ? dark_ : light_).push_back(static_cast<uint8_t>(i));
    // A table of one sort only serves both.
    if (dark_.empty()) dark_ = light_;
    if (light_.empty()) light_ = dark_;
  }

  uint8_t Find(Packed color) {
    const auto [known, is_new] = found_.try_emplace(color, uint8_t{0});
    if (is_new) known->second = Search(color, IsDark(color) ? dark_ : light_);
    return known->second;
  }

 private:
  uint8_t Search(Packed color, const std::vector<uint8_t>& entries) const {
    const auto distance = [&](uint8_t entry) {
      int sum = 0;
      for (int c = 0; c < 3; ++c) {
        const int difference = Channel(color, c) - Channel(Entry(colors_, entry), c);
        sum += difference * difference;
      }
      return sum;
    };
    return *std::ranges::min_element(entries, {}, distance);
  }

  const ColorTable& colors_;
  std::vector<uint8_t> dark_;
  std::vector<uint8_t> light_;
  std::unordered_map<Packed, uint8_t> found_;
};

}  // namespace

SIndexedTexture QuantizeTexture(const SImage& image, const std::optional<ColorTable>& colors, EDarkPixels dark_pixels) {
  const std::vector<Packed> pixels = WantedColors(image, dark_pixels);
  SIndexedTexture result = {std::vector<uint8_t>(pixels.size()), colors ? *colors : MakeTable(pixels)};
  CNearest nearest(result.colors);
  for (size_t i = 0; i < pixels.size(); ++i)
    result.indices[i] = nearest.Find(pixels[i]);
  return result;
}

bool HasNearBlack(const ColorTable& colors) {
  for (size_t i = 0; i < kEntries; ++i)
    if (IsDark(Entry(colors, i))) return true;
  return false;
}

}  // namespace veldra
