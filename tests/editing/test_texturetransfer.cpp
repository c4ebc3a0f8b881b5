#include <gtest/gtest.h>

#include "editing/editfixture.h"
#include "editing/texturetransfer.h"

namespace veldra::testing {

namespace {

using EWay = CTextureTransfer::EWay;

/// A step: two quads in z = 0 side by side, then one that goes straight down behind the right edge.
class CTextureTransferTest : public CDocumentTest {
 protected:
  CTextureTransferTest() {
    texture = &AddTexture(model, "T.RAW", 64);
    for (const SPoint& p : std::initializer_list<SPoint>{
             {0, 0, 0}, {21, 0, 0}, {21, 21, 0}, {0, 21, 0}, {42, 0, 0}, {42, 21, 0}, {42, 0, -21}, {42, 21, -21}})
      model.AddVertex(p);
    MakeFace(model, {0, 1, 2, 3}, texture, kFaceTextured);
    MakeFace(model, {1, 4, 5, 2});
    MakeFace(model, {4, 6, 7, 5});
    const STexCoord coords[] = {At(0, 21), At(21, 21), At(21, 0), At(0, 0)};
    for (int k = 0; k < 4; ++k)
      model.Face(0).SetTexCoord(k, coords[k]);
    settings.def_face_type = kFaceTextured;
    document.SetModified(false);
  }
  static STexCoord At(int x, int y) { return {x / 63.0, y / 63.0}; }
  std::vector<STexCoord> Coords(int32_t face) const {
    std::vector<STexCoord> coords;
    for (int k = 0; k < model.Face(face).CornerCount(); ++k)
      coords.push_back(model.Face(face).TexCoord(k));
    return coords;
  }
  using Coordinates = std::vector<STexCoord>;

  CTarnDoc document{Services()};
  CBinModel& model = document.Model();
  CBinTexture* texture = nullptr;
};

}  // namespace

TEST_F(CTextureTransferTest, GoesOnRoundEdgesOrShinesThrough) {
  const Coordinates next = {At(21, 21), At(42, 21), At(42, 0), At(21, 0)};
  const Coordinates round = {At(42, 21), At(63, 21), At(63, 0), At(42, 0)};
  const Coordinates through = {At(42, 21), At(42, 21), At(42, 0), At(42, 0)};
  const struct {
    EWay way;
    std::vector<int32_t> faces;
    Coordinates first;
    Coordinates second;
  } rows[] = {{EWay::kFold, {1, 2, 1}, next, round},
              {EWay::kProject, {1, 2}, next, through},
              {EWay::kPlane, {1}, next, {STexCoord(), {}, {}, {}}}};
  for (const auto& row : rows) {
    CTextureTransfer transfer(document, 0);
    for (const int32_t face : row.faces)
      transfer.GiveTo(face, row.way);
    EXPECT_EQ(Coords(1), row.first) << int(row.way);
    EXPECT_EQ(Coords(2), row.second) << int(row.way);
    EXPECT_EQ(model.Face(1).Texture(), texture);
    EXPECT_EQ(model.Face(1).Type(), kFaceTextured);
    EXPECT_EQ(model.CheckInvariants(), "");
    transfer.Cancel();
    EXPECT_EQ(model.Face(1).Type(), kFaceUntextured);
    EXPECT_EQ(texture->UseCount(), 1);
    EXPECT_FALSE(document.IsModified());
  }
}

TEST_F(CTextureTransferTest, ComesBackOntoTheTextureByWholeSteps) {
  const STexCoord coords[] = {At(42, 21), At(63, 21), At(63, 0), At(42, 0)};
  for (int k = 0; k < 4; ++k)
    model.Face(0).SetTexCoord(k, coords[k]);
  CTextureTransfer(document, 0).GiveTo(1, EWay::kFold);
  EXPECT_EQ(Coords(1), (Coordinates{At(0, 21), At(21, 21), At(21, 0), At(0, 0)}));
}

TEST_F(CTextureTransferTest, AssigningLeavesUAndV) {
  CBinTexture& other = AddTexture(model, "O.RAW", 64);
  CEditCursor cursor(document);
  EXPECT_FALSE(CanAssignTexture(cursor));
  const Coordinates before = Coords(0);
  model.Select(EGroupKind::kFaces, std::vector<int32_t>{0, 2}, true);
  AssignTexture(cursor, other);
  EXPECT_EQ(other.UseCount(), 2);
  EXPECT_EQ(Coords(0), before);
  EXPECT_EQ(Coords(2), (Coordinates{{0, 1}, {1, 1}, {1, 0}, {0, 0}}));
  EXPECT_EQ(model.Face(2).Type(), kFaceTextured);
  EXPECT_EQ(model.CheckInvariants(), "");
}

}  // namespace veldra::testing
