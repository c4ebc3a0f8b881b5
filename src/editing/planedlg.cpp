#include "editing/planedlg.h"

#include <QGroupBox>
#include <QRadioButton>

namespace veldra {

using EPlane = SPlaneInput::EPlane;

CPlaneDialog::CPlaneDialog(const CEditCursor& cursor, const SPlaneInput& last, QWidget* parent)
    : CFieldDialog("setToPlane", tr("Set To Plane"), parent),
      cursor_(cursor),
      axis_(new CAxisField(tr("Coordinate of the selected vertices"), last.axis)),
      planes_(new QButtonGroup(this)),
      result_(new QLabel) {
  Content()->addWidget(axis_);
  Content()->addWidget(MakePlanes(last));
  result_->setObjectName("result");
  Content()->addWidget(result_);
  connect(axis_, &CAxisField::Changed, this, &CFieldDialog::Refresh);
  connect(planes_, &QButtonGroup::idToggled, this, [this](int, bool is_on) {
    value_->setEnabled(planes_->checkedId() == static_cast<int>(EPlane::kValue));
    if (is_on) Refresh();
  });
  value_->setEnabled(planes_->checkedId() == static_cast<int>(EPlane::kValue));
  Refresh();
}

QWidget* CPlaneDialog::MakePlanes(const SPlaneInput& last) {
  auto* box = new QGroupBox(tr("Becomes"));
  auto* form = new QFormLayout(box);
  const auto add = [&](EPlane plane, const char* name, const QString& label) {
    auto* button = new QRadioButton(label);
    button->setObjectName(name);
    planes_->addButton(button, static_cast<int>(plane));
    form->addRow(button);
  };
  add(EPlane::kMean, "mean", tr("Their &mean"));
  add(EPlane::kCurrent, "current", tr("That of the &current vertex"));
  add(EPlane::kValue, "value", tr("&This value, in model units:"));
  value_ = AddNumber(form, QString(), "number", SNumberRule::Integer(), last.value, CNumberField::EFaultPlace::kBelow);
  const bool has_current = HasCurrentVertex(cursor_);
  planes_->button(static_cast<int>(EPlane::kCurrent))->setEnabled(has_current);
  const bool can_stay = has_current || last.plane != EPlane::kCurrent;
  planes_->button(static_cast<int>(can_stay ? last.plane : EPlane::kMean))->setChecked(true);
  return box;
}

SPlaneInput CPlaneDialog::Input() const {
  return {.axis = axis_->Axis(),
          .plane = static_cast<EPlane>(planes_->checkedId()),
          .value = static_cast<int32_t>(value_->Value().value_or(0.0))};
}

QString CPlaneDialog::Fault() {
  const SPlaneInput input = Input();
  const int32_t count = cursor_.SelectedCount(EGroupKind::kVertices);
  const QString text = count == 1 ? tr("%L1 vertex: %2 becomes %L3") : tr("%L1 vertices: %2 becomes %L3");
  result_->setText(text.arg(count).arg("XYZ"[static_cast<int>(input.axis)]).arg(PlaneCoordinate(cursor_, input)));
  return {};
}

}  // namespace veldra
