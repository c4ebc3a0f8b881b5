#include "render/modelrenderer.h"

#include <gtest/gtest.h>

#include "render/glfixture.h"

namespace veldra::testing {
namespace {

constexpr int kPictureSide = 64;

class ModelRenderer : public CGlTest {
 protected:
  ModelRenderer() : CGlTest(kPictureSide) {}
  void SetUp() override {
    CGlTest::SetUp();
    renderer_ = std::make_unique<CModelRenderer>();
  }
  SImage Drawn(const SScene& scene, const SViewState& state) {
    renderer_->Draw(scene.model, state, kPictureSide, kPictureSide);
    return Pixels();
  }

  std::unique_ptr<CModelRenderer> renderer_;
};

TEST_F(ModelRenderer, FollowsTheModel) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed}));
  const SViewState state = WallState();
  EXPECT_EQ(Pure(At(Drawn(scene, state), 0.5, 0.5)), kRed);
  scene.model.SetFaceTexture(0, scene.Texture({kGreen}));
  EXPECT_EQ(Pure(At(Drawn(scene, state), 0.5, 0.5)), kGreen);
  scene.model.Face(0).SetType(kFaceUntextured);
  scene.model.ReportFacesChanged();
  EXPECT_NE(Pure(At(Drawn(scene, state), 0.5, 0.5)), kGreen);
  scene.model.RemoveFaces(0, 1);
  EXPECT_EQ(At(Drawn(scene, state), 0.5, 0.5), state.background);

  SScene other;
  other.AddWall(other.Texture({kBlue}));
  EXPECT_EQ(Pure(At(Drawn(other, state), 0.5, 0.5)), kBlue);
}

TEST_F(ModelRenderer, GoesOnInANewContext) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed}), kFaceShiny);
  SViewState state = WallState();
  state.vertices = state.spherical_markers = true;
  const SImage first = Drawn(scene, state);
  const int builds = renderer_->BuildCount();
  context_.reset();
  renderer_->ForgetContext();
  context_ = CMemoryGlContext::Create(kPictureSide, kPictureSide, nullptr);
  ASSERT_NE(context_, nullptr);
  EXPECT_EQ(Drawn(scene, state).rgba, first.rgba);
  EXPECT_EQ(renderer_->BuildCount(), 2 * builds);
}

TEST_F(ModelRenderer, NeitherMindsNorChangesWhatOthersSet) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed}));
  const SViewState state = WallState();
  const SImage plain = Drawn(scene, state);
  constexpr GLenum kCapabilities[] = {GL_CULL_FACE, GL_BLEND, GL_SCISSOR_TEST, GL_FOG, GL_TEXTURE_GEN_S, GL_ALPHA_TEST};
  for (const GLenum capability : kCapabilities)
    glEnable(capability);
  glCullFace(GL_FRONT_AND_BACK);
  glPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
  glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
  glMatrixMode(GL_TEXTURE);
  EXPECT_EQ(Drawn(scene, state).rgba, plain.rgba);
  for (const GLenum capability : kCapabilities)
    EXPECT_TRUE(glIsEnabled(capability)) << capability;
  EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
  GLint matrix_mode = 0;
  glGetIntegerv(GL_MATRIX_MODE, &matrix_mode);
  EXPECT_EQ(matrix_mode, GL_TEXTURE);
}

TEST_F(ModelRenderer, AMoveHandsOverOnlyWhatIsNearIt) {
  SScene scene;
  scene.AddTiles(100, 10, scene.Texture({kRed, kGreen, kBlue, kYellow}), kFaceTextured);
  for (const ERenderMode mode : {ERenderMode::kTextured, ERenderMode::kWireframe}) {
    SViewState state = WallState();
    state.mode = mode;
    state.extent = 300;
    state.vertices = true;
    Drawn(scene, state);
    const int64_t handed = renderer_->HandedFaces();
    const int builds = renderer_->BuildCount();
    for (const int32_t distance : {60, 20}) {
      const CBinFace& tile = scene.model.Face(5050);
      for (int k = 0; k < 2; ++k)
        scene.model.SetVertexPosition(tile.Corner(k)->Index(), {distance * k, distance, distance});
      scene.model.SetTexCoords(std::vector{5051}, std::vector<std::array<STexCoord, 4>>(1));
      const SImage seen = Drawn(scene, state);
      CModelRenderer anew;
      anew.Draw(scene.model, state, kPictureSide, kPictureSide);
      EXPECT_EQ(seen.rgba, Pixels().rgba);
    }
    EXPECT_EQ(renderer_->BuildCount(), builds);
    EXPECT_LE(renderer_->HandedFaces() - handed, 4 * 2 * 1024);
  }
}

TEST_F(ModelRenderer, LargeModelsAreDrawnWhole) {
  SScene scene;
  scene.AddTiles(100, 10, scene.Texture({kRed}), kFaceTextured);  // more than one portion of vertices
  SViewState state = WallState();
  state.extent = 500;
  const SImage image = Drawn(scene, state);
  for (const double across : {0.0, 0.3, 0.7, 1.0}) {
    for (const double down : {0.0, 0.3, 0.7, 1.0})
      EXPECT_EQ(Pure(At(image, across, down)), kRed);
  }
}

#ifdef _WIN32
TEST_F(ModelRenderer, TheSystemsOwnOpenGlDrawsTheSameIntoABitmap) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed, kGreen, kBlue, kYellow}));
  const SViewState state = WallState();
  const SImage usual = Drawn(scene, state);
  renderer_.reset();
  context_.reset();
  context_ = CMemoryGlContext::CreateInBitmap(kPictureSide / 2, kPictureSide);
  if (context_ == nullptr) GTEST_SKIP() << "this system draws into no bitmap";
  renderer_ = std::make_unique<CModelRenderer>();
  Drawn(scene, state);
  ASSERT_TRUE(context_->Resize(kPictureSide, kPictureSide)) << "as when a window is made larger";
  const SImage image = Drawn(scene, state);
  for (const double across : {0.1, 0.25, 0.75, 0.9}) {
    for (const double down : {0.1, 0.25, 0.75, 0.9})
      EXPECT_EQ(Pure(At(image, across, down)), Pure(At(usual, across, down))) << across << ", " << down;
  }
  EXPECT_NE(Pure(At(usual, 0.25, 0.25)), Pure(At(usual, 0.75, 0.75)));
}
#endif

}  // namespace
}  // namespace veldra::testing
