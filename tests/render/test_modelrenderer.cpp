#include "render/modelrenderer.h"

#include <gtest/gtest.h>

#include "platform/glcontext.h"
#include "render/scene.h"

namespace veldra::testing {
namespace {

constexpr int kSide = 64;

class ModelRenderer : public ::testing::Test {
 protected:
  void SetUp() override {
    SError error;
    context_ = CMemoryGlContext::Create(kSide, kSide, &error);
    ASSERT_NE(context_, nullptr) << error.what;
    renderer_ = std::make_unique<CModelRenderer>();
  }
  SImage Drawn(const SScene& scene, const SViewState& state) {
    renderer_->Draw(scene.model, state, kSide, kSide);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    return {.width = kSide, .height = kSide, .rgba = context_->ReadPixels()};
  }

  std::unique_ptr<CMemoryGlContext> context_;
  std::unique_ptr<CModelRenderer> renderer_;
};

TEST_F(ModelRenderer, BuildsOnceUntilTheModelChanges) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed}));
  SViewState state = WallState();
  for (const double angle : {0.0, 10.0, 20.0}) {
    state.rotation.y = angle;
    Drawn(scene, state);
    EXPECT_EQ(renderer_->BuildCount(), 1);
  }
  state.mode = ERenderMode::kSolid;  // the same faces
  state.zoom = 2.0;
  Drawn(scene, state);
  EXPECT_EQ(renderer_->BuildCount(), 1);
  state.mode = ERenderMode::kWireframe;
  Drawn(scene, state);
  state.mode = ERenderMode::kTextured;
  Drawn(scene, state);
  state.mode = ERenderMode::kWireframe;
  Drawn(scene, state);
  EXPECT_EQ(renderer_->BuildCount(), 2);

  scene.model.SetVertexPosition(0, {-500, -500, 0});
  Drawn(scene, state);
  EXPECT_EQ(renderer_->BuildCount(), 3);
}

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
  context_ = CMemoryGlContext::Create(kSide, kSide, nullptr);
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

TEST_F(ModelRenderer, ManyVerticesArePoints) {
  SScene scene;
  scene.AddWall(scene.Texture({kRed}));
  SViewState state = WallState();
  state.mode = ERenderMode::kVertices;
  state.spherical_markers = true;
  for (int k = 0; k < CModelRenderer::kMostSphericalMarkers; ++k)
    scene.model.AddVertex({0, 0, 0});
  const SImage spheres_wanted = Drawn(scene, state);
  state.spherical_markers = false;
  EXPECT_EQ(Drawn(scene, state).rgba, spheres_wanted.rgba);
  EXPECT_NE(At(spheres_wanted, 0.5, 0.5), state.background);
}

TEST_F(ModelRenderer, LargeModelsAreDrawnWhole) {
  SScene scene;
  CBinTexture* red = scene.Texture({kRed});
  constexpr int kTiles = 100;  // more than one portion of vertices
  for (int32_t row = 0; row < kTiles; ++row) {
    for (int32_t column = 0; column < kTiles; ++column) {
      const SPoint a = {column * 10 - 500, row * 10 - 500, 0};
      scene.AddQuad({a, {a.x + 10, a.y, 0}, {a.x + 10, a.y + 10, 0}, {a.x, a.y + 10, 0}}, red);
    }
  }
  SViewState state = WallState();
  state.extent = 500;
  const SImage image = Drawn(scene, state);
  for (const double across : {0.0, 0.3, 0.7, 1.0}) {
    for (const double down : {0.0, 0.3, 0.7, 1.0})
      EXPECT_EQ(Pure(At(image, across, down)), kRed);
  }
}

TEST(MemoryGlContext, TopRowComesFirst) {
  SError error;
  const auto context = CMemoryGlContext::Create(3, 5, &error);
  ASSERT_NE(context, nullptr) << error.what;
  glClearColor(1, 0, 0, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  glEnable(GL_SCISSOR_TEST);
  glScissor(0, 4, 1, 1);
  glClearColor(0, 0, 1, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  const std::vector<uint8_t> pixels = context->ReadPixels();
  ASSERT_EQ(pixels.size(), 3U * 5U * 4U);
  for (size_t k = 0; k < 15; ++k)
    EXPECT_EQ(pixels[k * 4 + 2], k == 0 ? 255 : 0) << k;
}

TEST(MemoryGlContext, SaysWhatIsTooLarge) {
  SError error;
  EXPECT_EQ(CMemoryGlContext::Create(1 << 20, 8, &error), nullptr);
  EXPECT_NE(error.what.find("1048576 x 8"), std::string::npos) << error.what;
}

}  // namespace
}  // namespace veldra::testing
