#pragma once

#include <QWidget>

#include "ui/numberfield.h"

namespace veldra {

/// A hand on a dial that is dragged round: to whole steps of kSnap degrees, with Ctrl to any whole one. The arrow keys
/// turn it by one, the page keys by a step, Home to zero.
class CAngleDial : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kSnap = 15;

  explicit CAngleDial(QWidget* parent = nullptr);
  void SetAngle(double degrees);
  double Angle() const { return angle_; }
  QSize sizeHint() const override;

 signals:
  /// By the user.
  void Turned(double degrees);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override { Follow(*event); }
  void mouseMoveEvent(QMouseEvent* event) override { Follow(*event); }
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Follow(const QMouseEvent& event);
  void TurnTo(double degrees);

  double angle_ = 0.0;
};

/// An angle in degrees, typed or set on a dial.
class CAngleField : public QWidget {
  Q_OBJECT

 public:
  /// NAME is the object name of the number's line, and with "Dial" behind it that of the dial.
  explicit CAngleField(const QString& name, QWidget* parent = nullptr);
  CNumberField* Number() const { return number_; }
  double Angle() const { return number_->Value().value_or(0.0); }
  void SetAngle(double degrees);

 private:
  CAngleDial* dial_;
  CNumberField* number_;
};

}  // namespace veldra
