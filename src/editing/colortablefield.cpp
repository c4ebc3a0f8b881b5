#include "editing/colortablefield.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "model/texturepicture.h"

namespace veldra {

namespace {

constexpr int kSide = 16;
constexpr int kEntries = kSide * kSide;
constexpr int kCell = 20;
constexpr int kSmallestCell = 12;

/// By how many entries an arrow key leads on; 0 for other keys.
int StepOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return -1;
    case Qt::Key_Right:
      return 1;
    case Qt::Key_Up:
      return -kSide;
    case Qt::Key_Down:
      return kSide;
    default:
      return 0;
  }
}

}  // namespace

CColorTableField::CColorTableField(const CColorTableEdit& table, QWidget* parent) : QWidget(parent), table_(table) {
  setObjectName("colorTable");
  setFocusPolicy(Qt::StrongFocus);
}

QSize CColorTableField::sizeHint() const {
  return QSize(kSide, kSide) * kCell + QSize(1, 1);
}

QSize CColorTableField::minimumSizeHint() const {
  return QSize(kSide, kSide) * kSmallestCell + QSize(1, 1);
}

void CColorTableField::SetEntry(int entry) {
  entry_ = std::clamp(entry, 0, kEntries - 1);
  update();
  emit EntryChanged(entry_);
}

// --- Painting --------------------------------------------------------------------------------------------------------

double CColorTableField::CellSide() const {
  return std::max(1.0, (std::min(width(), height()) - 1) / double{kSide});
}

QRect CColorTableField::CellOf(int entry) const {
  const int column = entry % kSide;
  const int row = entry / kSide;
  const auto edge = [side = CellSide()](int cell) { return static_cast<int>(cell * side); };
  return {QPoint(edge(column), edge(row)), QPoint(edge(column + 1), edge(row + 1)) - QPoint(1, 1)};
}

int CColorTableField::EntryAt(const QPointF& at) const {
  const double side = CellSide();
  const QPoint cell(static_cast<int>(at.x() / side), static_cast<int>(at.y() / side));
  const bool is_inside = at.x() >= 0 && at.y() >= 0 && cell.x() < kSide && cell.y() < kSide;
  return is_inside ? cell.y() * kSide + cell.x() : -1;
}

/// The lower right half of what is transparent shows what is behind it; what no texel uses is smaller.
void CColorTableField::PaintCell(QPainter& painter, int entry) const {
  const QRect cell = CellOf(entry).adjusted(1, 1, 0, 0);
  const bool is_unused = !table_.Texture().indices.empty() && table_.UseCount(entry) == 0;
  const int inset = is_unused ? cell.width() / 4 : 0;
  const QRect area = cell.adjusted(inset, inset, -inset, -inset);
  const auto [red, green, blue] = table_.ColorOf(entry);
  painter.fillRect(area, QColor(red, green, blue));
  if (!table_.IsTransparent(entry)) return;
  painter.save();
  QPainterPath half;
  half.addPolygon(QPolygonF({area.topRight(), area.bottomRight(), area.bottomLeft()}));
  painter.setClipPath(half);
  PaintChecks(painter, area);
  painter.restore();
}

void CColorTableField::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  for (int entry = 0; entry < kEntries; ++entry)
    PaintCell(painter, entry);
  const auto frame = [&](int entry, const QColor& color) {
    painter.setPen(QPen(color, 2));
    painter.drawRect(CellOf(entry).adjusted(1, 1, 0, 0));
  };
  frame(entry_, hasFocus() ? palette().color(QPalette::Highlight) : palette().color(QPalette::Text));
  if (target_ >= 0) frame(target_, QColor(255, 140, 0));
}

// --- Mouse and keys --------------------------------------------------------------------------------------------------

void CColorTableField::keyPressEvent(QKeyEvent* event) {
  const int step = StepOf(event->key());
  const int to = entry_ + step;
  if (step != 0 && to >= 0 && to < kEntries) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) emit ExchangeWanted(entry_, to);
    SetEntry(to);
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    emit ColorWanted(entry_);
  } else if (step == 0) {
    QWidget::keyPressEvent(event);
  }
}

void CColorTableField::mousePressEvent(QMouseEvent* event) {
  if (const int entry = EntryAt(event->position()); entry >= 0) SetEntry(entry);
}

void CColorTableField::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  const int entry = EntryAt(event->position());
  target_ = entry == entry_ ? -1 : entry;
  update();
}

void CColorTableField::mouseReleaseEvent(QMouseEvent*) {
  const int target = std::exchange(target_, -1);
  if (target < 0) return;
  emit ExchangeWanted(entry_, target);
  SetEntry(target);
}

void CColorTableField::mouseDoubleClickEvent(QMouseEvent* event) {
  if (const int entry = EntryAt(event->position()); entry >= 0) emit ColorWanted(entry);
}

bool CColorTableField::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto& help = static_cast<const QHelpEvent&>(*event);
  const int entry = EntryAt(help.pos());
  QToolTip::showText(help.globalPos(), entry < 0 ? QString() : tr("Entry %1").arg(entry), this);
  return true;
}

}  // namespace veldra
