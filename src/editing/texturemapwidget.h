#pragma once

#include <QImage>
#include <QWidget>
#include <vector>

#include "model/helperclasses.h"

namespace veldra {

/// A texture with the corners of a face on it. A corner is dragged by its handle, the whole face from within. The first
/// row of the texture's file is on top, v 0.
class CTextureMapWidget : public QWidget {
  Q_OBJECT

 public:
  explicit CTextureMapWidget(QWidget* parent = nullptr);
  void SetTexture(const STextureImage& image);
  /// 3 or 4.
  void SetCoords(const std::vector<STexCoord>& coords);
  const std::vector<STexCoord>& Coords() const { return coords_; }
  /// Dragged corners are put on the nearest texel.
  void SetSnapping(bool is_snapping) { is_snapping_ = is_snapping; }
  /// Shows only; nothing can be dragged.
  void SetReadOnly(bool is_read_only) { is_read_only_ = is_read_only; }
  /// Where COORD is on the widget.
  QPointF PlaceOf(const STexCoord& coord) const;

  QSize sizeHint() const override;

 signals:
  void CoordsChanged();
  /// The pointer is over this texel, counted from the top left; (-1, -1) when it is over none.
  void PointedAt(int x, int y);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  static constexpr int kNothing = -1;
  static constexpr int kWholeFace = -2;

  QRectF TextureRect() const;
  QPolygonF Outline() const;
  QRectF LabelAt(const QPointF& place) const;
  int CornerAt(const QPointF& place) const;
  /// The texture coordinate at PLACE, which may lie outside 0 to 1.
  STexCoord CoordAt(const QPointF& place) const;
  STexCoord Placed(const STexCoord& coord) const;
  void DragTo(const QPointF& place);
  void Point(const QPointF& place);

  QImage image_;
  int32_t size_ = 1;
  std::vector<STexCoord> coords_;
  bool is_snapping_ = true;
  bool is_read_only_ = false;
  int dragged_ = kNothing;  ///< a corner, kWholeFace or kNothing
  QPointF grip_;            ///< where the drag began
  std::vector<STexCoord> at_grip_;
};

}  // namespace veldra
