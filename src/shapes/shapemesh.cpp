#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <optional>
#include <tuple>

#include "interchange/polygonsplit.h"
#include "model/exactgeometry.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "shapes/outline.h"

namespace veldra {

namespace {

/// Places that should be equal differ by less: halves of a unit must all be rounded the same way, or what is symmetric
/// would not stay so.
constexpr double kSameUnit = 1e-6;

/// From the smallest to the largest of VALUES, as 0 to 1.
struct SRange {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  double Part(double value) const { return high > low ? std::clamp((value - low) / (high - low), 0.0, 1.0) : 0.5; }
};

std::array<SRange, 3> RangesOf(const std::vector<Vector3>& points) {
  std::array<SRange, 3> ranges;
  for (const Vector3& point : points) {
    for (size_t axis = 0; axis < 3; ++axis) {
      ranges[axis].low = std::min(ranges[axis].low, point[axis]);
      ranges[axis].high = std::max(ranges[axis].high, point[axis]);
    }
  }
  return ranges;
}

/// Counter-clockwise for who looks against the axis.
Vector3 TurnedAbout(Vector3 point, size_t axis, double degrees) {
  const double angle = degrees * std::numbers::pi / 180;
  const size_t a = (axis + 1) % 3;
  const size_t b = (axis + 2) % 3;
  const double first = point[a] * std::cos(angle) - point[b] * std::sin(angle);
  point[b] = point[a] * std::sin(angle) + point[b] * std::cos(angle);
  point[a] = first;
  return point;
}

class CMeshBuilder {
 public:
  CMeshBuilder(const SShape& shape, SShapeMesh& mesh)
      : shape_(shape), mesh_(mesh), outline_(MakeOutline(shape)), ranges_(RangesOf(outline_.points)) {}

  /// "" or why not.
  std::string Build() {
    mesh_ = {};
    if (!PlacePoints()) return Refusal("it would reach beyond the 32 bits of a coordinate");
    if (const std::string fault = TogetherFault(); !fault.empty()) return Refusal(fault);
    for (const SPolygon& polygon : outline_.polygons)
      AddPolygon(polygon);
    if (shape_.two_sided && KindOf(shape_.kind).is_flat) AddOtherSide();
    if (has_vanished_) return Refusal("a face would have no area");
    return KindOf(shape_.kind).is_flat || HasVolume() ? "" : Refusal("it would have no volume");
  }

 private:
  std::string Refusal(const std::string& reason) const {
    return Format("The %s cannot be built at its size: %s.", KindOf(shape_.kind).name, reason.c_str());
  }

  /// The place that is PART of the way from one side of the box to the other; nothing when it has no number.
  static std::optional<int32_t> Place(double part, int32_t size, int32_t middle) {
    const int64_t first = int64_t{middle} - size / 2;
    const auto within = static_cast<int64_t>(std::floor(part * size + 0.5 + kSameUnit));
    const int64_t place = first + within;
    if (place < std::numeric_limits<int32_t>::min() || place > std::numeric_limits<int32_t>::max()) return std::nullopt;
    return static_cast<int32_t>(place);
  }

  bool PlaceTilted() {
    const Vector3 size = ToVector(shape_.size);
    const bool is_flat = KindOf(shape_.kind).is_flat;
    for (const Vector3& point : outline_.points) {
      Vector3 at = {};
      for (size_t axis = 0; axis < 3; ++axis)
        at[axis] = (axis == 1 && is_flat) ? 0.0 : (ranges_[axis].Part(point[axis]) - 0.5) * size[axis];
      for (size_t axis = 0; axis < 3; ++axis)
        at = TurnedAbout(at, axis, shape_.tilt[axis]);
      at = at + ToVector(shape_.middle);
      std::array<int32_t, 3> place = {};
      for (size_t axis = 0; axis < 3; ++axis) {
        const auto whole = TryTruncate(std::floor(at[axis] + 0.5 + kSameUnit));
        if (!whole) return false;
        place[axis] = *whole;
      }
      mesh_.points.push_back({place[0], place[1], place[2]});
    }
    return true;
  }

  bool PlacePoints() {
    if (shape_.tilt != Vector3{}) return PlaceTilted();
    const bool is_flat = KindOf(shape_.kind).is_flat;
    for (const Vector3& point : outline_.points) {
      const auto x = Place(ranges_[0].Part(point[0]), shape_.size.x, shape_.middle.x);
      const auto y = is_flat ? shape_.middle.y : Place(ranges_[1].Part(point[1]), shape_.size.y, shape_.middle.y);
      const auto z = Place(ranges_[2].Part(point[2]), shape_.size.z, shape_.middle.z);
      if (!x || !y || !z) return false;
      mesh_.points.push_back({*x, *y, *z});
    }
    return true;
  }

  std::string TogetherFault() const {
    std::map<std::tuple<int32_t, int32_t, int32_t>, size_t> places;
    for (size_t i = 0; i < mesh_.points.size(); ++i) {
      const SPoint& p = mesh_.points[i];
      const auto [first, is_new] = places.try_emplace({p.x, p.y, p.z}, i);
      if (!is_new)
        return Format("its vertices %zu and %zu would fall together at (%d, %d, %d)", first->second, i, p.x, p.y, p.z);
    }
    return "";
  }

  bool HasVolume() const {
    Int128 volume = 0;
    for (const SShapeMesh::SFace& face : mesh_.faces)
      for (size_t k = 1; k + 1 < face.count; ++k)
        volume += ExactVolume(At(face, 0), At(face, k), At(face, k + 1), mesh_.points.front());
    return volume < 0;  // the point lies behind the faces
  }

  // --- Texture coordinates ---------------------------------------------------------------------------------------

  const Vector3& Exact(int32_t corner) const { return outline_.points[static_cast<size_t>(corner)]; }

  Vector3 InBox(int32_t corner) const {
    const Vector3& p = Exact(corner);
    return {ranges_[0].Part(p[0]), ranges_[1].Part(p[1]), ranges_[2].Part(p[2])};
  }

  Vector3 NormalOf(const SPolygon& polygon) const {
    Vector3 normal = {};
    for (size_t k = 1; k + 1 < polygon.corners.size(); ++k) {
      const Vector3& first = Exact(polygon.corners[0]);
      normal = normal + Cross(Exact(polygon.corners[k]) - first, Exact(polygon.corners[k + 1]) - first);
    }
    return Normalized(normal);
  }

  std::vector<STexCoord> CoordsOf(const SPolygon& polygon) const {
    if (polygon.laying == ELaying::kGiven) return polygon.coords;
    return polygon.laying == ELaying::kFace ? CoordsOverFace(polygon) : CoordsOverBox(polygon);
  }

  std::vector<STexCoord> CoordsOverFace(const SPolygon& polygon) const {
    const Vector3 normal = NormalOf(polygon);
    constexpr double kLevel = 1 - 1e-9;
    const bool is_level = std::abs(normal[1]) > kLevel;
    const Vector3 right = is_level ? Vector3{1, 0, 0} : Normalized(Cross({0, 1, 0}, normal));
    const Vector3 down = Cross(right, normal);
    std::vector<Vector3> flat;
    flat.reserve(polygon.corners.size());
    for (const int32_t corner : polygon.corners)
      flat.push_back({Dot(right, Exact(corner)), Dot(down, Exact(corner)), 0});
    const std::array<SRange, 3> ranges = RangesOf(flat);
    std::vector<STexCoord> coords;
    coords.reserve(flat.size());
    for (const Vector3& at : flat)
      coords.push_back({ranges[0].Part(at[0]), ranges[1].Part(at[1])});
    return coords;
  }

  std::vector<STexCoord> CoordsOverBox(const SPolygon& polygon) const {
    const Vector3 normal = NormalOf(polygon);
    const double x = std::abs(normal[0]);
    const double y = std::abs(normal[1]);
    const double z = std::abs(normal[2]);
    std::vector<STexCoord> coords;
    for (const int32_t corner : polygon.corners) {
      const Vector3 at = InBox(corner);
      const bool along_y = y >= x && y >= z;
      coords.push_back({x >= y && x >= z ? at[2] : at[0], along_y ? at[2] : 1 - at[1]});
    }
    return coords;
  }

  // --- Faces -----------------------------------------------------------------------------------------------------

  void AddPolygon(const SPolygon& polygon) {
    const std::vector<STexCoord> coords = CoordsOf(polygon);
    std::vector<SWavePoint> points;
    points.reserve(polygon.corners.size());
    for (const int32_t corner : polygon.corners)
      points.push_back(ToVector(mesh_.points[static_cast<size_t>(corner)]));
    const std::vector<SPiece> pieces = SplitPolygon(points, polygon.corners);
    if (pieces.empty()) has_vanished_ = true;
    for (const SPiece& piece : pieces) {
      SShapeMesh::SFace face{.count = piece.count};
      for (size_t k = 0; k < piece.count; ++k) {
        face.corners[k] = polygon.corners[piece.corners[k]];
        face.coords[k] = coords[piece.corners[k]];
      }
      if (face.count == 4)
        AddQuad(face);
      else
        AddTriangle(face);
    }
  }

  const SPoint& At(const SShapeMesh::SFace& face, size_t corner) const {
    return mesh_.points[static_cast<size_t>(face.corners[corner])];
  }

  /// What of FACE lies at CORNERS, as a triangle.
  static SShapeMesh::SFace Cut(const SShapeMesh::SFace& face, const std::array<size_t, 3>& corners) {
    SShapeMesh::SFace cut{.count = 3};
    for (size_t k = 0; k < 3; ++k) {
      cut.corners[k] = face.corners[corners[k]];
      cut.coords[k] = face.coords[corners[k]];
    }
    return cut;
  }

  ExactVector AreaOf(const SShapeMesh::SFace& face) const {
    const std::array<SPoint, 3> corners = {At(face, 0), At(face, 1), At(face, 2)};
    return ExactArea(corners);
  }

  void AddTriangle(const SShapeMesh::SFace& face) {
    has_vanished_ = has_vanished_ || AreaOf(face) == ExactVector{};
    mesh_.faces.push_back(face);
  }

  /// Where rounding has bent it, as the two triangles that bulge outwards, so that what is convex stays so.
  void AddQuad(const SShapeMesh::SFace& face) {
    const std::array<SPoint, 4> at = {At(face, 0), At(face, 1), At(face, 2), At(face, 3)};
    const ExactVector area = ExactArea(at);
    const size_t axis = LongestAxis(area);
    const auto is_left = [&](const SShapeMesh::SFace& cut) {
      const Int128 part = AreaOf(cut)[axis];
      return area[axis] > 0 ? part > 0 : part < 0;
    };
    const auto turns_left = [&](size_t k) { return is_left(Cut(face, {(k + 3) % 4, k, (k + 1) % 4})); };
    const Int128 bend = ExactVolume(at[0], at[1], at[2], at[3]);
    if (bend == 0 && turns_left(0) && turns_left(1) && turns_left(2) && turns_left(3)) {
      mesh_.faces.push_back(face);
      return;
    }
    const std::array<SShapeMesh::SFace, 2> first = {Cut(face, {0, 1, 2}), Cut(face, {0, 2, 3})};
    const std::array<SShapeMesh::SFace, 2> second = {Cut(face, {0, 1, 3}), Cut(face, {1, 2, 3})};
    const bool can_first = is_left(first[0]) && is_left(first[1]);
    const bool can_second = is_left(second[0]) && is_left(second[1]);
    for (const SShapeMesh::SFace& cut : can_first && (bend < 0 || !can_second) ? first : second)
      AddTriangle(cut);
  }

  void AddOtherSide() {
    const size_t count = mesh_.faces.size();
    for (size_t i = 0; i < count; ++i) {
      SShapeMesh::SFace face = mesh_.faces[i];
      std::reverse(face.corners.begin() + 1, face.corners.begin() + static_cast<std::ptrdiff_t>(face.count));
      std::reverse(face.coords.begin() + 1, face.coords.begin() + static_cast<std::ptrdiff_t>(face.count));
      mesh_.faces.push_back(face);
    }
  }

  const SShape& shape_;
  SShapeMesh& mesh_;
  SOutline outline_;
  std::array<SRange, 3> ranges_;
  bool has_vanished_ = false;
};

}  // namespace

std::string MakeShape(const SShape& shape, SShapeMesh& mesh) {
  if (shape.kind == EShape::kTorus && shape.rings.value_or(kFewestSides) < kFewestSides)
    return "A torus has at least 3 rings.";
  return CMeshBuilder(shape, mesh).Build();
}

}  // namespace veldra
