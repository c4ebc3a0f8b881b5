#pragma once

#include <QButtonGroup>
#include <QCheckBox>

#include "editing/facecommands.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks which faces to select by where they look, and says how many that will be.
class CFacingDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CFacingDialog(const CBinModel& model, const SFacingInput& last, const SUnitNormal& to_viewer, QWidget* parent);
  /// Once accepted.
  SFacingInput Input() const;

 private:
  QWidget* MakeDirections(SFacingInput::EDirection last);
  QString Fault() override;
  QString FieldFault() override {
    count_->clear();
    return {};
  }

  const CBinModel& model_;
  SUnitNormal to_viewer_;
  QButtonGroup* directions_;
  CNumberField* degrees_;
  QCheckBox* add_;
  QLabel* count_;
};

}  // namespace veldra
