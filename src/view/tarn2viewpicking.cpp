#include <cmath>

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
