#include <gtest/gtest.h>

#include "editing/editfixture.h"
#include "mapping/mappedfaces.h"

namespace veldra::testing {

namespace {

using Numbers = std::vector<int32_t>;

/// A strip of three quads, the third cut off by its coordinates: 0 1 | 1 2 | 2 3 at texels 0, 10, 20 and 40, 50.
class CMappedFacesTest : public CDocumentTest {
 protected:
  CMappedFacesTest() {
    texture = &AddTexture(model, "T.RAW", 64);
    for (int column = 0; column < 4; ++column)
      for (const int32_t row : {0, 10})
        model.AddVertex({column * 10, row, 0});
    const double left[] = {0, 10, 40};
    for (int32_t i = 0; i < 3; ++i) {
      CBinFace& face = MakeFace(model, {2 * i, 2 * i + 2, 2 * i + 3, 2 * i + 1}, texture, kFaceTextured);
      const STexel corners[] = {{left[i], 0}, {left[i] + 10, 0}, {left[i] + 10, 10}, {left[i], 10}};
      for (int k = 0; k < 4; ++k)
        face.SetTexCoord(k, CoordOf(corners[k], 64));
    }
    faces.Take(model, Numbers{0, 1, 2}, 64);
  }

  CBinModel model;
  CBinTexture* texture = nullptr;
  CMappedFaces faces;
};

}  // namespace

TEST_F(CMappedFacesTest, HangTogetherWhereTheyLieOnOneTexel) {
  EXPECT_EQ(faces.Points().size(), 10u);
  EXPECT_EQ(faces.IslandCount(), 2);
  EXPECT_EQ(faces.SelectedPoints().size(), 10u) << "all at first";
  EXPECT_EQ(faces.FacesAt({15, 5}), Numbers{1});
  EXPECT_EQ(faces.FacesAt({30, 5}), Numbers{});
  EXPECT_EQ(faces.PointsNear({10.5, 0.5}, 2).size(), 1u);
  const STexelRect band = {{12, 2}, {45, 4}};
  EXPECT_EQ(faces.FacesIn(band), (Numbers{1, 2}));
  EXPECT_EQ(faces.FacesIn({{2, 2}, {3, 3}}), Numbers{0}) << "within a face";
  EXPECT_EQ(faces.PointsIn({{9, -1}, {21, 11}}).size(), 4u);

  faces.SelectIslands(Numbers{1}, ESelect::kOnly);
  EXPECT_EQ(faces.SelectedFaces(), (Numbers{0, 1}));
  faces.SelectFaces(Numbers{1}, ESelect::kToggle);
  faces.SelectIslands(Numbers{0}, ESelect::kToggle);
  EXPECT_EQ(faces.SelectedFaces(), (Numbers{0, 1})) << "a part becomes the whole first";
  faces.SelectPoints(faces.PointsIn({{9, -1}, {11, 11}}), ESelect::kOnly);
  EXPECT_EQ(faces.SelectedFaces(), Numbers{});
  EXPECT_EQ(faces.SelectedVertices(), (Numbers{2, 3}));
  EXPECT_EQ(faces.PointsOfTouchedFaces().size(), 6u);
  faces.SelectVertices(Numbers{4, 5});
  EXPECT_EQ(faces.SelectedPoints().size(), 4u) << "on both sides of the cut";
}

TEST_F(CMappedFacesTest, MoveAsOneUnlessTakenApart) {
  const auto move_first = [&] {
    faces.SelectFaces(Numbers{0}, ESelect::kOnly);
    const Numbers points = faces.SelectedPoints();
    Texels places = faces.PlacesOf(points);
    for (STexel& at : places)
      at.y += 5;
    faces.Place(points, places);
    faces.Settle();
    faces.Write(model, points);
  };
  move_first();
  EXPECT_EQ(TexelOf(model.Face(1).TexCoord(0), 64), (STexel{10, 5})) << "its neighbour comes along";
  faces.SelectFaces(Numbers{0}, ESelect::kOnly);
  faces.TakeApart(EMappingMode::kFaces);
  EXPECT_EQ(faces.Points().size(), 12u);
  EXPECT_EQ(faces.IslandCount(), 3);
  EXPECT_EQ(faces.SelectedFaces(), Numbers{0});
  move_first();
  EXPECT_EQ(TexelOf(model.Face(1).TexCoord(0), 64), (STexel{10, 5}));
  EXPECT_EQ(TexelOf(model.Face(0).TexCoord(1), 64), (STexel{10, 10}));
  faces.SelectAll(true);
  faces.Join();
  EXPECT_EQ(faces.IslandCount(), 3) << "they lie apart by now";

  // What was selected stays so when the faces are read again.
  faces.SelectFaces(Numbers{2}, ESelect::kOnly);
  faces.Take(model, Numbers{0, 1, 2}, 64);
  EXPECT_EQ(faces.SelectedFaces(), Numbers{2});
  faces.Take(model, Numbers{0, 1}, 64);
  EXPECT_EQ(faces.SelectedFaces(), (Numbers{0, 1}));
}

}  // namespace veldra::testing
