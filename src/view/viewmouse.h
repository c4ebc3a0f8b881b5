#pragma once

#include <QObject>
#include <QPointF>
#include <memory>
#include <optional>

#include "view/mousegestures.h"

class QKeyEvent;
class QMouseEvent;

namespace veldra {

class C3DView;

/// A press of the left button without Shift, Ctrl and Alt: it may take hold of what is under it.
bool IsPlainPress(const QMouseEvent& press);

/// What a drag holds instead of moving the view: a rubber band, vertices, a point of a truck. It begins with the first
/// MoveTo and ends with Drop or Cancel, or without either where what it holds is gone.
class CViewHold {
 public:
  CViewHold() = default;
  virtual ~CViewHold() = default;
  CViewHold(const CViewHold&) = delete;
  CViewHold& operator=(const CViewHold&) = delete;

  /// The pointer is at TO, in the widget.
  virtual void MoveTo(const QPointF& to) = 0;
  /// The button is released, while MODIFIERS are held.
  virtual void Drop(Qt::KeyboardModifiers modifiers) = 0;
  /// Escape: everything as it was.
  virtual void Cancel() = 0;
  /// A KEY of the keyboard goes down or up meanwhile.
  virtual void TakeKey(int /*key*/, bool /*is_down*/) {}
};

/// What the mouse does in a 3D view: drags turn, move and zoom it as the mouse scheme says, or move what the view gives
/// into its hand. One gesture at a time, from the press of a button to its release; Escape gives up what it holds.
class CViewMouse : public QObject {
 public:
  explicit CViewMouse(C3DView& view);
  ~CViewMouse() override;

  void Press(const QMouseEvent& event);
  void Move(const QMouseEvent& event);
  void Release(const QMouseEvent& event);
  /// Something is being moved.
  bool IsHolding() const { return hold_ != nullptr && !is_click_; }
  /// What is held may be gone: it stays where it is.
  void LetGo();

 protected:
  /// The view's keys while something is held.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  EMouseDrag DragFor(const QMouseEvent& event) const;
  void MoveView(const QPointF& by);
  void TakeKey(const QKeyEvent& event, bool is_down);

  C3DView& view_;
  std::optional<Qt::MouseButton> button_;  ///< of the gesture; none while there is none
  EMouseDrag drag_ = EMouseDrag::kNone;
  bool is_click_ = true;  ///< the pointer has not moved yet
  QPointF pressed_at_;
  QPointF last_;
  std::unique_ptr<CViewHold> hold_;
};

}  // namespace veldra
