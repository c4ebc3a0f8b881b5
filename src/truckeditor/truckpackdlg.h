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
  CTruckPackDialog(const STruckPackPlan& plan, bool leave_out_stock, QWidget* parent);
  bool LeavesOutStock() const { return leave_out_->isChecked(); }

 private:
  void FillList();
  void Refresh();

  const STruckPackPlan& plan_;
  QTreeWidget* list_;
  QLabel* missing_;
  QLabel* total_;
  QCheckBox* leave_out_;
};

}  // namespace veldra
