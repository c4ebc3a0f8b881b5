#include "editing/facingdlg.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QRadioButton>

namespace veldra {

CFacingDialog::CFacingDialog(const CBinModel& model, const SFacingInput& last, const SUnitNormal& to_viewer,
                             QWidget* parent)
    : CFieldDialog("selectByFacing", tr("Select By Facing"), parent),
      model_(model),
      to_viewer_(to_viewer),
      directions_(new QButtonGroup(this)),
      add_(new QCheckBox(tr("&Add to the selection"))),
      count_(new QLabel) {
  Content()->addWidget(MakeDirections(last.direction));
  auto* form = new QFormLayout;
  degrees_ = AddNumber(form, tr("&Within:"), "degrees", {.smallest = 0, .largest = 180}, last.degrees,
                       CNumberField::EFaultPlace::kBelow);
  degrees_->SetSuffix(tr("degrees of that direction"));
  add_->setObjectName("add");
  add_->setChecked(last.add);
  form->addRow(QString(), add_);
  count_->setObjectName("count");
  form->addRow(tr("Found:"), count_);
  Content()->addLayout(form);
  connect(directions_, &QButtonGroup::idToggled, this, [this](int, bool is_on) {
    if (is_on) Refresh();
  });
  StartWith(degrees_);
  Refresh();
}

QWidget* CFacingDialog::MakeDirections(SFacingInput::EDirection last) {
  using E = SFacingInput::EDirection;
  struct SChoice {
    E direction;
    const char* name;
    QString label;
  };
  const SChoice choices[] = {{E::kPlusX, "plusX", tr("+X, right")},
                             {E::kMinusX, "minusX", tr("-X, left")},
                             {E::kPlusY, "plusY", tr("+Y, up")},
                             {E::kMinusY, "minusY", tr("-Y, down")},
                             {E::kPlusZ, "plusZ", tr("+Z")},
                             {E::kMinusZ, "minusZ", tr("-Z")},
                             {E::kViewer, "viewer", tr("Towards the &viewer")}};
  auto* box = new QGroupBox(tr("Faces that look along"));
  auto* grid = new QGridLayout(box);
  for (const SChoice& choice : choices) {
    auto* button = new QRadioButton(choice.label);
    button->setObjectName(choice.name);
    button->setChecked(choice.direction == last);
    const int id = static_cast<int>(choice.direction);
    directions_->addButton(button, id);
    grid->addWidget(button, id % 2, id / 2);
  }
  return box;
}

SFacingInput CFacingDialog::Input() const {
  return {.direction = static_cast<SFacingInput::EDirection>(directions_->checkedId()),
          .degrees = degrees_->Value().value_or(0.0),
          .add = add_->isChecked()};
}

QString CFacingDialog::Fault() {
  const size_t found = FacesFacing(model_, Input(), to_viewer_).size();
  count_->setText(tr("%L1 of %L2 faces").arg(found).arg(model_.FaceCount()));
  return {};
}

}  // namespace veldra
