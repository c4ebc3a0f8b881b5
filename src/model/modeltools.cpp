#include "model/modeltools.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <vector>

#include "model/exactgeometry.h"
#include "model/texelgrid.h"
#include "platform/numbers.h"

namespace veldra {

namespace {

/// How far VALUE is from LOW to HIGH.
double Part(int32_t value, int32_t low, int32_t high) {
  return high > low ? (double(value) - low) / (double(high) - low) : 0.0;
}

/// From HIGH down to LOW.
double PartDown(int32_t value, int32_t low, int32_t high) {
  return high > low ? (double(high) - value) / (double(high) - low) : 0.0;
}

STexCoord Mapped(const SPoint& at, const SBounds& bounds, EAxis axis) {
  const auto& [low, high] = bounds;
  switch (axis) {
    case EAxis::kX:
      return {Part(at.z, low.z, high.z), PartDown(at.y, low.y, high.y)};
    case EAxis::kY:
      return {Part(at.x, low.x, high.x), Part(at.z, low.z, high.z)};
    case EAxis::kZ:
      break;
  }
  return {Part(at.x, low.x, high.x), PartDown(at.y, low.y, high.y)};
}

void Map(CBinModel& model, std::span<const int32_t> faces, const std::function<EAxis(const CBinFace&)>& axis_of) {
  const auto bounds = model.BoundsOfFaces(faces);
  if (!bounds) return;
  for (const int32_t index : faces) {
    CBinFace& face = model.Face(index);
    const EAxis axis = axis_of(face);
    for (int k = 0; k < face.CornerCount(); ++k)
      face.SetTexCoord(k, NearestTexel(face, Mapped(face.Corner(k)->Position(), *bounds, axis)));
  }
  model.ReportFacesChanged();
}

EAxis FacingAxis(const CBinFace& face) {
  std::vector<SPoint> corners;
  for (const CBinVertex* corner : face.Corners())
    corners.push_back(corner->Position());
  return static_cast<EAxis>(LongestAxis(ExactArea(corners)));
}

}  // namespace

GeometryFault FitModel(CBinModel& model, double largest) {
  const auto& [low, high] = model.Bounds();
  const double extent = std::max({double(high.x) - low.x, double(high.y) - low.y, double(high.z) - low.z});
  if (extent == 0.0) return "The model has no extent that could be scaled.";
  const double factor = largest / extent;
  std::vector<SPoint> positions;
  for (int32_t i = 0; i < model.VertexCount(); ++i) {
    const SPoint& from = model.Vertex(i).Position();
    const auto x = TryTruncate(std::round(from.x * factor));
    const auto y = TryTruncate(std::round(from.y * factor));
    const auto z = TryTruncate(std::round(from.z * factor));
    if (!x || !y || !z) return "A coordinate would not fit in 32 bits.";
    positions.push_back({*x, *y, *z});
  }
  std::vector<int32_t> all(positions.size());
  std::iota(all.begin(), all.end(), 0);
  model.SetVertexPositions(all, positions);
  return "";
}

void MapPlanar(CBinModel& model, std::span<const int32_t> faces, EAxis axis) {
  Map(model, faces, [axis](const CBinFace&) { return axis; });
}

void MapBox(CBinModel& model, std::span<const int32_t> faces) {
  Map(model, faces, FacingAxis);
}

void DeleteFacesWithVertices(CBinModel& model, std::span<const int32_t> faces) {
  const CBinModel::CBusy one_change(model);
  std::vector<int32_t> vertices;
  for (const int32_t index : faces)
    for (const CBinVertex* corner : model.Face(index).Corners())
      vertices.push_back(corner->Index());
  std::ranges::sort(vertices);
  vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
  model.RemoveFaces(faces);
  std::erase_if(vertices, [&](int32_t vertex) { return !model.Vertex(vertex).Faces().Empty(); });
  model.TakeVertices(vertices);
}

}  // namespace veldra
