#include "model/normals.h"

#include <limits>

#include "platform/numbers.h"

namespace veldra {

namespace {

constexpr double kNormalLength = 65535.0;
constexpr int32_t kNoNormal = std::numeric_limits<int32_t>::min();

/// From A to B. The difference of two 32-bit numbers is exact in a double, while it can wrap in 32 bits.
Vector3 Edge(const SPoint& a, const SPoint& b) {
  return ToVector(b) - ToVector(a);
}

Vector3 RawNormal(const CBinFace& face) {
  const SPoint& p0 = face.Corner(0)->Position();
  const SPoint& p1 = face.Corner(1)->Position();
  const SPoint& p2 = face.Corner(2)->Position();
  if (face.CornerCount() == 3) return Cross(Edge(p0, p1), Edge(p0, p2));
  const SPoint& p3 = face.Corner(3)->Position();
  Vector3 sum = Cross(Edge(p0, p1), Edge(p0, p3));
  sum = sum + Cross(Edge(p1, p2), Edge(p1, p0));
  sum = sum + Cross(Edge(p2, p3), Edge(p2, p1));
  sum = sum + Cross(Edge(p3, p0), Edge(p3, p2));
  // By 3 although there are four products: what the game's own models were made with, and without effect on the scaled
  // result but for its last rounding.
  return {sum[0] / 3.0, sum[1] / 3.0, sum[2] / 3.0};
}

SPoint Scaled(const Vector3& vector, double length) {
  const double factor = kNormalLength / length;
  return {Truncate(vector[0] * factor), Truncate(vector[1] * factor), Truncate(vector[2] * factor)};
}

}  // namespace

SPoint CalcFaceNormal(const CBinFace& face) {
  const Vector3 normal = RawNormal(face);
  const double length = Length(normal);
  if (length == 0.0) {
    face.SetUnitNormal({});
    return {kNoNormal, kNoNormal, kNoNormal};
  }
  face.SetUnitNormal({normal[0] / length, normal[1] / length, normal[2] / length});
  return Scaled(normal, length);
}

int32_t CalcMagic(const CBinFace& face, const SPoint& normal) {
  const SPoint& corner = face.Corner(0)->Position();
  const int32_t xy = WrapAdd(WrapMultiply(normal.x, corner.x), WrapMultiply(normal.y, corner.y));
  return WrapAdd(xy, WrapMultiply(normal.z, corner.z));
}

int32_t CalcMagic(const CBinFace& face) {
  return CalcMagic(face, CalcFaceNormal(face));
}

SPoint MeanNormal(const CBinVertex& vertex, const std::function<SPoint(const CBinFace&)>& normal_of) {
  Vector3 sum = {};
  for (const CBinFace* face : vertex.Faces())
    sum = sum + ToVector(normal_of(*face));
  const auto count = static_cast<double>(vertex.Faces().Size());
  const Vector3 mean = {sum[0] / count, sum[1] / count, sum[2] / count};
  const double length = Length(mean);
  if (vertex.Faces().Empty() || length == 0.0) return {kNoNormal, kNoNormal, kNoNormal};
  return Scaled(mean, length);
}

SPoint CalcVertexNormal(const CBinVertex& vertex) {
  return MeanNormal(vertex, CalcFaceNormal);
}

}  // namespace veldra
