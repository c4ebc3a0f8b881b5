#pragma once

#include <QItemSelectionModel>
#include <QTreeView>
#include <functional>

#include "tools/modeltreemodel.h"

namespace veldra {

/// The tree of CModelTreeModel. The selection that it shows and changes is the model's own: Qt's would be a second one,
/// and slow where every other one of many thousand faces is selected.
class CModelTreeView : public QTreeView {
  Q_OBJECT

 public:
  explicit CModelTreeView(CModelTreeModel& rows);

 signals:
  /// The user wants ROWS selected, or no longer selected; HOW has Clear, Select or Deselect.
  void SelectionWanted(const QItemSelection& rows, QItemSelectionModel::SelectionFlags how);
  /// The user has gone to this row.
  void CurrentWanted(const QModelIndex& index);
  /// The user types.
  void SearchWanted(const QString& text);

 public:
  /// Goes to INDEX without asking for anything. Nothing is opened for it.
  void GoTo(const QModelIndex& index);
  /// What CHANGE does to the rows is not the user's doing.
  void ChangeRows(const std::function<void()>& change);

 protected:
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
  void setSelection(const QRect& area, QItemSelectionModel::SelectionFlags how) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyboardSearch(const QString& text) override { emit SearchWanted(text); }

 private:
  class CSelection;
  class CPainter;

  CModelTreeModel& rows_;
  QPersistentModelIndex anchor_;  ///< where a range with Shift begins
  bool is_guided_ = false;        ///< by the program
};

}  // namespace veldra
