#include "editing/texturelock.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "editing/texturecommands.h"

namespace veldra {

namespace {

/// What whole units may leave a plane by, in model units, and a mapping its straight course, in texels.
constexpr double kFlatWithin = 1.0;
constexpr double kEvenWithin = 0.75;

/// A place in the plane through three points: how far along the first two sides.
class CPlaneOf {
 public:
  explicit CPlaneOf(const std::array<Vector3, 4>& corners)
      : origin_(corners[0]), first_(corners[1] - corners[0]), second_(corners[2] - corners[0]) {
    const Vector3 normal = Cross(first_, second_);
    const double length = Length(normal);
    if (length > 0.0) normal_ = 1.0 / length * normal;
  }
  bool HasArea() const { return normal_.has_value(); }
  bool Holds(const Vector3& point) const { return std::abs(Dot(*normal_, point - origin_)) <= kFlatWithin; }
  /// COORDS of the three corners, carried on to POINT.
  STexCoord At(const Vector3& point, const std::array<STexCoord, 4>& coords) const {
    const Vector3 arm = point - origin_;
    const double a = Dot(first_, first_), b = Dot(first_, second_), c = Dot(second_, second_);
    const double along_first = Dot(arm, first_), along_second = Dot(arm, second_);
    const double area = a * c - b * b;
    const double s = (c * along_first - b * along_second) / area;
    const double t = (a * along_second - b * along_first) / area;
    const auto carried = [&](double STexCoord::*part) {
      const double start = coords[0].*part;
      return start + s * (coords[1].*part - start) + t * (coords[2].*part - start);
    };
    return {carried(&STexCoord::u), carried(&STexCoord::v)};
  }

 private:
  Vector3 origin_;
  Vector3 first_;
  Vector3 second_;
  std::optional<Vector3> normal_;
};

}  // namespace

CTextureLock::CTextureLock(CBinModel& model, std::span<const int32_t> moving) : model_(model) {
  const auto moves = [&](const CBinVertex* corner) { return std::ranges::binary_search(moving, corner->Index()); };
  std::vector<int32_t> touched;
  for (const int32_t vertex : moving)
    for (const CBinFace* face : model.Vertex(vertex).Faces())
      if (face->Texture() != nullptr && !std::ranges::all_of(face->Corners(), moves)) touched.push_back(face->Index());
  std::ranges::sort(touched);
  touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
  for (const int32_t index : touched) {
    const CBinFace& face = model.Face(index);
    SFace kept = {.index = index, .corners = {}, .coords = {}};
    for (int k = 0; k < face.CornerCount(); ++k) {
      kept.corners[static_cast<size_t>(k)] = ToVector(face.Corner(k)->Position());
      kept.coords[static_cast<size_t>(k)] = face.TexCoord(k);
    }
    if (IsEven(face, kept)) faces_.push_back(kept);
  }
}

/// It is flat, and its texture lies on it without bend.
bool CTextureLock::IsEven(const CBinFace& face, const SFace& kept) {
  const CPlaneOf plane(kept.corners);
  if (!plane.HasArea() || face.CornerCount() == 3) return plane.HasArea();
  const STexCoord carried = plane.At(kept.corners[3], kept.coords);
  const double texels = face.Texture()->Width();
  return plane.Holds(kept.corners[3]) && std::abs(carried.u - kept.coords[3].u) * texels <= kEvenWithin &&
         std::abs(carried.v - kept.coords[3].v) * texels <= kEvenWithin;
}

CTextureLock::Coords CTextureLock::CoordsNow(const CBinFace& face, const SFace& kept) {
  const CPlaneOf plane(kept.corners);
  Coords coords = kept.coords;
  for (int k = 0; k < face.CornerCount(); ++k) {
    const auto corner = static_cast<size_t>(k);
    const Vector3 now = ToVector(face.Corner(k)->Position());
    if (now == kept.corners[corner]) continue;
    if (!plane.Holds(now)) return kept.coords;
    coords[corner] = OnTexel(face, plane.At(now, kept.coords));
  }
  return coords;
}

void CTextureLock::Follow() {
  std::vector<int32_t> changed;
  std::vector<Coords> coords;
  for (const SFace& kept : faces_) {
    const CBinFace& face = model_.Face(kept.index);
    Coords now = CoordsNow(face, kept);
    bool is_same = true;
    for (int k = 0; k < face.CornerCount(); ++k)
      is_same = is_same && face.TexCoord(k) == now[static_cast<size_t>(k)];
    if (is_same) continue;
    changed.push_back(kept.index);
    coords.push_back(now);
  }
  model_.SetTexCoords(changed, coords);
}

}  // namespace veldra
