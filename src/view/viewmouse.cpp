#include "view/viewmouse.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <cmath>

#include "view/view3d.h"

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

}  // namespace

bool IsPlainPress(const QMouseEvent& press) {
  return press.button() == Qt::LeftButton &&
         (press.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)) == 0;
}

CViewMouse::CViewMouse(C3DView& view) : view_(view) {}

CViewMouse::~CViewMouse() = default;

EMouseDrag CViewMouse::DragFor(const QMouseEvent& event) const {
  const std::optional<EMouseButton> button = ButtonOf(event.button());
  if (!button) return EMouseDrag::kNone;
  const SModifiers modifiers = {.shift = event.modifiers().testFlag(Qt::ShiftModifier),
                                .ctrl = event.modifiers().testFlag(Qt::ControlModifier),
                                .alt = event.modifiers().testFlag(Qt::AltModifier)};
  return DragOf(MouseScheme(view_.Settings().mouse_scheme), *button, modifiers);
}

void CViewMouse::Press(const QMouseEvent& event) {
  if (button_) return;
  button_ = event.button();
  drag_ = DragFor(event);
  is_click_ = true;
  pressed_at_ = last_ = event.position();
  hold_ = view_.Grab(event, drag_);
  if (hold_) drag_ = EMouseDrag::kNone;
}

void CViewMouse::Move(const QMouseEvent& event) {
  if (!button_ || !event.buttons().testFlag(*button_)) return;
  const QPointF moved = event.position() - pressed_at_;
  if (is_click_ && std::hypot(moved.x(), moved.y()) <= kClickReach) return;
  // The filter that is installed last is asked first.
  if (is_click_ && hold_) view_.installEventFilter(this);
  is_click_ = false;
  if (hold_) {
    hold_->MoveTo(event.position());
  } else {
    MoveView(event.position() - last_);
  }
  last_ = event.position();
}

void CViewMouse::MoveView(const QPointF& by) {
  if (drag_ == EMouseDrag::kTurn) {
    view_.Turn({.screen_x = by.y() * kDegreesPerPixel, .model_y = by.x() * kDegreesPerPixel});
  } else if (drag_ == EMouseDrag::kPan) {
    view_.Pan(by);
  } else if (drag_ == EMouseDrag::kZoom) {
    view_.ZoomBy(std::pow(kZoomPerPixel, by.x() - by.y()), pressed_at_);
  }
}

void CViewMouse::Release(const QMouseEvent& event) {
  if (!button_ || event.button() != *button_) return;
  button_.reset();
  const std::unique_ptr<CViewHold> held = std::move(hold_);
  LetGo();
  if (!is_click_) {
    if (held) held->Drop(event.modifiers());
  } else {
    view_.Click(event);
  }
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

void CViewMouse::TakeKey(const QKeyEvent& event, bool is_down) {
  if (event.isAutoRepeat() || !hold_) return;
  if (is_down && event.key() == Qt::Key_Escape) {
    hold_->Cancel();
    LetGo();
  } else {
    hold_->TakeKey(event.key(), is_down);
  }
}

void CViewMouse::LetGo() {
  view_.removeEventFilter(this);
  hold_.reset();
}

}  // namespace veldra
