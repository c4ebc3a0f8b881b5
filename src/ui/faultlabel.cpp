#include "ui/faultlabel.h"

#include <QApplication>
#include <QEvent>

namespace veldra {

QColor FaultColor(const QPalette& palette) {
  constexpr int kMiddle = 128;
  const bool is_dark = palette.color(QPalette::Window).lightness() < kMiddle;
  return is_dark ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x1E, 0x1E);
}

void MakePlaceholdersReadable() {
  const QPalette palette = QApplication::palette();
  QColor color = palette.color(QPalette::Text);
  const int base = palette.color(QPalette::Base).lightness();
  const bool is_dark = base < color.lightness();
  if (is_dark == (base < palette.color(QPalette::PlaceholderText).lightness())) return;
  constexpr int kFaint = 128;
  color.setAlpha(kFaint);
  QPalette changed;
  changed.setColor(QPalette::PlaceholderText, color);
  QApplication::setPalette(changed);
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
