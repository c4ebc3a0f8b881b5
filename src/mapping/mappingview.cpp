#include "mapping/mappingview.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace veldra {

namespace {

constexpr double kMargin = 12.0;
constexpr double kClosest = 96.0;  ///< pixels a texel
constexpr double kFarthest = 0.25;
constexpr double kGridFrom = 8.0;  ///< pixels a texel from which texels are parted by lines
constexpr double kWrapStrength = 0.28;
/// So many faces are drawn with one line an edge, without smoothing: it has to keep up with the mouse.
constexpr size_t kManyFaces = 2000;
constexpr size_t kMostPoints = 6000;
const QColor kLight(255, 255, 255);
const QColor kDark(0, 0, 0, 190);
const QColor kSelected(255, 200, 0);
const QColor kOther(120, 200, 255, 110);
const QColor kGuide(0, 190, 255);

std::vector<QLineF> Edges(const QPolygonF& outline) {
  std::vector<QLineF> edges;
  edges.reserve(static_cast<size_t>(outline.size()));
  for (qsizetype i = 0; i < outline.size(); ++i)
    edges.emplace_back(outline[i], outline[(i + 1) % outline.size()]);
  return edges;
}

void Draw(QPainter& painter, const std::vector<QLineF>& lines, const QColor& color, double width) {
  painter.setPen(QPen(color, width));
  painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

}  // namespace

CMappingView::CMappingView(CMappingSession& session, QWidget* parent)
    : QWidget(parent), session_(session), keys_(session.Settings()) {
  setObjectName("mapping");
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void CMappingView::Refresh() {
  const STextureImage* const image = session_.Texture() == nullptr ? nullptr : session_.Texture()->Image();
  const uint64_t id = image == nullptr ? 0 : image->id.Number();
  if (id != image_id_) {
    image_id_ = id;
    const int size = image == nullptr ? 0 : image->size;
    const bool is_other_size = size != image_.width();
    image_ = image == nullptr
                 ? QImage()
                 : QImage(image->rgb.data(), size, size, qsizetype{3} * size, QImage::Format_RGB888).mirrored();
    if (is_other_size || is_fitted_) Fit();
  }
  if (!session_.IsUnderWay()) ForgetBase();
  if (hold_ == EHold::kDrag && !session_.IsUnderWay() && !is_click_) LetGo();
  emit ScaleChanged();
  update();
}

void CMappingView::ForgetBase() {
  base_ = {};
  update();
}

// --- Where things are ------------------------------------------------------------------------------------------------

QPointF CMappingView::PlaceOf(const STexel& at) const {
  return origin_ + QPointF(at.x + 0.5, at.y + 0.5) * zoom_;
}

STexel CMappingView::TexelAt(const QPointF& place) const {
  const QPointF texels = (place - origin_) / zoom_;
  return {texels.x() - 0.5, texels.y() - 0.5};
}

QRectF CMappingView::TextureRect() const {
  return {origin_, QSizeF(image_.width(), image_.height()) * zoom_};
}

void CMappingView::Fit() {
  is_fitted_ = true;
  const double room = std::min(width(), height()) - 2 * kMargin;
  const double side = image_.isNull() ? 64.0 : image_.width();
  zoom_ = std::clamp(room / side, kFarthest, kClosest);
  // Whole pixels a texel where that wastes little, so that all texels are of one size.
  if (zoom_ > 3.0) zoom_ = std::floor(zoom_);
  origin_ = QPointF(width() - side * zoom_, height() - side * zoom_) / 2.0;
  ForgetBase();
  emit ScaleChanged();
}

void CMappingView::ZoomBy(double factor, const QPointF& at) {
  const double before = zoom_;
  zoom_ = std::clamp(zoom_ * factor, kFarthest, kClosest);
  origin_ = at - (at - origin_) * (zoom_ / before);
  is_fitted_ = false;
  KeepInSight();
}

/// Some of the texture stays in the window.
void CMappingView::KeepInSight() {
  const QRectF rect = TextureRect();
  constexpr double kLeft = 24.0;
  origin_.setX(std::clamp(origin_.x(), kLeft - rect.width(), std::max(width() - kLeft, kLeft)));
  origin_.setY(std::clamp(origin_.y(), kLeft - rect.height(), std::max(height() - kLeft, kLeft)));
  ForgetBase();
  emit ScaleChanged();
}

void CMappingView::ShowOthers(bool shows) {
  shows_others_ = shows;
  ForgetBase();
}

void CMappingView::resizeEvent(QResizeEvent*) {
  is_fitted_ ? Fit() : KeepInSight();
}

void CMappingView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  ForgetBase();
}

// --- Painting --------------------------------------------------------------------------------------------------------

/// The texture with its repetitions about it and the faces that nobody moves.
void CMappingView::PaintBase() {
  base_ = QPixmap(size() * devicePixelRatioF());
  base_.setDevicePixelRatio(devicePixelRatioF());
  QPainter painter(&base_);
  painter.fillRect(rect(), palette().color(QPalette::Dark));
  if (image_.isNull()) return;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom_ < 1.0);
  const QRectF texture = TextureRect();
  painter.setOpacity(kWrapStrength);
  for (int row = -1; row <= 1; ++row)
    for (int column = -1; column <= 1; ++column)
      if (row != 0 || column != 0)
        painter.drawImage(texture.translated(column * texture.width(), row * texture.height()), image_);
  painter.setOpacity(1.0);
  painter.drawImage(texture, image_);
  PaintGrid(painter);
  if (!shows_others_) return;
  std::vector<QLineF> lines;
  for (const Texels& outline : session_.OtherFaces())
    for (size_t i = 0; i < outline.size(); ++i)
      lines.emplace_back(PlaceOf(outline[i]), PlaceOf(outline[(i + 1) % outline.size()]));
  Draw(painter, lines, kOther, 1);
}

void CMappingView::PaintGrid(QPainter& painter) const {
  const QRectF texture = TextureRect();
  painter.setPen(QPen(QColor(128, 128, 128, 90), 1));
  const QRectF seen = texture.intersected(QRectF(rect()));
  if (zoom_ >= kGridFrom) {
    for (int i = 1; i < image_.width(); ++i) {
      const double x = origin_.x() + i * zoom_;
      const double y = origin_.y() + i * zoom_;
      if (x >= seen.left() && x <= seen.right()) painter.drawLine(QPointF(x, seen.top()), QPointF(x, seen.bottom()));
      if (y >= seen.top() && y <= seen.bottom()) painter.drawLine(QPointF(seen.left(), y), QPointF(seen.right(), y));
    }
  }
  painter.setPen(QPen(kDark, 1));
  painter.drawRect(texture);
}

void CMappingView::PaintFaces(QPainter& painter) const {
  const CMappedFaces& faces = session_.Faces();
  const bool are_many = faces.Faces().size() > kManyFaces;
  std::vector<QLineF> lines;
  std::vector<QLineF> selected;
  QPainterPath inside;
  std::vector<QPointF> places;
  places.reserve(faces.Points().size());
  for (const SMappedPoint& point : faces.Points())
    places.push_back(PlaceOf(point.at));
  for (const SMappedFace& face : faces.Faces()) {
    QPolygonF outline;
    for (int k = 0; k < face.corners; ++k)
      outline << places[static_cast<size_t>(face.points[static_cast<size_t>(k)])];
    std::vector<QLineF>& kind = face.is_selected ? selected : lines;
    for (const QLineF& edge : Edges(outline))
      kind.push_back(edge);
    if (face.is_selected && !are_many) {
      outline << outline.first();
      inside.addPolygon(outline);
    }
  }
  painter.setRenderHint(QPainter::Antialiasing, !are_many);
  inside.setFillRule(Qt::WindingFill);
  painter.fillPath(inside, QColor(255, 200, 0, 45));
  // Light within dark can be seen on any texture.
  if (!are_many) {
    Draw(painter, lines, kDark, 3);
    Draw(painter, selected, kDark, 3);
  }
  Draw(painter, lines, kLight, 1);
  Draw(painter, selected, kSelected, are_many ? 1 : 1.4);
}

void CMappingView::PaintPoints(QPainter& painter) const {
  if (session_.Mode() != EMappingMode::kCorners || session_.Faces().Points().size() > kMostPoints) return;
  painter.setRenderHint(QPainter::Antialiasing, false);
  for (const SMappedPoint& point : session_.Faces().Points()) {
    const double half = point.is_selected ? 3.5 : 2.5;
    const QRectF handle(PlaceOf(point.at) - QPointF(half, half), QSizeF(2 * half, 2 * half));
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(point.is_selected ? kSelected : kLight);
    painter.drawRect(handle);
  }
}

void CMappingView::PaintGuides(QPainter& painter) const {
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(QPen(kGuide, 1));
  const auto draw = [&](const SGuide& guide) {
    const QPointF at = PlaceOf({guide.place, guide.place});
    if (guide.is_upright)
      painter.drawLine(QPointF(at.x(), 0), QPointF(at.x(), height()));
    else
      painter.drawLine(QPointF(0, at.y()), QPointF(width(), at.y()));
  };
  if (session_.Settings().show_guides != 0) {
    for (const double x : session_.Guides().across)
      draw({true, x});
    for (const double y : session_.Guides().down)
      draw({false, y});
  }
  painter.setPen(QPen(kGuide, 2));
  if (hold_ == EHold::kGuide) draw(guide_);
}

void CMappingView::PaintPivot(QPainter& painter) const {
  if (!session_.OwnPivot()) return;
  const QPointF at = PlaceOf(*session_.OwnPivot());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  for (const auto& [color, width] : {std::pair(kDark, 3.0), std::pair(QColor(255, 90, 90), 1.4)}) {
    painter.setPen(QPen(color, width));
    painter.drawEllipse(at, 6, 6);
    painter.drawLine(at - QPointF(10, 0), at + QPointF(10, 0));
    painter.drawLine(at - QPointF(0, 10), at + QPointF(0, 10));
  }
}

void CMappingView::paintEvent(QPaintEvent*) {
  if (base_.isNull() || base_.deviceIndependentSize().toSize() != size()) PaintBase();
  QPainter painter(this);
  painter.drawPixmap(0, 0, base_);
  if (image_.isNull()) return;
  PaintFaces(painter);
  PaintPoints(painter);
  PaintGuides(painter);
  PaintPivot(painter);
  if (hold_ != EHold::kBand || is_click_) return;
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(QPen(kLight, 1, Qt::DashLine));
  painter.setBrush(QColor(255, 255, 255, 40));
  painter.drawRect(QRectF(pressed_at_, last_).normalized());
}

}  // namespace veldra
