#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <numeric>
#include <utility>

#include "model/geometry.h"
#include "model/mergecount.h"
#include "model/modeltools.h"
#include "model/seeds.h"
#include "platform/assert.h"

namespace veldra {

/// What a merge works on: copies close together, as each walk over a large model's own objects takes long.
struct SMergeGeometry {
  /// A face's vertices by index; the fourth is -1 for a triangle.
  using Polygon = std::array<int32_t, 4>;

  std::vector<WrappedPoint> positions;  ///< of each vertex
  std::vector<Polygon> polygons;        ///< of each face
};

namespace {

using Polygon = SMergeGeometry::Polygon;

constexpr size_t CornerCount(const Polygon& polygon) {
  return polygon[3] < 0 ? 3 : 4;
}

/// Turned so that the lowest vertex comes first: equal for, and only for, the same polygons.
Polygon Canonical(const Polygon& polygon) {
  const size_t count = CornerCount(polygon);
  const auto lowest = static_cast<size_t>(
      std::min_element(polygon.begin(), polygon.begin() + static_cast<ptrdiff_t>(count)) - polygon.begin());
  Polygon turned = {0, 0, 0, -1};
  for (size_t k = 0; k < count; ++k)
    turned[k] = polygon[lowest + k < count ? lowest + k : lowest + k - count];
  return turned;
}

/// How many faces there are of each polygon. Open addressing, as a node for each of a million faces would be slow.
class CPolygonCounts {
 public:
  /// LARGEST: the number of faces that are in it at one time at most.
  explicit CPolygonCounts(size_t largest) : slots_(std::bit_ceil(2 * largest + 1)) {}

  void Add(const Polygon& canonical) {
    SSlot& slot = slots_[Find(canonical)];
    slot.polygon = canonical;
    ++slot.count;
  }

  void Remove(const Polygon& canonical) {
    const size_t at = Find(canonical);
    VELDRA_ASSERT(slots_[at].count > 0);
    if (--slots_[at].count == 0) Close(at);
  }

  bool Contains(const Polygon& canonical) const { return slots_[Find(canonical)].count > 0; }

 private:
  struct SSlot {
    Polygon polygon = {};
    int32_t count = 0;
  };

  /// In a regular mesh the corners of most faces differ in the same way, which makes neighbours in the mesh neighbours
  /// in the table; where they differ in many ways the table is as good as any.
  size_t Home(const Polygon& polygon) const {
    uint64_t hash = 0;
    for (size_t k = 1; k < polygon.size(); ++k) {
      hash = (hash ^ (static_cast<uint32_t>(polygon[k]) - static_cast<uint32_t>(polygon[0]))) * 0x9E3779B97F4A7C15U;
      hash ^= hash >> 32;
    }
    return static_cast<size_t>(hash + 2 * static_cast<uint64_t>(polygon[0])) & (slots_.size() - 1);
  }

  size_t Next(size_t slot) const { return (slot + 1) & (slots_.size() - 1); }

  /// Its slot, or the free one where it belongs.
  size_t Find(const Polygon& polygon) const {
    size_t at = Home(polygon);
    while (slots_[at].count > 0 && slots_[at].polygon != polygon)
      at = Next(at);
    return at;
  }

  /// Moves up those behind a slot that fell free which could not be found any more across the gap.
  void Close(size_t gap) {
    for (size_t at = Next(gap); slots_[at].count > 0; at = Next(at)) {
      const size_t mask = slots_.size() - 1;
      const size_t from_home = (at - Home(slots_[at].polygon)) & mask;
      if (from_home < ((at - gap) & mask)) continue;
      slots_[gap] = std::exchange(slots_[at], {});
      gap = at;
    }
  }

  std::vector<SSlot> slots_;
};

WrappedPoint Wrapped(const SPoint& p) {
  return {static_cast<uint32_t>(p.x), static_cast<uint32_t>(p.y), static_cast<uint32_t>(p.z)};
}

SMergeGeometry GeometryOf(const CBinModel& model) {
  SMergeGeometry geometry;
  geometry.positions.resize(static_cast<size_t>(model.VertexCount()));
  geometry.polygons.resize(static_cast<size_t>(model.FaceCount()), Polygon{-1, -1, -1, -1});
  std::vector<bool> is_used(geometry.positions.size());
  for (size_t i = 0; i < geometry.polygons.size(); ++i) {
    size_t k = 0;
    for (const CBinVertex* corner : model.Face(static_cast<int32_t>(i)).Corners()) {
      const auto vertex = static_cast<size_t>(corner->Index());
      geometry.polygons[i][k++] = corner->Index();
      geometry.positions[vertex] = Wrapped(corner->Position());
      is_used[vertex] = true;
    }
  }
  for (size_t i = 0; i < is_used.size(); ++i) {
    if (!is_used[i]) geometry.positions[i] = Wrapped(model.Vertex(static_cast<int32_t>(i)).Position());
  }
  return geometry;
}

/// The faces that use each member of a cluster as they were before the merge, ascending. The members' own sets are in
/// no order, and lie all over the memory.
class CFaceUsers {
 public:
  CFaceUsers(const std::vector<int32_t>& seeds, const std::vector<Polygon>& polygons) : ends_(seeds.size() + 1) {
    ForEach(seeds, polygons, [&](size_t member, int32_t) { ++ends_[member + 1]; });
    std::partial_sum(ends_.begin(), ends_.end(), ends_.begin());
    faces_.resize(ends_.back());
    // Filling moves each start to its end, which is where the next one starts.
    ForEach(seeds, polygons, [&](size_t member, int32_t face) { faces_[ends_[member]++] = face; });
  }

  std::span<const int32_t> Of(int32_t member) const {
    const uint32_t start = member > 0 ? ends_[static_cast<size_t>(member) - 1] : 0;
    return {faces_.data() + start, ends_[static_cast<size_t>(member)] - start};
  }

 private:
  template <typename Action>
  static void ForEach(const std::vector<int32_t>& seeds, const std::vector<Polygon>& polygons, const Action& action) {
    for (size_t face = 0; face < polygons.size(); ++face) {
      for (const int32_t corner : polygons[face]) {
        const auto vertex = static_cast<size_t>(corner);
        if (corner >= 0 && seeds[vertex] != corner) action(vertex, static_cast<int32_t>(face));
      }
    }
  }

  std::vector<uint32_t> ends_;
  std::vector<int32_t> faces_;
};

/// One merge on its way from clusters to the rebuilt model.
class CMerge {
 public:
  CMerge(std::vector<Polygon> polygons, std::vector<int32_t> seeds);
  /// Works out what becomes of the faces; false when PROGRESS (may be null) was stopped.
  bool Collapse(CProgress* progress);
  /// Does it to the model that the geometry is of.
  void ApplyTo(CBinModel& model);
  SMergeCount Count() const;

 private:
  struct SFaceChange {
    bool removed = false;
    bool corners = false;
    int32_t dropped = -1;  ///< which corner of the quad went
  };

  bool IsInvolved(const Polygon& polygon) const;
  CPolygonCounts CountInvolvedFaces() const;
  void ReplaceCorner(int32_t face, int32_t member, int32_t seed);
  void ApplyTo(CBinModel& model, CBinFace& face, size_t index, const CBinModel::Vertices& vertices) const;
  std::vector<int32_t> NumberSeeds() const;
  std::vector<int32_t> NumberFaces() const;

  std::vector<int32_t> seeds_;        ///< for each vertex the seed that takes it
  std::vector<int32_t> next_member_;  ///< for each vertex the next one of its cluster, or -1; a seed comes first
  std::vector<Polygon> polygons_;     ///< for each face its corners as they are now
  CFaceUsers users_;
  std::vector<SFaceChange> changes_;  ///< for each face
  CPolygonCounts counts_;             ///< of the faces that touch a cluster and are not removed
};

int32_t MergedCount(const std::vector<int32_t>& seeds) {
  int32_t merged = 0;
  for (size_t i = 0; i < seeds.size(); ++i)
    merged += seeds[i] != static_cast<int32_t>(i) ? 1 : 0;
  return merged;
}

std::vector<int32_t> LinkClusters(const std::vector<int32_t>& seeds) {
  std::vector<int32_t> next(seeds.size(), -1);
  for (size_t i = seeds.size(); i-- > 0;) {
    const auto seed = static_cast<size_t>(seeds[i]);
    if (seed != i) next[i] = std::exchange(next[seed], static_cast<int32_t>(i));
  }
  return next;
}

CMerge::CMerge(std::vector<Polygon> polygons, std::vector<int32_t> seeds)
    : seeds_(std::move(seeds)),
      next_member_(LinkClusters(seeds_)),
      polygons_(std::move(polygons)),
      users_(seeds_, polygons_),
      changes_(polygons_.size()),
      counts_(CountInvolvedFaces()) {}

/// Only a face that has, or gets, a seed with members can become the same polygon as another.
bool CMerge::IsInvolved(const Polygon& polygon) const {
  return std::any_of(polygon.begin(), polygon.begin() + static_cast<ptrdiff_t>(CornerCount(polygon)),
                     [&](int32_t corner) {
                       const auto vertex = static_cast<size_t>(corner);
                       return seeds_[vertex] != corner || next_member_[vertex] >= 0;
                     });
}

CPolygonCounts CMerge::CountInvolvedFaces() const {
  const auto is_involved = [&](const Polygon& polygon) { return IsInvolved(polygon); };
  CPolygonCounts counts(static_cast<size_t>(std::count_if(polygons_.begin(), polygons_.end(), is_involved)));
  for (const Polygon& polygon : polygons_) {
    if (IsInvolved(polygon)) counts.Add(Canonical(polygon));
  }
  return counts;
}

void CMerge::ReplaceCorner(int32_t face, int32_t member, int32_t seed) {
  SFaceChange& change = changes_[static_cast<size_t>(face)];
  if (change.removed) return;
  Polygon& polygon = polygons_[static_cast<size_t>(face)];
  counts_.Remove(Canonical(polygon));
  const auto corner = std::find(polygon.begin(), polygon.end(), member);
  VELDRA_ASSERT(corner != polygon.end());
  if (std::find(polygon.begin(), polygon.end(), seed) == polygon.end()) {
    *corner = seed;
    change.corners = true;
  } else if (CornerCount(polygon) == 4) {
    change.dropped = static_cast<int32_t>(corner - polygon.begin());
    std::rotate(corner, corner + 1, polygon.end());
    polygon[3] = -1;
  } else {
    change.removed = true;
    return;
  }
  change.removed = counts_.Contains(Canonical(polygon));
  if (!change.removed) counts_.Add(Canonical(polygon));
}

/// Gives FACE its corners, and with a corner that went its texture coordinate goes.
void CMerge::ApplyTo(CBinModel& model, CBinFace& face, size_t index, const CBinModel::Vertices& vertices) const {
  const SFaceChange& change = changes_[index];
  if (change.removed || (!change.corners && change.dropped < 0)) return;
  const Polygon& polygon = polygons_[index];
  std::array<CBinVertex*, 4> corners = {};
  for (size_t k = 0; k < CornerCount(polygon); ++k)
    corners[k] = vertices[static_cast<size_t>(polygon[k])].get();
  if (change.dropped >= 0) {
    for (int k = change.dropped; k < 3; ++k)
      face.SetTexCoord(k, face.TexCoord(k + 1));
    face.SetTexCoord(3, {});
  }
  model.Adopt(face, {corners.data(), CornerCount(polygon)}, face.Texture());
}

/// For each vertex the new index of the seed that takes it.
std::vector<int32_t> CMerge::NumberSeeds() const {
  std::vector<int32_t> numbers(seeds_.size());
  int32_t count = 0;
  for (size_t i = 0; i < seeds_.size(); ++i) {
    const auto seed = static_cast<size_t>(seeds_[i]);
    numbers[i] = seed == i ? count++ : numbers[seed];
  }
  return numbers;
}

std::vector<int32_t> CMerge::NumberFaces() const {
  std::vector<int32_t> numbers(changes_.size());
  int32_t count = 0;
  for (size_t i = 0; i < changes_.size(); ++i)
    numbers[i] = changes_[i].removed ? -1 : count++;
  return numbers;
}

/// Closes the gaps of those for which IS_KEPT says no, and hands them to DROP.
template <typename List, typename IsKept, typename Drop>
void KeepOnly(List& list, const IsKept& is_kept, const Drop& drop) {
  size_t kept = 0;
  for (size_t i = 0; i < list.size(); ++i) {
    auto item = std::move(list[i]);
    if (is_kept(i, *item)) {
      list[kept++] = std::move(item);
    } else {
      drop(i, std::move(item));
    }
  }
  list.resize(kept);
}

bool CMerge::Collapse(CProgress* progress) {
  constexpr size_t kSeedsAStep = 4096;
  for (size_t seed = 0; seed < seeds_.size(); ++seed) {
    if (seed % kSeedsAStep == 0 && progress != nullptr && !progress->Step(seed, seeds_.size())) return false;
    if (seeds_[seed] != static_cast<int32_t>(seed)) continue;
    for (int32_t member = next_member_[seed]; member >= 0; member = next_member_[static_cast<size_t>(member)]) {
      for (const int32_t face : users_.Of(member))
        ReplaceCorner(face, member, static_cast<int32_t>(seed));
    }
  }
  return true;
}

SMergeCount CMerge::Count() const {
  SMergeCount count{.vertices = MergedCount(seeds_)};
  for (const SFaceChange& change : changes_)
    count.faces += change.removed ? 1 : 0;
  return count;
}

void CMerge::ApplyTo(CBinModel& model) {
  auto [vertices, faces] = model.TakeAll();
  const auto keep_face = [&, &all = vertices](size_t i, CBinFace& face) {
    ApplyTo(model, face, i, all);
    return !changes_[i].removed;
  };
  KeepOnly(faces, keep_face, [](size_t, std::unique_ptr<CBinFace> face) { face.reset(); });
  CBinModel::Vertices members;
  std::vector<int32_t> indices;
  const auto is_seed = [&](size_t i, const CBinVertex&) { return seeds_[i] == static_cast<int32_t>(i); };
  KeepOnly(vertices, is_seed, [&](size_t i, std::unique_ptr<CBinVertex> member) {
    members.push_back(std::move(member));
    indices.push_back(static_cast<int32_t>(i));
  });
  model.Rebuild(std::move(vertices), std::move(faces), NumberSeeds(), NumberFaces());
  model.Discard(std::move(members), indices);
}

}  // namespace

int32_t MergeVertices(CBinModel& model, int32_t threshold, CProgress* progress) {
  const CBinModel::CBusy busy(model);
  SMergeGeometry geometry = GeometryOf(model);
  std::vector<int32_t> seeds = AssignSeeds(std::move(geometry.positions), threshold, progress);
  if (seeds.empty() && model.VertexCount() > 0) return -1;
  const int32_t merged = MergedCount(seeds);
  if (merged > 0) {
    CMerge merge(std::move(geometry.polygons), std::move(seeds));
    merge.Collapse(nullptr);
    merge.ApplyTo(model);
  }
  return merged;
}

void MergeClusters(CBinModel& model, std::span<const std::vector<int32_t>> clusters) {
  const CBinModel::CBusy busy(model);
  std::vector<int32_t> seeds(static_cast<size_t>(model.VertexCount()));
  std::iota(seeds.begin(), seeds.end(), 0);
  for (const std::vector<int32_t>& cluster : clusters)
    for (const int32_t member : cluster)
      seeds[static_cast<size_t>(member)] = cluster.front();
  if (MergedCount(seeds) == 0) return;
  CMerge merge(GeometryOf(model).polygons, std::move(seeds));
  merge.Collapse(nullptr);
  merge.ApplyTo(model);
}

CMergeCounter::CMergeCounter(const CBinModel& model)
    : geometry_(std::make_unique<const SMergeGeometry>(GeometryOf(model))) {}

CMergeCounter::~CMergeCounter() = default;

std::optional<SMergeCount> CMergeCounter::Count(int32_t threshold, CProgress* progress) const {
  std::vector<int32_t> seeds = AssignSeeds(geometry_->positions, threshold, progress);
  if (seeds.empty() && !geometry_->positions.empty()) return std::nullopt;
  CMerge merge(geometry_->polygons, std::move(seeds));
  if (!merge.Collapse(progress)) return std::nullopt;
  return merge.Count();
}

}  // namespace veldra
