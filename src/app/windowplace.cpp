#include "app/windowplace.h"

#include <algorithm>

#include "ui/screenplace.h"

namespace veldra {

namespace {

constexpr QSize kUsualSize(1200, 800);
constexpr QSize kSmallestSize(400, 300);

// A corner is kept in one number: x in the low 16 bits, y in the high ones.

int32_t PackCorner(int x, int y) {
  const auto clip = [](int value) { return static_cast<uint32_t>(std::clamp(value, -32768, 32767)) & 0xFFFFu; };
  return static_cast<int32_t>(clip(x) | (clip(y) << 16));
}

QPoint UnpackCorner(int32_t packed) {
  const auto bits = static_cast<uint32_t>(packed);
  return {static_cast<int16_t>(bits & 0xFFFFu), static_cast<int16_t>(bits >> 16)};
}

QRect RememberedPlace(const CSettings& settings) {
  return {UnpackCorner(settings.main_window_tl), UnpackCorner(settings.main_window_br) - QPoint(1, 1)};
}

void PutInTheMiddle(QWidget& window) {
  const QRect room = RoomFor(window);
  QRect place(QPoint(), kUsualSize.boundedTo(room.size()));
  place.moveCenter(room.center());
  window.setGeometry(place);
}

}  // namespace

void RestoreWindowPlace(QMainWindow& window, const CSettings& settings) {
  const QRect place = RememberedPlace(settings);
  const bool is_usable = settings.save_main_state != 0 && place.width() >= kSmallestSize.width() &&
                         place.height() >= kSmallestSize.height();
  is_usable ? PutAt(window, place) : PutInTheMiddle(window);
}

void MaximizeAsBefore(QMainWindow& window, const CSettings& settings) {
  if (settings.save_main_state != 0 && settings.main_window_max != 0)
    window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void RememberWindowPlace(const QMainWindow& window, CSettings& settings) {
  if (settings.save_main_state == 0) return;
  const QRect place = PlaceOf(window);
  settings.main_window_max = window.isMaximized() ? 1 : 0;
  settings.main_window_tl = PackCorner(place.left(), place.top());
  settings.main_window_br = PackCorner(place.right() + 1, place.bottom() + 1);
}

}  // namespace veldra
