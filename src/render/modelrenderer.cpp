#include "render/modelrenderer.h"

#include <array>

#include "render/geometrylists.h"
#include "render/glstate.h"
#include "render/modeltextures.h"
#include "render/vertexnumbers.h"
#include "render/viewcamera.h"
#include "render/viewgrid.h"
#include "render/viewmarkers.h"

namespace veldra {

namespace {

/// What faces without a texture of their own, and all faces of the solid mode, look like.
constexpr SColor kPlainColor = {178, 182, 190};
constexpr SColor kTexturedColor = {255, 255, 255};
/// The back of a face, in parts of its front.
constexpr float kBackside = 0.45F;
constexpr std::array<float, 4> kNoLight = {0.0F, 0.0F, 0.0F, 1.0F};

constexpr GLenum kShineCapabilities[] = {GL_TEXTURE_2D, GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T, GL_BLEND};

void ClearTo(const SColor& color) {
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glClearColor(float(color.red) / 255.0F, float(color.green) / 255.0F, float(color.blue) / 255.0F, 1.0F);
  glClearDepth(1.0);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  // Transparent texels must not make holes in the window.
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
}

void SetMaterial(const SColor& color) {
  const std::array<float, 4> front = {float(color.red) / 255.0F, float(color.green) / 255.0F,
                                      float(color.blue) / 255.0F, 1.0F};
  const std::array<float, 4> back = {front[0] * kBackside, front[1] * kBackside, front[2] * kBackside, 1.0F};
  glMaterialfv(GL_FRONT, GL_AMBIENT_AND_DIFFUSE, front.data());
  glMaterialfv(GL_BACK, GL_AMBIENT_AND_DIFFUSE, back.data());
}

/// White, whatever shines on it.
void SetGlowingMaterial() {
  constexpr std::array<float, 4> kWhite = {1.0F, 1.0F, 1.0F, 1.0F};
  SetMaterial({});
  glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, kWhite.data());
}

void PlaceLight(GLenum light, const std::array<float, 4>& direction, float strength) {
  const std::array<float, 4> color = {strength, strength, strength, 1.0F};
  glLightfv(light, GL_POSITION, direction.data());
  glLightfv(light, GL_AMBIENT, kNoLight.data());
  glLightfv(light, GL_DIFFUSE, color.data());
  glEnable(light);
}

/// A light over the viewer's right shoulder and a weak one from the left, fixed to the viewer, and so much from all
/// sides that nothing is black.
void SetLight() {
  constexpr std::array<float, 4> kAmbient = {0.44F, 0.44F, 0.44F, 1.0F};
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  PlaceLight(GL_LIGHT0, {0.45F, 0.7F, 1.0F, 0.0F}, 0.6F);
  PlaceLight(GL_LIGHT1, {-1.0F, 0.1F, 0.6F, 0.0F}, 0.18F);
  glPopMatrix();
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, kAmbient.data());
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_TRUE);
  glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, kNoLight.data());
  glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, kNoLight.data());
  glEnable(GL_LIGHTING);
}

}  // namespace

bool HasTexture(const SBatchList& batch) {
  return batch.texture != nullptr && batch.look != EFaceLook::kUntextured;
}

struct CModelRenderer::SImpl {
  CGeometryLists lists;
  CModelTextures textures;
  CHighlights highlights;
  CVertexNumbers numbers;
  int call_count = 0;
  GLuint shine = 0;

  ~SImpl() {
    if (shine != 0) glDeleteTextures(1, &shine);
  }

  void Call(const CDisplayList& list);
  void DrawBesides(const CBinModel& model, const SViewState& state, const CViewCamera& camera, double pixel_ratio);
  void DrawModel(const CBinModel& model, const SViewState& state, const SFrame& frame);
  void DrawFaces(const CBinModel& model, const SViewState& state, double seconds);
  void DrawBatch(const SBatchList& batch, const SViewState& state, double seconds);
  void BindTexture(const SBatchList& batch, const SViewState& state, double seconds);
  void DrawShine(const std::vector<SBatchList>& batches);
  void BindShine();
  void DrawEdges(const CBinModel& model, const SInk& ink);
  void DrawMarkers(const CBinModel& model, const SViewState& state, const SInk& ink);
};

void CModelRenderer::SImpl::Call(const CDisplayList& list) {
  list.Call();
  ++call_count;
}

void CModelRenderer::SImpl::DrawFaces(const CBinModel& model, const SViewState& state, double seconds) {
  SetLight();
  // Away from the viewer by a hair, so that what lies on a face is seen whole.
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1.0F, 1.0F);
  const std::vector<SBatchList>& batches = lists.Faces(model);
  for (const SBatchList& batch : batches)
    DrawBatch(batch, state, seconds);
  if (state.mode == ERenderMode::kTextured) DrawShine(batches);
  glDisable(GL_POLYGON_OFFSET_FILL);
  glDisable(GL_LIGHTING);
}

void CModelRenderer::SImpl::DrawBatch(const SBatchList& batch, const SViewState& state, double seconds) {
  const bool is_textured = state.mode == ERenderMode::kTextured && HasTexture(batch);
  const bool has_holes = is_textured && state.transparency && batch.look == EFaceLook::kTransparent;
  SetMaterial(is_textured ? kTexturedColor : kPlainColor);
  if (state.mode == ERenderMode::kTextured) BindTexture(batch, state, seconds);
  if (has_holes) glEnable(GL_ALPHA_TEST);
  Call(batch.list);
  glDisable(GL_ALPHA_TEST);
  glDisable(GL_TEXTURE_2D);
}

/// White where it has none. A driver that draws without graphics hardware compiles a program for each way of drawing,
/// which takes it longer than the whole first picture: so all faces are drawn in one.
void CModelRenderer::SImpl::BindTexture(const SBatchList& batch, const SViewState& state, double seconds) {
  glEnable(GL_TEXTURE_2D);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glAlphaFunc(GL_GREATER, 0.5F);
  textures.Bind(HasTexture(batch) ? FrameAt(*batch.texture, seconds) : PlainWhite(), state.high_quality);
}

/// The shiny faces once more: what they mirror is added to their colour. They are lit, though no light counts, so that
/// a part of the program that has been compiled for the others does for them, too.
void CModelRenderer::SImpl::DrawShine(const std::vector<SBatchList>& batches) {
  glPushAttrib(GL_ENABLE_BIT | GL_LIGHTING_BIT);
  for (const GLenum capability : kShineCapabilities)
    glEnable(capability);
  SetGlowingMaterial();
  glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
  glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
  glBlendFunc(GL_ONE, GL_ONE);
  BindShine();
  for (const SBatchList& batch : batches) {
    if (batch.look == EFaceLook::kShiny) Call(batch.list);
  }
  glPopAttrib();
}

void CModelRenderer::SImpl::BindShine() {
  const bool is_new = shine == 0;
  if (is_new) glGenTextures(1, &shine);
  glBindTexture(GL_TEXTURE_2D, shine);
  if (is_new) UploadShine();
}

void CModelRenderer::SImpl::DrawEdges(const CBinModel& model, const SInk& ink) {
  SetColor(ink.line);
  for (const CDisplayList& list : lists.Edges(model))
    Call(list);
}

void CModelRenderer::SImpl::DrawMarkers(const CBinModel& model, const SViewState& state, const SInk& ink) {
  if (state.spherical_markers && model.VertexCount() <= kMostSphericalMarkers) {
    SetLight();
    SetMaterial(ink.marker);
    Call(lists.Balls(model));
    glDisable(GL_LIGHTING);
    return;
  }
  SetColor(ink.marker);
  for (const CDisplayList& list : lists.Points(model))
    Call(list);
}

CModelRenderer::CModelRenderer() : impl_(std::make_unique<SImpl>()) {}
CModelRenderer::~CModelRenderer() = default;

/// What the model stands among.
void CModelRenderer::SImpl::DrawBesides(const CBinModel& model, const SViewState& state, const CViewCamera& camera,
                                        double pixel_ratio) {
  if (state.grid && !state.only_3d) DrawGrid(GridFor(state, camera), state, model.Bounds(), camera, pixel_ratio);
  glLineWidth(static_cast<float>(1.5 * pixel_ratio));
  if (state.axes) DrawAxes();
}

void CModelRenderer::SImpl::DrawModel(const CBinModel& model, const SViewState& state, const SFrame& frame) {
  const SInk ink = SInk::For(state.background);
  glPointSize(static_cast<float>(5.0 * frame.pixel_ratio));
  glLineWidth(static_cast<float>(frame.pixel_ratio));
  if (state.mode == ERenderMode::kWireframe) DrawEdges(model, ink);
  if (state.ShowsSurfaces()) DrawFaces(model, state, frame.seconds);
  if (state.ShowsSurfaces() && state.edges) DrawEdges(model, ink);
  if (state.ShowsMarkers(model)) DrawMarkers(model, state, ink);
}

void CModelRenderer::Draw(const CBinModel& model, const SViewState& state, const SFrame& frame) {
  if (frame.width <= 0 || frame.height <= 0) return;
  const CSavedGlState saved;
  StartClean();
  ClearTo(state.background);
  if (impl_->lists.Follow(model)) impl_->textures.Prune(model);
  impl_->call_count = 0;

  const CViewCamera camera(state, model.Bounds(), frame.width, frame.height);
  camera.Load();
  impl_->DrawBesides(model, state, camera, frame.pixel_ratio);
  camera.EnterSpace(impl_->lists.Space());
  impl_->DrawModel(model, state, frame);
  impl_->highlights.Draw(model, impl_->lists.Space(), state, frame.marks, frame.pixel_ratio);
  if (state.vertex_numbers && !state.only_3d) impl_->numbers.Draw(model, state, camera, frame.pixel_ratio);
  if (!state.only_3d) impl_->highlights.DrawOverlay(model, camera, frame.marks, frame.pixel_ratio);
}

void CModelRenderer::ForgetContext() {
  impl_->lists.Forget();
  impl_->textures.Forget();
  impl_->highlights.Forget();
  impl_->shine = 0;
}

int CModelRenderer::BuildCount() const {
  return impl_->lists.BuildCount();
}

int64_t CModelRenderer::HandedFaces() const {
  return impl_->lists.HandedFaces();
}

int CModelRenderer::HighlightBuildCount() const {
  return impl_->highlights.BuildCount();
}

int CModelRenderer::CallCount() const {
  return impl_->call_count + impl_->highlights.CallCount();
}

}  // namespace veldra
