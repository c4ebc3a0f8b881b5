#include "model/facedraft.h"

#include <algorithm>
#include <cmath>

#include "model/normals.h"
#include "platform/numbers.h"

namespace veldra::facedraft {

namespace {

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

}  // namespace

bool IsAmong(std::span<const int32_t> sorted, int32_t index) {
  return std::ranges::binary_search(sorted, index);
}

Vector3 PositionOf(const CBinModel& model, int32_t vertex) {
  return ToVector(model.Vertex(vertex).Position());
}

SPoint Nearest(const Vector3& point) {
  return {Truncate(std::round(point[0])), Truncate(std::round(point[1])), Truncate(std::round(point[2]))};
}

int CornerOf(const CBinFace& face, int32_t vertex) {
  for (int k = 0; k < face.CornerCount(); ++k)
    if (face.Corner(k)->Index() == vertex) return k;
  return -1;
}

SDraft DraftOf(const CBinFace& face) {
  SDraft draft;
  for (int k = 0; k < face.CornerCount(); ++k) {
    draft.corners.push_back(face.Corner(k)->Index());
    draft.coords.push_back(face.TexCoord(k));
  }
  return draft;
}

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

std::unique_ptr<CBinFace> Made(CBinModel& model, const SDraft& draft, const CBinFace& like) {
  auto face = std::make_unique<CBinFace>(model);
  face->SetCorners(VerticesOf(model, draft));
  face->SetTexture(like.Texture());
  face->SetType(like.Type());
  SetCoords(*face, draft);
  return face;
}

void Become(CBinModel& model, int32_t face, const SDraft& draft) {
  model.SetFaceCorners(face, VerticesOf(model, draft));
  SetCoords(model.Face(face), draft);
}

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

void Append(CBinModel& model, CBinModel::Faces faces) {
  for (std::unique_ptr<CBinFace>& face : faces) {
    const SPoint normal = CalcFaceNormal(*face);
    face->SetStored(normal, CalcMagic(*face, normal));
    model.AddFace(std::move(face));
  }
}

}  // namespace veldra::facedraft
