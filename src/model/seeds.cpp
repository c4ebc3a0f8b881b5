#include "model/seeds.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>
#include <utility>

#include "model/seedscan.h"

namespace veldra {

namespace {

/// Positions between two reports of how far it is; in the worst case each takes milliseconds.
constexpr size_t kPositionsAStep = 256;

/// The largest sum of squares that is within reach of THRESHOLD (>= 0).
uint32_t LargestSquare(int32_t threshold) {
  const int64_t beyond = (int64_t{threshold} + 1) * (int64_t{threshold} + 1);
  return static_cast<uint32_t>(std::min<int64_t>(beyond - 1, std::numeric_limits<int32_t>::max()));
}

/// Relative to the lowest corner of all of them.
struct SLocalPoints {
  std::vector<WrappedPoint> points;
  WrappedPoint extent = {};
};

/// Squares modulo 2^32 do not change when a difference changes by 2^31, so coordinates that span more are folded. When
/// only a sum that is 0 matters they may be folded to 16 bits: squares are 0 or 1 modulo 4, so three that sum to a
/// multiple of 4 are all even, and sixteen such steps show each difference to be a multiple of 2^16.
SLocalPoints MakeLocal(std::vector<WrappedPoint> positions, bool only_zero_matters) {
  SLocalPoints local{std::move(positions)};
  const uint32_t mask = only_zero_matters ? 0xFFFF : 0x7FFFFFFF;
  const auto is_less = [](uint32_t a, uint32_t b) { return static_cast<int32_t>(a) < static_cast<int32_t>(b); };
  WrappedPoint low = local.points.front();
  WrappedPoint high = low;
  for (const WrappedPoint& p : local.points) {
    for (size_t axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], p[axis], is_less);
      high[axis] = std::max(high[axis], p[axis], is_less);
    }
  }
  for (WrappedPoint& p : local.points) {
    for (size_t axis = 0; axis < 3; ++axis)
      p[axis] = (p[axis] - low[axis]) & mask;
  }
  for (size_t axis = 0; axis < 3; ++axis)
    local.extent[axis] = std::min(high[axis] - low[axis], mask);
  return local;
}

/// True when no sum of squares wraps: what is near is then within reach, and what is far is not.
bool IsPlain(const WrappedPoint& extent) {
  uint64_t sum = 0;
  for (const uint32_t side : extent)
    sum += side > 0xFFFF ? uint64_t{1} << 32 : uint64_t{side} * side;
  return sum < (uint64_t{1} << 32);
}

/// Seeds in the cells of a hashed grid, for positions among which no sum wraps.
class CSeedGrid {
 public:
  CSeedGrid(const SLocalPoints& local, int32_t threshold)
      : extent_(local.extent),
        limit_(LargestSquare(threshold)),
        reach_(static_cast<uint32_t>(std::min(threshold, 0xFFFF))),
        // More than two reaches a side: no position then has to look at more than two cells an axis.
        shift_(static_cast<uint32_t>(std::bit_width(2 * reach_ + 1))),
        heads_(BucketCount(local.points.size()), -1),
        mask_(static_cast<uint32_t>(heads_.size() - 1)) {
    seeds_.reserve(local.points.size());
  }

  int32_t Find(const WrappedPoint& p) const {
    std::array<uint32_t, 3> first;
    std::array<uint32_t, 3> last;
    for (size_t axis = 0; axis < 3; ++axis) {
      first[axis] = (p[axis] - std::min(p[axis], reach_)) >> shift_;
      last[axis] = std::min(p[axis] + reach_, extent_[axis]) >> shift_;
    }
    int32_t best = kNoSeed;
    for (uint32_t z = first[2]; z <= last[2]; ++z) {
      for (uint32_t y = first[1]; y <= last[1]; ++y) {
        for (uint32_t x = first[0]; x <= last[0]; ++x)
          SearchBucket(BucketOf(x, y, z), p, best);
      }
    }
    return best;
  }

  void Add(int32_t index, const WrappedPoint& p) {
    int32_t& head = heads_[BucketOf(p[0] >> shift_, p[1] >> shift_, p[2] >> shift_)];
    seeds_.push_back({p, index, head});
    head = static_cast<int32_t>(seeds_.size() - 1);
  }

 private:
  struct SSeed {
    WrappedPoint position;
    int32_t index;
    int32_t next;  ///< the bucket's next seed, or -1
  };

  /// No more buckets than there are cells, and half as many as positions: some will not be seeds.
  size_t BucketCount(size_t points) const {
    uint64_t cells = 1;
    for (const uint32_t side : extent_)
      cells *= (side >> shift_) + 1;
    return std::bit_ceil(static_cast<size_t>(std::min<uint64_t>((points + 1) / 2, cells)));
  }

  /// The cells of a block of 16 × 8 × 8 share a stretch of the table, each block in an order of its own: cells near
  /// each other are then near each other in memory, and a flat model still fills the whole table.
  uint32_t BucketOf(uint32_t x, uint32_t y, uint32_t z) const {
    const uint32_t place = (x & 15) | (y & 7) << 4 | (z & 7) << 7;
    uint32_t block = (x >> 4) * 0x9E3779B1U + (y >> 3) * 0x85EBCA77U + (z >> 3) * 0xC2B2AE3DU;
    block ^= block >> 15;
    block *= 0x2C1B3C6DU;
    block ^= block >> 13;
    return (block ^ place) & mask_;
  }

  /// Seeds of other cells that share the bucket do no harm: each one is measured.
  void SearchBucket(uint32_t bucket, const WrappedPoint& p, int32_t& best) const {
    for (int32_t i = heads_[bucket]; i >= 0;) {
      const SSeed& seed = seeds_[static_cast<size_t>(i)];
      if (WrappedSquare(seed.position, p) <= limit_) best = std::min(best, seed.index);
      i = seed.next;
    }
  }

  WrappedPoint extent_;
  uint32_t limit_;
  uint32_t reach_;
  uint32_t shift_;
  std::vector<int32_t> heads_;
  uint32_t mask_;
  std::vector<SSeed> seeds_;
};

/// Seeds in a tree of boxes, for positions so far apart that sums wrap. Within reach of a position are then also the
/// seeds in thin shells around it, where the true sum is just above a multiple of 2^32; boxes that no shell
/// crosses are left out.
class CSeedTree {
 public:
  CSeedTree(const SLocalPoints& local, int32_t threshold)
      : limit_(LargestSquare(threshold)),
        leaf_count_((local.points.size() + kLeafSize - 1) / kLeafSize),
        first_leaf_(std::bit_ceil(leaf_count_)),
        nodes_(2 * first_leaf_),
        leaf_of_(local.points.size()),
        leaves_(leaf_count_) {
    const std::vector<int32_t> order = OrderAlongCurve(local);
    for (size_t slot = 0; slot < order.size(); ++slot) {
      const auto index = static_cast<size_t>(order[slot]);
      leaf_of_[index] = static_cast<uint32_t>(slot / kLeafSize);
      nodes_[first_leaf_ + leaf_of_[index]].Widen(local.points[index], local.points[index]);
    }
    for (size_t node = first_leaf_ - 1; node > 0; --node) {
      for (const size_t child : {2 * node, 2 * node + 1})
        nodes_[node].Widen(nodes_[child].low, nodes_[child].high);
    }
  }

  int32_t Find(const WrappedPoint& p) const {
    int32_t best = kNoSeed;
    Search(1, p, best);
    return best;
  }

  /// Whether looking into the boxes saves more than it costs: of some of POINTS, how many leaves are to be looked into.
  bool IsWorthIt(const std::vector<WrappedPoint>& points) const {
    constexpr size_t kSamples = 32;
    // Looking into a leaf takes some five times as long as comparing all of it in a row.
    constexpr size_t kCost = 5;
    size_t reached = 0;
    for (size_t sample = 0; sample < kSamples; ++sample) {
      const WrappedPoint& p = points[points.size() * sample / kSamples];
      for (size_t leaf = 0; leaf < leaf_count_; ++leaf)
        reached += MayReach(nodes_[first_leaf_ + leaf], p) ? 1 : 0;
    }
    return reached * kCost < kSamples * leaf_count_;
  }

  void Add(int32_t index, const WrappedPoint& p) {
    const size_t leaf = leaf_of_[static_cast<size_t>(index)];
    leaves_[leaf].Add(index, p);
    for (size_t node = first_leaf_ + leaf; node > 0 && nodes_[node].first_seed == kNoSeed; node /= 2) {
      nodes_[node].first_seed = index;
    }
  }

 private:
  static constexpr size_t kLeafSize = 64;
  static constexpr size_t kBlock = 16;

  struct SNode {
    WrappedPoint low = {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF};
    WrappedPoint high = {};
    int32_t first_seed = kNoSeed;

    void Widen(const WrappedPoint& other_low, const WrappedPoint& other_high) {
      for (size_t axis = 0; axis < 3; ++axis) {
        low[axis] = std::min(low[axis], other_low[axis]);
        high[axis] = std::max(high[axis], other_high[axis]);
      }
    }
  };

  /// In ascending index order; coordinates apart from each other, as vector instructions want them.
  struct SLeaf {
    std::array<std::array<uint32_t, kLeafSize>, 3> coordinates = {};
    std::array<int32_t, kLeafSize> indices = {};
    size_t count = 0;

    void Add(int32_t index, const WrappedPoint& p) {
      for (size_t axis = 0; axis < 3; ++axis)
        coordinates[axis][count] = p[axis];
      indices[count++] = index;
    }
  };

  /// The positions' indices along a Z-shaped space-filling curve: neighbours in this order are near each other.
  static std::vector<int32_t> OrderAlongCurve(const SLocalPoints& local) {
    constexpr int kBits = 21;
    const uint32_t widest = std::max({local.extent[0], local.extent[1], local.extent[2]});
    const int shift = std::max(0, static_cast<int>(std::bit_width(widest)) - kBits);
    std::vector<std::pair<uint64_t, int32_t>> keys;
    keys.reserve(local.points.size());
    for (const WrappedPoint& p : local.points) {
      uint64_t key = 0;
      for (size_t axis = 0; axis < 3; ++axis)
        key |= Spread(p[axis] >> shift) << axis;
      keys.emplace_back(key, static_cast<int32_t>(keys.size()));
    }
    std::sort(keys.begin(), keys.end());
    std::vector<int32_t> order;
    order.reserve(keys.size());
    for (const auto& key : keys)
      order.push_back(key.second);
    return order;
  }

  /// The 21 low bits of VALUE with two zero bits between each and the next.
  static uint64_t Spread(uint64_t value) {
    value = (value | value << 32) & 0x001F00000000FFFF;
    value = (value | value << 16) & 0x001F0000FF0000FF;
    value = (value | value << 8) & 0x100F00F00F00F00F;
    value = (value | value << 4) & 0x10C30C30C30C30C3;
    return (value | value << 2) & 0x1249249249249249;
  }

  /// False when the true sums from P to every position in the box lie in the same stretch of 2^32 beyond the limit.
  bool MayReach(const SNode& node, const WrappedPoint& p) const {
    uint64_t nearest = 0;
    uint64_t farthest = 0;
    for (size_t axis = 0; axis < 3; ++axis) {
      const int64_t before = int64_t{node.low[axis]} - int64_t{p[axis]};
      const int64_t behind = int64_t{p[axis]} - int64_t{node.high[axis]};
      const auto near = static_cast<uint64_t>(std::max({before, behind, int64_t{0}}));
      const auto far = static_cast<uint64_t>(std::max(-before, -behind));
      nearest += near * near;
      farthest += far * far;
    }
    return (nearest >> 32) != (farthest >> 32) || static_cast<uint32_t>(nearest) <= limit_;
  }

  void Search(size_t node, const WrappedPoint& p, int32_t& best) const {
    if (nodes_[node].first_seed >= best || !MayReach(nodes_[node], p)) return;
    if (node >= first_leaf_) {
      SearchLeaf(leaves_[node - first_leaf_], p, best);
      return;
    }
    Search(2 * node, p, best);
    Search(2 * node + 1, p, best);
  }

  void SearchLeaf(const SLeaf& leaf, const WrappedPoint& p, int32_t& best) const {
    for (size_t start = 0; start < leaf.count; start += kBlock) {
      if (!AnyWithin(leaf, start, p)) continue;
      for (size_t i = start; i < std::min(start + kBlock, leaf.count); ++i) {
        const WrappedPoint seed = {leaf.coordinates[0][i], leaf.coordinates[1][i], leaf.coordinates[2][i]};
        if (WrappedSquare(seed, p) > limit_) continue;
        best = std::min(best, leaf.indices[i]);
        return;
      }
    }
  }

  /// Without branches. The block's unused places may count too: whoever asks looks again.
  bool AnyWithin(const SLeaf& leaf, size_t start, const WrappedPoint& p) const {
    const uint32_t* const x = leaf.coordinates[0].data() + start;
    const uint32_t* const y = leaf.coordinates[1].data() + start;
    const uint32_t* const z = leaf.coordinates[2].data() + start;
    uint32_t any = 0;
    for (size_t i = 0; i < kBlock; ++i) {
      const uint32_t dx = x[i] - p[0];
      const uint32_t dy = y[i] - p[1];
      const uint32_t dz = z[i] - p[2];
      any |= static_cast<uint32_t>(dx * dx + dy * dy + dz * dz <= limit_);
    }
    return any != 0;
  }

  uint32_t limit_;
  size_t leaf_count_;
  size_t first_leaf_;
  std::vector<SNode> nodes_;  ///< node k has the children 2k and 2k + 1; the root is 1
  std::vector<uint32_t> leaf_of_;
  std::vector<SLeaf> leaves_;
};

/// True when PROGRESS (may be null) wants it stopped.
bool IsStopped(CProgress* progress, size_t done, size_t all) {
  return progress != nullptr && !progress->Step(done, all);
}

template <typename CFinder>
std::vector<int32_t> Assign(const SLocalPoints& local, CFinder finder, CProgress* progress) {
  std::vector<int32_t> seeds(local.points.size());
  for (size_t i = 0; i < seeds.size(); ++i) {
    if (i % kPositionsAStep == 0 && IsStopped(progress, i, seeds.size())) return {};
    const auto index = static_cast<int32_t>(i);
    const int32_t found = finder.Find(local.points[i]);
    if (found == kNoSeed) finder.Add(index, local.points[i]);
    seeds[i] = found == kNoSeed ? index : found;
  }
  return seeds;
}

/// The same in batches: first among the seeds from before the batch, then among its own.
std::vector<int32_t> AssignByScan(const SLocalPoints& local, uint32_t limit, CProgress* progress) {
  const std::span<const WrappedPoint> points = local.points;
  std::vector<int32_t> seeds(points.size());
  CSeedScan scan(limit);
  for (size_t start = 0; start < points.size(); start += CSeedScan::kBatch) {
    if (IsStopped(progress, start, points.size())) return {};
    const size_t size = std::min(CSeedScan::kBatch, points.size() - start);
    const size_t before = scan.Count();
    scan.Find(points.subspan(start, size), std::span(seeds).subspan(start, size));
    for (size_t i = start; i < start + size; ++i) {
      if (seeds[i] == kNoSeed) seeds[i] = scan.FindFrom(before, points[i]);
      if (seeds[i] != kNoSeed) continue;
      seeds[i] = static_cast<int32_t>(i);
      scan.Add(seeds[i], points[i]);
    }
  }
  return seeds;
}

}  // namespace

std::vector<int32_t> AssignSeeds(std::vector<WrappedPoint> positions, int32_t threshold, CProgress* progress) {
  if (positions.empty() || threshold < 0) {
    std::vector<int32_t> alone(positions.size());
    std::iota(alone.begin(), alone.end(), 0);
    return alone;
  }
  const SLocalPoints local = MakeLocal(std::move(positions), threshold == 0);
  // A folded coordinate takes part in a sum of 0 only where it is equal: no matter then what else wraps.
  if (threshold == 0 || IsPlain(local.extent)) return Assign(local, CSeedGrid(local, threshold), progress);
  CSeedTree tree(local, threshold);
  if (tree.IsWorthIt(local.points)) return Assign(local, std::move(tree), progress);
  return AssignByScan(local, LargestSquare(threshold), progress);
}

}  // namespace veldra
