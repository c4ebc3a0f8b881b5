#include "interchange/polygoncorners.h"

#include <algorithm>
#include <unordered_set>

namespace veldra {

namespace {

std::vector<size_t> WithoutNeighbours(std::span<const int32_t> corners) {
  std::vector<size_t> kept;
  for (size_t i = 0; i < corners.size(); ++i) {
    if (kept.empty() || corners[kept.back()] != corners[i]) kept.push_back(i);
  }
  while (kept.size() > 1 && corners[kept.back()] == corners[kept.front()])
    kept.pop_back();
  return kept;
}

std::vector<size_t> FirstOfEach(std::span<const int32_t> corners, const std::vector<size_t>& positions) {
  std::unordered_set<int32_t> seen;
  std::vector<size_t> kept;
  for (const size_t position : positions) {
    if (seen.insert(corners[position]).second) kept.push_back(position);
  }
  return kept;
}

bool HasEdgeTwice(std::span<const int32_t> corners, const std::vector<size_t>& positions) {
  std::vector<uint64_t> edges;
  edges.reserve(positions.size());
  for (size_t i = 0; i < positions.size(); ++i) {
    const auto from = static_cast<uint32_t>(corners[positions[i]]);
    const auto to = static_cast<uint32_t>(corners[positions[(i + 1) % positions.size()]]);
    edges.push_back(uint64_t{from} << 32 | to);
  }
  std::sort(edges.begin(), edges.end());
  return std::adjacent_find(edges.begin(), edges.end()) != edges.end();
}

}  // namespace

std::vector<size_t> CornersToKeep(std::span<const int32_t> corners) {
  constexpr size_t kMostOfFace = 4;  // with so few, what comes back to a corner encloses nothing
  std::vector<size_t> kept = WithoutNeighbours(corners);
  if (kept.size() <= kMostOfFace || HasEdgeTwice(corners, kept)) return FirstOfEach(corners, kept);
  return kept;
}

}  // namespace veldra
