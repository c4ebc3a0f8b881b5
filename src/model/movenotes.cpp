#include "model/movenotes.h"

#include <algorithm>

namespace veldra {

void CMoveNotes::Note(std::span<const int32_t> vertices, uint64_t revision) {
  const size_t last = notes_.empty() ? 0 : notes_.back().begin;
  if (!notes_.empty() && std::ranges::equal(std::span(vertices_).subspan(last), vertices)) {
    notes_.back().revision = revision;
    return;
  }
  if (vertices_.size() + vertices.size() > kMostVertices) Forget(revision);
  notes_.push_back({revision, vertices_.size()});
  vertices_.insert(vertices_.end(), vertices.begin(), vertices.end());
}

void CMoveNotes::Forget(uint64_t revision) {
  known_since_ = revision;
  notes_.clear();
  vertices_.clear();
}

std::optional<std::span<const int32_t>> CMoveNotes::Since(uint64_t revision) const {
  if (revision < known_since_) return std::nullopt;
  const auto first = std::ranges::upper_bound(notes_, revision, {}, &SNote::revision);
  return std::span(vertices_).subspan(first == notes_.end() ? vertices_.size() : first->begin);
}

}  // namespace veldra
