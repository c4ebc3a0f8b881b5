#include <gmock/gmock.h>

#include <limits>

#include "editfixture.h"
#include "editing/facecommands.h"
#include "editing/groupcommands.h"
#include "editing/texturecommands.h"
#include "editing/vertexcommands.h"
#include "model/normals.h"

namespace veldra::testing {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr EGroupKind kFaces = EGroupKind::kFaces;
constexpr EGroupKind kVertices = EGroupKind::kVertices;
constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();
constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();

class EditCommands : public CEditTest {
 protected:
  /// The coordinates of FACE in texels of T.RAW.
  void SetTexels(int32_t face, const std::vector<STexCoord>& texels) {
    for (size_t k = 0; k < texels.size(); ++k)
      model.Face(face).SetTexCoord(static_cast<int>(k), {texels[k].u / 63, texels[k].v / 63});
  }
  std::vector<STexCoord> Texels(int32_t face) const {
    std::vector<STexCoord> texels;
    for (int k = 0; k < model.Face(face).CornerCount(); ++k)
      texels.push_back({model.Face(face).TexCoord(k).u * 63, model.Face(face).TexCoord(k).v * 63});
    return texels;
  }
};

// --- Faces ---------------------------------------------------------------------------------------------------------

TEST_F(EditCommands, SelectsByFacing) {
  using E = SFacingInput::EDirection;
  const SUnitNormal up = {0, 1, 0};
  const struct {
    SFacingInput input;
    std::vector<int32_t> faces;
  } cases[] = {
      {{E::kPlusZ, 0}, {0}},   {{E::kMinusZ, 89}, {}},        {{E::kMinusZ, 90}, {1, 2}},  {{E::kPlusX, 1}, {1}},
      {{E::kMinusY, 10}, {2}}, {{E::kPlusY, 180}, {0, 1, 2}}, {{E::kMinusX, 179}, {0, 2}}, {{E::kViewer, 90}, {0, 1}},
  };
  for (const auto& row : cases)
    EXPECT_EQ(FacesFacing(model, row.input, up), row.faces) << static_cast<int>(row.input.direction);
  Select(kFaces, {2});
  EXPECT_EQ(SelectByFacing(cursor, {E::kPlusZ, 0, true}, up), 1);
  EXPECT_THAT(model.Selected(kFaces), ElementsAre(0, 2));
  SelectByFacing(cursor, {E::kPlusX, 0, false}, up);
  EXPECT_THAT(model.Selected(kFaces), ElementsAre(1));
}

TEST_F(EditCommands, LockedTexturesStayWhereCornersMoveInTheirPlane) {
  settings.move_step = 5;
  const std::vector<STexCoord> start = {{0, 0}, {20, 0}, {20, 20}, {0, 20}};
  const struct {
    bool locked;
    std::vector<int32_t> moved;
    EAxis axis;
    std::vector<STexCoord> texels;
  } cases[] = {
      {true, {1, 2}, EAxis::kX, {{0, 0}, {30, 0}, {30, 20}, {0, 20}}},
      {true, {2}, EAxis::kY, {{0, 0}, {20, 0}, {20, 30}, {0, 20}}},
      {false, {2}, EAxis::kY, start},
      {true, {2}, EAxis::kZ, start},           // out of the plane
      {true, {0, 1, 2, 3}, EAxis::kX, start},  // as a whole
      {true, {0}, EAxis::kX, {{10, 0}, {20, 0}, {20, 20}, {0, 20}}},
  };
  for (const auto& row : cases) {
    settings.texture_lock = row.locked ? 1 : 0;
    SetTexels(0, start);
    model.SelectAll(kVertices, false);
    Select(kVertices, row.moved);
    MoveSelectedVertices(cursor, row.axis, true);
    const std::vector<STexCoord> now = Texels(0);
    for (size_t k = 0; k < now.size(); ++k) {
      EXPECT_NEAR(now[k].u, row.texels[k].u, 1e-6) << &row - cases << ' ' << k;
      EXPECT_NEAR(now[k].v, row.texels[k].v, 1e-6) << &row - cases << ' ' << k;
    }
    MoveSelectedVertices(cursor, row.axis, false);
  }
}

TEST_F(EditCommands, DeletesAndFlipsFaces) {
  cursor.SetFace(0);
  FlipFaces(cursor);
  EXPECT_THAT(Corners(0), ElementsAre(0, 3, 2, 1));
  Select(kFaces, {1, 2});
  FlipFaces(cursor);
  EXPECT_THAT(Corners(0), ElementsAre(0, 3, 2, 1)) << "not selected";
  EXPECT_THAT(Corners(1), ElementsAre(1, 2, 4));
  DeleteCurrentFace(cursor);
  EXPECT_EQ(model.FaceCount(), 2);
  EXPECT_EQ(cursor.Face(), 0);
  DeleteSelectedFaces(cursor);
  EXPECT_EQ(model.FaceCount(), 0);
  EXPECT_EQ(model.CheckInvariants(), "");
}

TEST_F(EditCommands, EditsAllOfAFace) {
  cursor.SetFace(2);
  SFaceInput input = InputOf(model.Face(2));
  EXPECT_EQ(input.texture, -1);
  input.type = kFaceTransparentMtm;
  EXPECT_NE(InputFault(model, input), "") << "this type needs a texture";
  input.texture = 0;
  input.corners = {6, 5, 4, 3};
  input.coords = {{{0, 0}, {1, 0.5}, {0.25, 1}, {1, 1}}};
  ASSERT_EQ(InputFault(model, input), "");
  const SFacePlane plane = ComputedPlane(model, input);
  EditFace(cursor, input);
  EXPECT_THAT(Corners(2), ElementsAre(6, 5, 4, 3));
  EXPECT_EQ(model.Face(2).Type(), kFaceTransparentMtm);
  EXPECT_EQ(model.Face(2).TexCoord(1), (STexCoord{1, 0.5}));
  EXPECT_EQ(plane.magic, CalcMagic(model.Face(2)));
  EXPECT_EQ(model.CheckInvariants(), "");
  input.coords[1].v = 1.5;
  EXPECT_THAT(InputFault(model, input), HasSubstr("corner 2"));
  input.coords[1].v = 1;
  input.corners[2] = 6;
  EXPECT_NE(InputFault(model, input), "") << "a vertex twice";
}

TEST_F(EditCommands, MakesAFaceOfTaggedVertices) {
  settings.def_face_type = static_cast<int32_t>(kFaceShiny);
  cursor.SetFace(1);
  for (const int32_t vertex : {6, 3}) {
    cursor.SetVertex(vertex);
    TagCurrentVertex(cursor);
  }
  EXPECT_FALSE(CanMakeTaggedFace(cursor));
  cursor.ToggleTag(0);
  ASSERT_TRUE(MakeTaggedFace(cursor));
  EXPECT_THAT(Corners(3), ElementsAre(6, 3, 0));
  EXPECT_EQ(model.Face(3).Type(), kFaceShiny);
  EXPECT_EQ(model.Face(3).Texture(), texture);
  EXPECT_EQ(cursor.Face(), 3);
  EXPECT_THAT(cursor.Tagged(), IsEmpty());
}

TEST_F(EditCommands, GroupsTypeAndMagic) {
  SGroupFacesInput input = {.faces = {0, 1, 2}, .type = kFaceTextured};
  EXPECT_THAT(InputFault(model, input), HasSubstr("1 of the faces have no texture"));
  input = {.faces = {0, 2}, .type = kFaceUntextured, .magic = SGroupFacesInput::EMagic::kValue, .value = -5};
  GroupFaces(cursor, input);
  EXPECT_EQ(model.Face(0).Type(), kFaceUntextured);
  EXPECT_EQ(model.Face(2).StoredMagic(), -5);
  GroupFaces(cursor, {.faces = {1}, .type = {}, .magic = SGroupFacesInput::EMagic::kComputed});
  EXPECT_EQ(model.Face(1).StoredMagic(), 655350);
  EXPECT_EQ(model.Face(1).StoredNormal(), (SPoint{65535, 0, 0}));
  EXPECT_EQ(model.Face(1).Type(), kFaceShiny);
}

// --- Vertices ------------------------------------------------------------------------------------------------------

TEST_F(EditCommands, SetsVerticesToAPlane) {
  using E = SPlaneInput::EPlane;
  cursor.SetVertex(2);
  const struct {
    std::vector<SPoint> before;
    SPlaneInput input;
    std::vector<SPoint> after;
  } cases[] = {
      {{{1, -2, 3}, {4, -5, 6}}, {EAxis::kY, E::kMean}, {{1, -3, 3}, {4, -3, 6}}},
      {{{1, 2, kLargest}, {4, 5, kLargest}}, {EAxis::kZ, E::kMean}, {{1, 2, kLargest}, {4, 5, kLargest}}},
      {{{1, 2, 3}, {4, 5, 6}}, {EAxis::kZ, E::kValue, -8}, {{1, 2, -8}, {4, 5, -8}}},
      {{{1, 2, 3}, {4, 5, 6}}, {EAxis::kY, E::kCurrent}, {{1, 10, 3}, {4, 10, 6}}},
  };
  const std::vector<int32_t> selected = {5, 6};
  Select(kVertices, selected);
  for (const auto& row : cases) {
    model.SetVertexPositions(selected, row.before);
    SetToPlane(cursor, row.input);
    EXPECT_EQ(model.Vertex(5).Position(), row.after[0]);
    EXPECT_EQ(model.Vertex(6).Position(), row.after[1]);
  }
}

TEST_F(EditCommands, MovesByTheStepAndWrapsAtTheEnds) {
  settings.move_step = 7;
  Select(kVertices, {0, 1});
  cursor.SetVertex(6);
  SetVertexCoordinates(cursor, {kLargest, 0, kSmallest});
  MoveCurrentVertex(cursor, EAxis::kX, true);
  MoveCurrentVertex(cursor, EAxis::kY, false);
  MoveCurrentVertex(cursor, EAxis::kZ, false);
  EXPECT_EQ(model.Vertex(6).Position(), (SPoint{kSmallest + 6, -7, kLargest - 6}));
  MoveSelectedVertices(cursor, EAxis::kZ, true);
  EXPECT_EQ(model.Vertex(1).Position(), (SPoint{10, 0, 7}));
  EXPECT_EQ(model.Vertex(2).Position(), (SPoint{10, 10, 0}));
  EXPECT_EQ(model.CheckInvariants(), "");
}

// --- Textures ------------------------------------------------------------------------------------------------------

TEST_F(EditCommands, FlipsAndTurnsThePartOfTheTextureThatFacesShow) {
  const std::vector<STexCoord> quad = {{10, 20}, {30, 20}, {30, 30}, {10, 30}};
  const std::vector<STexCoord> wall = {{10, 20}, {50, 20}, {10, 60}};
  const struct {
    void (*change)(CEditCursor&);
    std::vector<STexCoord> once;
    int back;  ///< so often done, all is as before
  } cases[] = {
      {[](CEditCursor& c) { FlipTexture(c, ETextureAxis::kU); }, {{30, 20}, {10, 20}, {10, 30}, {30, 30}}, 2},
      {[](CEditCursor& c) { FlipTexture(c, ETextureAxis::kV); }, {{10, 30}, {30, 30}, {30, 20}, {10, 20}}, 2},
      {[](CEditCursor& c) { RotateTexture(c); }, {{30, 20}, {30, 30}, {10, 30}, {10, 20}}, 4},
  };
  cursor.SetFace(0);
  for (const auto& row : cases) {
    SetTexels(0, quad);
    SetTexels(1, wall);
    row.change(cursor);
    EXPECT_EQ(Texels(0), row.once);
    EXPECT_EQ(Texels(1), wall);
    for (int i = 1; i < row.back; ++i)
      row.change(cursor);
    EXPECT_EQ(Texels(0), quad);
  }
  Select(kFaces, {0, 1});
  FlipTexture(cursor, ETextureAxis::kU);
  EXPECT_EQ(Texels(0), (std::vector<STexCoord>{{50, 20}, {30, 20}, {30, 30}, {50, 30}})) << "one piece";
}

TEST_F(EditCommands, NormalizesATextureOverAllItsFaces) {
  SetTexels(0, {{21, 10}, {42, 10}, {42, 10}, {21, 10}});
  SetTexels(1, {{21, 10}, {42, 10}, {28, 10}});
  NormalizeTexture(cursor, *texture);
  EXPECT_EQ(Texels(0), (std::vector<STexCoord>{{0, 10}, {63, 10}, {63, 10}, {0, 10}}));
  EXPECT_EQ(Texels(1), (std::vector<STexCoord>{{0, 10}, {63, 10}, {21, 10}}));
}

TEST_F(EditCommands, DefinesReplacesAndDeletesAnimations) {
  const CBinTexture::SFrame frame = {"T.RAW", texture->Image()};
  SAnimationInput input = {.name = NewAnimationName(model), .frames = {}, .rate = 5};
  EXPECT_EQ(InputFault(model, input, nullptr), "Animation must have at least 1 frame.");
  input.frames = {frame, frame};
  input.rate = 0;
  EXPECT_THAT(InputFault(model, input, nullptr), HasSubstr("rate"));
  input.rate = 5;
  CBinTexture* const made = DefineAnimation(document, input, nullptr);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(NewAnimationName(model), "NEWANIM2");
  EXPECT_NE(InputFault(model, input, nullptr), "") << "the name is taken";

  model.SetFaceTexture(0, made);
  input.frames = {frame};
  CBinTexture* const changed = DefineAnimation(document, input, made);
  ASSERT_NE(changed, nullptr);
  EXPECT_EQ(model.Face(0).Texture(), changed);
  EXPECT_EQ(model.TextureCount(), 2);
  EXPECT_FALSE(DeleteAnimation(document, *changed));
  ExpectOnlyMessage("Animation \"NEWANIM1\" is currently\n in use and cannot be deleted.");
  model.SetFaceTexture(0, texture);
  EXPECT_TRUE(DeleteAnimation(document, *changed));
  EXPECT_EQ(model.TextureCount(), 1);
}

// --- Groups --------------------------------------------------------------------------------------------------------

TEST_F(EditCommands, GroupsOfTheSelection) {
  EXPECT_THAT(CreateGroup(document, kFaces, "roof"), HasSubstr("select the faces"));
  Select(kFaces, {0, 2});
  EXPECT_EQ(CreateGroup(document, kFaces, "roof"), "");
  EXPECT_THAT(CreateGroup(document, kFaces, "roof"), HasSubstr("already in use"));
  EXPECT_EQ(RenameGroup(document, kFaces, "roof", "hood"), "");
  Select(kFaces, {1});
  SelectGroup(document, kFaces, "hood", false);
  EXPECT_THAT(model.Selected(kFaces), ElementsAre(0, 2));
  Select(kFaces, {1});
  SelectGroup(document, kFaces, "hood", true);
  EXPECT_EQ(model.SelectedCount(kFaces), 3);
}

// --- Read-only documents -------------------------------------------------------------------------------------------

}  // namespace veldra::testing
