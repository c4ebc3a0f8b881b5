#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/binmodel.h"
#include "model/modelcheck.h"

namespace veldra {

/// A face as a check sees it.
struct SCheckedFace {
  size_t count = 0;  ///< of corners, 0 to 4
  std::array<uint32_t, 4> vertices = {};
  std::array<bool, 4> is_off = {};         ///< u or v leaves the texture
  std::span<const int32_t> textures = {};  ///< positions in Textures()
};

struct SCheckedTexture {
  std::string name;          ///< in the game's code page
  std::optional<int> width;  ///< as FindTextureWidth gives it
};

/// What is checked, whatever holds it. It stays as it is while it is checked.
class CCheckedModel {
 public:
  virtual ~CCheckedModel() = default;
  virtual size_t VertexCount() const = 0;
  virtual SPoint Vertex(size_t index) const = 0;
  virtual size_t FaceCount() const = 0;
  virtual SCheckedFace Face(size_t index) const = 0;
  virtual std::vector<SCheckedTexture> Textures() const = 0;
};

/// MODEL, which outlives it. A texture for which something else stands in is not found.
std::unique_ptr<CCheckedModel> CheckedOf(const CBinModel& model);

/// Indices by what they stand for. Open addressing: a node for each of a million faces would be slow to make and to
/// free, and this one is all at once.
class CIndexTable {
 public:
  /// MOST: that are in it at one time.
  explicit CIndexTable(size_t most);
  /// The slot of the index for which IS_SAME, or the free one, which holds -1, where it belongs.
  template <typename IsSame>
  int32_t& Find(uint64_t hash, const IsSame& is_same) {
    size_t at = hash & (slots_.size() - 1);
    while (slots_[at] >= 0 && !is_same(slots_[at]))
      at = (at + 1) & (slots_.size() - 1);
    return slots_[at];
  }

 private:
  std::vector<int32_t> slots_;
};

/// One check on its way, which can be gone about a part at a time.
class CModelChecker {
 public:
  /// Of each kind no more than MOST findings are kept; all are counted.
  explicit CModelChecker(std::unique_ptr<CCheckedModel> model, size_t most = SIZE_MAX);

  /// Looks at so many faces and vertices more. True when all is done.
  bool Go(size_t items);
  /// When it is, once: by kind, within a kind in the order of the model.
  std::vector<SFinding> TakeFindings();
  size_t Count(EFinding kind) const { return counts_[static_cast<size_t>(kind)]; }

 private:
  enum class EPhase { kFaces, kPlaces, kVertices, kDone };
  /// The corners from the lowest one on: the same for two that are one polygon.
  using Polygon = std::array<uint32_t, 4>;

  template <typename Make>
  void Add(EFinding kind, const Make& make);
  void Step();
  void Next(EPhase phase, size_t count);
  void CheckTexture(size_t index, const SCheckedTexture& texture);
  void CheckFace(size_t index);
  void CheckCorners(int32_t index, const SCheckedFace& face);
  void CheckDouble(int32_t index, const SCheckedFace& face);
  void NotePlace(size_t index);
  void CheckVertex(size_t index);
  void CheckExtent();
  static Polygon PolygonOf(const SCheckedFace& face);

  std::unique_ptr<CCheckedModel> model_;
  size_t most_;
  EPhase phase_ = EPhase::kFaces;
  size_t at_ = 0;
  size_t count_ = 0;  ///< of what the phase looks at
  std::array<std::vector<SFinding>, kFindingCount> found_;
  std::array<size_t, kFindingCount> counts_ = {};
  std::vector<std::vector<std::pair<EFinding, size_t>>> of_texture_;  ///< what was found of each, in found_
  CIndexTable polygons_;                                              ///< the first face of each
  CIndexTable places_;             ///< of those looked at, the last ones first, the lowest vertex in each
  std::vector<int32_t> next_;      ///< of each vertex the next one in its place, or -1
  std::vector<bool> is_follower_;  ///< another one in its place comes before it
  std::vector<bool> is_used_;
  SBounds bounds_;
};

}  // namespace veldra
