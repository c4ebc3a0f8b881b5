#pragma once

#include <QPoint>
#include <QWidget>
#include <vector>

namespace veldra {

/// A ruler along the upper or left side of a drawing, from which guides are pulled as in a drawing program: a press on
/// it takes hold of a new one, level from the upper ruler, upright from the left one. It shows where guides stand that
/// cross it, and the place of the pointer.
class CGuideRuler : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kBreadth = 20;

  explicit CGuideRuler(Qt::Orientation orientation, QWidget* parent = nullptr);
  /// Unit 0 begins at START in the ruler, each unit takes LENGTH pixels, and there are COUNT of them.
  void SetScale(double start, double length, int count);
  /// Units at which guides cross it.
  void SetGuides(const std::vector<double>& guides);
  /// Where the pointer is, in units.
  void SetPointer(double unit);

 signals:
  /// A new guide is in the hand, over this place of the screen.
  void Pulled(const QPoint& at);
  /// It is let go there.
  void Dropped(const QPoint& at);
  /// Escape or another button gave it up.
  void GivenUp();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  bool IsLevel() const { return orientation_ == Qt::Horizontal; }
  int StepOfNumbers() const;
  void DrawTick(class QPainter& painter, int unit, int step) const;

  Qt::Orientation orientation_;
  double start_ = 0.0;
  double length_ = 1.0;
  int count_ = 0;
  double pointer_ = -1.0;
  std::vector<double> guides_;
  bool is_pulling_ = false;
};

}  // namespace veldra
