#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <numeric>
#include <span>
#include <vector>

/// Inside CBinModel: what inserting and removing in its vertex and face arrays share.
namespace veldra {

inline std::vector<int32_t> Range(int32_t position, int32_t count) {
  std::vector<int32_t> indices(static_cast<size_t>(count));
  std::iota(indices.begin(), indices.end(), position);
  return indices;
}

/// Ascending, each once, all in 0..COUNT - 1.
inline bool IsAscendingBelow(std::span<const int32_t> indices, size_t count) {
  const auto fault = std::adjacent_find(indices.begin(), indices.end(), std::greater_equal<>());
  return fault == indices.end() &&
         (indices.empty() || (indices.front() >= 0 && static_cast<size_t>(indices.back()) < count));
}

/// For each of COUNT old indices the one that it has once REMOVED (ascending) are gone, -1 for those.
inline std::vector<int32_t> MapWithout(std::span<const int32_t> removed, size_t count) {
  std::vector<int32_t> map(count);
  size_t gone = 0;
  for (size_t i = 0; i < count; ++i) {
    const bool is_gone = gone < removed.size() && static_cast<size_t>(removed[gone]) == i;
    map[i] = is_gone ? -1 : static_cast<int32_t>(i - gone);
    if (is_gone) ++gone;
  }
  return map;
}

/// Moves those at REMOVED (ascending) out of ITEMS and closes the gaps.
template <class Items>
Items MoveOut(Items& items, std::span<const int32_t> removed) {
  Items taken;
  taken.reserve(removed.size());
  for (const int32_t index : removed)
    taken.push_back(std::move(items[static_cast<size_t>(index)]));
  items.erase(std::remove(items.begin(), items.end(), nullptr), items.end());
  return taken;
}

template <class Items>
void MoveIn(Items& items, Items added, int32_t position) {
  items.insert(items.begin() + std::ptrdiff_t{position}, std::make_move_iterator(added.begin()),
               std::make_move_iterator(added.end()));
}

}  // namespace veldra
