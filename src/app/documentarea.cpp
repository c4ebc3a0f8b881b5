#include "app/documentarea.h"

#include <QEvent>
#include <QPainter>

namespace veldra {

CDocumentArea::CDocumentArea(QWidget* parent) : QMdiArea(parent) {
  setObjectName("documentArea");
  setBackground(palette().brush(QPalette::Dark));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void CDocumentArea::changeEvent(QEvent* event) {
  QMdiArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) setBackground(palette().brush(QPalette::Dark));
}

void CDocumentArea::paintEvent(QPaintEvent* event) {
  QMdiArea::paintEvent(event);
  if (!subWindowList().isEmpty()) return;
  QPainter painter(viewport());
  QFont font = painter.font();
  font.setPointSizeF(font.pointSizeF() * 1.25);
  painter.setFont(font);
  const QColor background = palette().color(QPalette::Dark);
  painter.setPen(background.lightness() < 150 ? QColor(255, 255, 255, 200) : QColor(0, 0, 0, 170));
  painter.drawText(viewport()->rect(), Qt::AlignCenter, tr("Open a model with File, Open\nor drop BIN files here."));
}

}  // namespace veldra
