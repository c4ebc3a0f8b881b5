#include "render/highlights.h"

#include "render/glstate.h"
#include "render/vertexstream.h"
#include "render/viewmarkers.h"

namespace veldra {

namespace {

constexpr SColor kDark = {0, 0, 0};
constexpr SColor kSelected = {255, 190, 40};
constexpr SColor kCurrent = {255, 255, 255};
constexpr SColor kCurrentDash = {0, 110, 255};
constexpr GLushort kLongDashes = 0x0FFF;
constexpr GLushort kShortDashes = 0x3333;

/// Stripes upwards to the right, WIDTH of every sixteen pixels, the first at SHIFT.
std::array<GLubyte, 128> Hatch(int width, int shift) {
  std::array<GLubyte, 128> rows = {};
  for (int row = 0; row < 32; ++row) {
    for (int column = 0; column < 32; ++column) {
      const bool is_set = (column - row - shift + 64) % 16 < width;
      const auto byte = static_cast<size_t>(row * 4 + column / 8);
      if (is_set) rows[byte] = static_cast<GLubyte>(rows[byte] | (0x80 >> (column % 8)));
    }
  }
  return rows;
}

void AppendOutline(const CBinFace& face, const CModelSpace& space, std::vector<FloatPoint>& out) {
  const int count = face.CornerCount();
  for (int k = 0; k < count; ++k) {
    out.push_back(space.Place(face.Corner(k)->Position()));
    out.push_back(space.Place(face.Corner((k + 1) % count)->Position()));
  }
}

void AppendFill(const CBinFace& face, const CModelSpace& space, std::vector<FloatPoint>& out) {
  for (const int corner : {0, 1, 2})
    out.push_back(space.Place(face.Corner(corner)->Position()));
  if (face.CornerCount() < 4) return;
  for (const int corner : {0, 2, 3})
    out.push_back(space.Place(face.Corner(corner)->Position()));
}

}  // namespace

void CHighlights::Follow(const CBinModel& model, const CModelSpace& space) {
  const bool is_known =
      model_ == model.Identity() && revision_ == model.Revision() && selection_revision_ == model.SelectionRevision();
  if (is_known) return;
  model_ = model.Identity();
  revision_ = model.Revision();
  selection_revision_ = model.SelectionRevision();
  for (CDisplayList* list : {&fills_, &outlines_, &points_})
    list->Release();
  const std::vector<int32_t> faces = model.Selected(EGroupKind::kFaces);
  const std::vector<int32_t> vertices = model.Selected(EGroupKind::kVertices);
  if (!faces.empty()) {
    fills_.Record([&] {
      CVertexStream<FloatPoint> stream(GL_TRIANGLES, GL_V3F);
      for (const int32_t index : faces)
        AppendFill(model.Face(index), space, stream.Next());
    });
    outlines_.Record([&] {
      CVertexStream<FloatPoint> stream(GL_LINES, GL_V3F);
      for (const int32_t index : faces)
        AppendOutline(model.Face(index), space, stream.Next());
    });
  }
  if (!vertices.empty()) {
    points_.Record([&] {
      CVertexStream<FloatPoint> stream(GL_POINTS, GL_V3F);
      for (const int32_t index : vertices)
        stream.Next().push_back(space.Place(model.Vertex(index).Position()));
    });
  }
  ++build_count_;
}

void CHighlights::Call(const CDisplayList& list) {
  list.Call();
  ++call_count_;
}

void CHighlights::DrawSelectedFaces(const SViewState& state, float ratio) {
  if (!fills_.IsRecorded()) return;
  if (state.mode != ERenderMode::kVertices) {
    static const std::array<GLubyte, 128> dark_stripes = Hatch(2, 2);
    static const std::array<GLubyte, 128> light_stripes = Hatch(2, 0);
    glEnable(GL_POLYGON_STIPPLE);
    for (const auto& [stripes, color] : {std::pair{&dark_stripes, kDark}, {&light_stripes, kSelected}}) {
      glPolygonStipple(stripes->data());
      SetColor(color);
      Call(fills_);
    }
    glDisable(GL_POLYGON_STIPPLE);
  }
  for (const auto& [width, color] : {std::pair{3.5F, kDark}, {1.5F, kSelected}}) {
    glLineWidth(width * ratio);
    SetColor(color);
    Call(outlines_);
  }
}

void CHighlights::DrawSelectedVertices(float ratio) {
  if (!points_.IsRecorded()) return;
  // Nearer by a hair, so that steep faces beside a vertex do not cut its ring in half.
  glDepthRange(0.0, 0.997);
  for (const auto& [size, color] : {std::pair{11.0F, kDark}, {8.0F, kSelected}, {4.0F, kDark}}) {
    glPointSize(size * ratio);
    SetColor(color);
    Call(points_);
  }
  glDepthRange(0.0, 1.0);
}

void CHighlights::DrawCurrentFace(const CBinFace& face, const CModelSpace& space, float ratio) {
  std::vector<FloatPoint> outline;
  for (const CBinVertex* corner : face.Corners())
    outline.push_back(space.Place(corner->Position()));
  glInterleavedArrays(GL_V3F, 0, outline.data());
  const auto draw = [&](float width, const SColor& color, GLushort dashes) {
    glLineWidth(width * ratio);
    SetColor(color);
    glLineStipple(static_cast<GLint>(ratio), dashes);
    glDrawArrays(GL_LINE_LOOP, 0, static_cast<GLsizei>(outline.size()));
    ++call_count_;
  };
  glEnable(GL_LINE_STIPPLE);
  glDepthFunc(GL_GREATER);
  draw(1.5F, kDark, 0xFFFF);
  draw(1.5F, kCurrent, kShortDashes);
  glDepthFunc(GL_LEQUAL);
  draw(6.0F, kDark, 0xFFFF);
  draw(3.5F, kCurrent, 0xFFFF);
  draw(3.5F, kCurrentDash, kLongDashes);
  glDisable(GL_LINE_STIPPLE);
}

void CHighlights::Draw(const CBinModel& model, const CModelSpace& space, const SViewState& state, const SMarks& marks,
                       double pixel_ratio) {
  call_count_ = 0;
  if (state.only_3d) return;
  const auto ratio = static_cast<float>(pixel_ratio);
  glDepthMask(GL_FALSE);
  if (marks.selection) {
    Follow(model, space);
    DrawSelectedFaces(state, ratio);
    DrawSelectedVertices(ratio);
  }
  if (marks.face >= 0 && marks.face < model.FaceCount() && !model.Face(marks.face).IsHidden())
    DrawCurrentFace(model.Face(marks.face), space, ratio);
  glDepthMask(GL_TRUE);
}

void CHighlights::DrawOverlay(const CBinModel& model, const CViewCamera& camera, const SMarks& marks,
                              double pixel_ratio) {
  const auto is_there = [&](int32_t vertex) { return vertex >= 0 && vertex < model.VertexCount(); };
  EnterWindow(camera.Width(), camera.Height());
  int number = 0;
  for (const int32_t vertex : marks.tagged) {
    ++number;
    if (!is_there(vertex)) continue;
    DrawNumber(camera.Project(model.Vertex(vertex).Position()), number, pixel_ratio);
    ++call_count_;
  }
  if (!is_there(marks.vertex)) return;
  DrawCrossHairs(camera.Project(model.Vertex(marks.vertex).Position()), pixel_ratio);
  ++call_count_;
}

void CHighlights::Forget() {
  for (CDisplayList* list : {&fills_, &outlines_, &points_})
    list->Forget();
  model_ = 0;
}

}  // namespace veldra
