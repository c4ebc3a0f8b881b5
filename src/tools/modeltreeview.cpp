#include "tools/modeltreeview.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace veldra {

namespace {

using Flags = QItemSelectionModel::SelectionFlags;

constexpr int kCurrentAlpha = 70;  ///< of the highlight, behind the row that the user is at

Qt::KeyboardModifiers ModifiersOf(const QEvent* event) {
  if (event == nullptr) return Qt::NoModifier;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::KeyPress:
      return static_cast<const QInputEvent*>(event)->modifiers();
    default:
      return Qt::NoModifier;
  }
}

bool IsKey(const QEvent* event, int key) {
  return event != nullptr && event->type() == QEvent::KeyPress && static_cast<const QKeyEvent*>(event)->key() == key;
}

bool IsLeftPress(const QEvent* event) {
  return event != nullptr && event->type() == QEvent::MouseButtonPress &&
         static_cast<const QMouseEvent*>(event)->button() == Qt::LeftButton;
}

}  // namespace

/// Holds nothing: hands on what the view asks of it.
class CModelTreeView::CSelection : public QItemSelectionModel {
 public:
  CSelection(CModelTreeView& view, QAbstractItemModel* rows) : QItemSelectionModel(rows, &view), view_(view) {}

  void select(const QModelIndex& index, SelectionFlags how) override { select(QItemSelection(index, index), how); }
  void select(const QItemSelection& rows, SelectionFlags how) override {
    if ((how & (Clear | Select | Deselect)) != 0 && !view_.is_guided_) emit view_.SelectionWanted(rows, how);
  }

 private:
  CModelTreeView& view_;
};

class CModelTreeView::CPainter : public QStyledItemDelegate {
 public:
  explicit CPainter(CModelTreeView& view) : QStyledItemDelegate(&view), view_(view) {}

  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const bool is_selected = view_.rows_.IsSelected(index);
    option->state.setFlag(QStyle::State_Selected, is_selected);
    if (is_selected || index != view_.currentIndex()) return;
    QColor tint = option->palette.color(QPalette::Highlight);
    tint.setAlpha(kCurrentAlpha);
    option->backgroundBrush = tint;
  }

 private:
  CModelTreeView& view_;
};

CModelTreeView::CModelTreeView(CModelTreeModel& rows) : rows_(rows) {
  setObjectName("modelTree");
  setModel(&rows);
  setSelectionModel(new CSelection(*this, &rows));
  setItemDelegate(new CPainter(*this));
  setSelectionMode(ExtendedSelection);
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setExpandsOnDoubleClick(true);
  setContextMenuPolicy(Qt::CustomContextMenu);
}

/// Without a modifier nothing is selected; "Rows" alone lets the keys move on.
Flags CModelTreeView::selectionCommand(const QModelIndex& index, const QEvent* event) const {
  const Qt::KeyboardModifiers modifiers = ModifiersOf(event);
  const bool adds = modifiers.testFlag(Qt::ControlModifier);
  if (modifiers.testFlag(Qt::ShiftModifier)) {
    const Flags range = QItemSelectionModel::Select | QItemSelectionModel::Current;
    return adds ? range : range | QItemSelectionModel::Clear;
  }
  if (adds && (IsLeftPress(event) || IsKey(event, Qt::Key_Space)))
    return rows_.IsSelected(index) ? QItemSelectionModel::Deselect : QItemSelectionModel::Select;
  const bool is_key = event != nullptr && event->type() == QEvent::KeyPress;
  return is_key ? QItemSelectionModel::Rows : QItemSelectionModel::NoUpdate;
}

/// From some version of Qt on, a range begins anew where its own selection is empty, as it always is here.
void CModelTreeView::setSelection(const QRect& area, Flags how) {
  QRect range = area;
  if (!how.testFlag(QItemSelectionModel::Current)) {
    anchor_ = currentIndex();
  } else if (state() != DragSelectingState && visualRect(anchor_).isValid()) {
    range = QRect(visualRect(anchor_).center(), visualRect(currentIndex()).center());
  }
  QTreeView::setSelection(range, how);
}

void CModelTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTreeView::currentChanged(current, previous);
  if (is_guided_) anchor_ = current;
  if (!is_guided_) emit CurrentWanted(current);
}

void CModelTreeView::GoTo(const QModelIndex& index) {
  if (!index.isValid() || index == currentIndex() || !isExpanded(index.parent())) return;
  ChangeRows([&] { selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate); });
}

void CModelTreeView::ChangeRows(const std::function<void()>& change) {
  is_guided_ = true;
  change();
  is_guided_ = false;
}

}  // namespace veldra
