#include "editing/texturemapwidget.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace veldra {

namespace {

constexpr int kSide = 440;
constexpr double kHandle = 5.0;   ///< half the side of a handle
constexpr double kLabel = 14.0;   ///< the side of a corner's number
constexpr double kReach = 10.0;   ///< of the pointer around a handle
constexpr double kMargin = 14.0;  ///< room for the handles of corners at the edges

}  // namespace

CTextureMapWidget::CTextureMapWidget(QWidget* parent) : QWidget(parent) {
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMinimumSize(128, 128);
}

void CTextureMapWidget::SetTexture(const STextureImage& image) {
  const QImage upside_down(image.rgb.data(), image.size, image.size, qsizetype{3} * image.size, QImage::Format_RGB888);
  image_ = upside_down.mirrored();
  size_ = image.size;
  update();
}

void CTextureMapWidget::SetCoords(const std::vector<STexCoord>& coords) {
  coords_ = coords;
  update();
}

QSize CTextureMapWidget::sizeHint() const {
  return {kSide, kSide};
}

QRectF CTextureMapWidget::TextureRect() const {
  const double side = std::max(1.0, std::min(width(), height()) - 2 * kMargin);
  return {(width() - side) / 2, (height() - side) / 2, side, side};
}

/// Texels are squares, and a coordinate points into the middle of one.
QPointF CTextureMapWidget::PlaceOf(const STexCoord& coord) const {
  const QRectF rect = TextureRect();
  const double texel = rect.width() / size_;
  return rect.topLeft() + QPointF(coord.u * (size_ - 1) + 0.5, coord.v * (size_ - 1) + 0.5) * texel;
}

STexCoord CTextureMapWidget::CoordAt(const QPointF& place) const {
  const QRectF rect = TextureRect();
  const QPointF texels = (place - rect.topLeft()) / (rect.width() / size_) - QPointF(0.5, 0.5);
  return {texels.x() / (size_ - 1), texels.y() / (size_ - 1)};
}

STexCoord CTextureMapWidget::Placed(const STexCoord& coord) const {
  const auto place = [this](double value) {
    const double texels = size_ - 1;
    return std::clamp(is_snapping_ ? std::round(value * texels) / texels : value, 0.0, 1.0);
  };
  return {place(coord.u), place(coord.v)};
}

QPolygonF CTextureMapWidget::Outline() const {
  QPolygonF outline;
  for (const STexCoord& coord : coords_)
    outline << PlaceOf(coord);
  return outline;
}

/// Beside the handle at PLACE, on the side that is nearer to the middle: never cut off.
QRectF CTextureMapWidget::LabelAt(const QPointF& place) const {
  constexpr double kGap = kHandle + 1;
  const double x = place.x() < width() / 2.0 ? place.x() + kGap : place.x() - kGap - kLabel;
  const double y = place.y() < height() / 2.0 ? place.y() + kGap : place.y() - kGap - kLabel;
  return {x, y, kLabel, kLabel};
}

void CTextureMapWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawImage(TextureRect(), image_);
  painter.setRenderHint(QPainter::Antialiasing);
  // Light within dark can be seen on any texture.
  const QPolygonF outline = Outline();
  painter.setPen(QPen(Qt::black, 3));
  painter.drawPolygon(outline);
  painter.setPen(QPen(Qt::white, 1));
  painter.drawPolygon(outline);
  for (qsizetype k = 0; k < outline.size(); ++k) {
    const QRectF handle(outline[k] - QPointF(kHandle, kHandle), QSizeF(2 * kHandle, 2 * kHandle));
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(k == dragged_ ? QColor(255, 200, 0) : Qt::white);
    painter.drawRect(handle);
    const QRectF label = LabelAt(outline[k]);
    painter.fillRect(label, QColor(0, 0, 0, 170));
    painter.setPen(Qt::white);
    painter.drawText(label, Qt::AlignCenter, QString::number(k + 1));
  }
}

int CTextureMapWidget::CornerAt(const QPointF& place) const {
  const QPolygonF outline = Outline();
  int nearest = kNothing;
  double least = kReach;
  for (qsizetype k = 0; k < outline.size(); ++k) {
    const QPointF away = outline[k] - place;
    const double distance = std::max(std::abs(away.x()), std::abs(away.y()));
    if (distance >= least) continue;
    least = distance;
    nearest = static_cast<int>(k);
  }
  return nearest;
}

void CTextureMapWidget::mousePressEvent(QMouseEvent* event) {
  if (is_read_only_ || event->button() != Qt::LeftButton) return;
  dragged_ = CornerAt(event->position());
  if (dragged_ == kNothing && Outline().containsPoint(event->position(), Qt::OddEvenFill)) dragged_ = kWholeFace;
  grip_ = event->position();
  at_grip_ = coords_;
  update();
}

void CTextureMapWidget::mouseMoveEvent(QMouseEvent* event) {
  Point(event->position());
  if (dragged_ != kNothing) DragTo(event->position());
}

void CTextureMapWidget::mouseReleaseEvent(QMouseEvent*) {
  dragged_ = kNothing;
  update();
}

void CTextureMapWidget::DragTo(const QPointF& place) {
  const STexCoord from = CoordAt(grip_);
  const STexCoord to = CoordAt(place);
  STexCoord moved = {to.u - from.u, to.v - from.v};
  if (dragged_ == kWholeFace) {
    // The face keeps its shape: it stops as a whole where one corner reaches the edge, and snaps as a whole.
    const STexCoord first = Placed({at_grip_[0].u + moved.u, at_grip_[0].v + moved.v});
    moved = {first.u - at_grip_[0].u, first.v - at_grip_[0].v};
    for (const STexCoord& coord : at_grip_) {
      moved.u = std::clamp(moved.u, -coord.u, 1.0 - coord.u);
      moved.v = std::clamp(moved.v, -coord.v, 1.0 - coord.v);
    }
    for (size_t k = 0; k < coords_.size(); ++k)
      coords_[k] = {at_grip_[k].u + moved.u, at_grip_[k].v + moved.v};
  } else {
    const auto corner = static_cast<size_t>(dragged_);
    coords_[corner] = Placed({at_grip_[corner].u + moved.u, at_grip_[corner].v + moved.v});
  }
  update();
  emit CoordsChanged();
}

void CTextureMapWidget::Point(const QPointF& place) {
  const STexCoord coord = CoordAt(place);
  const int x = static_cast<int>(std::lround(coord.u * (size_ - 1)));
  const int y = static_cast<int>(std::lround(coord.v * (size_ - 1)));
  const bool is_over = x >= 0 && y >= 0 && x < size_ && y < size_;
  emit PointedAt(is_over ? x : -1, is_over ? y : -1);
  if (is_read_only_) return;
  const bool can_drag = CornerAt(place) != kNothing || Outline().containsPoint(place, Qt::OddEvenFill);
  setCursor(dragged_ != kNothing ? Qt::ClosedHandCursor : can_drag ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

}  // namespace veldra
