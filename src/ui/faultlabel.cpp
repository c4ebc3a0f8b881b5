#include "ui/faultlabel.h"

#include <QEvent>

namespace veldra {

QColor FaultColor(const QPalette& palette) {
  constexpr int kMiddle = 128;
  const bool is_dark = palette.color(QPalette::Window).lightness() < kMiddle;
  return is_dark ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x1E, 0x1E);
}

CFaultLabel::CFaultLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  TakeColor();
}

void CFaultLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) TakeColor();
}

void CFaultLabel::TakeColor() {
  const QColor color = FaultColor(palette());
  // Setting it comes back here as a change of palette.
  if (palette().color(QPalette::WindowText) == color) return;
  QPalette changed;
  changed.setColor(QPalette::WindowText, color);
  setPalette(changed);
}

}  // namespace veldra
