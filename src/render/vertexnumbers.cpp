#include "render/vertexnumbers.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "render/glstate.h"
#include "render/viewmarkers.h"

namespace veldra {

namespace {

// In pixels of a plain screen.
constexpr double kRight = 5.0;  ///< of the vertex
constexpr double kAbove = 14.0;
constexpr double kRoomAbove = 16.0;
constexpr double kRoomBeside = 6.0;
/// What lies in a surface is not hidden by it.
constexpr double kDepthSlack = 1e-4;

/// The depth of the triangle A, B, C at AT, or nothing beside it. Depths are linear in the window.
std::optional<double> DepthAt(const SScreenPoint& at, const SScreenPoint& a, const SScreenPoint& b,
                              const SScreenPoint& c) {
  const auto twice_area = [](const SScreenPoint& p, const SScreenPoint& q, const SScreenPoint& r) {
    return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
  };
  const double whole = twice_area(a, b, c);
  const double share_a = twice_area(at, b, c) / whole;
  const double share_b = twice_area(a, at, c) / whole;
  const double share_c = 1.0 - share_a - share_b;
  if (!(share_a >= 0.0 && share_b >= 0.0 && share_c >= 0.0)) return std::nullopt;
  return share_a * a.depth + share_b * b.depth + share_c * c.depth;
}

}  // namespace

/// The window in cells, each with room for one number.
class CVertexNumbers::CCells {
 public:
  CCells(const CViewCamera& camera, int32_t vertices, double pixel_ratio) : camera_(camera) {
    const auto digits = static_cast<double>(std::to_string(std::max(0, vertices - 1)).size());
    width_ = (digits * kDigitAdvance + kRoomBeside) * pixel_ratio;
    height_ = kRoomAbove * pixel_ratio;
    columns_ = static_cast<size_t>(camera.Width() / width_) + 1;
    labels_.resize(columns_ * (static_cast<size_t>(camera.Height() / height_) + 1));
  }
  /// Takes the place of one that is farther from the viewer.
  void Add(int32_t vertex, const SScreenPoint& at) {
    const bool is_inside = at.x >= 0.0 && at.y >= 0.0 && at.x < camera_.Width() && at.y < camera_.Height();
    if (!is_inside || !(at.depth >= 0.0 && at.depth <= 1.0)) return;
    SLabel& label = labels_[Row(at.y) * columns_ + Column(at.x)];
    if (label.vertex < 0 || at.depth < label.at.depth) label = {.vertex = vertex, .at = at};
  }
  /// Takes away what lies behind the triangle A, B, C.
  void HideBehind(const SScreenPoint& a, const SScreenPoint& b, const SScreenPoint& c);
  std::vector<SLabel> Labels() const {
    std::vector<SLabel> labels = labels_;
    std::erase_if(labels, [](const SLabel& label) { return label.vertex < 0; });
    return labels;
  }

 private:
  size_t Column(double x) const { return static_cast<size_t>(std::clamp(x, 0.0, camera_.Width() - 1.0) / width_); }
  size_t Row(double y) const { return static_cast<size_t>(std::clamp(y, 0.0, camera_.Height() - 1.0) / height_); }

  const CViewCamera& camera_;
  double width_ = 1.0;
  double height_ = 1.0;
  size_t columns_ = 1;
  std::vector<SLabel> labels_;
};

void CVertexNumbers::CCells::HideBehind(const SScreenPoint& a, const SScreenPoint& b, const SScreenPoint& c) {
  const auto [left, right] = std::minmax({a.x, b.x, c.x});
  const auto [top, bottom] = std::minmax({a.y, b.y, c.y});
  if (!(right >= 0.0 && bottom >= 0.0 && left < camera_.Width() && top < camera_.Height())) return;
  for (size_t row = Row(top); row <= Row(bottom); ++row) {
    for (size_t column = Column(left); column <= Column(right); ++column) {
      SLabel& label = labels_[row * columns_ + column];
      if (label.vertex < 0) continue;
      const auto depth = DepthAt(label.at, a, b, c);
      if (depth && *depth < label.at.depth - kDepthSlack) label.vertex = -1;
    }
  }
}

void CVertexNumbers::Place(const CBinModel& model, const SViewState& state, double pixel_ratio) {
  CCells cells(*camera_, model.VertexCount(), pixel_ratio);
  std::vector<SScreenPoint> places;
  places.reserve(static_cast<size_t>(model.VertexCount()));
  for (int32_t k = 0; k < model.VertexCount(); ++k) {
    const CBinVertex& vertex = model.Vertex(k);
    places.push_back(camera_->Project(vertex.Position()));
    if (state.Shows(model, vertex)) cells.Add(k, places.back());
  }
  const auto place_of = [&](const CBinFace& face, int corner) -> const SScreenPoint& {
    return places[static_cast<size_t>(face.Corner(corner)->Index())];
  };
  for (int32_t k = 0; state.ShowsSurfaces() && k < model.FaceCount(); ++k) {
    const CBinFace& face = model.Face(k);
    if (face.IsHidden()) continue;
    for (int corner = 2; corner < face.CornerCount(); ++corner)
      cells.HideBehind(place_of(face, 0), place_of(face, corner - 1), place_of(face, corner));
  }
  shown_ = cells.Labels();
}

void CVertexNumbers::MakeStrokes(double pixel_ratio) {
  strokes_.clear();
  for (const SLabel& label : shown_) {
    // On pixels' middles, where thin lines are sharp.
    const double left = std::floor(label.at.x + kRight * pixel_ratio) + 0.5;
    const double top = std::floor(label.at.y - kAbove * pixel_ratio) + 0.5;
    AppendNumber(label.vertex, left, top, pixel_ratio, strokes_);
  }
}

void CVertexNumbers::Draw(const CBinModel& model, const SViewState& state, const CViewCamera& camera,
                          double pixel_ratio) {
  const bool is_known = model_ == model.Identity() && revision_ == model.Revision() && camera_ == camera &&
                        mode_ == state.mode && has_markers_ == state.ShowsMarkers(model) && pixel_ratio_ == pixel_ratio;
  if (!is_known) {
    model_ = model.Identity();
    revision_ = model.Revision();
    camera_ = camera;
    mode_ = state.mode;
    has_markers_ = state.ShowsMarkers(model);
    pixel_ratio_ = pixel_ratio;
    Place(model, state, pixel_ratio);
    MakeStrokes(pixel_ratio);
  }
  if (strokes_.empty()) return;
  EnterWindow(camera.Width(), camera.Height());
  glInterleavedArrays(GL_V3F, 0, strokes_.data());
  for (const auto& [width, color] : {std::pair{4.0, state.background}, {1.3, SInk::For(state.background).line}}) {
    glLineWidth(static_cast<float>(width * pixel_ratio));
    SetColor(color);
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(strokes_.size()));
  }
}

}  // namespace veldra
