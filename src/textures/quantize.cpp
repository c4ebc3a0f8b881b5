#include "textures/quantize.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>

#include "textures/nearblack.h"

namespace veldra {

namespace {

constexpr size_t kEntries = 256;
/// Entries that near-black colours get at most where there are too many colours for all; of a short table less.
constexpr size_t kDarkEntries = 16;
constexpr size_t kDarkShare = 4;
/// How often entries are moved to the middle of what they stand for, unless they stay where they are before.
constexpr int kRounds = 40;
/// Up to that round some of them are also moved to where more is to be gained, each so many rounds, one of so many.
constexpr int kLastRelocation = 30;
constexpr int kRelocateEach = 3;
constexpr size_t kRelocatedShare = 16;

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

/// A place between colours, in sixteenths.
struct SFine {
  std::array<int, 3> parts = {};
  bool operator==(const SFine&) const = default;
};

constexpr int kFine = 16;

SFine Fine(Packed color) {
  return {{Channel(color, 0) * kFine, Channel(color, 1) * kFine, Channel(color, 2) * kFine}};
}

Packed Rounded(const SFine& fine) {
  Packed color = 0;
  for (const int part : fine.parts)
    color = color << 8 | static_cast<Packed>((part + kFine / 2) / kFine);
  return color;
}

int SquaredDistance(const SFine& a, const SFine& b) {
  int sum = 0;
  for (size_t c = 0; c < 3; ++c)
    sum += (a.parts[c] - b.parts[c]) * (a.parts[c] - b.parts[c]);
  return sum;
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

/// Colours that one entry stands for.
struct SCluster {
  std::array<uint64_t, 3> sum = {};
  uint64_t pixels = 0;

  void Add(const SWeighted& member) {
    for (int c = 0; c < 3; ++c)
      sum[static_cast<size_t>(c)] += uint64_t{member.pixels} * static_cast<uint64_t>(Channel(member.color, c));
    pixels += member.pixels;
  }
  void Add(const SCluster& other) {
    for (size_t c = 0; c < 3; ++c)
      sum[c] += other.sum[c];
    pixels += other.pixels;
  }
  SCluster Without(const SCluster& part) const {
    SCluster rest = {{}, pixels - part.pixels};
    for (size_t c = 0; c < 3; ++c)
      rest.sum[c] = sum[c] - part.sum[c];
    return rest;
  }
  /// The larger the sum of this over clusters, the smaller that of the squares of what pixels are off.
  double Weight() const {
    double weight = 0;
    for (const uint64_t part : sum)
      weight += static_cast<double>(part) * static_cast<double>(part);
    return weight / static_cast<double>(pixels);
  }
  SFine FineMean() const {
    SFine mean;
    for (size_t c = 0; c < 3; ++c)
      mean.parts[c] = static_cast<int>((sum[c] * kFine + pixels / 2) / pixels);
    return mean;
  }
  Packed Mean() const { return Rounded(FineMean()); }
};

/// Some of the colours, and where to cut them in two best.
struct SBox {
  std::span<SWeighted> colors;
  SCluster all;
  int channel = 0;
  int last_low = 0;  ///< the largest value of that channel in the lower half
  double worth = 0;  ///< what the cut gains; 0 for a single colour

  explicit SBox(std::span<SWeighted> members) : colors(members) {
    for (const SWeighted& member : colors)
      all.Add(member);
    for (int c = 0; c < 3; ++c)
      LookAt(c);
  }

  void LookAt(int c) {
    std::array<SCluster, 256> by_value = {};
    for (const SWeighted& member : colors)
      by_value[static_cast<size_t>(Channel(member.color, c))].Add(member);
    SCluster low;
    for (size_t value = 0; low.pixels + by_value[value].pixels < all.pixels; ++value) {
      low.Add(by_value[value]);
      if (by_value[value].pixels == 0) continue;
      const double gain = low.Weight() + all.Without(low).Weight() - all.Weight();
      if (gain <= worth) continue;
      worth = gain;
      channel = c;
      last_low = static_cast<int>(value);
    }
  }

  std::pair<SBox, SBox> Cut() const {
    const auto rest = std::stable_partition(colors.begin(), colors.end(), [this](const SWeighted& member) {
      return Channel(member.color, channel) <= last_low;
    });
    const auto count = static_cast<size_t>(rest - colors.begin());
    return {SBox(colors.first(count)), SBox(colors.subspan(count))};
  }

  /// What stands for all of them. The mean of colours that are drawn can be one that is not.
  Packed Mean() const {
    const Packed mean = all.Mean();
    return IsDark(mean) && !IsDark(colors.front().color) ? colors.front().color : mean;
  }
};

int SquaredDistance(Packed a, Packed b) {
  int sum = 0;
  for (int c = 0; c < 3; ++c) {
    const int difference = Channel(a, c) - Channel(b, c);
    sum += difference * difference;
  }
  return sum;
}

/// Finds the nearest of some colours, beginning with one that is near: what lies more than twice as far from that as
/// the sought colour does cannot be nearer.
class CNeighbours {
 public:
  explicit CNeighbours(const std::vector<SFine>& colors) : colors_(colors), others_(colors.size()) {
    for (size_t i = 0; i < colors.size(); ++i) {
      for (size_t k = 0; k < colors.size(); ++k)
        if (k != i) others_[i].push_back({SquaredDistance(colors[i], colors[k]), k});
      std::ranges::sort(others_[i], {}, [](const SNearest& other) { return std::pair(other.distance, other.index); });
    }
  }

  struct SNearest {
    int distance = 0;
    size_t index = 0;
  };
  SNearest Find(const SFine& color, size_t from) const {
    const int first = SquaredDistance(color, colors_[from]);
    SNearest best = {first, from};
    for (const SNearest& other : others_[from]) {
      if (other.distance / 4 >= first) break;
      if (const int distance = SquaredDistance(color, colors_[other.index]); distance < best.distance)
        best = {distance, other.index};
    }
    return best;
  }
  /// Of the colour INDEX, the others' nearest.
  int DistanceFrom(size_t index) const { return others_[index].empty() ? 0 : others_[index].front().distance; }

 private:
  const std::vector<SFine>& colors_;
  std::vector<std::vector<SNearest>> others_;
};

/// Entries that are moved to the middles of the pixels that they stand for, and from where they are hardly missed to
/// where pixels are off most.
class CMiddles {
 public:
  CMiddles(std::span<const SWeighted> colors, const std::vector<Packed>& middles)
      : colors_(colors), entries_(colors.size(), 0), best_(middles) {
    for (const Packed middle : middles)
      middles_.push_back(Fine(middle));
  }

  std::vector<Packed> Settle() {
    for (int round = 0; round < kRounds; ++round) {
      const CNeighbours neighbours(middles_);
      Assign(neighbours);
      if (amiss_ < best_amiss_) {
        best_amiss_ = amiss_;
        best_.clear();
        for (const SFine& middle : middles_)
          best_.push_back(Rounded(middle));
      }
      const bool relocates = round % kRelocateEach == kRelocateEach - 1 && round < kLastRelocation;
      if (relocates) Relocate(neighbours);
      if (!Move() && round >= kLastRelocation) break;
    }
    return best_;
  }

 private:
  struct SEntry {
    SCluster cluster;
    uint64_t amiss = 0;  ///< the sum of the squares of what its pixels are off
    uint64_t worst = 0;  ///< that of one colour
    Packed worst_color = 0;
    std::optional<Packed> relocated = {};
  };

  void Assign(const CNeighbours& neighbours) {
    found_.assign(middles_.size(), {});
    amiss_ = 0;
    for (size_t i = 0; i < colors_.size(); ++i) {
      const SWeighted& member = colors_[i];
      const auto [distance, index] = neighbours.Find(Fine(member.color), entries_[i]);
      entries_[i] = index;
      SEntry& entry = found_[index];
      entry.cluster.Add(member);
      const uint64_t amiss = uint64_t{member.pixels} * static_cast<uint64_t>(distance);
      entry.amiss += amiss;
      amiss_ += amiss;
      if (amiss <= entry.worst) continue;
      entry.worst = amiss;
      entry.worst_color = member.color;
    }
  }

  /// What its pixels would be off more if another entry stood for them, at most.
  uint64_t CostOf(size_t index, const CNeighbours& neighbours) const {
    return found_[index].cluster.pixels * static_cast<uint64_t>(neighbours.DistanceFrom(index));
  }

  void Relocate(const CNeighbours& neighbours) {
    std::vector<std::pair<uint64_t, size_t>> costs;
    std::vector<std::pair<uint64_t, size_t>> gains;
    for (size_t i = 0; i < middles_.size(); ++i) {
      costs.emplace_back(CostOf(i, neighbours), i);
      // Two entries in the place of one leave less than half of it.
      gains.emplace_back(found_[i].amiss / 2, i);
    }
    std::ranges::sort(costs);
    std::ranges::sort(gains, std::greater());
    for (size_t i = 0; i < middles_.size() / kRelocatedShare; ++i) {
      if (costs[i].first >= gains[i].first) break;
      found_[costs[i].second].relocated = found_[gains[i].second].worst_color;
    }
  }

  /// False when all stay.
  bool Move() {
    bool is_moved = false;
    for (size_t i = 0; i < middles_.size(); ++i) {
      const SEntry& entry = found_[i];
      if (!entry.relocated && entry.cluster.pixels == 0) continue;
      const SFine moved = entry.relocated ? Fine(*entry.relocated) : entry.cluster.FineMean();
      // The middle of colours that are drawn can be one that is not.
      if (moved == middles_[i] || IsDark(Rounded(moved)) != IsDark(colors_.front().color)) continue;
      middles_[i] = moved;
      is_moved = true;
    }
    return is_moved;
  }

  std::span<const SWeighted> colors_;
  std::vector<SFine> middles_;
  std::vector<size_t> entries_;  ///< of each colour
  std::vector<SEntry> found_;
  uint64_t amiss_ = 0;
  std::vector<Packed> best_;
  uint64_t best_amiss_ = UINT64_MAX;
};

/// At most COUNT colours that stand for COLORS, which are near-black or are not.
std::vector<Packed> ChooseColors(std::span<SWeighted> colors, size_t count) {
  std::vector<Packed> chosen;
  if (colors.size() <= count) {
    for (const SWeighted& color : colors)
      chosen.push_back(color.color);
    return chosen;
  }
  std::vector<SBox> boxes = {SBox(colors)};
  while (boxes.size() < count) {
    const auto best = std::ranges::max_element(boxes, {}, &SBox::worth);
    if (best->worth <= 0) break;
    auto [low, high] = best->Cut();
    *best = low;
    boxes.push_back(high);
  }
  for (const SBox& box : boxes)
    chosen.push_back(box.Mean());
  return CMiddles(colors, chosen).Settle();
}

/// A table of at most COUNT colours for PIXELS, near-black entries first; the rest of it black.
ColorTable MakeTable(const std::vector<Packed>& pixels, size_t count) {
  std::vector<SWeighted> counted = CountColors(pixels);
  const std::span<SWeighted> all = counted;
  const auto dark =
      static_cast<size_t>(std::ranges::count_if(counted, [](const SWeighted& member) { return IsDark(member.color); }));
  const bool fits = counted.size() <= count;
  const size_t dark_entries = fits ? dark : std::min({dark, kDarkEntries, std::max(count / kDarkShare, size_t{1})});
  std::vector<Packed> chosen;
  if (dark > 0) chosen = ChooseColors(all.first(dark), dark_entries);
  if (dark < counted.size()) {
    const std::vector<Packed> light = ChooseColors(all.subspan(dark), count - chosen.size());
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
    const auto distance = [&](uint8_t entry) { return SquaredDistance(color, Entry(colors_, entry)); };
    return *std::ranges::min_element(entries, {}, distance);
  }

  const ColorTable& colors_;
  std::vector<uint8_t> dark_;
  std::vector<uint8_t> light_;
  std::unordered_map<Packed, uint8_t> found_;
};

}  // namespace

SIndexedTexture QuantizeTexture(const SImage& image, const std::optional<ColorTable>& colors, EDarkPixels dark_pixels,
                                int most_colors) {
  const std::vector<Packed> pixels = WantedColors(image, dark_pixels);
  const auto count = static_cast<size_t>(std::clamp(most_colors, 2, static_cast<int>(kEntries)));
  SIndexedTexture result = {std::vector<uint8_t>(pixels.size()), colors ? *colors : MakeTable(pixels, count)};
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
