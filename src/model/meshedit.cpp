#include "model/meshedit.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "model/exactgeometry.h"
#include "model/normals.h"
#include "platform/numbers.h"

namespace veldra {

namespace {

using DirectedEdge = std::pair<int32_t, int32_t>;

/// A face that is about to be made.
struct SDraft {
  std::vector<int32_t> corners;
  std::vector<STexCoord> coords;
};

bool IsAmong(std::span<const int32_t> sorted, int32_t index) {
  return std::ranges::binary_search(sorted, index);
}

Vector3 PositionOf(const CBinModel& model, int32_t vertex) {
  return ToVector(model.Vertex(vertex).Position());
}

Vector3 UnitNormalOf(const CBinFace& face) {
  CalcFaceNormal(face);
  const SUnitNormal& unit = face.UnitNormal();
  return {unit.x, unit.y, unit.z};
}

SPoint Nearest(const Vector3& point) {
  return {Truncate(std::round(point[0])), Truncate(std::round(point[1])), Truncate(std::round(point[2]))};
}

STexCoord Mean(const STexCoord& a, const STexCoord& b) {
  return {(a.u + b.u) / 2, (a.v + b.v) / 2};
}

SDraft DraftOf(const CBinFace& face) {
  SDraft draft;
  for (int k = 0; k < face.CornerCount(); ++k) {
    draft.corners.push_back(face.Corner(k)->Index());
    draft.coords.push_back(face.TexCoord(k));
  }
  return draft;
}

std::vector<CBinVertex*> VerticesOf(const CBinModel& model, const SDraft& draft) {
  std::vector<CBinVertex*> vertices;
  vertices.reserve(draft.corners.size());
  for (const int32_t corner : draft.corners)
    vertices.push_back(&model.Vertex(corner));
  return vertices;
}

void SetCoords(CBinFace& face, const SDraft& draft) {
  for (size_t k = 0; k < draft.coords.size(); ++k)
    face.SetTexCoord(static_cast<int>(k), draft.coords[k]);
}

/// With the type and the texture of LIKE.
std::unique_ptr<CBinFace> Made(CBinModel& model, const SDraft& draft, const CBinFace& like) {
  auto face = std::make_unique<CBinFace>(model);
  face->SetCorners(VerticesOf(model, draft));
  face->SetTexture(like.Texture());
  face->SetType(like.Type());
  SetCoords(*face, draft);
  return face;
}

/// FACE becomes DRAFT, and stays in its groups.
void Become(CBinModel& model, int32_t face, const SDraft& draft) {
  model.SetFaceCorners(face, VerticesOf(model, draft));
  SetCoords(model.Face(face), draft);
}

/// Behind all others.
void Append(CBinModel& model, CBinModel::Faces faces) {
  for (std::unique_ptr<CBinFace>& face : faces) {
    const SPoint normal = CalcFaceNormal(*face);
    face->SetStored(normal, CalcMagic(*face, normal));
    model.AddFace(std::move(face));
  }
}

/// The directed edges of FACES that no other of them runs back over, each with its face.
std::map<DirectedEdge, int32_t> RimOf(const CBinModel& model, std::span<const int32_t> faces) {
  std::map<DirectedEdge, int32_t> edges;
  for (const int32_t index : faces) {
    const SDraft draft = DraftOf(model.Face(index));
    for (size_t k = 0; k < draft.corners.size(); ++k)
      edges[{draft.corners[k], draft.corners[(k + 1) % draft.corners.size()]}] = index;
  }
  std::map<DirectedEdge, int32_t> rim;
  for (const auto& [edge, face] : edges)
    if (!edges.contains({edge.second, edge.first})) rim[edge] = face;
  return rim;
}

/// As far along the mean of the normals as brings each of FACES DISTANCE ahead, by vertex; sharp edges stay shorter.
std::map<int32_t, Vector3> Offsets(const CBinModel& model, std::span<const int32_t> faces, double distance) {
  constexpr double kSharpest = 0.34;
  std::map<int32_t, std::vector<Vector3>> normals;
  for (const int32_t index : faces)
    for (const CBinVertex* corner : model.Face(index).Corners())
      normals[corner->Index()].push_back(UnitNormalOf(model.Face(index)));
  std::map<int32_t, Vector3> offsets;
  for (const auto& [vertex, all] : normals) {
    Vector3 sum = {};
    for (const Vector3& normal : all)
      sum = sum + normal;
    if (Length(sum) < 1e-9) sum = all.front();
    if (Length(sum) < 1e-9) continue;
    const Vector3 mean = Normalized(sum);
    double least = 1.0;
    for (const Vector3& normal : all)
      least = std::min(least, Dot(mean, normal));
    offsets[vertex] = distance / std::max(least, kSharpest) * mean;
  }
  return offsets;
}

/// The texture of FACE, carried on from its edge at CORNER by as much as LENGTH is of that edge: outward, or back over
/// the face where the texture ends.
std::array<STexCoord, 2> CarriedOn(const CBinFace& face, int corner, double length) {
  const int next = (corner + 1) % face.CornerCount();
  const STexCoord a = face.TexCoord(corner);
  const STexCoord b = face.TexCoord(next);
  const STexCoord inside = face.TexCoord((corner + 2) % face.CornerCount());
  const double edge = Length(ToVector(face.Corner(next)->Position()) - ToVector(face.Corner(corner)->Position()));
  const double share = edge > 0.0 ? length / edge : 0.0;
  // Across the edge, away from the face.
  STexCoord away = {(b.v - a.v) * share, (a.u - b.u) * share};
  if ((inside.u - a.u) * away.u + (inside.v - a.v) * away.v > 0.0) away = {-away.u, -away.v};
  const auto moved = [&](const STexCoord& from, double sign) {
    return STexCoord{from.u + sign * away.u, from.v + sign * away.v};
  };
  const auto fits = [](const STexCoord& coord) {
    constexpr double kAir = 1e-9;
    return coord.u >= -kAir && coord.u <= 1 + kAir && coord.v >= -kAir && coord.v <= 1 + kAir;
  };
  const double sign = fits(moved(a, 1)) && fits(moved(b, 1)) ? 1.0 : -1.0;
  const auto clamped = [](const STexCoord& coord) {
    return STexCoord{std::clamp(coord.u, 0.0, 1.0), std::clamp(coord.v, 0.0, 1.0)};
  };
  return {clamped(moved(a, sign)), clamped(moved(b, sign))};
}

int CornerOf(const CBinFace& face, int32_t vertex) {
  for (int k = 0; k < face.CornerCount(); ++k)
    if (face.Corner(k)->Index() == vertex) return k;
  return -1;
}

}  // namespace

// --- Extruding, detaching, copying -----------------------------------------------------------------------------------

namespace {

/// For the corners of FACES that IS_COPIED says: copies of them, by what they are of.
template <typename IsCopied>
std::map<int32_t, int32_t> CopyCorners(CBinModel& model, std::span<const int32_t> faces, const IsCopied& is_copied) {
  std::map<int32_t, int32_t> copies;
  for (const int32_t index : faces) {
    for (const CBinVertex* corner : model.Face(index).Corners()) {
      if (copies.contains(corner->Index()) || !is_copied(*corner)) continue;
      const SPoint position = corner->Position();
      copies[corner->Index()] = model.AddVertex(position).Index();
    }
  }
  return copies;
}

void Replace(SDraft& draft, const std::map<int32_t, int32_t>& copies) {
  for (int32_t& corner : draft.corners)
    if (const auto copy = copies.find(corner); copy != copies.end()) corner = copy->second;
}

void UseCopies(CBinModel& model, std::span<const int32_t> faces, const std::map<int32_t, int32_t>& copies) {
  for (const int32_t index : faces) {
    const SDraft old = DraftOf(model.Face(index));
    SDraft draft = old;
    Replace(draft, copies);
    if (draft.corners != old.corners) Become(model, index, draft);
  }
}

/// The other end of each rim edge, closed with a quad to where its face was.
CBinModel::Faces Sides(CBinModel& model, const std::map<DirectedEdge, int32_t>& rim,
                       const std::map<int32_t, int32_t>& copies) {
  CBinModel::Faces sides;
  for (const auto& [edge, index] : rim) {
    const CBinFace& face = model.Face(index);
    const auto [a, b] = edge;
    const int corner = CornerOf(face, copies.at(a));
    const double length = Length(PositionOf(model, copies.at(a)) - PositionOf(model, a));
    const auto below = CarriedOn(face, corner, length);
    const SDraft side = {
        .corners = {a, b, copies.at(b), copies.at(a)},
        .coords = {below[0], below[1], face.TexCoord((corner + 1) % face.CornerCount()), face.TexCoord(corner)}};
    sides.push_back(Made(model, side, face));
  }
  return sides;
}

}  // namespace

GeometryFault ExtrudeFaces(CBinModel& model, std::span<const int32_t> faces, double distance) {
  const auto offsets = Offsets(model, faces, distance);
  for (const auto& [vertex, offset] : offsets)
    for (const double value : PositionOf(model, vertex) + offset)
      if (!TryTruncate(std::round(value))) return "The faces would not fit in 32 bits.";
  const CBinModel::CBusy one_change(model);
  const std::map<DirectedEdge, int32_t> rim = RimOf(model, faces);
  std::set<int32_t> rim_vertices;
  for (const auto& [edge, face] : rim)
    rim_vertices.insert({edge.first, edge.second});
  // A vertex between selected faces only, and one that others use as well, which is no part of the rim.
  const auto is_copied = [&](const CBinVertex& corner) {
    return rim_vertices.contains(corner.Index()) ||
           !std::ranges::all_of(corner.Faces(), [&](const CBinFace* face) { return IsAmong(faces, face->Index()); });
  };
  const auto copies = CopyCorners(model, faces, is_copied);
  UseCopies(model, faces, copies);
  for (const auto& [vertex, offset] : offsets) {
    const auto copy = copies.find(vertex);
    model.SetVertexPosition(copy == copies.end() ? vertex : copy->second, Nearest(PositionOf(model, vertex) + offset));
  }
  Append(model, Sides(model, rim, copies));
  return "";
}

int32_t DetachFaces(CBinModel& model, std::span<const int32_t> faces) {
  const CBinModel::CBusy one_change(model);
  const auto copies = CopyCorners(model, faces, [&](const CBinVertex& corner) {
    return !std::ranges::all_of(corner.Faces(), [&](const CBinFace* face) { return IsAmong(faces, face->Index()); });
  });
  UseCopies(model, faces, copies);
  return static_cast<int32_t>(copies.size());
}

void DuplicateFaces(CBinModel& model, std::span<const int32_t> faces, std::optional<EAxis> mirror) {
  const CBinModel::CBusy one_change(model);
  const auto copies = CopyCorners(model, faces, [](const CBinVertex&) { return true; });
  CBinModel::Faces made;
  for (const int32_t index : faces) {
    SDraft draft = DraftOf(model.Face(index));
    Replace(draft, copies);
    made.push_back(Made(model, draft, model.Face(index)));
  }
  const auto count = static_cast<int32_t>(made.size());
  Append(model, std::move(made));
  if (!mirror) return;
  std::vector<int32_t> last(static_cast<size_t>(count));
  for (int32_t k = 0; k < count; ++k)
    last[static_cast<size_t>(k)] = model.FaceCount() - count + k;
  Mirror(model, SScope::OfFaces(last), *mirror);
}

// --- Splitting and joining -------------------------------------------------------------------------------------------

namespace {

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

// --- Vertices --------------------------------------------------------------------------------------------------------

std::vector<int32_t> OrderedToward(const CBinModel& model, std::span<const int32_t> vertices,
                                   const SUnitNormal& to_viewer) {
  const Vector3 toward = {to_viewer.x, to_viewer.y, to_viewer.z};
  Vector3 middle = {};
  for (const int32_t vertex : vertices)
    middle = middle + 1.0 / static_cast<double>(vertices.size()) * PositionOf(model, vertex);
  // Any two directions across the view, the second a quarter turn on from the first for who looks.
  const Vector3 aside = std::abs(toward[1]) < 0.9 ? Vector3{0, 1, 0} : Vector3{1, 0, 0};
  const Vector3 right = Normalized(Cross(aside, toward));
  const Vector3 up = Cross(toward, right);
  const auto angle = [&](int32_t vertex) {
    const Vector3 arm = PositionOf(model, vertex) - middle;
    return std::atan2(Dot(arm, up), Dot(arm, right));
  };
  std::vector<int32_t> ordered(vertices.begin(), vertices.end());
  std::ranges::sort(ordered, {}, angle);
  const size_t count = ordered.size();
  for (size_t k = 0; k < count; ++k) {
    const Vector3 a = PositionOf(model, ordered[k]);
    const Vector3 b = PositionOf(model, ordered[(k + 1) % count]);
    const Vector3 c = PositionOf(model, ordered[(k + 2) % count]);
    if (Dot(Cross(b - a, c - b), toward) <= 0.0) return {};
  }
  return ordered;
}

int32_t SnapToGrid(CBinModel& model, std::span<const int32_t> vertices, int32_t spacing) {
  std::vector<int32_t> moved;
  std::vector<SPoint> positions;
  const auto snapped = [spacing](int32_t value) {
    const double nearest = std::round(static_cast<double>(value) / spacing) * spacing;
    return TryTruncate(nearest).value_or(value);
  };
  for (const int32_t vertex : vertices) {
    const SPoint& from = model.Vertex(vertex).Position();
    const SPoint to = {snapped(from.x), snapped(from.y), snapped(from.z)};
    if (to == from) continue;
    moved.push_back(vertex);
    positions.push_back(to);
  }
  model.SetVertexPositions(moved, positions);
  return static_cast<int32_t>(moved.size());
}

}  // namespace veldra
