#include "app/scalefactordlg.h"

#include "app/scalefactor.h"

namespace veldra {

CScaleFactorDialog::CScaleFactorDialog(double offered, QWidget* parent)
    : CFieldDialog("scaleFactor", "Enter Hellbender Scale Factor", parent) {
  constexpr SNumberRule kRule{.smallest = -32768, .largest = 32767.99998};
  constexpr int kWidth = 340;
  constexpr int kFactorWidth = 180;  // 1/65536 has 18 characters
  auto* form = new QFormLayout;
  factor_ = AddNumber(form, tr("&Scale factor:"), "factor", kRule, offered, CNumberField::EFaultPlace::kBelow);
  factor_->SetFurtherRule([](double factor) { return ScaleFactorFault(NumberText(factor)); });
  factor_->Edit()->setFixedWidth(kFactorWidth);
  StartWith(factor_);
  Content()->addLayout(form);
  setMinimumWidth(kWidth);
  Refresh();
}

}  // namespace veldra
