#pragma once

#include <QCheckBox>
#include <array>

#include "editing/commandinputs.h"
#include "editing/pivotbox.h"
#include "editing/scopebox.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks along which axes a model is mirrored.
class CMirrorDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// VERTEX: the current one, -1 for none.
  CMirrorDialog(const CBinModel& model, int32_t vertex, const SMirrorInput& last, QWidget* parent);
  /// Once accepted.
  SMirrorInput Input() const;

 private:
  QString Fault() override;
  QString FieldFault() override { return pivot_->Fault(); }

  std::array<QCheckBox*, 3> axes_ = {};
  CScopeBox* scope_;
  CPivotBox* pivot_;
};

}  // namespace veldra
