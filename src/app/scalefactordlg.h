#pragma once

#include "ui/fielddialog.h"

namespace veldra {

/// Asks for the Hellbender scale factor and says what is wrong with it while one types.
class CScaleFactorDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CScaleFactorDialog(double offered, QWidget* parent);
  /// Once accepted.
  double Factor() const { return factor_->Value().value_or(1.0); }

 private:
  CNumberField* factor_;
};

}  // namespace veldra
