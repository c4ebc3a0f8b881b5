#include "render/glfixture.h"
#include "render/modelrenderer.h"
#include "render/vertexnumbers.h"

namespace veldra::testing {
namespace {

constexpr int kSide = 201;

/// Two walls beside each other, the left one face 0 and the right one face 1.
class Highlights : public CGlTest {
 protected:
  Highlights() : CGlTest(kSide) {}
  void SetUp() override {
    CGlTest::SetUp();
    renderer_ = std::make_unique<CModelRenderer>();
    scene_.AddQuad({{-200, -100, 0}, {0, -100, 0}, {0, 100, 0}, {-200, 100, 0}}, nullptr, kFaceUntextured);
    scene_.AddQuad({{0, -100, 0}, {200, -100, 0}, {200, 100, 0}, {0, 100, 0}}, nullptr, kFaceUntextured);
    state_ = WallState();
    state_.extent = 480;
  }
  SImage Drawn(const SMarks& marks) {
    renderer_->Draw(scene_.model, state_, {.width = kSide, .height = kSide, .marks = marks});
    return Pixels();
  }
  /// Shares of pixels, among those within REACH of where POINT is seen, that are much darker and much lighter than the
  /// background and the walls.
  struct SContrast {
    double dark = 0;
    double light = 0;
  };
  SContrast Around(const SImage& image, const SPoint& point, int reach) const {
    const SScreenPoint at = CViewCamera(state_, scene_.model.Bounds(), kSide, kSide).Project(point);
    SContrast found;
    for (int y = int(at.y) - reach; y <= int(at.y) + reach; ++y) {
      for (int x = int(at.x) - reach; x <= int(at.x) + reach; ++x) {
        const uint8_t* pixel = image.rgba.data() + static_cast<size_t>(y * kSide + x) * 4;
        const int brightness = pixel[0] + pixel[1] + pixel[2];
        found.dark += brightness < 30 ? 1 : 0;
        found.light += brightness > 450 && pixel[0] > 250 ? 1 : 0;
      }
    }
    const double count = (2.0 * reach + 1) * (2.0 * reach + 1);
    return {found.dark / count, found.light / count};
  }
  void ExpectBoth(const SImage& image, const SPoint& point, int reach, bool expected, const char* what) const {
    const SContrast contrast = Around(image, point, reach);
    EXPECT_EQ(contrast.dark > 0.02, expected) << what << ' ' << contrast.dark;
    EXPECT_EQ(contrast.light > 0.02, expected) << what << ' ' << contrast.light;
  }

  std::unique_ptr<CModelRenderer> renderer_;
  SScene scene_;
  SViewState state_;
};

TEST_F(Highlights, AreWhereTheyBelongLightBesideDarkOnAnyGround) {
  const SPoint left = {-100, 0, 0};
  const SPoint right = {100, 0, 0};
  const SPoint right_edge = {200, 30, 0};
  const SPoint corner = {-200, 100, 0};
  const int32_t zero[] = {0};
  const int32_t three[] = {3};
  for (const SColor& background : {SColor{60, 60, 60}, SColor{200, 200, 200}, SColor{40, 90, 160}}) {
    for (const ERenderMode mode : {ERenderMode::kSolid, ERenderMode::kTextured, ERenderMode::kWireframe}) {
      state_.background = background;
      state_.mode = mode;
      scene_.model.SelectAll(EGroupKind::kFaces, false);
      scene_.model.SelectAll(EGroupKind::kVertices, false);
      const SImage plain = Drawn({});
      EXPECT_EQ(Drawn({.selection = true}).rgba, plain.rgba);

      scene_.model.Select(EGroupKind::kFaces, zero, true);
      ExpectBoth(Drawn({.selection = true}), left, 20, true, "selected face");
      ExpectBoth(Drawn({.selection = true}), right, 20, false, "not selected face");
      EXPECT_EQ(Drawn({}).rgba, plain.rgba);
      scene_.model.SelectAll(EGroupKind::kFaces, false);

      scene_.model.Select(EGroupKind::kVertices, three, true);
      ExpectBoth(Drawn({.selection = true}), corner, 6, true, "selected vertex");
      scene_.model.SelectAll(EGroupKind::kVertices, false);
      ExpectBoth(Drawn({.selection = true}), corner, 6, false, "deselected vertex");

      ExpectBoth(Drawn({.face = 1}), right_edge, 8, true, "current face");
      ExpectBoth(Drawn({.face = 1}), right, 8, false, "inside the current face");
      ExpectBoth(Drawn({.vertex = 3}), corner, 14, true, "current vertex");
      ExpectBoth(Drawn({.tagged = {0, 3}}), corner, 24, true, "tagged vertex");
      EXPECT_NE(Drawn({.tagged = {0, 3}}).rgba, Drawn({.tagged = {3, 0}}).rgba);
      EXPECT_EQ(Drawn({.face = 2, .vertex = 8, .tagged = {-1, 99}}).rgba, plain.rgba);
      state_.only_3d = true;
      EXPECT_EQ(Drawn({.selection = true, .face = 0, .vertex = 0, .tagged = {1}}).rgba, plain.rgba);
      state_.only_3d = false;
    }
  }
}

TEST_F(Highlights, AreBuiltAnewForAnotherSelectionAloneAndTheModelNotAtAll) {
  scene_.model.SelectAll(EGroupKind::kFaces, true);
  const SMarks marks = {.selection = true, .face = 0, .vertex = 0};
  Drawn(marks);
  const int built = renderer_->BuildCount();
  const int marked = renderer_->HighlightBuildCount();
  state_.rotation.y = 10;
  Drawn(marks);
  EXPECT_EQ(renderer_->HighlightBuildCount(), marked);
  scene_.model.InvertSelection(EGroupKind::kFaces);
  Drawn(marks);
  EXPECT_EQ(renderer_->HighlightBuildCount(), marked + 1);
  EXPECT_EQ(renderer_->BuildCount(), built);
  int calls = 0;
  for (const int32_t tiles : {1, 70}) {
    scene_.AddTiles(tiles, 1, nullptr, kFaceUntextured);
    scene_.model.SelectAll(EGroupKind::kFaces, true);
    Drawn(marks);
    // 4900 faces are four lists of faces more, and their vertices are marked by none.
    EXPECT_LE(renderer_->CallCount(), tiles == 1 ? 100 : calls + 4);
    calls = renderer_->CallCount();
  }
}

TEST_F(Highlights, VertexNumbersStandBesideWhatShows) {
  // Behind the left wall.
  scene_.AddQuad({{-150, -50, -90}, {-50, -50, -90}, {-50, 50, -90}, {-150, 50, -90}}, nullptr, kFaceUntextured);
  const SImage without = Drawn({});
  state_.vertex_numbers = true;
  const SImage with = Drawn({});
  const CViewCamera camera(state_, scene_.model.Bounds(), kSide, kSide);
  const auto has_number = [&](const SPoint& point) {
    const SScreenPoint at = camera.Project(point);
    for (int y = int(at.y) - 14; y < int(at.y) - 3; ++y)
      for (int x = int(at.x) + 4; x < int(at.x) + 10; ++x)
        if (At(with, double(x) / (kSide - 1), double(y) / (kSide - 1)) !=
            At(without, double(x) / (kSide - 1), double(y) / (kSide - 1)))
          return true;
    return false;
  };
  for (const SPoint& corner : {SPoint{-200, -100, 0}, {0, 100, 0}, {200, 100, 0}})
    EXPECT_TRUE(has_number(corner)) << corner.x;
  EXPECT_FALSE(has_number({-150, 50, -90})) << "it is hidden";
  scene_.AddTiles(50, 1, nullptr, kFaceUntextured);
  CVertexNumbers numbers;
  numbers.Draw(scene_.model, state_, camera, 1.0);
  EXPECT_LE(numbers.Count(), (kSide / 36 + 1) * (kSide / 14 + 1)) << "no crowd";
}

TEST_F(Highlights, ATextureThatCannotBeLoadedIsACheckerboard) {
  for (const bool is_blank : {false, true}) {
    SScene scene;
    STextureImage& missing = scene.images.emplace_back();
    missing.size = is_blank ? 64 : 0;
    missing.rgba.resize(is_blank ? 64 * 64 * 4 : 0);
    missing.is_stand_in = is_blank;
    scene.AddWall(&scene.model.AddTexture(std::make_unique<CBinTexture>(scene.model, "GONE.RAW", &missing)),
                  kFaceTransparentMtm);
    SViewState state = WallState();
    state.transparency = true;
    const SImage image = Picture(scene, state, kSide);
    // Squares of an eighth of the wall, which is half of the picture.
    const auto square = [&](int x, int y) { return At(image, 0.25 + (x + 0.5) / 16, 0.25 + (y + 0.5) / 16); };
    EXPECT_EQ(square(0, 0), square(1, 1));
    EXPECT_EQ(square(1, 0), square(0, 1));
    EXPECT_GT(std::abs(square(0, 0).green - square(1, 0).green), 40);
  }
}

}  // namespace
}  // namespace veldra::testing
