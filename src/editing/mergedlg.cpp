#include "editing/mergedlg.h"

namespace veldra {

CMergeDialog::CMergeDialog(const SMergeInput& last, QWidget* parent)
    : CFieldDialog("mergeCloseVertices", "Merge close Vertices", parent) {
  auto* form = new QFormLayout;
  threshold_ = AddNumber(form, "Merge Vertices up to", "threshold", SNumberRule::Integer(0), last.threshold,
                         CNumberField::EFaultPlace::kBelow);
  threshold_->SetSuffix("units apart.");
  StartWith(threshold_);
  Content()->addLayout(form);
  Refresh();
}

SMergeInput CMergeDialog::Input() const {
  return {.threshold = static_cast<int32_t>(threshold_->Value().value_or(0.0))};
}

}  // namespace veldra
