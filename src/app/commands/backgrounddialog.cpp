#include "app/commands/backgrounddialog.h"

#include <QColorDialog>

namespace veldra {

namespace {

QColor ToQColor(const SColor& color) {
  return {color.red, color.green, color.blue};
}

SColor ToColor(const QColor& color) {
  return {static_cast<uint8_t>(color.red()), static_cast<uint8_t>(color.green()), static_cast<uint8_t>(color.blue())};
}

}  // namespace

void AskBackground(CTarnView& view, CSettings& settings, QWidget* parent) {
  auto& colors = settings.custom_colors;
  for (size_t i = 0; i < colors.size(); ++i)
    QColorDialog::setCustomColor(static_cast<int>(i), ToQColor(colors[i]));
  QColorDialog dialog(ToQColor(view.State().background), parent);
  dialog.setObjectName("backgroundColor");
  dialog.setWindowTitle(QObject::tr("Background Color"));
  if (dialog.exec() == QDialog::Accepted) view.SetBackground(ToColor(dialog.selectedColor()));
  for (size_t i = 0; i < colors.size(); ++i)
    colors[i] = ToColor(QColorDialog::customColor(static_cast<int>(i)));
}

}  // namespace veldra
