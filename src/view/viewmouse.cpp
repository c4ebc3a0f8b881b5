#include "view/viewmouse.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <cmath>

#include "view/tarn2view.h"

namespace veldra {

namespace {

/// A press that moves no farther is a click, in pixels.
constexpr double kClickReach = 3.0;
constexpr double kDegreesPerPixel = 0.4;
constexpr double kZoomPerPixel = 1.01;

std::optional<EMouseButton> ButtonOf(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return EMouseButton::kLeft;
    case Qt::MiddleButton:
      return EMouseButton::kMiddle;
    case Qt::RightButton:
      return EMouseButton::kRight;
    default:
      return std::nullopt;
  }
}

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

CViewMouse::CViewMouse(CTarnView& view) : view_(view) {}

CViewMouse::~CViewMouse() = default;

EMouseDrag CViewMouse::DragFor(const QMouseEvent& event) const {
  const std::optional<EMouseButton> button = ButtonOf(event.button());
  if (!button) return EMouseDrag::kNone;
  const SModifiers modifiers = {.shift = event.modifiers().testFlag(Qt::ShiftModifier),
                                .ctrl = event.modifiers().testFlag(Qt::ControlModifier),
                                .alt = event.modifiers().testFlag(Qt::AltModifier)};
  return DragOf(MouseScheme(view_.Document().Settings().mouse_scheme), *button, modifiers);
}

/// The selected vertex under a plain press of the left button.
std::optional<int32_t> CViewMouse::GrabbedVertex(const QMouseEvent& event) const {
  const CBinModel& model = view_.Document().Model();
  const bool is_plain = event.button() == Qt::LeftButton &&
                        (event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)) == 0;
  if (!is_plain || view_.Document().IsReadOnly() || model.SelectedCount(EGroupKind::kVertices) == 0)
    return std::nullopt;
  const std::optional<SPick> pick = view_.PickAt(event.position());
  if (!pick || pick->kind != EGroupKind::kVertices || !model.Vertex(pick->index).IsSelected()) return std::nullopt;
  return pick->index;
}

void CViewMouse::Press(const QMouseEvent& event) {
  if (button_) return;
  button_ = event.button();
  drag_ = DragFor(event);
  is_click_ = true;
  pressed_at_ = last_ = event.position();
  grabbed_ = GrabbedVertex(event);
}

void CViewMouse::Move(const QMouseEvent& event) {
  if (!button_ || !event.buttons().testFlag(*button_)) return;
  const QPointF moved = event.position() - pressed_at_;
  if (is_click_ && std::hypot(moved.x(), moved.y()) <= kClickReach) return;
  if (is_click_) Start();
  is_click_ = false;
  Continue(event.position());
}

void CViewMouse::Start() {
  if (grabbed_) {
    view_.HoldMiddle();
    vertex_drag_ = std::make_unique<CVertexDrag>(view_.Document().Model(), view_.Camera(), *grabbed_);
    was_modified_ = view_.Document().IsModified();
    has_kept_state_ = false;
  } else if (drag_ == EMouseDrag::kBand) {
    band_ = std::make_unique<QRubberBand>(QRubberBand::Rectangle, &view_);
    band_->show();
  }
  // The filter that is installed last is asked first.
  if (vertex_drag_ || band_) view_.installEventFilter(this);
}

void CViewMouse::Continue(const QPointF& to) {
  const QPointF moved = to - last_;
  last_ = to;
  if (vertex_drag_) {
    MoveVertices();
  } else if (band_) {
    band_->setGeometry(QRectF(pressed_at_, to).normalized().toRect());
  } else if (grabbed_) {
    return;  // given up
  } else if (drag_ == EMouseDrag::kTurn) {
    view_.Turn({.screen_x = moved.y() * kDegreesPerPixel, .model_y = moved.x() * kDegreesPerPixel});
  } else if (drag_ == EMouseDrag::kPan) {
    view_.Pan(moved);
  } else if (drag_ == EMouseDrag::kZoom) {
    view_.ZoomBy(std::pow(kZoomPerPixel, moved.x() - moved.y()), pressed_at_);
  }
}

void CViewMouse::MoveVertices() {
  const double ratio = view_.devicePixelRatioF();
  const QPointF moved = (last_ - pressed_at_) * ratio;
  const bool moves = !(vertex_drag_->OffsetAt(moved.x(), moved.y(), axis_) == SPoint{});
  if (moves && !has_kept_state_) {
    has_kept_state_ = true;
    view_.Document().KeepState("Move Vertices");
  }
  vertex_drag_->MoveTo(moved.x(), moved.y(), axis_);
}

void CViewMouse::Release(const QMouseEvent& event) {
  if (!button_ || event.button() != *button_) return;
  if (is_click_ && event.button() == Qt::LeftButton) Click(event);
  const bool wants_menu = is_click_ && event.button() == Qt::RightButton;
  if (band_) SelectInBand(event.modifiers().testFlag(Qt::ControlModifier));
  if (vertex_drag_ && !vertex_drag_->HasMoved()) view_.Document().SetModified(was_modified_);
  End();
  button_.reset();
  if (wants_menu) view_.OfferMenu(event.position());
}

void CViewMouse::Click(const QMouseEvent& event) {
  const std::optional<SPick> pick = view_.PickAt(event.position());
  if (pick) view_.Choose(*pick, event.modifiers().testFlag(Qt::ControlModifier));
}

void CViewMouse::SelectInBand(bool adds) {
  const EGroupKind kind = view_.PickedKind();
  const std::vector<int32_t> found = view_.PickIn(QRectF(pressed_at_, last_).normalized(), kind);
  CBinModel& model = view_.Document().Model();
  if (!adds) model.SelectAll(kind, false);
  model.Select(kind, found, true);
}

// --- Keys meanwhile --------------------------------------------------------------------------------------------------

bool CViewMouse::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      event->accept();
      return true;
    case QEvent::KeyPress:
      TakeKey(static_cast<const QKeyEvent&>(*event), true);
      return true;
    case QEvent::KeyRelease:
      TakeKey(static_cast<const QKeyEvent&>(*event), false);
      return true;
    default:
      return QObject::eventFilter(watched, event);
  }
}

void CViewMouse::TakeKey(const QKeyEvent& event, bool pressed) {
  if (event.isAutoRepeat()) return;
  if (pressed && event.key() == Qt::Key_Escape) {
    Cancel();
    return;
  }
  const std::optional<EAxis> axis = AxisOf(event.key());
  if (!axis || !vertex_drag_) return;
  if (pressed) {
    axis_ = axis;
  } else if (axis_ == axis) {
    axis_.reset();
  }
  MoveVertices();
}

void CViewMouse::Cancel() {
  if (vertex_drag_) {
    vertex_drag_->PutBack();
    view_.Document().SetModified(was_modified_);
  }
  drag_ = EMouseDrag::kNone;
  End();
}

void CViewMouse::LetGo() {
  if (vertex_drag_) End();
}

void CViewMouse::End() {
  view_.removeEventFilter(this);
  band_.reset();
  vertex_drag_.reset();
  axis_.reset();
}

}  // namespace veldra
