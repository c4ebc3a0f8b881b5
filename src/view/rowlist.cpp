#include "view/rowlist.h"

namespace veldra {

QTreeWidget* MakeRowList(const QStringList& headers, const QList<QStringList>& rows) {
  auto* list = new QTreeWidget;
  list->setHeaderLabels(headers);
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setAlternatingRowColors(true);
  list->setSelectionMode(QAbstractItemView::NoSelection);
  list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  for (const QStringList& row : rows)
    new QTreeWidgetItem(list, row);
  for (int column = 0; column < headers.size(); ++column)
    list->resizeColumnToContents(column);
  return list;
}

}  // namespace veldra
