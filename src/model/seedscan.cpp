#include "model/seedscan.h"

#include <algorithm>
#include <numeric>

#include "platform/vectors.h"

namespace veldra {

namespace {

constexpr size_t kBlock = 64;
/// Seeds whose columns stay in the nearest cache while a batch goes over them.
constexpr size_t kChunk = 1024;
constexpr size_t kNorm = 6;

/// What the upper half of the sum can be above and below what the upper halves of its parts add up to: a carry into the
/// sum of the squares; up to two out of the lower halves of three products and one bit more as they count double; and a
/// borrow.
constexpr uint16_t kMostAbove = 1;
constexpr uint16_t kMostBelow = 6;

using Columns = std::array<const uint16_t*, 7>;

struct SQuery {
  std::array<uint16_t, 3> low;
  std::array<uint16_t, 3> high;
  uint16_t norm;
  uint16_t bound;
};

template <typename Value>
constexpr uint16_t Low(Value value) {
  return static_cast<uint16_t>(value);
}
constexpr uint16_t High(uint32_t value) {
  return static_cast<uint16_t>(value >> 16);
}

SQuery QueryOf(const WrappedPoint& p, uint32_t limit) {
  SQuery query;
  for (size_t axis = 0; axis < 3; ++axis) {
    query.low[axis] = Low(p[axis]);
    query.high[axis] = High(p[axis]);
  }
  query.norm = Low(High(WrappedSquare(p, {})) + uint32_t{kMostAbove});
  query.bound = Low((limit >> 16) + kMostAbove + kMostBelow);
  return query;
}

/// The first block from FROM on, up to TO, in which a seed may be within reach; TO when there is none. The sum is that
/// of the squares of both, less twice their inner product, of which each axis has three parts in the upper half: the
/// carry out of the product of the lower halves, and both mixed products. All in 16 bits, as the compiler's vectors
/// want it.
VELDRA_WIDE_VECTORS size_t NextBlock(const Columns& columns, const SQuery& query, size_t from, size_t to) {
  const auto [xl, yl, zl] = query.low;
  const auto [xh, yh, zh] = query.high;
  const uint16_t own_norm = query.norm;
  const uint16_t bound = query.bound;
  for (; from < to; from += kBlock) {
    const uint16_t* const x_low = columns[0] + from;
    const uint16_t* const y_low = columns[1] + from;
    const uint16_t* const z_low = columns[2] + from;
    const uint16_t* const x_high = columns[3] + from;
    const uint16_t* const y_high = columns[4] + from;
    const uint16_t* const z_high = columns[5] + from;
    const uint16_t* const norm = columns[kNorm] + from;
    uint16_t any = 0;
    for (size_t i = 0; i < kBlock; ++i) {
      const auto carries = static_cast<uint16_t>(High(uint32_t{x_low[i]} * xl) + High(uint32_t{y_low[i]} * yl) +
                                                 High(uint32_t{z_low[i]} * zl));
      const auto mixed = static_cast<uint16_t>(Low(uint32_t{x_low[i]} * xh) + Low(uint32_t{y_low[i]} * yh) +
                                               Low(uint32_t{z_low[i]} * zh) + Low(uint32_t{x_high[i]} * xl) +
                                               Low(uint32_t{y_high[i]} * yl) + Low(uint32_t{z_high[i]} * zl));
      const auto sum = static_cast<uint16_t>(norm[i] + own_norm - 2 * (carries + mixed));
      any |= static_cast<uint16_t>(sum <= bound);
    }
    if (any != 0) return from;
  }
  return to;
}

}  // namespace

void CSeedScan::Add(int32_t index, const WrappedPoint& p) {
  const size_t at = seeds_.size();
  seeds_.push_back({p, index});
  if (at % kBlock == 0) {
    for (auto& column : columns_)
      column.resize(at + kBlock);
  }
  for (size_t axis = 0; axis < 3; ++axis) {
    columns_[axis][at] = Low(p[axis]);
    columns_[3 + axis][at] = High(p[axis]);
  }
  columns_[kNorm][at] = High(WrappedSquare(p, {}));
}

int32_t CSeedScan::FindIn(const WrappedPoint& p, size_t from, size_t to) const {
  Columns columns;
  for (size_t i = 0; i < columns.size(); ++i)
    columns[i] = columns_[i].data();
  const SQuery query = QueryOf(p, limit_);
  for (size_t block = from - from % kBlock;; block += kBlock) {
    block = NextBlock(columns, query, block, to);
    if (block >= to) return kNoSeed;
    const size_t end = std::min(block + kBlock, to);
    for (size_t i = std::max(block, from); i < end; ++i)
      if (WrappedSquare(seeds_[i].position, p) <= limit_) return seeds_[i].index;
  }
}

void CSeedScan::Find(std::span<const WrappedPoint> positions, std::span<int32_t> found) const {
  std::fill(found.begin(), found.end(), kNoSeed);
  std::vector<size_t> left(positions.size());
  std::iota(left.begin(), left.end(), size_t{0});
  for (size_t chunk = 0; chunk < seeds_.size() && !left.empty(); chunk += kChunk) {
    const size_t end = std::min(chunk + kChunk, seeds_.size());
    std::erase_if(left, [&](size_t i) {
      found[i] = FindIn(positions[i], chunk, end);
      return found[i] != kNoSeed;
    });
  }
}

}  // namespace veldra
