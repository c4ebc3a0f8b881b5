#include "ui/screenplace.h"

#include <QEvent>
#include <QScreen>
#include <QWindow>
#include <algorithm>

namespace veldra {

namespace {

/// As wide as frames are, for the time before any of them has been seen.
constexpr QMargins kUsualFrame(4, 36, 4, 6);

QMargins FrameAbout(const QWidget* window) {
  const bool is_made = window != nullptr && window->windowHandle() != nullptr;
  return is_made ? window->windowHandle()->frameMargins() : QMargins();
}

/// WINDOW's own, or that of another window, which has the same.
QMargins FrameOf(const QWidget& window) {
  const QMargins own = FrameAbout(&window);
  if (!own.isNull()) return own;
  for (const QWidget* other : QApplication::topLevelWidgets())
    if (const QMargins frame = FrameAbout(other); other->isVisible() && frame.top() > 0) return frame;
  return kUsualFrame;
}

int SharedArea(const QScreen& screen, const QRect& place) {
  const QRect seen = screen.availableGeometry() & place;
  return seen.isEmpty() ? 0 : seen.width() * seen.height();
}

const QScreen& ScreenOf(const QRect& place) {
  const QList<QScreen*> screens = QGuiApplication::screens();
  const auto best = std::max_element(screens.begin(), screens.end(), [&](const QScreen* one, const QScreen* other) {
    return SharedArea(*one, place) < SharedArea(*other, place);
  });
  return SharedArea(**best, place) > 0 ? **best : *QGuiApplication::primaryScreen();
}

}  // namespace

QRect PlaceOf(const QWidget& window) {
  return window.isMaximized() ? window.normalGeometry() : window.geometry();
}

QRect OnScreen(const QRect& place, const QMargins& frame, const QSize& smallest) {
  const QRect screen = ScreenOf(place).availableGeometry();
  // What stood there once stays, also where its frame was narrower than FRAME.
  if (screen.contains(place) && place.top() > screen.top()) return place;
  const QRect room = screen.marginsRemoved(frame);
  QRect inside(place.topLeft(), place.size().boundedTo(room.size()).expandedTo(smallest));
  inside.moveLeft(std::max(std::min(inside.left(), room.right() + 1 - inside.width()), room.left()));
  inside.moveTop(std::max(std::min(inside.top(), room.bottom() + 1 - inside.height()), room.top()));
  return inside;
}

void PutAt(QWidget& window, const QRect& place) {
  window.setGeometry(OnScreen(place, FrameOf(window), window.minimumSizeHint().expandedTo(window.minimumSize())));
}

QRect RoomFor(const QWidget& window) {
  return window.screen()->availableGeometry().marginsRemoved(FrameOf(window));
}

CScreenFit::CScreenFit(QApplication& application) : QObject(&application) {
  application.installEventFilter(this);
}

bool CScreenFit::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Show || event->spontaneous() || !watched->isWidgetType()) return false;
  auto& window = *static_cast<QWidget*>(watched);
  const Qt::WindowType type = window.windowType();
  const bool is_framed = window.isWindow() && (type == Qt::Window || type == Qt::Dialog || type == Qt::Tool);
  if (is_framed && !window.isMaximized() && !window.isFullScreen()) ResizeToFit(window, window.size());
  return false;
}

void ResizeToFit(QWidget& window, const QSize& size) {
  window.resize(size.boundedTo(RoomFor(window).size()));
}

}  // namespace veldra
