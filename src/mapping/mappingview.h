#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <optional>

#include "mapping/mappingkeys.h"
#include "mapping/mappingsession.h"

namespace veldra {

/// A texture with the faces of a session on it, to be moved with the mouse.
///
/// A click selects what is under it, with Ctrl or Shift with what was selected before; a drag moves what is selected
/// when it begins on it, and selects by rubber band elsewhere. While dragging Shift keeps to one direction, Ctrl lets
/// nothing snap, and Escape takes it back. The wheel zooms to the pointer, the middle button moves the picture. The
/// arrow keys move by texels, with Shift by eight.
class CMappingView : public QWidget {
  Q_OBJECT

 public:
  explicit CMappingView(CMappingSession& session, QWidget* parent = nullptr);
  /// The session shows something else.
  void Refresh();
  /// The whole texture.
  void Fit();
  void ZoomBy(double factor, const QPointF& at);
  /// The model's other faces on the texture are seen as well.
  bool ShowsOthers() const { return shows_others_; }
  void ShowOthers(bool shows);
  bool SnapsToCorners() const { return snaps_to_corners_; }
  void SetSnapToCorners(bool snaps) { snaps_to_corners_ = snaps; }

  /// Where AT is on the widget, and the other way round.
  QPointF PlaceOf(const STexel& at) const;
  STexel TexelAt(const QPointF& place) const;
  /// Pixels a texel.
  double Zoom() const { return zoom_; }
  QPointF Origin() const { return origin_; }

  /// A guide in the hand over AT, in the widget, and where it is let go; outside the widget it is gone.
  void HoldGuide(bool is_upright, const QPoint& at);
  void DropGuide();
  void GiveUpGuide();

  QSize sizeHint() const override { return {520, 520}; }
  QSize minimumSizeHint() const override { return {120, 120}; }

 signals:
  /// Zoom, place of the texture or guides.
  void ScaleChanged();
  /// The pointer is over it, in texels.
  void PointedAt(const STexel& at);
  void MenuWanted(const QPoint& at);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  enum class EHold { kNone, kPan, kBand, kDrag, kGuide, kPivot };
  struct SGuide {
    bool is_upright = false;
    double place = 0.0;
  };

  // --- Painting
  QRectF TextureRect() const;
  void PaintBase();
  void PaintGrid(QPainter& painter) const;
  void PaintFaces(QPainter& painter) const;
  void PaintPoints(QPainter& painter) const;
  void PaintGuides(QPainter& painter) const;
  void PaintPivot(QPainter& painter) const;
  void ForgetBase();
  void KeepInSight();

  // --- Mouse
  double Reach() const;
  void Press(const QMouseEvent& event);
  bool TakeSelected(const QMouseEvent& event);
  bool TakeGuide(const QPointF& place);
  bool TakePoint(const QPointF& place, ESelect how);
  bool TakeFace(const QPointF& place, ESelect how);
  void BeginDrag();
  void DragTo(const QPointF& place, Qt::KeyboardModifiers modifiers);
  void SelectInBand(ESelect how);
  void SelectFaceAt(const QPointF& place, ESelect how);
  void Release(const QMouseEvent& event);
  void LetGo();
  void PointAt(const QPointF& place);
  bool IsOwnKey(const QKeyEvent& event) const;
  bool TakeKey(const QKeyEvent& event);
  void Do(EMappingKey command);

  CMappingSession& session_;
  CMappingKeys keys_;
  QImage image_;
  uint64_t image_id_ = 0;
  QPixmap base_;  ///< what stays the same during a drag
  double zoom_ = 1.0;
  QPointF origin_;  ///< of the texture's upper left corner
  bool is_fitted_ = true;
  bool shows_others_ = true;
  bool snaps_to_corners_ = false;

  EHold hold_ = EHold::kNone;
  QPointF pressed_at_;
  QPointF last_;
  bool is_click_ = true;  ///< the pointer has not moved yet
  bool selects_on_release_ = false;
  std::optional<STexel> grabbed_;
  STexelRect start_bounds_;
  Texels staying_;
  SGuide guide_;
  std::optional<SGuide> taken_guide_;  ///< where the one in the hand stood before
};

}  // namespace veldra
