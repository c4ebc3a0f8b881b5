#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <tuple>

#include "model/facedraft.h"
#include "model/meshedit.h"
#include "model/modeltools.h"

namespace veldra {

namespace {

using facedraft::Append;
using facedraft::CarriedOn;
using facedraft::CornerOf;
using facedraft::DirectedEdge;
using facedraft::IsAmong;
using facedraft::Made;
using facedraft::PositionOf;
using facedraft::RimOf;
using facedraft::SDraft;

constexpr const char* kNoRows =
    "These vertices make no two edges of faces. Select both ends of two edges, two rows or two rings of as many "
    "vertices, or two faces.";
constexpr const char* kNoWalls =
    "These faces make no two walls with as many corners each, apart from each other. Select two faces, or the faces of "
    "two walls.";

/// Vertices one behind the other along edges; in a ring the first follows the last.
struct SRow {
  std::vector<int32_t> vertices;
  bool is_ring = false;

  size_t EdgeCount() const { return is_ring ? vertices.size() : vertices.size() - 1; }
  int32_t At(size_t k) const { return vertices[k % vertices.size()]; }
};

using Neighbours = std::map<int32_t, std::vector<int32_t>>;

/// Which of VERTICES, ascending, are joined by edges; of IS_OPEN those that one face uses only.
Neighbours EdgesAmong(const CBinModel& model, std::span<const int32_t> vertices, bool is_open) {
  std::map<DirectedEdge, std::set<const CBinFace*>> uses;
  for (const int32_t vertex : vertices) {
    for (const CBinFace* face : model.Vertex(vertex).Faces()) {
      const int corner = CornerOf(*face, vertex);
      const int32_t next = face->Corner((corner + 1) % face->CornerCount())->Index();
      if (IsAmong(vertices, next)) uses[std::minmax({vertex, next})].insert(face);
    }
  }
  Neighbours neighbours;
  for (const auto& [edge, faces] : uses) {
    if (is_open && faces.size() > 1) continue;
    neighbours[edge.first].push_back(edge.second);
    neighbours[edge.second].push_back(edge.first);
  }
  return neighbours;
}

/// From START along what is not TAKEN yet.
SRow RowFrom(int32_t start, const Neighbours& neighbours, std::set<int32_t>& taken) {
  SRow row;
  for (std::optional<int32_t> next = start; next;) {
    const int32_t vertex = *next;
    row.vertices.push_back(vertex);
    taken.insert(vertex);
    next.reset();
    for (const int32_t other : neighbours.at(vertex))
      if (!taken.contains(other)) next = other;
  }
  const std::vector<int32_t>& last = neighbours.at(row.vertices.back());
  row.is_ring = row.vertices.size() > 2 && std::ranges::find(last, start) != last.end();
  return row;
}

/// The rows that VERTICES make; none where they branch, or one is in no row.
std::vector<SRow> RowsOf(const CBinModel& model, std::span<const int32_t> vertices, bool is_open) {
  const Neighbours neighbours = EdgesAmong(model, vertices, is_open);
  if (neighbours.size() != vertices.size()) return {};
  if (std::ranges::any_of(neighbours, [](const auto& each) { return each.second.size() > 2; })) return {};
  std::vector<SRow> rows;
  std::set<int32_t> taken;
  for (const bool are_ends : {true, false})
    for (const auto& [vertex, others] : neighbours)
      if (!taken.contains(vertex) && (!are_ends || others.size() == 1))
        rows.push_back(RowFrom(vertex, neighbours, taken));
  return rows;
}

/// Along the edges that only one of FACES has; none where a rim branches.
std::vector<SRow> RimsOf(const CBinModel& model, std::span<const int32_t> faces) {
  std::map<int32_t, int32_t> followers;
  for (const auto& [edge, face] : RimOf(model, faces))
    if (!followers.emplace(edge).second) return {};
  std::vector<SRow> rims;
  while (!followers.empty()) {
    SRow rim = {.vertices = {}, .is_ring = true};
    int32_t last = -1;
    for (auto at = followers.begin(); at != followers.end(); at = followers.find(last)) {
      rim.vertices.push_back(at->first);
      last = at->second;
      followers.erase(at);
    }
    if (last != rim.vertices.front()) return {};  // faces beside each other that look to opposite sides
    rims.push_back(rim);
  }
  return rims;
}

/// What is to be joined: two like rows, or the first and the last edge of four vertices in one.
std::optional<std::pair<SRow, SRow>> PairOf(const std::vector<SRow>& rows) {
  if (rows.size() == 1 && rows[0].vertices.size() == 4) {
    const std::vector<int32_t>& all = rows[0].vertices;
    return std::pair(SRow{.vertices = {all[0], all[1]}}, SRow{.vertices = {all[2], all[3]}});
  }
  const bool are_like = rows.size() == 2 && rows[0].is_ring == rows[1].is_ring &&
                        rows[0].vertices.size() == rows[1].vertices.size() && rows[0].vertices.size() >= 2;
  return are_like ? std::optional(std::pair(rows[0], rows[1])) : std::nullopt;
}

double Gap(const CBinModel& model, int32_t a, int32_t b) {
  return Length(PositionOf(model, a) - PositionOf(model, b));
}

double SumOfGaps(const CBinModel& model, const SRow& a, const SRow& b) {
  double sum = 0.0;
  for (size_t k = 0; k < a.vertices.size(); ++k)
    sum += Gap(model, a.vertices[k], b.vertices[k]);
  return sum;
}

/// B so that its vertices stand beside those of A: the other way round where that is nearer, and a ring begins with
/// what is next to A's first.
void Align(const CBinModel& model, const SRow& a, SRow& b) {
  SRow reversed = b;
  std::ranges::reverse(reversed.vertices);
  if (b.is_ring) {
    const auto gap = [&](int32_t vertex) { return Gap(model, a.vertices.front(), vertex); };
    for (SRow* row : {&b, &reversed})
      std::rotate(row->vertices.begin(), std::ranges::min_element(row->vertices, {}, gap), row->vertices.end());
  }
  if (SumOfGaps(model, a, reversed) < SumOfGaps(model, a, b)) b = reversed;
}

/// A face at the edge between A and B, with a texture if there is one, and the corner where the edge begins in it; one
/// of GONE, ascending, which are about to go, where there is no other.
struct SSide {
  const CBinFace* face = nullptr;
  int corner = 0;
  bool is_open = true;  ///< there is no other that stays
};

SSide SideAt(const CBinModel& model, int32_t a, int32_t b, std::span<const int32_t> gone) {
  std::vector<SSide> sides;
  for (const CBinFace* face : model.Vertex(a).Faces()) {
    for (int k = 0; k < face->CornerCount(); ++k) {
      const DirectedEdge edge = {face->Corner(k)->Index(), face->Corner((k + 1) % face->CornerCount())->Index()};
      if (edge == DirectedEdge{a, b} || edge == DirectedEdge{b, a}) sides.push_back({.face = face, .corner = k});
    }
  }
  if (sides.empty()) return {};
  const auto goes = [&](const SSide& side) { return IsAmong(gone, side.face->Index()); };
  const auto rank = [&](const SSide& side) {
    return std::tuple(goes(side), side.face->Texture() == nullptr, side.face->Index());
  };
  SSide best = *std::ranges::min_element(sides, {}, rank);
  best.is_open = std::ssize(sides) - std::ranges::count_if(sides, goes) <= 1;
  return best;
}

STexCoord CoordAt(const SSide& side, int32_t vertex) {
  return side.face->TexCoord(CornerOf(*side.face, vertex));
}

double Apart(const STexCoord& a, const STexCoord& b) {
  return std::hypot(a.u - b.u, a.v - b.v);
}

/// A quad between the edges A0 A1 and B0 B1, with the texture that is at the first one, or else at the second: as it is
/// on both sides where the same one lies so that it is not drawn out to a smear, else carried on from one.
class CSpan {
 public:
  CSpan(const CBinModel& model, std::array<int32_t, 4> corners, std::span<const int32_t> gone)
      : model_(model), corners_(corners) {
    sides_ = {SideAt(model, corners[0], corners[1], gone), SideAt(model, corners[2], corners[3], gone)};
  }

  const CBinFace* Like() const {
    const auto has_texture = [](const SSide& side) { return side.face != nullptr && side.face->Texture() != nullptr; };
    if (has_texture(sides_[0])) return sides_[0].face;
    if (has_texture(sides_[1])) return sides_[1].face;
    return sides_[0].face != nullptr ? sides_[0].face : sides_[1].face;
  }

  SDraft Draft() const {
    SDraft draft;
    const std::array<STexCoord, 4> coords = Coords();
    for (size_t k = 0; k < corners_.size(); ++k) {
      if (std::ranges::find(draft.corners, corners_[k]) != draft.corners.end()) continue;
      draft.corners.push_back(corners_[k]);
      draft.coords.push_back(coords[k]);
    }
    return draft;
  }

 private:
  std::array<STexCoord, 4> Coords() const {
    const size_t own = Like() == sides_[0].face ? 0 : 1;
    const SSide& side = sides_[own];
    const size_t first = 2 * own;
    const size_t across = 2 - first;
    const double gap = (Gap(model_, corners_[0], corners_[3]) + Gap(model_, corners_[1], corners_[2])) / 2;
    std::array<STexCoord, 4> coords = {};
    coords[first] = CoordAt(side, corners_[first]);
    coords[first + 1] = CoordAt(side, corners_[first + 1]);
    const auto carried = CarriedOn(*side.face, side.corner, gap);
    const bool is_along = side.face->Corner(side.corner)->Index() == corners_[first];
    coords[across + 1] = carried[is_along ? 0 : 1];
    coords[across] = carried[is_along ? 1 : 0];
    if (const auto there = CoordsThere(sides_[1 - own], across)) {
      constexpr double kLeast = 0.25;
      const double wanted = Apart(coords[first], coords[across + 1]) + Apart(coords[first + 1], coords[across]);
      const double found = Apart(coords[first], (*there)[1]) + Apart(coords[first + 1], (*there)[0]);
      if (found >= kLeast * wanted) std::tie(coords[across], coords[across + 1]) = std::pair((*there)[0], (*there)[1]);
    }
    return coords;
  }

  /// What is at the two corners from ACROSS on, if it is the same texture.
  std::optional<std::array<STexCoord, 2>> CoordsThere(const SSide& other, size_t across) const {
    if (other.face == nullptr || other.face->Texture() != Like()->Texture()) return std::nullopt;
    return std::array{CoordAt(other, corners_[across]), CoordAt(other, corners_[across + 1])};
  }

  const CBinModel& model_;
  std::array<int32_t, 4> corners_;
  std::array<SSide, 2> sides_;
};

/// How many of the edges of DRAFT go against the only face at them, less those that go along with it.
int Agreement(const CBinModel& model, const SDraft& draft, std::span<const int32_t> gone) {
  int sum = 0;
  for (size_t k = 0; k < draft.corners.size(); ++k) {
    const int32_t from = draft.corners[k];
    const SSide side = SideAt(model, from, draft.corners[(k + 1) % draft.corners.size()], gone);
    if (side.face != nullptr && side.is_open) sum += side.face->Corner(side.corner)->Index() == from ? -1 : 1;
  }
  return sum;
}

Vector3 AreaOf(const CBinModel& model, const SDraft& draft) {
  Vector3 area = {};
  for (size_t k = 2; k < draft.corners.size(); ++k) {
    const Vector3 from = PositionOf(model, draft.corners[0]);
    area = area + Cross(PositionOf(model, draft.corners[k - 1]) - from, PositionOf(model, draft.corners[k]) - from);
  }
  return area;
}

bool LooksRight(const CBinModel& model, const std::vector<SDraft>& drafts, std::span<const int32_t> gone,
                const SUnitNormal& to_viewer) {
  int agreement = 0;
  Vector3 area = {};
  for (const SDraft& draft : drafts) {
    agreement += Agreement(model, draft, gone);
    area = area + AreaOf(model, draft);
  }
  return agreement != 0 ? agreement > 0 : Dot(area, {to_viewer.x, to_viewer.y, to_viewer.z}) >= 0.0;
}

bool HasFace(const CBinModel& model, const SDraft& draft) {
  return std::ranges::any_of(model.Vertex(draft.corners[0]).Faces(), [&](const CBinFace* face) {
    return std::ranges::all_of(draft.corners, [&](int32_t corner) { return CornerOf(*face, corner) >= 0; });
  });
}

/// GONE, ascending, are faces that are about to go.
GeometryFault Bridge(CBinModel& model, const SRow& a, SRow b, const SUnitNormal& to_viewer,
                     std::span<const int32_t> gone = {}) {
  Align(model, a, b);
  std::vector<SDraft> drafts;
  std::vector<const CBinFace*> like;
  for (size_t k = 0; k < a.EdgeCount(); ++k) {
    const CSpan span(model, {a.At(k), a.At(k + 1), b.At(k + 1), b.At(k)}, gone);
    like.push_back(span.Like());
    drafts.push_back(span.Draft());
    if (HasFace(model, drafts.back())) return "There is a face between these edges already.";
  }
  const bool is_right = LooksRight(model, drafts, gone, to_viewer);
  CBinModel::Faces made;
  for (size_t k = 0; k < drafts.size(); ++k) {
    if (!is_right) std::ranges::reverse(drafts[k].corners);
    if (!is_right) std::ranges::reverse(drafts[k].coords);
    made.push_back(Made(model, drafts[k], *like[k]));
  }
  const CBinModel::CBusy one_change(model);
  Append(model, std::move(made));
  return "";
}

}  // namespace

GeometryFault BridgeVertices(CBinModel& model, std::span<const int32_t> vertices, const SUnitNormal& to_viewer) {
  for (const bool is_open : {true, false})
    if (const auto rows = PairOf(RowsOf(model, vertices, is_open)))
      return Bridge(model, rows->first, rows->second, to_viewer);
  return kNoRows;
}

GeometryFault BridgeFaces(CBinModel& model, int32_t face, int32_t other, const SUnitNormal& to_viewer) {
  double nearest = std::numeric_limits<double>::max();
  std::pair<SRow, SRow> rows;
  const auto edge_of = [](const CBinFace& of, int corner) {
    return SRow{.vertices = {of.Corner(corner)->Index(), of.Corner((corner + 1) % of.CornerCount())->Index()}};
  };
  for (int k = 0; k < model.Face(face).CornerCount(); ++k) {
    for (int l = 0; l < model.Face(other).CornerCount(); ++l) {
      const SRow a = edge_of(model.Face(face), k);
      SRow b = edge_of(model.Face(other), l);
      Align(model, a, b);
      if (a.vertices == b.vertices) return "These faces have an edge in common: there is nothing between them.";
      if (const double sum = SumOfGaps(model, a, b); sum < nearest) {
        nearest = sum;
        rows = {a, b};
      }
    }
  }
  return Bridge(model, rows.first, rows.second, to_viewer);
}

GeometryFault TunnelFaces(CBinModel& model, std::span<const int32_t> faces, const SUnitNormal& to_viewer) {
  const std::vector<SRow> rims = RimsOf(model, faces);
  if (rims.size() != 2 || !PairOf(rims)) return kNoWalls;
  GeometryFault fault = Bridge(model, rims[0], rims[1], to_viewer, faces);
  if (fault.empty()) DeleteFacesWithVertices(model, faces);
  return fault;
}

}  // namespace veldra
