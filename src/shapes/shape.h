#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/binmodel.h"

/// Solids and flat shapes as a model's vertices and faces.
namespace veldra {

enum class EShape {
  kTriangle,
  kSquare,
  kPolygon,
  kCube,
  kPyramid,
  kSphere,
  kPolyhedron,
  kCylinder,
  kTube,
  kCone,
  kRamp,
  kArch,
  kTorus
};

/// What a kind of shape is called, and which numbers it goes by.
struct SShapeKind {
  EShape shape;
  const char* name;      ///< one word, for the command line and for groups: "cube"
  const char* title;     ///< for a list to choose from
  bool is_flat = false;  ///< lies in a plane y = constant and looks up
  int usual_sides = 0;   ///< 0 where the number of sides is fixed
  int usual_rings = 0;   ///< 0 where there are none
  bool has_hole = false;
};

/// In the order of EShape.
std::span<const SShapeKind> ShapeKinds();
const SShapeKind& KindOf(EShape shape);

inline constexpr int kFewestSides = 3;
inline constexpr int kMostSides = 256;
inline constexpr int kFewestRings = 2;
inline constexpr int kMostRings = 128;
/// How wide a hole can be, in parts of the shape.
inline constexpr double kSmallestHole = 0.05;
inline constexpr double kLargestHole = 0.95;
/// The solids with equal faces, by their number.
inline constexpr std::array<int, 5> kPolyhedronSides = {4, 6, 8, 12, 20};

struct SShape {
  EShape kind = EShape::kCube;
  SPoint size = {100, 100, 100};  ///< of the bounding box; a flat shape has no height
  SPoint middle = {};             ///< of the box; where a size is odd it lies half a unit further
  std::optional<int> sides = {};  ///< around; nothing: the kind's usual number
  std::optional<int> rings = {};  ///< bands of a sphere from pole to pole, sides around a torus's tube
  int solid = 20;                 ///< of a polyhedron: one of kPolyhedronSides
  double hole = 0.5;              ///< of a tube, an arch or a torus
  bool two_sided = false;         ///< a flat shape can be seen from below too
  Vector3 tilt = {};              ///< degrees about X, then Y, then Z, through the middle; `size` is that before it
};

/// Vertices and faces, not in a model yet. Each face is a triangle or a quad whose corners lie exactly in one plane,
/// and has an area. Of a solid each edge belongs to two faces, which run along it in opposite directions.
struct SShapeMesh {
  struct SFace {
    std::array<int32_t, 4> corners = {};
    std::array<STexCoord, 4> coords = {};
    size_t count = 0;  ///< 3 or 4
  };
  std::vector<SPoint> points;
  std::vector<SFace> faces;
};

/// Makes SHAPE, whose numbers lie in their ranges. Returns "", or why it cannot be built at its size: two vertices
/// would fall together, or a face would vanish. MESH means nothing then.
std::string MakeShape(const SShape& shape, SShapeMesh& mesh);

/// Adds MESH behind what MODEL has, the faces of TYPE with TEXTURE (null: none, for type 0x19), and a group of the
/// faces and one of the vertices, both named NAME or, where that is taken, with a number behind it. With a texture u
/// and v lie on whole texels.
void AddShape(CBinModel& model, const SShapeMesh& mesh, uint32_t type, CBinTexture* texture, const std::string& name);

}  // namespace veldra
