#pragma once

#include "editing/pivotbox.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks for the point at which the gizmo stands.
class CPivotDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// VERTEX: the current one, -1 for none. PRESENT: where the gizmo stands now.
  CPivotDialog(const CBinModel& model, int32_t vertex, const Vector3& present, QWidget* parent);
  /// Once accepted.
  SPivotInput Pivot() const { return pivot_->Pivot(); }

 private:
  QString FieldFault() override { return pivot_->Fault(); }

  CPivotBox* pivot_;
};

}  // namespace veldra
