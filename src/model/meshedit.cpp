#include "model/meshedit.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "model/facedraft.h"
#include "model/normals.h"
#include "platform/numbers.h"

namespace veldra {

namespace {

using facedraft::Append;
using facedraft::Become;
using facedraft::CarriedOn;
using facedraft::CornerOf;
using facedraft::DirectedEdge;
using facedraft::DraftOf;
using facedraft::IsAmong;
using facedraft::Made;
using facedraft::Nearest;
using facedraft::PositionOf;
using facedraft::RimOf;
using facedraft::SDraft;

Vector3 UnitNormalOf(const CBinFace& face) {
  CalcFaceNormal(face);
  const SUnitNormal& unit = face.UnitNormal();
  return {unit.x, unit.y, unit.z};
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

// --- Vertices --------------------------------------------------------------------------------------------------------

namespace {

/// CORNERS go round counter-clockwise for who looks against TOWARD, with a bulge at each.
bool IsConvexToward(const CBinModel& model, const std::vector<int32_t>& corners, const Vector3& toward) {
  const size_t count = corners.size();
  for (size_t k = 0; k < count; ++k) {
    const Vector3 a = PositionOf(model, corners[k]);
    const Vector3 b = PositionOf(model, corners[(k + 1) % count]);
    const Vector3 c = PositionOf(model, corners[(k + 2) % count]);
    if (Dot(Cross(b - a, c - b), toward) <= 0.0) return false;
  }
  return true;
}

}  // namespace

std::vector<int32_t> TurnedToward(const CBinModel& model, std::vector<int32_t> corners, const SUnitNormal& to_viewer) {
  const Vector3 toward = {to_viewer.x, to_viewer.y, to_viewer.z};
  if (IsConvexToward(model, corners, toward)) return corners;
  std::reverse(corners.begin() + 1, corners.end());
  if (IsConvexToward(model, corners, toward)) return corners;
  return {};
}

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
  return IsConvexToward(model, ordered, toward) ? ordered : std::vector<int32_t>{};
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
