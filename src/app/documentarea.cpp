#include "app/documentarea.h"

#include <QEvent>
#include <QMdiSubWindow>

namespace veldra {

CDocumentArea::CDocumentArea(QWidget* parent) : QMdiArea(parent) {
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
  if (welcome_ != nullptr) welcome_->setGeometry(rect());
}

void CDocumentArea::SetWelcome(QWidget* page) {
  welcome_ = page;
  welcome_->setParent(this);
  welcome_->setGeometry(rect());
  ShowWelcome();
}

void CDocumentArea::ShowWelcome() {
  if (welcome_ != nullptr) welcome_->setVisible(subWindowList().isEmpty());
}

}  // namespace veldra
