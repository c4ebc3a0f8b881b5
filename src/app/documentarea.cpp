#include "app/documentarea.h"

#include <QEvent>

namespace veldra {

CDocumentArea::CDocumentArea(QWidget* parent) : QMdiArea(parent), welcome_(new CWelcomePage(this)) {
  setObjectName("documentArea");
  setBackground(palette().brush(QPalette::Dark));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  // When the last window closes, this is told before that one is off the list.
  connect(this, &QMdiArea::subWindowActivated, this, &CDocumentArea::ShowWelcome, Qt::QueuedConnection);
}

void CDocumentArea::changeEvent(QEvent* event) {
  QMdiArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) setBackground(palette().brush(QPalette::Dark));
}

void CDocumentArea::resizeEvent(QResizeEvent* event) {
  QMdiArea::resizeEvent(event);
  welcome_->setGeometry(rect());
}

void CDocumentArea::ShowWelcome() {
  welcome_->setVisible(subWindowList().isEmpty());
}

}  // namespace veldra
