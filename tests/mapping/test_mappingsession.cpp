#include <gtest/gtest.h>

#include "editing/editfixture.h"
#include "mapping/mappingsession.h"

namespace veldra::testing {

namespace {

using Numbers = std::vector<int32_t>;
constexpr auto kOfFaces = EGroupKind::kFaces;
constexpr auto kOfVertices = EGroupKind::kVertices;

/// The quad of the document lies on texels 0 to 20, the wall, which has two of its corners, beside it.
class CMappingSessionTest : public CEditTest {
 protected:
  CMappingSessionTest() {
    Map(0, {{0, 0}, {20, 0}, {20, 20}, {0, 20}});
    Map(1, {{20, 0}, {40, 0}, {20, 20}});
    settings.tex_edit_mode = 1;
    document.SetModified(false);
    Select(kOfFaces, {0, 1});
    session.Follow(true);
  }
  void Map(int32_t face, const Texels& corners) {
    for (size_t k = 0; k < corners.size(); ++k)
      model.Face(face).SetTexCoord(static_cast<int>(k), CoordOf(corners[k], 64));
  }
  STexel At(int32_t face, int corner) const { return TexelOf(model.Face(face).TexCoord(corner), 64); }

  CMappingSession session{settings, [this] { return &cursor; }};
};

}  // namespace

TEST_F(CMappingSessionTest, SelectsInTheModelAndFollowsIt) {
  EXPECT_EQ(session.Faces().FaceIndices(), (Numbers{0, 1}));
  session.Select([](CMappedFaces& faces) { faces.SelectFaces(Numbers{1}, ESelect::kOnly); });
  session.Follow(false);
  EXPECT_EQ(model.Selected(kOfFaces), Numbers{1});
  EXPECT_EQ(session.Faces().FaceIndices(), (Numbers{0, 1})) << "a selection from here leaves the faces here";
  model.SelectAll(kOfFaces, true);
  session.Follow(false);
  EXPECT_EQ(session.Faces().SelectedFaces(), (Numbers{0, 1}));
  EXPECT_EQ(session.UnmappedCount(), 1);
  session.SetMode(EMappingMode::kCorners);
  model.Select(kOfVertices, Numbers{0}, true);
  session.Follow(false);
  EXPECT_EQ(session.Faces().SelectedVertices(), Numbers{0});
  session.SelectAll(true);
  EXPECT_EQ(model.Selected(kOfVertices), (Numbers{0, 1, 2, 3, 4}));
  model.SelectAll(kOfFaces, false);
  cursor.SetFace(1);
  session.Follow(false);
  EXPECT_EQ(session.Faces().FaceIndices(), Numbers{1}) << "the current one, where none is selected";
  model.RemoveFaces(0, 1);
  session.Move({1, 0});
  EXPECT_EQ(At(0, 0), (STexel{21, 0})) << "it looks before it writes";
}

TEST_F(CMappingSessionTest, AnActionIsOneChangeAndCanBeTakenBack) {
  for (const bool preview : {true, false}) {
    settings.preview = preview ? 1 : 0;
    document.SetModified(false);
    const uint64_t before = model.Revision();
    ASSERT_TRUE(session.Begin("Move Mapping"));
    session.Try(Moved(session.Start(), {3.3, 0}));
    EXPECT_EQ(At(0, 0), preview ? (STexel{3, 0}) : (STexel{0, 0}));
    session.Cancel();
    EXPECT_EQ(At(0, 0), (STexel{0, 0}));
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(model.Revision() == before, !preview);
    EXPECT_EQ(session.Faces().Points()[0].at, (STexel{0, 0}));
  }
  const uint64_t before = model.Revision();
  session.Move({-5, 7});
  EXPECT_EQ(model.Revision(), before + 1);
  EXPECT_EQ(At(0, 0), (STexel{0, 7})) << "it stops at the edge, as a whole";
  EXPECT_EQ(At(1, 1), (STexel{40, 7}));
  EXPECT_TRUE(document.IsModified());
  const size_t steps = document.Steps().Count();
  ASSERT_TRUE(session.Begin("Drag Mapping"));
  for (const double right : {1, 2, 3})
    session.Try(Moved(session.Start(), {right, 0}));
  session.Finish();
  EXPECT_EQ(document.Steps().Count(), steps + 1);
  EXPECT_EQ(document.Steps().BackName(), "Drag Mapping");
  document.StepBack();
  EXPECT_EQ(At(0, 0), (STexel{0, 7}));
  session.Follow(false);
  document.SetReadOnly(true);
  session.Move({0, 1});
  EXPECT_EQ(At(0, 0), (STexel{0, 7}));
}

TEST_F(CMappingSessionTest, ToolsWorkOnWhatIsSelected) {
  session.Fit(WholeTexture(64));
  EXPECT_EQ(At(1, 1), (STexel{63, 0}));
  EXPECT_EQ(At(0, 2), (STexel{32, 63}));
  session.Scale(3, 0.5);
  EXPECT_EQ(session.SelectedBounds(), (STexelRect{{0, 16}, {63, 47}})) << "no wider than the texture";
  session.Select([](CMappedFaces& faces) { faces.SelectFaces(Numbers{1}, ESelect::kOnly); });
  session.TakeApart();
  session.SetPivot(STexel{32, 32});
  session.Turn(180);
  EXPECT_EQ(At(0, 1), (STexel{32, 16})) << "it does not hang on it any more";
  EXPECT_EQ(At(1, 1), (STexel{1, 48}));
  session.SetGuides({.across = {4}, .down = {}});
  EXPECT_EQ(session.Guides().across, std::vector<double>{4});
}

}  // namespace veldra::testing
