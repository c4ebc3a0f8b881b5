#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include "packing/packtruck.h"

namespace veldra {

/// What goes into a truck's archive, how large that is and where it comes from, and what was not found.
class CTruckPackDialog : public QDialog {
  Q_OBJECT

 public:
  /// PLAN, which gets the files that the user adds, outlives it.
  CTruckPackDialog(STruckPackPlan& plan, bool leave_out_stock, CQuestions& questions, QWidget* parent);
  bool LeavesOutStock() const { return leave_out_->isChecked(); }

 private:
  void FillList();
  void AskAndAdd();
  /// Of the selected files those that were added.
  void Remove();
  void Refresh();

  STruckPackPlan& plan_;
  CQuestions& questions_;
  QTreeWidget* list_;
  QLabel* missing_;
  QLabel* total_;
  QCheckBox* leave_out_;
};

}  // namespace veldra
