#include <cmath>
#include <numeric>

#include "model/normals.h"
#include "model/texelgrid.h"
#include "shapes/shape.h"

namespace veldra {

namespace {

constexpr std::array<SShapeKind, 13> kKinds = {{
    {EShape::kTriangle, "triangle", "Triangle", true},
    {EShape::kSquare, "square", "Square", true},
    {EShape::kPolygon, "polygon", "Polygon", true, 6},
    {EShape::kCube, "cube", "Cube"},
    {.shape = EShape::kPyramid, .name = "pyramid", .title = "Pyramid", .usual_sides = 4},
    {.shape = EShape::kSphere, .name = "sphere", .title = "Sphere", .usual_sides = 16, .usual_rings = 8},
    {EShape::kPolyhedron, "polyhedron", "Polyhedron"},
    {.shape = EShape::kCylinder, .name = "cylinder", .title = "Cylinder", .usual_sides = 16},
    {.shape = EShape::kTube, .name = "tube", .title = "Tube", .usual_sides = 16, .has_hole = true},
    {.shape = EShape::kCone, .name = "cone", .title = "Cone", .usual_sides = 16},
    {EShape::kRamp, "ramp", "Ramp"},
    {.shape = EShape::kArch, .name = "arch", .title = "Arch", .usual_sides = 8, .has_hole = true},
    {.shape = EShape::kTorus, .name = "torus", .title = "Torus", .usual_sides = 16, .usual_rings = 8, .has_hole = true},
}};

std::vector<int32_t> Numbers(int32_t first, int32_t end) {
  std::vector<int32_t> numbers(static_cast<size_t>(end - first));
  std::iota(numbers.begin(), numbers.end(), first);
  return numbers;
}

}  // namespace

std::span<const SShapeKind> ShapeKinds() {
  return kKinds;
}

const SShapeKind& KindOf(EShape shape) {
  return kKinds[static_cast<size_t>(shape)];
}

void AddShape(CBinModel& model, const SShapeMesh& mesh, uint32_t type, CBinTexture* texture, const std::string& name) {
  const CBinModel::CBusy one_change(model);
  const int32_t first_vertex = model.VertexCount();
  const int32_t first_face = model.FaceCount();
  for (const SPoint& point : mesh.points)
    model.AddVertex(point);
  for (const SShapeMesh::SFace& made : mesh.faces) {
    auto face = std::make_unique<CBinFace>(model);
    std::array<CBinVertex*, 4> corners = {};
    face->SetTexture(texture);
    face->SetType(type);
    for (size_t k = 0; k < made.count; ++k) {
      corners[k] = &model.Vertex(first_vertex + made.corners[k]);
      face->SetTexCoord(static_cast<int>(k), NearestTexel(*face, made.coords[k]));
    }
    face->SetCorners({corners.data(), made.count});
    const SPoint normal = CalcFaceNormal(*face);
    face->SetStored(normal, CalcMagic(*face, normal));
    model.AddFace(std::move(face));
  }
  model.AddGroups(EGroupKind::kFaces, {CBinGroup(name, EGroupKind::kFaces, Numbers(first_face, model.FaceCount()))});
  model.AddGroups(EGroupKind::kVertices,
                  {CBinGroup(name, EGroupKind::kVertices, Numbers(first_vertex, model.VertexCount()))});
}

}  // namespace veldra
