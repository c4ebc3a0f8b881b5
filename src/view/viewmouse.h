#pragma once

#include <QObject>
#include <QPointF>
#include <QRubberBand>
#include <memory>
#include <optional>

#include "view/mousegestures.h"
#include "view/vertexdrag.h"

class QKeyEvent;
class QMouseEvent;

namespace veldra {

class CTarnView;

/// What the mouse does in a 3D view: clicks pick, drags turn, move, zoom, select by rubber band or move the selected
/// vertices. One gesture at a time, from the press of a button to its release; Escape gives up a rubber band or a move
/// of vertices.
class CViewMouse : public QObject {
 public:
  explicit CViewMouse(CTarnView& view);
  ~CViewMouse() override;

  void Press(const QMouseEvent& event);
  void Move(const QMouseEvent& event);
  void Release(const QMouseEvent& event);
  bool IsMovingVertices() const { return vertex_drag_ != nullptr; }
  /// The vertices that are being moved may be gone: they stay where they are.
  void LetGo();

 protected:
  /// The view's keys while a rubber band or a move is under way.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  EMouseDrag DragFor(const QMouseEvent& event) const;
  std::optional<int32_t> GrabbedVertex(const QMouseEvent& event) const;
  void Start();
  void Continue(const QPointF& to);
  void Click(const QMouseEvent& event);
  void SelectInBand(bool adds);
  void MoveVertices();
  void TakeKey(const QKeyEvent& event, bool pressed);
  void Cancel();
  void End();

  CTarnView& view_;
  std::optional<Qt::MouseButton> button_;  ///< of the gesture; none while there is none
  EMouseDrag drag_ = EMouseDrag::kNone;
  bool is_click_ = true;  ///< the pointer has not moved yet
  QPointF pressed_at_;
  QPointF last_;
  std::unique_ptr<QRubberBand> band_;
  std::optional<int32_t> grabbed_;
  std::unique_ptr<CVertexDrag> vertex_drag_;
  std::optional<EAxis> axis_;  ///< whose key is held
  bool was_modified_ = false;
  bool has_kept_state_ = false;
};

}  // namespace veldra
