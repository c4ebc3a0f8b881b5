#include "editing/translatedlg.h"

namespace veldra {

CTranslateDialog::CTranslateDialog(const CBinModel& model, const STranslateInput& last, QWidget* parent)
    : CSizeDialog("translate", tr("Translate Model"), model, last.scope, parent) {
  auto* box = new QGroupBox(tr("Move by, in model units"));
  auto* form = new QFormLayout(box);
  const SNumberRule rule = SNumberRule::Integer();
  offsets_ = {AddNumber(form, "&X:", "x", rule, last.x), AddNumber(form, "&Y:", "y", rule, last.y),
              AddNumber(form, "&Z:", "z", rule, last.z)};
  LayOut(box);
  StartWith(offsets_[0]);
  Refresh();
}

STranslateInput CTranslateDialog::Input() const {
  const auto offset = [this](size_t axis) { return static_cast<int32_t>(offsets_[axis]->Value().value_or(0.0)); };
  return {.x = offset(0), .y = offset(1), .z = offset(2), .scope = Scope()};
}

std::optional<SBounds> CTranslateDialog::Result() const {
  return ResultingBounds(Model(), SelectionOf(Model(), Scope()), Input());
}

}  // namespace veldra
