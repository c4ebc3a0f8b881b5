#include "model/normals.h"

#include <cmath>
#include <limits>

#include "platform/numbers.h"

namespace veldra {

namespace {

constexpr double kNormalLength = 65535.0;
constexpr int32_t kNoNormal = std::numeric_limits<int32_t>::min();

struct SVector {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  SVector& operator+=(const SVector& other) {
    x += other.x;
    y += other.y;
    z += other.z;
    return *this;
  }
};

/// From A to B. The difference of two 32-bit numbers is exact in a double, while it can wrap in 32 bits.
SVector Edge(const SPoint& a, const SPoint& b) {
  return {static_cast<double>(b.x) - static_cast<double>(a.x), static_cast<double>(b.y) - static_cast<double>(a.y),
          static_cast<double>(b.z) - static_cast<double>(a.z)};
}

SVector Cross(const SVector& a, const SVector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double Length(const SVector& vector) {
  return std::sqrt(vector.x * vector.x + vector.y * vector.y + vector.z * vector.z);
}

SVector RawNormal(const CBinFace& face) {
  const SPoint& p0 = face.Corner(0)->Position();
  const SPoint& p1 = face.Corner(1)->Position();
  const SPoint& p2 = face.Corner(2)->Position();
  if (face.CornerCount() == 3) return Cross(Edge(p0, p1), Edge(p0, p2));
  const SPoint& p3 = face.Corner(3)->Position();
  SVector sum = Cross(Edge(p0, p1), Edge(p0, p3));
  sum += Cross(Edge(p1, p2), Edge(p1, p0));
  sum += Cross(Edge(p2, p3), Edge(p2, p1));
  sum += Cross(Edge(p3, p0), Edge(p3, p2));
  // By 3 although there are four products: what the game's own models were made with, and without effect on the scaled
  // result but for its last rounding.
  return {sum.x / 3.0, sum.y / 3.0, sum.z / 3.0};
}

SPoint Scaled(const SVector& vector, double length) {
  const double factor = kNormalLength / length;
  return {Truncate(vector.x * factor), Truncate(vector.y * factor), Truncate(vector.z * factor)};
}

}  // namespace

SPoint CalcFaceNormal(const CBinFace& face) {
  const SVector normal = RawNormal(face);
  const double length = Length(normal);
  if (length == 0.0) {
    face.SetUnitNormal({});
    return {kNoNormal, kNoNormal, kNoNormal};
  }
  face.SetUnitNormal({normal.x / length, normal.y / length, normal.z / length});
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
  SVector sum;
  for (const CBinFace* face : vertex.Faces()) {
    const SPoint normal = normal_of(*face);
    sum += {static_cast<double>(normal.x), static_cast<double>(normal.y), static_cast<double>(normal.z)};
  }
  const auto count = static_cast<double>(vertex.Faces().Size());
  const SVector mean = {sum.x / count, sum.y / count, sum.z / count};
  const double length = Length(mean);
  if (vertex.Faces().Empty() || length == 0.0) return {kNoNormal, kNoNormal, kNoNormal};
  return Scaled(mean, length);
}

SPoint CalcVertexNormal(const CBinVertex& vertex) {
  return MeanNormal(vertex, CalcFaceNormal);
}

}  // namespace veldra
