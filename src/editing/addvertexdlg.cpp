#include "editing/addvertexdlg.h"

#include <QGroupBox>

namespace veldra {

CAddVertexDialog::CAddVertexDialog(const SAddVertexInput& last, QWidget* parent)
    : CFieldDialog("addVertex", tr("Add Vertex"), parent) {
  auto* box = new QGroupBox(tr("Position, in model units"));
  auto* form = new QFormLayout(box);
  const SNumberRule rule = SNumberRule::Integer();
  coordinates_ = {AddNumber(form, "&X:", "x", rule, last.position.x),
                  AddNumber(form, "&Y:", "y", rule, last.position.y),
                  AddNumber(form, "&Z:", "z", rule, last.position.z)};
  StartWith(coordinates_[0]);
  Content()->addWidget(box);
  Refresh();
}

SAddVertexInput CAddVertexDialog::Input() const {
  const auto value = [this](size_t axis) { return static_cast<int32_t>(coordinates_[axis]->Value().value_or(0.0)); };
  return {.position = {value(0), value(1), value(2)}};
}

}  // namespace veldra
