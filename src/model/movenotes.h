#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace veldra {

/// Which vertices were moved with which revision of a model: who shows a large model builds anew only what touches
/// them.
class CMoveNotes {
 public:
  /// VERTICES are all that REVISION, which is about to come, moves; it may be told of more than once. The same ones
  /// again, as in a drag, take no more memory.
  void Note(std::span<const int32_t> vertices, uint64_t revision);
  /// Up to REVISION anything may have changed.
  void Forget(uint64_t revision);
  /// All that was moved after REVISION, some maybe twice; nothing when more than that may have changed.
  std::optional<std::span<const int32_t>> Since(uint64_t revision) const;

 private:
  /// More is forgotten: whoever looks has long built all of it anew.
  static constexpr size_t kMostVertices = 1 << 20;
  struct SNote {
    uint64_t revision;
    size_t begin;  ///< in vertices_, up to that of the next note
  };
  uint64_t known_since_ = 0;
  std::vector<SNote> notes_;  ///< ascending
  std::vector<int32_t> vertices_;
};

}  // namespace veldra
