#include <gtest/gtest.h>

#include "platform/glcontext.h"
#include "render/modelrenderer.h"
#include "render/scene.h"
#include "render/vertexnumbers.h"

namespace veldra::testing {
namespace {

constexpr int kSide = 201;

/// Two walls beside each other, the left one face 0 and the right one face 1.
class Highlights : public ::testing::Test {
 protected:
  void SetUp() override {
    SError error;
    context_ = CMemoryGlContext::Create(kSide, kSide, &error);
    ASSERT_NE(context_, nullptr) << error.what;
    renderer_ = std::make_unique<CModelRenderer>();
    scene_.AddQuad({{-200, -100, 0}, {0, -100, 0}, {0, 100, 0}, {-200, 100, 0}}, nullptr, kFaceUntextured);
    scene_.AddQuad({{0, -100, 0}, {200, -100, 0}, {200, 100, 0}, {0, 100, 0}}, nullptr, kFaceUntextured);
    state_ = WallState();
    state_.extent = 480;
  }
  SImage Drawn(const SMarks& marks) {
    renderer_->Draw(scene_.model, state_, {.width = kSide, .height = kSide, .marks = marks});
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    return {.width = kSide, .height = kSide, .rgba = context_->ReadPixels()};
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

  std::unique_ptr<CMemoryGlContext> context_;
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
    }
  }
}

TEST_F(Highlights, TheModelAloneHasNone) {
  state_.vertices = true;
  state_.only_3d = true;
  scene_.model.SelectAll(EGroupKind::kFaces, true);
  const SImage alone = Drawn({.selection = true, .face = 0, .vertex = 0, .tagged = {1}});
  state_.vertices = state_.only_3d = false;
  EXPECT_EQ(alone.rgba, Drawn({}).rgba);
}

TEST_F(Highlights, CostTheSameWhateverTheSizeAndNothingIsBuiltByTurning) {
  const auto calls = [&](int32_t tiles) {
    for (int32_t k = 0; k < tiles; ++k)
      scene_.AddQuad({{k, 0, 9}, {k + 1, 0, 9}, {k + 1, 1, 9}, {k, 1, 9}}, nullptr, kFaceUntextured);
    scene_.model.SelectAll(EGroupKind::kFaces, true);
    scene_.model.SelectAll(EGroupKind::kVertices, true);
    const SMarks marks = {.selection = true, .face = 0, .vertex = 0};
    Drawn(marks);
    const int built = renderer_->BuildCount();
    const int marked = renderer_->HighlightBuildCount();
    for (const double angle : {10.0, 20.0, 30.0}) {
      state_.rotation.y = angle;
      Drawn(marks);
    }
    for (const ERenderMode mode : {ERenderMode::kSolid, ERenderMode::kTextured}) {
      state_.mode = mode;
      Drawn(marks);
    }
    EXPECT_EQ(renderer_->BuildCount(), built);
    EXPECT_EQ(renderer_->HighlightBuildCount(), marked);
    scene_.model.InvertSelection(EGroupKind::kFaces);
    Drawn(marks);
    EXPECT_EQ(renderer_->BuildCount(), built) << "the model was handed over anew for its selection";
    EXPECT_EQ(renderer_->HighlightBuildCount(), marked + 1);
    scene_.model.InvertSelection(EGroupKind::kFaces);
    Drawn(marks);
    return renderer_->CallCount();
  };
  const int few = calls(1);
  EXPECT_EQ(calls(5000), few);
  EXPECT_LT(few, 20);
}

TEST_F(Highlights, VertexNumbersStandBesideWhatShowsAndNeverCrowd) {
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

  for (int32_t k = 0; k < 3000; ++k)
    scene_.AddQuad({{k % 100, k / 100, 9}, {k, 1, 9}, {k + 1, 9, 9}, {k, k, 9}}, nullptr, kFaceUntextured);
  CVertexNumbers numbers;
  numbers.Draw(scene_.model, state_, camera, 1.0);
  EXPECT_GT(numbers.Count(), 5);
  EXPECT_LE(numbers.Count(), (kSide / 36 + 1) * (kSide / 14 + 1));
}

TEST_F(Highlights, AnotherModelAtTheSameAddressIsNotTakenForTheOld) {
  SScene textures;
  for (const SColor& color : {kRed, kGreen}) {
    alignas(SScene) static std::byte place[sizeof(SScene)];
    SScene& scene = *std::construct_at(reinterpret_cast<SScene*>(place));
    scene.AddWall(
        &scene.model.AddTexture(std::make_unique<CBinTexture>(scene.model, "A.RAW", textures.Image({color}))));
    renderer_->Draw(scene.model, WallState(), kSide, kSide);
    const SImage image = {.width = kSide, .height = kSide, .rgba = context_->ReadPixels()};
    EXPECT_EQ(Pure(At(image, 0.5, 0.5)), color);
    std::destroy_at(&scene);
  }
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
    const double square = 1.0 / 16;
    int light = 0;
    for (int k = 0; k < 8; ++k) {
      const SColor here = At(image, 0.25 + square * (k + 0.5), 0.25 + square * 0.5);
      const SColor next = At(image, 0.25 + square * (k + 0.5), 0.25 + square * 1.5);
      EXPECT_GT(std::abs(here.green - next.green), 40) << k;
      light += here.green > next.green ? 1 : 0;
    }
    EXPECT_EQ(light, 4);
  }
}

}  // namespace
}  // namespace veldra::testing
