#include "podtools/podlistview.h"

#include <QHeaderView>
#include <QScrollBar>

#include "ui/dialogplace.h"

namespace veldra {

CPodListView::CPodListView(CSettings& settings, QWidget* parent)
    : QTreeView(parent), entries_(new CPodListModel(this)), filter_(new CPodListFilter(this)) {
  setObjectName("entries");
  filter_->setSourceModel(entries_);
  setModel(filter_);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setDragEnabled(true);
  setDragDropMode(QAbstractItemView::DragOnly);
  setContextMenuPolicy(Qt::CustomContextMenu);
  ShowOwnOrder();
  setSortingEnabled(true);
  header()->setStretchLastSection(false);
  KeepColumnWidths(*header(), {&settings.extractor_name_width, &settings.extractor_folder_width,
                               &settings.extractor_size_width, &settings.extractor_date_width});
}

CPodListView::~CPodListView() {
  entries_->SetArchive(nullptr);
}

void CPodListView::Show(const CPodDocument* archive) {
  const int at = verticalScrollBar()->value();
  entries_->SetArchive(archive);
  verticalScrollBar()->setValue(at);
}

std::vector<size_t> CPodListView::Selected() const {
  return filter_->Entries(selectionModel()->selectedRows());
}

void CPodListView::Select(const std::vector<size_t>& entries) {
  QItemSelection selection;
  QModelIndex first;
  for (const size_t entry : entries) {
    const QModelIndex row = filter_->mapFromSource(entries_->index(static_cast<int>(entry), 0));
    if (!row.isValid()) continue;
    if (!first.isValid()) first = row;
    selection.select(row, row.siblingAtColumn(CPodListModel::kColumnCount - 1));
  }
  if (!first.isValid()) return;
  selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  scrollTo(first);
}

/// No column: the list is as the archive has it until the user wants another order.
void CPodListView::ShowOwnOrder() {
  header()->setSortIndicator(-1, Qt::AscendingOrder);
}

bool CPodListView::HasOwnOrder() const {
  return header()->sortIndicatorSection() < 0;
}

void CPodListView::EditName() {
  const QModelIndex current = currentIndex().siblingAtColumn(CPodListModel::kName);
  if (!current.isValid()) return;
  setFocus();
  edit(current);
}

}  // namespace veldra
