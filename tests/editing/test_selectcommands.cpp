#include <gmock/gmock.h>

#include <algorithm>

#include "document/documentfixture.h"
#include "editfixture.h"
#include "editing/selectcommands.h"
#include "editing/shapecommands.h"

namespace veldra::testing {

using ::testing::ElementsAre;

namespace {

constexpr auto kFace = EGroupKind::kFaces;
constexpr auto kVertex = EGroupKind::kVertices;

}  // namespace

/// A torus of 12 x 5 quads, faces 0 to 59, and a cube beside it, faces 60 to 65.
class SelectCommands : public CDocumentTest {
 protected:
  SelectCommands() {
    Insert({.kind = EShape::kTorus, .size = {1200, 400, 1200}, .sides = 12, .rings = 5});
    torus_faces = model.FaceCount();
    torus_vertices = model.VertexCount();
    Insert({.kind = EShape::kCube, .size = {100, 100, 200}, .middle = {2000, 0, 0}});
    Clear();
  }
  void Insert(const SShape& shape) { ASSERT_TRUE(InsertShape(document, {.shape = shape})); }
  void Clear() {
    model.SelectAll(kFace, false);
    model.SelectAll(kVertex, false);
    cursor.SetFace(-1);
    cursor.SetVertex(-1);
  }
  void Start(int32_t face) {
    Clear();
    cursor.SetFace(face);
  }
  int32_t Faces() const { return model.SelectedCount(kFace); }

  CTarnDoc document{Services()};
  CBinModel& model = document.Model();
  CEditCursor cursor{document};
  int32_t torus_faces = 0;
  int32_t torus_vertices = 0;
};

TEST_F(SelectCommands, WhatHangsTogetherAndWhatTouches) {
  EXPECT_FALSE(CanSelectAround(cursor));
  Start(torus_faces);
  SelectLinked(cursor);
  EXPECT_EQ(Faces(), 6);
  Start(torus_faces);
  GrowSelection(cursor);
  EXPECT_EQ(Faces(), 5);  // all but the side opposite
  ShrinkSelection(cursor);
  EXPECT_THAT(model.Selected(kFace), ElementsAre(torus_faces));
  Clear();
  const std::vector<int32_t> corner = {torus_vertices};
  model.Select(kVertex, corner, true);
  GrowSelection(cursor);
  EXPECT_EQ(model.SelectedCount(kVertex), 4);
  SelectLinked(cursor);
  EXPECT_EQ(model.SelectedCount(kVertex), 8);
  EXPECT_EQ(Faces(), 0);
}

TEST_F(SelectCommands, FacesThatHaveSomethingInCommon) {
  const int32_t side = torus_faces;
  model.Face(3).SetType(kFaceShiny);
  model.Face(5).SetType(kFaceShiny);
  const struct {
    ESame same;
    int32_t from;
    int32_t found;
  } cases[] = {{ESame::kTexture, side, model.FaceCount()},
               {ESame::kType, 3, 2},
               {ESame::kGroup, side, 6},
               {ESame::kGroup, 0, torus_faces},
               {ESame::kFacing, side, 1}};
  for (const auto& c : cases) {
    Start(c.from);
    SelectSame(cursor, c.same);
    EXPECT_GE(Faces(), c.found) << static_cast<int>(c.same);
    EXPECT_LE(Faces(), c.same == ESame::kFacing ? 3 : c.found) << static_cast<int>(c.same);
  }
  int32_t long_sides = 0;
  for (int32_t i = torus_faces; i < model.FaceCount(); ++i) {
    Start(i);
    SelectSame(cursor, ESame::kSize);
    const auto found = model.Selected(kFace);
    const auto of_cube = std::ranges::count_if(found, [&](int32_t face) { return face >= torus_faces; });
    long_sides += of_cube == 4 ? 1 : 0;
  }
  EXPECT_EQ(long_sides, 4);
}

TEST_F(SelectCommands, QuadsInLine) {
  // Around a cube either way there are four; faces of three corners end a line.
  for (const int corner : {0, 1, 2, 3})
    EXPECT_EQ(QuadLoop(model, torus_faces, corner).size(), 4u);
  Start(torus_faces);
  SelectQuadLoop(cursor, false);
  SelectQuadLoop(cursor, true);
  EXPECT_EQ(Faces(), 6);
  Insert({.kind = EShape::kPyramid, .middle = {0, 3000, 0}});
  const std::vector<int32_t> pyramid = model.Selected(kFace);
  const auto base = std::ranges::find(pyramid, 4, [&](int32_t face) { return model.Face(face).CornerCount(); });
  ASSERT_NE(base, pyramid.end());
  EXPECT_THAT(QuadLoop(model, *base, 0), ElementsAre(*base));
}

TEST_F(CEditTest, WhatIsHiddenIsLeftAlone) {
  const SPoint before[] = {model.Vertex(2).Position(), model.Vertex(5).Position()};
  Select(EGroupKind::kFaces, {2});
  cursor.SetFace(2);
  HideSelected(cursor);  // the triangle 0 1 5; vertex 5 is its own
  EXPECT_EQ(cursor.Face(), -1);
  EXPECT_FALSE(document.IsModified());
  model.SelectAll(EGroupKind::kFaces, true);
  model.SelectAll(EGroupKind::kVertices, true);
  EXPECT_EQ(model.Selected(EGroupKind::kFaces), (std::vector<int32_t>{0, 1}));
  EXPECT_EQ(model.Selected(EGroupKind::kVertices), (std::vector<int32_t>{0, 1, 2, 3, 4, 6}));
  Translate(model, SScope::All(), 1, 0, 0);
  EXPECT_EQ(model.Vertex(2).Position().x, before[0].x + 1);
  EXPECT_EQ(model.Vertex(5).Position(), before[1]);
  cursor.SetFace(1);
  cursor.CycleFaces(true);
  EXPECT_EQ(cursor.Face(), 0);
  ShowHidden(cursor);
  EXPECT_FALSE(HasHidden(cursor));
  model.SelectAll(EGroupKind::kFaces, false);
  HideOthers(cursor);
  model.InvertSelection(EGroupKind::kFaces);
  EXPECT_EQ(model.Selected(EGroupKind::kFaces), std::vector<int32_t>{0});
}

}  // namespace veldra::testing
