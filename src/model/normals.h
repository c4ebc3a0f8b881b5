#pragma once

#include <functional>

#include "model/binmodel.h"

namespace veldra {

/// The face's normal with length 65535, each component truncated; also stores its direction in the face. A triangle's
/// is (p1 - p0) × (p2 - p0); a quad's is the sum of the four corner products (each corner's edge to the next × its edge
/// to the one before) over 3. A face without area has 0x80000000 in each component.
SPoint CalcFaceNormal(const CBinFace& face);

/// The plane constant: NORMAL (from CalcFaceNormal) dotted with the first corner, in wrapping 32-bit arithmetic.
int32_t CalcMagic(const CBinFace& face, const SPoint& normal);
int32_t CalcMagic(const CBinFace& face);

/// The mean of the scaled normals of the faces that use VERTEX, with length 65535; (0x80000000, ...) when there is
/// none.
SPoint CalcVertexNormal(const CBinVertex& vertex);

/// CalcVertexNormal with NORMAL_OF in place of CalcFaceNormal: for whoever has the faces' normals already.
SPoint MeanNormal(const CBinVertex& vertex, const std::function<SPoint(const CBinFace&)>& normal_of);

}  // namespace veldra
