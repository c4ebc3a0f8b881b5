#include "editing/rotatedlg.h"

#include <QHBoxLayout>

namespace veldra {

CRotateDialog::CRotateDialog(const CBinModel& model, const SRotateInput& last, QWidget* parent)
    : CSizeDialog("rotate", "Model Rotation", model, last.scope, parent) {
  auto* fields = new QWidget;
  auto* layout = new QVBoxLayout(fields);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(MakeAngleBox(last));
  layout->addWidget(MakeAxisBox(last.axis));
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

QWidget* CRotateDialog::MakeAxisBox(EAxis last) {
  auto* box = new QGroupBox(tr("Axis"));
  auto* line = new QHBoxLayout(box);
  axes_ = new QButtonGroup(this);
  const std::pair<EAxis, const char*> rows[] = {{EAxis::kX, "&X"}, {EAxis::kY, "&Y"}, {EAxis::kZ, "&Z"}};
  for (const auto& [axis, label] : rows) {
    auto* button = new QRadioButton(label);
    button->setObjectName(QString(label).remove('&').toLower());
    button->setChecked(axis == last);
    axes_->addButton(button, static_cast<int>(axis));
    line->addWidget(button);
  }
  line->addStretch();
  connect(axes_, &QButtonGroup::idToggled, this, [this](int, bool is_on) {
    if (is_on) Refresh();
  });
  return box;
}

SRotateInput CRotateDialog::Input() const {
  return {.angle = angle_->Value().value_or(0.0),
          .radians = radians_->isChecked(),
          .axis = static_cast<EAxis>(axes_->checkedId()),
          .scope = Scope()};
}

std::optional<SBounds> CRotateDialog::Result() const {
  return ResultingBounds(Model(), SelectionOf(Model(), Scope()), Input());
}

}  // namespace veldra
