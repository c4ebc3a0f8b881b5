#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "model/seeds.h"

namespace veldra {

/// More than every index: no seed.
inline constexpr int32_t kNoSeed = 0x7FFFFFFF;

/// The wrapped sum of the squared differences; one that is negative as a signed number exceeds every limit.
inline uint32_t WrappedSquare(const WrappedPoint& a, const WrappedPoint& b) {
  const uint32_t dx = a[0] - b[0];
  const uint32_t dy = a[1] - b[1];
  const uint32_t dz = a[2] - b[2];
  return dx * dx + dy * dy + dz * dz;
}

/// Seeds in a row, each compared with each position: for positions so far apart that sums wrap many times. What is
/// within reach then depends on all bits of both, in no way that a part of them tells: the top half of a wrapped inner
/// product is as good as random for any set of seeds that could be set aside together. So the comparison is a cheap
/// one. A wrapped sum is within the limit only when its upper 16 bits are, and these are, give or take some carries,
/// made of 16-bit products, of which a processor does many at once.
class CSeedScan {
 public:
  /// Positions that are looked for together, so that the seeds are fetched from memory once for all of them.
  static constexpr size_t kBatch = 64;

  explicit CSeedScan(uint32_t limit) : limit_(limit) {}

  size_t Count() const { return seeds_.size(); }
  void Add(int32_t index, const WrappedPoint& p);
  /// FOUND gets for each position the first seed added within reach, or kNoSeed.
  void Find(std::span<const WrappedPoint> positions, std::span<int32_t> found) const;
  /// The same for one, among the seeds from the one added as number FROM on.
  int32_t FindFrom(size_t from, const WrappedPoint& p) const { return FindIn(p, from, seeds_.size()); }

 private:
  struct SSeed {
    WrappedPoint position;
    int32_t index;
  };

  int32_t FindIn(const WrappedPoint& p, size_t from, size_t to) const;

  uint32_t limit_;
  std::vector<SSeed> seeds_;
  /// For each seed the lower halves of its coordinates, the upper halves, and the upper half of the sum of their
  /// squares; filled up with zeros to whole blocks.
  std::array<std::vector<uint16_t>, 7> columns_;
};

}  // namespace veldra
