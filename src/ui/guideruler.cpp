#include "ui/guideruler.h"

#include <QMouseEvent>
#include <QPainter>
#include <utility>

namespace veldra {

namespace {

/// Between two numbers on a ruler, in pixels.
constexpr double kRoomForNumber = 40.0;

}  // namespace

CGuideRuler::CGuideRuler(Qt::Orientation orientation, QWidget* parent) : QWidget(parent), orientation_(orientation) {
  IsLevel() ? setFixedHeight(kBreadth) : setFixedWidth(kBreadth);
  setCursor(IsLevel() ? Qt::SplitVCursor : Qt::SplitHCursor);
  setToolTip(tr("Pull a guide from here into the texture. Back onto the ruler removes it."));
}

void CGuideRuler::SetScale(double start, double length, int count) {
  if (start == start_ && length == length_ && count == count_) return;
  start_ = start;
  length_ = length;
  count_ = count;
  update();
}

void CGuideRuler::SetGuides(const std::vector<double>& guides) {
  if (guides == guides_) return;
  guides_ = guides;
  update();
}

void CGuideRuler::SetPointer(double unit) {
  if (unit == pointer_) return;
  pointer_ = unit;
  update();
}

int CGuideRuler::StepOfNumbers() const {
  int step = 1;
  while (step * length_ < kRoomForNumber)
    step *= 2;
  return step;
}

void CGuideRuler::DrawTick(QPainter& painter, int unit, int step) const {
  const double at = start_ + unit * length_;
  const bool has_number = unit % step == 0;
  const double from = has_number ? kBreadth * 0.35 : kBreadth * 0.75;
  if (IsLevel()) {
    painter.drawLine(QPointF(at, from), QPointF(at, kBreadth));
    if (has_number) painter.drawText(QPointF(at + 2, kBreadth * 0.6), QString::number(unit));
    return;
  }
  painter.drawLine(QPointF(from, at), QPointF(kBreadth, at));
  if (!has_number) return;
  painter.save();
  painter.translate(kBreadth * 0.6, at + 2);
  painter.rotate(90);
  painter.translate(0, kBreadth * 0.25);
  painter.drawText(QPointF(0, 0), QString::number(unit));
  painter.restore();
}

void CGuideRuler::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().window());
  QFont small = font();
  small.setPixelSize(9);
  painter.setFont(small);
  painter.setPen(palette().color(QPalette::WindowText));
  const int step = StepOfNumbers();
  const int fine = std::max(1, step / 8);
  for (int unit = 0; unit <= count_; unit += fine)
    DrawTick(painter, unit, step);
  const auto mark = [&](double unit, const QColor& color) {
    const double at = start_ + (unit + 0.5) * length_;
    painter.setPen(QPen(color, 2));
    painter.drawLine(IsLevel() ? QPointF(at, 0) : QPointF(0, at),
                     IsLevel() ? QPointF(at, kBreadth) : QPointF(kBreadth, at));
  };
  for (const double guide : guides_)
    mark(guide, QColor(0, 160, 220));
  if (pointer_ >= 0) mark(pointer_, QColor(230, 120, 0));
}

void CGuideRuler::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    if (std::exchange(is_pulling_, false)) emit GivenUp();
    return;
  }
  is_pulling_ = true;
  emit Pulled(event->globalPosition().toPoint());
}

void CGuideRuler::mouseMoveEvent(QMouseEvent* event) {
  if (is_pulling_) emit Pulled(event->globalPosition().toPoint());
}

void CGuideRuler::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && std::exchange(is_pulling_, false))
    emit Dropped(event->globalPosition().toPoint());
}

}  // namespace veldra
