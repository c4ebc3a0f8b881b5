#pragma once

#include <QApplication>
#include <QRect>
#include <QWidget>

/// Where windows stand. A place is always a window's inside, without the frame that the system draws about it: how wide
/// that frame is becomes known only once the window is shown, so a place that counted it would be off by it each time.
namespace veldra {

/// Where WINDOW stands while it is not maximized.
QRect PlaceOf(const QWidget& window);

/// PLACE on the screen that shows most of it, or on the first one when none does: moved, and made smaller where it must
/// be, but not below SMALLEST. FRAME is what stands about it and has to be on the screen as well.
QRect OnScreen(const QRect& place, const QMargins& frame, const QSize& smallest);

/// Puts WINDOW to PLACE, as OnScreen has it.
void PutAt(QWidget& window, const QRect& place);

/// Makes WINDOW, which has not been shown, of SIZE as far as the screen has room for it.
void ResizeToFit(QWidget& window, const QSize& size);

/// Room for WINDOW with its frame on the screen that it will come up on.
QRect RoomFor(const QWidget& window);

/// Makes every window of APPLICATION that comes up larger than its screen as small as the screen, as far as what is in
/// it lets it.
class CScreenFit : public QObject {
  Q_OBJECT

 public:
  explicit CScreenFit(QApplication& application);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace veldra
