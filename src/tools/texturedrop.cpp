#include "tools/texturedrop.h"

#include <QDropEvent>

#include "editing/texturetransfer.h"

namespace veldra {

void CTextureDrop::Follow(CTarnView* view) {
  if (watched_ != nullptr) watched_->removeEventFilter(this);
  view_ = view;
  watched_ = view;
  if (view == nullptr) return;
  view->setAcceptDrops(true);
  view->installEventFilter(this);
}

bool CTextureDrop::eventFilter(QObject* watched, QEvent* event) {
  const bool is_drag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
  if (watched != watched_ || !(is_drag || event->type() == QEvent::Drop)) return QObject::eventFilter(watched, event);
  auto& drop = static_cast<QDropEvent&>(*event);
  if (drop.source() != &list_ || view_->Document().IsReadOnly()) return QObject::eventFilter(watched, event);
  drop.setDropAction(Qt::CopyAction);
  drop.accept();
  if (!is_drag) Drop(drop.position());
  return true;
}

void CTextureDrop::Drop(const QPointF& at) {
  const std::optional<SPick> pick = view_->PickAt(at);
  if (!pick || pick->kind != EGroupKind::kFaces) return;
  const CStep step(view_->Document(), "Assign Texture");
  CBinTexture* const texture = texture_();
  if (texture == nullptr) return;
  CBinModel& model = view_->Document().Model();
  const bool is_selected = model.Face(pick->index).IsSelected();
  const std::vector<int32_t> faces =
      is_selected ? model.Selected(EGroupKind::kFaces) : std::vector<int32_t>{pick->index};
  AssignTexture(view_->Document(), faces, *texture);
}

}  // namespace veldra
