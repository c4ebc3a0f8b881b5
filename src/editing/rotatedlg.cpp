#include "editing/rotatedlg.h"

#include <QHBoxLayout>

namespace veldra {

CRotateDialog::CRotateDialog(const CBinModel& model, int32_t vertex, const SRotateInput& last, QWidget* parent)
    : CSizeDialog("rotate", "Model Rotation", model, last.scope, parent), axis_(new CAxisField(tr("Axis"), last.axis)) {
  auto* fields = new QWidget;
  auto* layout = new QVBoxLayout(fields);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(MakeAngleBox(last));
  layout->addWidget(axis_);
  connect(axis_, &CAxisField::Changed, this, &CFieldDialog::Refresh);
  AddPivot(vertex, last.pivot);
  LayOut(fields);
  StartWith(angle_);
  Refresh();
}

QWidget* CRotateDialog::MakeAngleBox(const SRotateInput& last) {
  auto* box = new QGroupBox(tr("Rotate by"));
  auto* form = new QFormLayout(box);
  angle_ = AddNumber(form, tr("An&gle:"), "angle", {}, last.angle);
  auto* degrees = new QRadioButton("&Degrees");
  degrees->setObjectName("degrees");
  radians_ = new QRadioButton("&Radians");
  radians_->setObjectName("radians");
  (last.radians ? radians_ : degrees)->setChecked(true);
  auto* units = new QHBoxLayout;
  units->addWidget(degrees);
  units->addWidget(radians_);
  units->addStretch();
  form->addRow(QString(), units);
  connect(radians_, &QRadioButton::toggled, this, &CFieldDialog::Refresh);
  return box;
}

SRotateInput CRotateDialog::Input() const {
  return {.angle = angle_->Value().value_or(0.0),
          .radians = radians_->isChecked(),
          .axis = axis_->Axis(),
          .scope = Scope(),
          .pivot = Pivot()};
}

std::optional<SBounds> CRotateDialog::Result() const {
  return ResultingBounds(Model(), SelectionOf(Model(), Scope()), Input());
}

}  // namespace veldra
