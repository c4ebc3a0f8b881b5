#include "ui/dialogplace.h"

#include <QEvent>
#include <algorithm>

#include "ui/screenplace.h"

namespace veldra {

CDialogPlace::CDialogPlace(QWidget& window, int32_t& left, int32_t& top, int32_t& right, int32_t& bottom)
    : QObject(&window), window_(window), left_(left), top_(top), right_(right), bottom_(bottom) {
  window.installEventFilter(this);
}

/// Before the window comes on the screen: it would be seen jumping.
bool CDialogPlace::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Polish && !is_restored_) Restore();
  if (event->type() == QEvent::Hide && !event->spontaneous()) Remember();
  return QObject::eventFilter(watched, event);
}

void CDialogPlace::Restore() {
  is_restored_ = true;
  const QRect place(QPoint(left_, top_), QPoint(right_ - 1, bottom_ - 1));
  place.isEmpty() ? ResizeToFit(window_, window_.size()) : PutAt(window_, place);
}

void CDialogPlace::Remember() {
  const QRect place = PlaceOf(window_);
  left_ = place.left();
  top_ = place.top();
  right_ = place.left() + place.width();
  bottom_ = place.top() + place.height();
}

void KeepColumnWidths(QHeaderView& header, const std::vector<int32_t*>& widths) {
  const int count = std::min(header.count(), static_cast<int>(widths.size()));
  for (int i = 0; i < count; ++i) {
    const int32_t width = *widths[static_cast<size_t>(i)];
    if (width > 0) header.resizeSection(i, std::max(width, header.minimumSectionSize()));
  }
  QObject::connect(&header, &QHeaderView::sectionResized, &header, [widths](int section, int, int width) {
    // A hidden column has no width.
    if (section < static_cast<int>(widths.size()) && width > 0) *widths[static_cast<size_t>(section)] = width;
  });
}

}  // namespace veldra
