#pragma once

#include <QCheckBox>
#include <array>

#include "editing/commandinputs.h"
#include "editing/sizedlg.h"

namespace veldra {

/// Asks for the factors of a resize.
class CResizeDialog : public CSizeDialog {
  Q_OBJECT

 public:
  /// VERTEX: the current one, -1 for none.
  CResizeDialog(const CBinModel& model, int32_t vertex, const SResizeInput& last, QWidget* parent);
  /// Once accepted.
  SResizeInput Input() const;

 private:
  std::optional<SBounds> Result() const override;
  void TakeForAll(const QString& text);

  std::array<CNumberField*, 3> factors_;
  QCheckBox* same_;
};

}  // namespace veldra
