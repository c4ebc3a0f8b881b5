#include "ui/datagrid.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <numeric>

namespace veldra {

namespace {

/// How many digits TEXT begins with.
qsizetype DigitsOf(QStringView text) {
  return std::ranges::find_if_not(text, [](QChar each) { return each.isDigit(); }) - text.begin();
}

/// Letter case does not count, and numbers count as what they are: "part 9" comes before "Part 10". A collator does so
/// in some locales only.
bool IsTextBefore(QStringView text, QStringView other) {
  while (!text.isEmpty() && !other.isEmpty()) {
    const bool are_numbers = text[0].isDigit() && other[0].isDigit();
    const QStringView part = text.first(are_numbers ? DigitsOf(text) : 1);
    const QStringView other_part = other.first(are_numbers ? DigitsOf(other) : 1);
    if (are_numbers && part.toULongLong() != other_part.toULongLong())
      return part.toULongLong() < other_part.toULongLong();
    const int order = are_numbers ? 0 : part.compare(other_part, Qt::CaseInsensitive);
    if (order != 0) return order < 0;
    text = text.sliced(part.size());
    other = other.sliced(other_part.size());
  }
  return text.isEmpty() && !other.isEmpty();
}

}  // namespace

bool CGridRows::IsBefore(int row, int other, int column) const {
  return IsTextBefore(Text(row, column), Text(other, column));
}

QVariant CTextRows::Data(int row, int, Qt::ItemDataRole role) const {
  const QString& tip = rows[static_cast<size_t>(row)].tool_tip;
  return role == Qt::ToolTipRole && !tip.isEmpty() ? QVariant(tip) : QVariant();
}

/// The rows in the order of the screen.
class CDataGrid::CSorted : public QAbstractTableModel {
 public:
  CSorted(std::vector<SGridColumn> columns, QObject* parent)
      : QAbstractTableModel(parent), columns_(std::move(columns)) {}

  void Take(const CGridRows* rows) {
    beginResetModel();
    rows_ = rows;
    Arrange();
    endResetModel();
  }
  const CGridRows* Rows() const { return rows_; }
  int RowOf(const QModelIndex& index) const { return index.isValid() ? order_[static_cast<size_t>(index.row())] : -1; }
  QModelIndex IndexOf(int row) const {
    const auto found = std::ranges::find(order_, row);
    return found == order_.end() ? QModelIndex() : index(static_cast<int>(found - order_.begin()), 0);
  }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(order_.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role == Qt::DisplayRole) return rows_->Text(RowOf(index), index.column());
    if (role == Qt::TextAlignmentRole) return Alignment(index.column());
    return rows_->Data(RowOf(index), index.column(), static_cast<Qt::ItemDataRole>(role));
  }
  QVariant headerData(int section, Qt::Orientation, int role) const override {
    if (role == Qt::DisplayRole) return columns_[static_cast<size_t>(section)].title;
    return role == Qt::TextAlignmentRole ? QVariant(Alignment(section)) : QVariant();
  }

  void sort(int column, Qt::SortOrder order) override {
    column_ = column;
    direction_ = order;
    emit layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<std::pair<int, int>> kept;  // row and column of each
    for (const QModelIndex& index : before)
      kept.emplace_back(RowOf(index), index.column());
    Arrange();
    std::vector<int> places(order_.size());
    for (size_t i = 0; i < order_.size(); ++i)
      places[static_cast<size_t>(order_[i])] = static_cast<int>(i);
    QModelIndexList after;
    for (const auto& [row, at] : kept)
      after.append(index(places[static_cast<size_t>(row)], at));
    changePersistentIndexList(before, after);
    emit layoutChanged();
  }

 private:
  QVariant Alignment(int column) const {
    const bool is_number = columns_[static_cast<size_t>(column)].is_number;
    return is_number ? int{Qt::AlignRight | Qt::AlignVCenter} : int{Qt::AlignLeft | Qt::AlignVCenter};
  }

  void Arrange() {
    order_.resize(rows_ == nullptr ? 0 : static_cast<size_t>(rows_->Count()));
    std::iota(order_.begin(), order_.end(), 0);
    if (column_ < 0) return;
    const bool is_down = direction_ == Qt::DescendingOrder;
    std::ranges::stable_sort(order_, [&](int a, int b) {
      return is_down ? rows_->IsBefore(b, a, column_) : rows_->IsBefore(a, b, column_);
    });
  }

  std::vector<SGridColumn> columns_;
  const CGridRows* rows_ = nullptr;
  std::vector<int> order_;
  int column_ = -1;
  Qt::SortOrder direction_ = Qt::AscendingOrder;
};

CDataGrid::CDataGrid(const char* name, std::vector<SGridColumn> columns, QWidget* parent)
    : QTreeView(parent), sorted_(new CSorted(std::move(columns), this)) {
  setObjectName(name);
  setModel(sorted_);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  header()->setSortIndicatorClearable(true);
  header()->setSortIndicator(-1, Qt::AscendingOrder);
  setSortingEnabled(true);
  connect(this, &QTreeView::activated, this, [this](const QModelIndex& at) { emit RowActivated(sorted_->RowOf(at)); });
  connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& at) { emit CurrentRowChanged(sorted_->RowOf(at)); });
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &CDataGrid::SelectedRowsChanged);
}

void CDataGrid::Show(const CGridRows& rows) {
  sorted_->Take(&rows);
  emit SelectedRowsChanged();
}

void CDataGrid::Renew() {
  const int current = currentIndex().row();
  const int at = verticalScrollBar()->value();
  sorted_->Take(sorted_->Rows());
  if (current >= 0 && sorted_->rowCount() > 0) Choose(sorted_->index(std::min(current, sorted_->rowCount() - 1), 0));
  verticalScrollBar()->setValue(at);
  emit SelectedRowsChanged();
}

int CDataGrid::CurrentRow() const {
  return sorted_->RowOf(currentIndex());
}

void CDataGrid::SetCurrentRow(int row) {
  Choose(sorted_->IndexOf(row));
}

/// And nothing else, whatever keys are held.
void CDataGrid::Choose(const QModelIndex& at) {
  selectionModel()->setCurrentIndex(at, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

std::vector<int> CDataGrid::SelectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows())
    rows.push_back(sorted_->RowOf(index));
  std::ranges::sort(rows);
  return rows;
}

QString CDataGrid::CopiedText() const {
  QModelIndexList lines = selectionModel()->selectedRows();
  std::ranges::sort(lines, {}, &QModelIndex::row);
  const auto line = [this](const auto& text_of) {
    QStringList texts;
    for (int column = 0; column < sorted_->columnCount(); ++column)
      texts.append(text_of(column));
    return texts.join('\t') + '\n';
  };
  QString text =
      line([this](int column) { return sorted_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(); });
  for (const QModelIndex& at : lines)
    text += line([&](int column) { return at.siblingAtColumn(column).data().toString(); });
  return text;
}

void CDataGrid::Copy() const {
  if (selectionModel()->hasSelection()) QApplication::clipboard()->setText(CopiedText());
}

void CDataGrid::FitColumns() {
  constexpr int kAir = 14;
  for (int column = 0; column + 1 < sorted_->columnCount(); ++column) {
    resizeColumnToContents(column);
    setColumnWidth(column, columnWidth(column) + kAir);
  }
}

void CDataGrid::FitColumnsOnce() {
  if (has_widths_ || sorted_->rowCount() == 0) return;
  has_widths_ = true;
  FitColumns();
}

QByteArray CDataGrid::KeepColumns() const {
  return has_widths_ ? header()->saveState() : QByteArray();
}

void CDataGrid::RestoreColumns(const QByteArray& state) {
  has_widths_ = header()->restoreState(state);
}

void CDataGrid::keyPressEvent(QKeyEvent* event) {
  if (event == QKeySequence::Copy) {
    Copy();
    return event->accept();
  }
  QTreeView::keyPressEvent(event);
}

}  // namespace veldra
