#pragma once

#include <array>

#include "editing/commandinputs.h"
#include "editing/sizedlg.h"

namespace veldra {

/// Asks how far vertices are moved.
class CTranslateDialog : public CSizeDialog {
  Q_OBJECT

 public:
  CTranslateDialog(const CBinModel& model, const STranslateInput& last, QWidget* parent);
  /// Once accepted.
  STranslateInput Input() const;

 private:
  std::optional<SBounds> Result() const override;

  std::array<CNumberField*, 3> offsets_;
};

}  // namespace veldra
