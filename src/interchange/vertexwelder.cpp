#include "interchange/vertexwelder.h"

#include <bit>

namespace veldra {

namespace {

constexpr size_t kFirstSlots = 64;

uint64_t HashOf(const SWavePoint& point) {
  uint64_t hash = 0;
  for (const double part : point) {
    // Both zeros are one place.
    const uint64_t bits = part == 0 ? 0 : std::bit_cast<uint64_t>(part);
    hash = (hash ^ bits) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 29U;
  }
  return hash;
}

}  // namespace

/// Where POINT is, or the free slot where it would be.
size_t CVertexWelder::SlotOf(const SWavePoint& point) const {
  const size_t mask = slots_.size() - 1;
  size_t slot = HashOf(point) & mask;
  while (slots_[slot] >= 0 && mesh_.vertices[static_cast<size_t>(slots_[slot])] != point)
    slot = (slot + 1) & mask;
  return slot;
}

int32_t CVertexWelder::Add(const SWavePoint& point) {
  if (4 * (used_ + 1) > 3 * slots_.size()) Grow();
  int32_t& slot = slots_[SlotOf(point)];
  if (slot >= 0) return slot;
  slot = mesh_.AddVertex(point);
  ++used_;
  return slot;
}

void CVertexWelder::Grow() {
  const std::vector<int32_t> old = std::move(slots_);
  slots_.assign(std::max(kFirstSlots, 2 * old.size()), -1);
  for (const int32_t vertex : old)
    if (vertex >= 0) slots_[SlotOf(mesh_.vertices[static_cast<size_t>(vertex)])] = vertex;
}

void CVertexWelder::Forget() {
  slots_.clear();
  used_ = 0;
}

}  // namespace veldra
