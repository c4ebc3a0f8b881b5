#include "ui/colorwell.h"

#include <QColorDialog>
#include <QPainter>
#include <algorithm>

namespace veldra {

namespace {

constexpr QSize kSwatch(32, 16);

}  // namespace

CColorWell::CColorWell(const QColor& color, QWidget* parent) : QToolButton(parent), color_(color) {
  setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  setFocusPolicy(Qt::StrongFocus);
  setIconSize(kSwatch);
  connect(this, &QToolButton::clicked, this, &CColorWell::Choose);
  ShowColor();
}

void CColorWell::SetColor(const QColor& color) {
  if (color == color_) return;
  color_ = color;
  ShowColor();
  emit ColorChanged(color_);
}

void CColorWell::SetCustomColors(std::vector<QColor> colors, std::function<void(const std::vector<QColor>&)> take) {
  custom_colors_ = std::move(colors);
  take_custom_colors_ = std::move(take);
}

void CColorWell::Choose() {
  const auto count = std::min(custom_colors_.size(), static_cast<size_t>(QColorDialog::customCount()));
  for (size_t i = 0; i < count; ++i)
    QColorDialog::setCustomColor(static_cast<int>(i), custom_colors_[i]);
  QColorDialog dialog(color_, this);
  dialog.setObjectName("colorDialog");
  const bool is_chosen = dialog.exec() == QDialog::Accepted;
  for (size_t i = 0; i < count; ++i)
    custom_colors_[i] = QColorDialog::customColor(static_cast<int>(i));
  if (take_custom_colors_) take_custom_colors_(custom_colors_);
  if (is_chosen) SetColor(dialog.selectedColor());
}

void CColorWell::ShowColor() {
  QPixmap swatch(kSwatch * devicePixelRatioF());
  swatch.setDevicePixelRatio(devicePixelRatioF());
  swatch.fill(color_);
  QPainter painter(&swatch);
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(QRect(QPoint(), kSwatch - QSize(1, 1)));
  painter.end();
  setIcon(swatch);
  setText(color_.name().toUpper());
}

}  // namespace veldra
