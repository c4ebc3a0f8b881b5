#pragma once

#include <initializer_list>
#include <vector>

#include "document/documentfixture.h"
#include "editing/editcursor.h"

namespace veldra {

inline void PrintTo(const STexCoord& coord, std::ostream* out) {
  *out << '(' << coord.u << ' ' << coord.v << ')';
}

}  // namespace veldra

namespace veldra::testing {

/// A document with a flat quad 0 1 2 3 in z = 0, a wall 1 4 2 looking along x, a triangle 0 1 5 without texture looking
/// down y, and the unused vertex 6. The quad and the wall have T.RAW of 64 texels.
class CEditTest : public CDocumentTest {
 protected:
  CEditTest() {
    for (const SPoint& p : std::initializer_list<SPoint>{
             {0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {10, 0, -10}, {5, 0, 9}, {-7, 3, 1}})
      model.AddVertex(p);
    texture = &AddTexture(model, "T.RAW", 64);
    MakeFace(model, {0, 1, 2, 3}, texture, kFaceTextured);
    MakeFace(model, {1, 4, 2}, texture, kFaceShiny);
    MakeFace(model, {0, 1, 5});
    document.SetModified(false);
  }

  void Select(EGroupKind kind, const std::vector<int32_t>& items) { model.Select(kind, items, true); }
  std::vector<int32_t> Corners(int32_t face) const { return CornersOf(model.Face(face)); }

  CTarnDoc document{Services()};
  CBinModel& model = document.Model();
  CEditCursor cursor{document};
  CBinTexture* texture = nullptr;
};

}  // namespace veldra::testing
