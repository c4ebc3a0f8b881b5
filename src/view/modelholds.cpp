#include "view/modelholds.h"

#include <QGuiApplication>

#include "platform/text.h"
#include "render/viewgrid.h"
#include "view/tarn2view.h"

namespace veldra {

namespace {

std::optional<EAxis> AxisOf(int key) {
  switch (key) {
    case Qt::Key_X:
      return EAxis::kX;
    case Qt::Key_Y:
      return EAxis::kY;
    case Qt::Key_Z:
      return EAxis::kZ;
    default:
      return std::nullopt;
  }
}

}  // namespace

CBandHold::~CBandHold() {
  view_.ShowBand(std::nullopt);
}

void CBandHold::MoveTo(const QPointF& to) {
  to_ = to;
  view_.ShowBand(QRectF(from_, to_).normalized());
}

void CBandHold::Drop(Qt::KeyboardModifiers modifiers) {
  const EGroupKind kind = view_.PickedKind();
  const std::vector<int32_t> found = view_.PickIn(QRectF(from_, to_).normalized(), kind);
  CBinModel& model = view_.Document().Model();
  if (!modifiers.testFlag(Qt::ControlModifier)) model.SelectAll(kind, false);
  model.Select(kind, found, true);
}

CTextureHold::CTextureHold(CTarnView& view, int32_t face) : view_(view), transfer_(view.Document(), face) {}

void CTextureHold::MoveTo(const QPointF& to) {
  using EWay = CTextureTransfer::EWay;
  const std::optional<SPick> pick = view_.PickAt(to);
  if (!pick || pick->kind != EGroupKind::kFaces) return;
  const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
  const bool projects = held.testFlag(Qt::ControlModifier);
  transfer_.GiveTo(pick->index, projects                           ? EWay::kProject
                                : held.testFlag(Qt::ShiftModifier) ? EWay::kPlane
                                                                   : EWay::kFold);
}

void CTextureHold::Drop(Qt::KeyboardModifiers) {
  const auto count = static_cast<int64_t>(transfer_.GivenCount());
  if (count > 0) view_.Document().Say("Texture given to " + Counted(count, "face", "faces"));
}

void CVertexHold::MoveTo(const QPointF& to) {
  to_ = to;
  if (drag_ == nullptr) {
    step_ = std::make_unique<CStep>(view_.Document(), "Move Vertices");
    drag_ = std::make_unique<CVertexDrag>(view_.Document().Model(), view_.Camera(), vertex_, moving_,
                                          view_.Document().Settings().texture_lock != 0);
    was_modified_ = view_.Document().IsModified();
  }
  Move();
}

CVertexDrag::SPull CVertexHold::Pull() const {
  const QPointF moved = (to_ - from_) * view_.devicePixelRatioF();
  const bool snaps = QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier);
  return {.right = moved.x(),
          .down = moved.y(),
          .axis = axis_,
          .grid = snaps ? GridFor(view_.State(), view_.Camera()).spacing : 0.0};
}

void CVertexHold::Move() {
  const CVertexDrag::SPull pull = Pull();
  const SPoint offset = drag_->OffsetAt(pull);
  const bool moves = !(offset == SPoint{});
  if (moves && !has_kept_state_) {
    has_kept_state_ = true;
    view_.Document().KeepState("Move Vertices");
  }
  drag_->MoveTo(pull);
  view_.Document().Say("Moved " + Counted(static_cast<int64_t>(drag_->Count()), "vertex", "vertices") +
                       Format(" by %d, %d, %d", offset.x, offset.y, offset.z));
}

void CVertexHold::Drop(Qt::KeyboardModifiers) {
  if (!drag_->HasMoved()) view_.Document().SetModified(was_modified_);
}

void CVertexHold::Cancel() {
  drag_->PutBack();
  view_.Document().SetModified(was_modified_);
}

void CVertexHold::TakeKey(int key, bool is_down) {
  const std::optional<EAxis> axis = AxisOf(key);
  if (!axis) return;
  if (is_down) {
    axis_ = axis;
  } else if (axis_ == axis) {
    axis_.reset();
  }
  Move();
}

}  // namespace veldra
