#include <algorithm>
#include <cmath>

#include "model/facedraft.h"
#include "model/flatten.h"
#include "platform/numbers.h"
#include "view/tarn2view.h"

namespace veldra {

SUnitNormal CTarnView::ToViewer() const {
  const SBounds& bounds = document_->Model().Bounds();
  const auto middle = [](int32_t low, int32_t high) {
    return static_cast<int32_t>((int64_t{low} + int64_t{high}) / 2);
  };
  const auto [x, y, z] = Camera().TowardViewer(
      {middle(bounds.min.x, bounds.max.x), middle(bounds.min.y, bounds.max.y), middle(bounds.min.z, bounds.max.z)});
  const double length = Length({x, y, z});
  return length > 0.0 ? SUnitNormal{x / length, y / length, z / length} : SUnitNormal{0, 0, 1};
}

SPoint CTarnView::MiddleOfView() const {
  const CViewCamera camera = Camera();
  const double side = std::min(camera.Width(), camera.Height());
  const Vector3& center = State().center;
  const Vector3 middle = center + camera.Movement(center, -State().pan_x * side, State().pan_y * side);
  return {Truncate(std::round(middle[0])), Truncate(std::round(middle[1])), Truncate(std::round(middle[2]))};
}

std::optional<SBounds> CTarnView::BoundsOfSelection() const {
  const CBinModel& model = document_->Model();
  std::vector<int32_t> faces = model.Selected(EGroupKind::kFaces);
  const std::vector<int32_t> vertices = model.Selected(EGroupKind::kVertices);
  if (faces.empty() && vertices.empty() && cursor_.Face() >= 0) faces.push_back(cursor_.Face());
  auto bounds = model.BoundsOfFaces(faces);
  if (const auto more = model.BoundsOfVertices(vertices); more && bounds) {
    bounds->min = {std::min(bounds->min.x, more->min.x), std::min(bounds->min.y, more->min.y),
                   std::min(bounds->min.z, more->min.z)};
    bounds->max = {std::max(bounds->max.x, more->max.x), std::max(bounds->max.y, more->max.y),
                   std::max(bounds->max.z, more->max.z)};
  } else if (more) {
    bounds = more;
  }
  return bounds;
}

void CTarnView::ZoomToSelection() {
  const auto bounds = BoundsOfSelection();
  if (!bounds) return;
  MutableState().ZoomToFit(*bounds);
  Redraw();
}

void CTarnView::BringSelectionIntoSight() {
  if (const CBinFace* face = cursor_.FaceObject(); face != nullptr && face->IsSelected())
    BringIntoSight(MutableState(), document_->Model(), *face, width(), height());
  const auto bounds = BoundsOfSelection();
  if (bounds && !IsInSight(Camera(), *bounds)) MutableState().ZoomToFit(*bounds);
  Redraw();
}

std::optional<SPick> CTarnView::PickAt(const QPointF& position) {
  if (document_->Model().IsBusy()) return std::nullopt;
  const double ratio = devicePixelRatioF();
  const int side = CModelPicker::SidePixels(ratio);
  std::optional<SPick> found;
  DrawAside(side, side, [&] {
    found = picker_.Pick(document_->Model(), State(), Camera(), ratio, static_cast<int>(position.x() * ratio),
                         static_cast<int>(position.y() * ratio));
  });
  return found;
}

std::optional<SPoint> CTarnView::PointAt(const QPointF& position) {
  constexpr double kCornerReach = 7.0;
  const CBinModel& model = document_->Model();
  const std::optional<SPick> pick = PickAt(position);
  if (!pick) return std::nullopt;
  if (pick->kind == EGroupKind::kVertices) return model.Vertex(pick->index).Position();
  const CBinFace& face = model.Face(pick->index);
  const SPoint& corner = NearestCorner(face, position).Position();
  const std::optional<SPlane> plane = PlaneOf(face);
  const double ratio = devicePixelRatioF();
  if (!plane || PixelsTo(corner, position) <= kCornerReach * ratio) return corner;
  // As deep as the corner, and from there toward the viewer or away until the face is met.
  const CViewCamera camera = Camera();
  const SScreenPoint seen = camera.Project(corner);
  const Vector3 beside = ToVector(corner) + camera.Movement(ToVector(corner), position.x() * ratio - seen.x,
                                                            position.y() * ratio - seen.y);
  const Vector3 toward = camera.TowardViewer(facedraft::Nearest(beside));
  const double slope = Dot(toward, plane->normal);
  if (std::abs(slope) < 1e-6 * Length(toward)) return corner;
  return facedraft::Nearest(beside + Dot(plane->point - beside, plane->normal) / slope * toward);
}

std::vector<int32_t> CTarnView::PickIn(const QRectF& rectangle, EGroupKind kind) {
  const double ratio = devicePixelRatioF();
  const QRectF inside = rectangle.intersected(QRectF(rect()));
  const SPixels pixels = {.left = static_cast<int>(inside.left() * ratio),
                          .top = static_cast<int>(inside.top() * ratio),
                          .right = static_cast<int>(std::ceil(inside.right() * ratio)),
                          .bottom = static_cast<int>(std::ceil(inside.bottom() * ratio))};
  std::vector<int32_t> found;
  if (document_->Model().IsBusy() || pixels.Width() < 1 || pixels.Height() < 1) return found;
  DrawAside(pixels.Width(), pixels.Height(),
            [&] { found = picker_.PickRectangle(document_->Model(), State(), Camera(), kind, pixels); });
  return found;
}

void CTarnView::Choose(const SPick& pick, bool toggle) {
  CBinModel& model = document_->Model();
  const bool is_face = pick.kind == EGroupKind::kFaces;
  is_choosing_ = true;
  if (is_face) {
    cursor_.SetFace(pick.index);
  } else {
    cursor_.SetVertex(pick.index);
  }
  is_choosing_ = false;
  if (!toggle) return;
  const bool was_selected = is_face ? model.Face(pick.index).IsSelected() : model.Vertex(pick.index).IsSelected();
  model.Select(pick.kind, std::span(&pick.index, 1), !was_selected);
}

void CTarnView::OfferMenu(const QPointF& position) {
  const std::optional<SPick> pick = PickAt(position);
  if (pick) Choose(*pick, false);
  emit MenuWanted(pick ? pick->kind : EGroupKind::kFaces, mapToGlobal(position).toPoint());
}

}  // namespace veldra
