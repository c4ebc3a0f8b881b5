#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/binmodel.h"

namespace veldra::testing {

/// Puts a face of vertices of MODEL at its end.
inline CBinFace& MakeFace(CBinModel& model, const std::vector<int32_t>& corners, CBinTexture* texture = nullptr,
                          uint32_t type = kFaceUntextured) {
  auto face = std::make_unique<CBinFace>(model);
  std::vector<CBinVertex*> vertices;
  for (const int32_t corner : corners)
    vertices.push_back(&model.Vertex(corner));
  face->SetCorners(vertices);
  face->SetTexture(texture);
  face->SetType(type);
  return model.AddFace(std::move(face));
}

inline std::vector<int32_t> CornersOf(const CBinFace& face) {
  std::vector<int32_t> corners;
  for (const CBinVertex* corner : face.Corners())
    corners.push_back(corner->Index());
  return corners;
}

inline std::vector<std::vector<int32_t>> PolygonsOf(const CBinModel& model) {
  std::vector<std::vector<int32_t>> polygons;
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    polygons.push_back(CornersOf(model.Face(i)));
  return polygons;
}

inline std::vector<SPoint> PositionsOf(const CBinModel& model) {
  std::vector<SPoint> positions;
  for (int32_t i = 0; i < model.VertexCount(); ++i)
    positions.push_back(model.Vertex(i).Position());
  return positions;
}

}  // namespace veldra::testing
