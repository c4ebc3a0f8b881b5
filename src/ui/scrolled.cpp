#include "ui/scrolled.h"

#include <QEvent>
#include <QScrollBar>

#include "ui/screenplace.h"

namespace veldra {

CScrolled::CScrolled(QWidget* content, std::optional<QSize> around) : around_(around) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  setWidget(content);
  // What is behind it, a tab's page for one, may have a colour of its own.
  content->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
}

QSize CScrolled::sizeHint() const {
  return widget()->sizeHint();
}

QSize CScrolled::minimumSizeHint() const {
  if (!around_) return QScrollArea::minimumSizeHint();
  const QSize room = RoomFor(*window()).size() - *around_;
  QSize wanted = widget()->minimumSizeHint();
  if (wanted.height() > room.height()) wanted.rwidth() += verticalScrollBar()->sizeHint().width();
  if (wanted.width() > room.width()) wanted.rheight() += horizontalScrollBar()->sizeHint().height();
  return wanted.boundedTo(room);
}

bool CScrolled::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace veldra
