#include <algorithm>
#include <cmath>
#include <set>

#include "model/exactgeometry.h"
#include "model/facedraft.h"
#include "model/meshedit.h"

namespace veldra {

namespace {

using facedraft::Append;
using facedraft::Become;
using facedraft::CornerOf;
using facedraft::DirectedEdge;
using facedraft::DraftOf;
using facedraft::IsAmong;
using facedraft::Made;
using facedraft::Nearest;
using facedraft::PositionOf;
using facedraft::SDraft;

STexCoord Mean(const STexCoord& a, const STexCoord& b) {
  return {(a.u + b.u) / 2, (a.v + b.v) / 2};
}

/// FACE cut at MIDDLE of its edge behind CORNER: what becomes of it, and what is new.
std::pair<SDraft, SDraft> CutAt(const CBinFace& face, int corner, int32_t middle) {
  const SDraft old = DraftOf(face);
  const size_t count = old.corners.size();
  const auto at = [&](size_t k) { return (static_cast<size_t>(corner) + k) % count; };
  const STexCoord coord = Mean(old.coords[at(0)], old.coords[at(1)]);
  SDraft first = {.corners = {old.corners[at(0)], middle, old.corners[at(count - 1)]},
                  .coords = {old.coords[at(0)], coord, old.coords[at(count - 1)]}};
  SDraft rest = {.corners = {middle}, .coords = {coord}};
  for (size_t k = 1; k < count; ++k) {
    rest.corners.push_back(old.corners[at(k)]);
    rest.coords.push_back(old.coords[at(k)]);
  }
  return {first, rest};
}

SDraft PartOf(const SDraft& quad, std::initializer_list<size_t> corners) {
  SDraft part;
  for (const size_t k : corners) {
    part.corners.push_back(quad.corners[k]);
    part.coords.push_back(quad.coords[k]);
  }
  return part;
}

/// The diagonal from corner 0 to 2 is the one to cut QUAD along.
bool IsFirstDiagonal(const CBinModel& model, const SDraft& quad) {
  std::array<Vector3, 4> p;
  for (size_t k = 0; k < p.size(); ++k)
    p[k] = PositionOf(model, quad.corners[k]);
  const double bulge = Dot(Cross(p[1] - p[0], p[2] - p[0]), p[3] - p[0]);
  if (std::abs(bulge) > 0.0) return bulge < 0.0;
  return Length(p[2] - p[0]) <= Length(p[3] - p[1]);
}

}  // namespace

int32_t SplitEdge(CBinModel& model, int32_t face, int corner) {
  const CBinFace& first = model.Face(face);
  const int32_t a = first.Corner(corner)->Index();
  const int32_t b = first.Corner((corner + 1) % first.CornerCount())->Index();
  const SPoint position = Nearest(0.5 * (PositionOf(model, a) + PositionOf(model, b)));
  if (position == model.Vertex(a).Position() || position == model.Vertex(b).Position()) return -1;
  const CBinModel::CBusy one_change(model);
  const int32_t middle = model.AddVertex(position).Index();
  std::vector<std::pair<int32_t, int>> cuts;
  for (const CBinFace* each : model.Vertex(a).Faces()) {
    for (int k = 0; k < each->CornerCount(); ++k) {
      const DirectedEdge edge = {each->Corner(k)->Index(), each->Corner((k + 1) % each->CornerCount())->Index()};
      if (edge == DirectedEdge{a, b} || edge == DirectedEdge{b, a}) cuts.emplace_back(each->Index(), k);
    }
  }
  std::ranges::sort(cuts);
  CBinModel::Faces made;
  for (const auto& [index, at] : cuts) {
    const auto [kept, added] = CutAt(model.Face(index), at, middle);
    made.push_back(Made(model, added, model.Face(index)));
    Become(model, index, kept);
  }
  Append(model, std::move(made));
  return middle;
}

int32_t SplitQuads(CBinModel& model, std::span<const int32_t> faces) {
  const CBinModel::CBusy one_change(model);
  CBinModel::Faces made;
  for (const int32_t index : faces) {
    if (model.Face(index).CornerCount() < 4) continue;
    const SDraft quad = DraftOf(model.Face(index));
    const bool is_first = IsFirstDiagonal(model, quad);
    made.push_back(Made(model, is_first ? PartOf(quad, {0, 2, 3}) : PartOf(quad, {1, 2, 3}), model.Face(index)));
    Become(model, index, is_first ? PartOf(quad, {0, 1, 2}) : PartOf(quad, {0, 1, 3}));
  }
  const auto count = static_cast<int32_t>(made.size());
  Append(model, std::move(made));
  return count;
}

namespace {

/// Every corner turns the same way, and none of the sides meet in a line.
bool IsConvexAndFlat(const CBinModel& model, const SDraft& quad) {
  std::array<Vector3, 4> p;
  for (size_t k = 0; k < p.size(); ++k)
    p[k] = PositionOf(model, quad.corners[k]);
  const Vector3 normal = Cross(p[2] - p[0], p[3] - p[1]);
  const auto at = [&](size_t k) { return model.Vertex(quad.corners[k]).Position(); };
  if (ExactVolume(at(0), at(1), at(2), at(3)) != 0) return false;
  for (size_t k = 0; k < p.size(); ++k)
    if (Dot(Cross(p[(k + 1) % 4] - p[k], p[(k + 2) % 4] - p[(k + 1) % 4]), normal) <= 0.0) return false;
  return true;
}

/// A and B as one quad, where B runs back over an edge of A with the same texture there.
std::optional<SDraft> Joined(const CBinModel& model, const CBinFace& a, const CBinFace& b) {
  if (a.Type() != b.Type() || a.Texture() != b.Texture()) return std::nullopt;
  for (int k = 0; k < 3; ++k) {
    const int back = CornerOf(b, a.Corner((k + 1) % 3)->Index());
    if (back < 0 || b.Corner((back + 1) % 3) != a.Corner(k)) continue;
    const int next = (k + 1) % 3;
    if (!(a.TexCoord(k) == b.TexCoord((back + 1) % 3)) || !(a.TexCoord(next) == b.TexCoord(back))) return std::nullopt;
    const int far_a = (k + 2) % 3;
    const int far_b = (back + 2) % 3;
    SDraft quad = {
        .corners = {a.Corner(k)->Index(), b.Corner(far_b)->Index(), a.Corner(next)->Index(), a.Corner(far_a)->Index()},
        .coords = {a.TexCoord(k), b.TexCoord(far_b), a.TexCoord(next), a.TexCoord(far_a)}};
    return IsConvexAndFlat(model, quad) ? std::optional(quad) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

int32_t JoinTriangles(CBinModel& model, std::span<const int32_t> faces) {
  const CBinModel::CBusy one_change(model);
  std::set<int32_t> gone;
  int32_t count = 0;
  for (const int32_t index : faces) {
    const CBinFace& face = model.Face(index);
    if (face.CornerCount() != 3 || gone.contains(index)) continue;
    std::set<int32_t> neighbours;
    for (const CBinVertex* corner : face.Corners())
      for (const CBinFace* other : corner->Faces())
        if (other->Index() > index && other->CornerCount() == 3 && IsAmong(faces, other->Index()))
          neighbours.insert(other->Index());
    for (const int32_t other : neighbours) {
      if (gone.contains(other)) continue;
      const std::optional<SDraft> quad = Joined(model, face, model.Face(other));
      if (!quad) continue;
      Become(model, index, *quad);
      gone.insert(other);
      ++count;
      break;
    }
  }
  if (!gone.empty()) model.RemoveFaces(std::vector<int32_t>(gone.begin(), gone.end()));
  return count;
}

}  // namespace veldra
