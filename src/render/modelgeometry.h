#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "model/binmodel.h"

/// What OpenGL is given of a model: floats in vertex arrays, without a call to OpenGL.
namespace veldra {

/// Puts a model's coordinates into floats without losing digits: their origin is the bounds' centre, their unit half
/// the diagonal of the bounds' box, so that the whole model lies in a ball of radius 1. A model without extent keeps
/// its unit.
class CModelSpace {
 public:
  CModelSpace() = default;
  explicit CModelSpace(const SBounds& bounds);

  double Radius() const { return radius_; }  ///< model units in one of ours; at least 1
  const Vector3& Center() const { return center_; }
  std::array<float, 3> Place(const SPoint& point) const;

 private:
  Vector3 center_ = {};
  double radius_ = 1.0;
};

/// How a face is drawn, from its type.
enum class EFaceLook { kUntextured, kTextured, kTransparent, kShiny };
EFaceLook FaceLook(const CBinFace& face);

/// Faces that are drawn alike.
struct SFaceBatch {
  const CBinTexture* texture = nullptr;  ///< null for untextured
  EFaceLook look = EFaceLook::kUntextured;
  std::span<const int32_t> faces;  ///< ascending; lies in SFaceBatches::order
};

struct SFaceBatches {
  std::vector<int32_t> order;
  std::vector<SFaceBatch> batches;  ///< none empty; each texture and look once
};
/// Without those that are hidden.
SFaceBatches BatchFaces(const CBinModel& model);

/// OpenGL's GL_T2F_N3F_V3F. The texture coordinates point into texels' middles: u and v in the model count texels.
struct SFaceVertex {
  std::array<float, 2> tex_coord;
  std::array<float, 3> normal;
  std::array<float, 3> position;
};
using FloatPoint = std::array<float, 3>;

/// These append one item's share. Quads become the triangles 0 1 2 and 0 2 3.
void AppendFace(const CBinFace& face, const CModelSpace& space, std::vector<SFaceVertex>& out);
/// Two ends an edge. Of two faces that share one, only the one that goes from the lower vertex index to the higher
/// draws it.
void AppendEdges(const CBinFace& face, const CModelSpace& space, std::vector<FloatPoint>& out);

}  // namespace veldra
