#include <gmock/gmock.h>

#include <algorithm>

#include "document/documentfixture.h"
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

}  // namespace veldra::testing
