#pragma once

#include <QColor>
#include <QToolButton>
#include <functional>
#include <vector>

namespace veldra {

/// A button that shows a colour and lets the user choose another.
class CColorWell : public QToolButton {
  Q_OBJECT

 public:
  explicit CColorWell(const QColor& color = Qt::white, QWidget* parent = nullptr);
  QColor Color() const { return color_; }
  void SetColor(const QColor& color);
  /// The colour dialog's own colours: taken from COLORS, and TAKE gets them back when it is closed.
  void SetCustomColors(std::vector<QColor> colors, std::function<void(const std::vector<QColor>&)> take);

 signals:
  void ColorChanged(const QColor& color);

 private:
  void Choose();
  void ShowColor();

  QColor color_;
  std::vector<QColor> custom_colors_;
  std::function<void(const std::vector<QColor>&)> take_custom_colors_;
};

}  // namespace veldra
