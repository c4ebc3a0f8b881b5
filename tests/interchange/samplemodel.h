#pragma once

#include <vector>

#include "model/modelbuilder.h"

namespace veldra::testing {

/// A textured triangle, an animated quad and an untextured triangle.
inline void FillSample(CModelBuilder& b) {
  b.Vertices({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {-7, 3, 2000000000}});
  CBinTexture& road = b.Plain("ROAD.RAW");
  CBinTexture& flag = b.Animated("FLAG", {"F1.RAW", "F2.RAW"}, 8.0, 256);
  CBinFace& triangle = b.Face({2, 0, 1}, &road, kFaceShiny);
  triangle.SetStored({1, -2, 3}, -1);
  triangle.SetTexCoord(0, {1.0, 0.25});
  triangle.SetTexCoord(1, {0.1, 1.0 / 3});
  CBinFace& quad = b.Face({0, 1, 2, 3}, &flag);
  quad.SetStored({0, 0, 65535}, 0x12AB);
  b.Face({0, 3, 4});
}

}  // namespace veldra::testing
