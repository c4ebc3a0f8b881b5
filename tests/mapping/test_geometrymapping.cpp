#include <gtest/gtest.h>

#include "editing/editfixture.h"
#include "mapping/mappingsession.h"
#include "model/modeltools.h"

namespace veldra::testing {

namespace {

using Numbers = std::vector<int32_t>;
using EKind = SProjection::EKind;

/// A box of 40 x 20 x 10, its middle in 0.
class CGeometryMappingTest : public CDocumentTest {
 protected:
  CGeometryMappingTest() {
    texture = &AddTexture(model, "T.RAW", 64);
    for (const int32_t z : {-5, 5})
      for (const int32_t y : {-10, 10})
        for (const int32_t x : {-20, 20})
          model.AddVertex({x, y, z});
    for (const Numbers& corners :
         std::vector<Numbers>{{4, 5, 7, 6}, {1, 0, 2, 3}, {5, 1, 3, 7}, {0, 4, 6, 2}, {6, 7, 3, 2}, {0, 1, 5, 4}})
      MakeFace(model, corners, texture, kFaceTextured);
    settings.tex_edit_mode = 1;
    model.SelectAll(EGroupKind::kFaces, true);
    session.Follow(true);
  }
  double Length(int32_t face, int corner) const {
    const auto at = [&](int k) { return TexelOf(model.Face(face).TexCoord(k % 4), 64); };
    return Distance(at(corner), at(corner + 1));
  }

  CTarnDoc document{Services()};
  CBinModel& model = document.Model();
  CEditCursor cursor{document};
  CBinTexture* texture = nullptr;
  CMappingSession session{settings, [this] { return &cursor; }};
};

}  // namespace

/// One with the command line's, which the files of others are made with.
TEST_F(CGeometryMappingTest, AxesAndBoxAreThoseOfTheCommandLine) {
  CBinModel other;
  const auto coords = [](const CBinModel& of) {
    std::vector<STexel> all;
    for (int32_t i = 0; i < of.FaceCount(); ++i)
      for (int k = 0; k < 4; ++k)
        all.push_back(TexelOf(of.Face(i).TexCoord(k), 64));
    return all;
  };
  for (const EAxis axis : {EAxis::kX, EAxis::kY, EAxis::kZ}) {
    session.MapByGeometry({.kind = EKind::kPlane, .axis = axis}, WholeTexture(64));
    const auto here = coords(model);
    MapPlanar(model, session.Faces().FaceIndices(), axis);
    EXPECT_EQ(here, coords(model)) << int(axis);
    session.Follow(false);
  }
  session.MapByGeometry({.kind = EKind::kBox}, WholeTexture(64));
  const auto here = coords(model);
  MapBox(model, session.Faces().FaceIndices());
  EXPECT_EQ(here, coords(model));
}

TEST_F(CGeometryMappingTest, OthersKeepToTheirAreaAndTheirShapes) {
  const STexelRect area = PartOf(64, 2, 1, 1);
  session.SetOnTexels(false);
  for (const EKind kind :
       {EKind::kPlane, EKind::kView, EKind::kBox, EKind::kCylinder, EKind::kSphere, EKind::kUnfold}) {
    session.MapByGeometry({.kind = kind, .to_viewer = {0.6, 0, 0.8}, .keeps_proportions = true}, area);
    const STexelRect bounds = session.SelectedBounds().value();
    EXPECT_EQ(bounds.min, area.min) << int(kind);
    EXPECT_LE(bounds.max.x, area.max.x + 1e-9);
    EXPECT_LE(bounds.max.y, area.max.y + 1e-9);
    EXPECT_NEAR(std::max(bounds.Width(), bounds.Height()), area.Width(), 1e-6);
  }
  // Unfolded last: each edge has the length that it has in the model, to one scale; all hang together.
  const double scale = Length(0, 0) / 40;
  for (int32_t face = 0; face < 6; ++face) {
    for (int k = 0; k < 4; ++k) {
      const SPoint a = model.Face(face).Corner(k)->Position();
      const SPoint b = model.Face(face).Corner((k + 1) % 4)->Position();
      const double length = std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z);
      EXPECT_NEAR(Length(face, k), length * scale, 1e-3);
    }
  }
}

TEST_F(CGeometryMappingTest, IslandsArePackedSewnAndWelded) {
  session.MapByGeometry({.kind = EKind::kBox}, WholeTexture(64));
  session.TakeApart();
  const auto one_by_one = [&](int32_t face) {
    session.Select([&](CMappedFaces& faces) { faces.SelectFaces(Numbers{face}, ESelect::kOnly); });
    session.TakeApart();
  };
  for (int32_t face = 0; face < 6; ++face)
    one_by_one(face);
  session.SelectAll(true);
  ASSERT_EQ(session.Faces().IslandCount(), 6);
  session.Pack(WholeTexture(64), 2);
  std::vector<STexelRect> pieces;
  for (const SMappedFace& face : session.Faces().Faces())
    pieces.push_back(BoundsOf(session.Faces().Outline(face)));
  for (size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(pieces[i].Width(), pieces[i].Height()) << "all are as large as before to each other";
    EXPECT_GT(pieces[i].Width(), 15.0);
    for (size_t k = 0; k < i; ++k) {
      const double across = std::max(pieces[i].min.x - pieces[k].max.x, pieces[k].min.x - pieces[i].max.x);
      const double down = std::max(pieces[i].min.y - pieces[k].max.y, pieces[k].min.y - pieces[i].max.y);
      EXPECT_GE(std::max(across, down), 1.0) << i << " and " << k;
    }
  }
  session.Select([](CMappedFaces& faces) { faces.SelectFaces(Numbers{0, 2, 4}, ESelect::kOnly); });
  session.Sew();
  EXPECT_EQ(session.Faces().IslandCount(), 4);
  session.SelectAll(true);
  session.Weld();
  EXPECT_EQ(session.Faces().Points().size(), 8u) << "one for each vertex";
}

}  // namespace veldra::testing
