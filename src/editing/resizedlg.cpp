#include "editing/resizedlg.h"

namespace veldra {

CResizeDialog::CResizeDialog(const CBinModel& model, int32_t vertex, const SResizeInput& last, QWidget* parent)
    : CSizeDialog("resize", tr("Resize Model"), model, last.scope, parent),
      same_(new QCheckBox(tr("&Same factor on all axes"))) {
  auto* box = new QGroupBox(tr("Factors"));
  auto* form = new QFormLayout(box);
  factors_ = {AddNumber(form, "&X:", "x", {}, last.x), AddNumber(form, "&Y:", "y", {}, last.y),
              AddNumber(form, "&Z:", "z", {}, last.z)};
  same_->setObjectName("same");
  form->addRow(same_);
  for (CNumberField* factor : factors_)
    connect(factor->Edit(), &QLineEdit::textEdited, this, &CResizeDialog::TakeForAll);
  connect(same_, &QCheckBox::toggled, this, [this] { TakeForAll(factors_[0]->Edit()->text()); });
  AddPivot(vertex, last.pivot);
  LayOut(box);
  StartWith(factors_[0]);
  Refresh();
}

SResizeInput CResizeDialog::Input() const {
  return {.x = factors_[0]->Value().value_or(1.0),
          .y = factors_[1]->Value().value_or(1.0),
          .z = factors_[2]->Value().value_or(1.0),
          .scope = Scope(),
          .pivot = Pivot()};
}

std::optional<SBounds> CResizeDialog::Result() const {
  return ResultingBounds(Model(), SelectionOf(Model(), Scope()), Input());
}

void CResizeDialog::TakeForAll(const QString& text) {
  if (!same_->isChecked()) return;
  for (CNumberField* factor : factors_)
    if (factor->Edit()->text() != text) factor->Edit()->setText(text);
}

}  // namespace veldra
