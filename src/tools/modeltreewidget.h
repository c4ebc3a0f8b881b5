#pragma once

#include <QLineEdit>

#include "tools/modeltreeview.h"
#include "tools/toolwidget.h"

namespace veldra {

/// Everything in the model, with a search. What is selected in the model is shown as selected, and the other way round:
/// Ctrl adds and takes away, Shift takes a range. Without them a click only makes a face or vertex the current one, as
/// it does in the 3D view. A double click does what is done most with such a row.
class CModelTreeWidget : public CToolWidget {
  Q_OBJECT

 public:
  CModelTreeWidget();

 private:
  void Refresh(const SNews& news) override;
  void SyncRows();
  void FollowCursor();
  void MakeCurrent(const QModelIndex& index);
  void SelectInModel(const QItemSelection& rows, QItemSelectionModel::SelectionFlags how);
  void Activate(const QModelIndex& index);
  void ShowMenu(const QPoint& at);

  QLineEdit* search_;
  CModelTreeModel rows_;
  CModelTreeView* tree_;
  bool is_search_new_ = false;
  int32_t shown_face_ = -1;  ///< that the tree was last brought to
  int32_t shown_vertex_ = -1;
};

}  // namespace veldra
