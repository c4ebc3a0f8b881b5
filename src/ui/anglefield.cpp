#include "ui/anglefield.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace veldra {

namespace {

constexpr double kMostDegrees = 360;

/// Above -180, up to 180.
double Reduced(double degrees) {
  const double rest = std::fmod(degrees, kMostDegrees);
  if (rest > kMostDegrees / 2) return rest - kMostDegrees;
  return rest <= -kMostDegrees / 2 ? rest + kMostDegrees : rest;
}

double Radians(double degrees) {
  return degrees * std::numbers::pi / 180;
}

}  // namespace

CAngleDial::CAngleDial(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setToolTip(tr("Drag to turn, with Ctrl in steps of one degree"));
}

QSize CAngleDial::sizeHint() const {
  const int side = fontMetrics().height() * 5 / 2;
  return {side, side};
}

void CAngleDial::SetAngle(double degrees) {
  angle_ = degrees;
  update();
}

void CAngleDial::TurnTo(double degrees) {
  const double reduced = Reduced(degrees);
  if (reduced == angle_) return;
  SetAngle(reduced);
  emit Turned(reduced);
}

/// Counter-clockwise from the right, as angles are drawn.
void CAngleDial::Follow(const QMouseEvent& event) {
  const QPointF from_middle = event.position() - QPointF(rect().center());
  if (from_middle.isNull() || event.buttons() == Qt::NoButton) return;
  const double degrees = std::atan2(-from_middle.y(), from_middle.x()) * 180 / std::numbers::pi;
  const int step = event.modifiers().testFlag(Qt::ControlModifier) ? 1 : kSnap;
  TurnTo(std::round(degrees / step) * step);
}

void CAngleDial::wheelEvent(QWheelEvent* event) {
  TurnTo(angle_ + (event->angleDelta().y() > 0 ? 1 : -1));
  event->accept();
}

void CAngleDial::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
      return TurnTo(angle_ + 1);
    case Qt::Key_Right:
    case Qt::Key_Down:
      return TurnTo(angle_ - 1);
    case Qt::Key_PageUp:
      return TurnTo(angle_ + kSnap);
    case Qt::Key_PageDown:
      return TurnTo(angle_ - kSnap);
    case Qt::Key_Home:
      return TurnTo(0);
    default:
      QWidget::keyPressEvent(event);
  }
}

void CAngleDial::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double side = std::min(width(), height()) - 3;
  const QPointF middle = QRectF(rect()).center();
  painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), hasFocus() ? 2 : 1));
  painter.setBrush(palette().color(isEnabled() ? QPalette::Base : QPalette::Window));
  painter.drawEllipse(middle, side / 2, side / 2);
  painter.setPen(QPen(palette().color(QPalette::Text), 2, Qt::SolidLine, Qt::RoundCap));
  const double angle = Radians(angle_);
  painter.drawLine(middle, middle + side / 2 * 0.85 * QPointF(std::cos(angle), -std::sin(angle)));
}

CAngleField::CAngleField(const QString& name, QWidget* parent)
    : QWidget(parent), dial_(new CAngleDial), number_(new CNumberField({}, CNumberField::EFaultPlace::kElsewhere)) {
  dial_->setObjectName(name + "Dial");
  number_->setObjectName(name);
  number_->SetSuffix(tr("°"));
  number_->SetValue(0);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins({});
  line->addWidget(dial_);
  line->addWidget(number_);
  setFocusProxy(number_);
  connect(dial_, &CAngleDial::Turned, number_, &CNumberField::SetValue);
  connect(number_, &CNumberField::TextChanged, this, [this] {
    if (const auto value = number_->Value()) dial_->SetAngle(*value);
  });
}

void CAngleField::SetAngle(double degrees) {
  number_->SetValue(degrees);
  dial_->SetAngle(degrees);
}

}  // namespace veldra
