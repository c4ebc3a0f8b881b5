#pragma once

#include <QRadioButton>

#include "editing/axisfield.h"
#include "editing/commandinputs.h"
#include "editing/sizedlg.h"

namespace veldra {

/// Asks for angle and axis of a rotation.
class CRotateDialog : public CSizeDialog {
  Q_OBJECT

 public:
  /// VERTEX: the current one, -1 for none.
  CRotateDialog(const CBinModel& model, int32_t vertex, const SRotateInput& last, QWidget* parent);
  /// Once accepted.
  SRotateInput Input() const;

 private:
  QWidget* MakeAngleBox(const SRotateInput& last);
  std::optional<SBounds> Result() const override;

  CNumberField* angle_ = nullptr;
  QRadioButton* radians_ = nullptr;
  CAxisField* axis_;
};

}  // namespace veldra
