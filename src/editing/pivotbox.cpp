#include "editing/pivotbox.h"

#include <QGridLayout>
#include <QLabel>

namespace veldra {

using EPivot = SPivotInput::EKind;

CPivotBox::CPivotBox(const CBinModel& model, int32_t vertex, const SPivotInput& last, QWidget* parent)
    : QGroupBox(tr("About"), parent), model_(model), vertex_(vertex), kinds_(new QComboBox) {
  kinds_->setObjectName("pivot");
  kinds_->setAccessibleName(tr("About"));
  kinds_->addItem(tr("The middle of what moves"), static_cast<int>(EPivot::kMiddle));
  kinds_->addItem(tr("The origin"), static_cast<int>(EPivot::kOrigin));
  if (vertex_ >= 0) kinds_->addItem(tr("Current vertex (%1)").arg(vertex_), static_cast<int>(EPivot::kVertex));
  kinds_->addItem(tr("A point"), static_cast<int>(EPivot::kPoint));
  auto* grid = new QGridLayout(this);
  grid->addWidget(kinds_, 0, 0, 1, 6);
  const char* const names[] = {"X", "Y", "Z"};
  for (size_t i = 0; i < fields_.size(); ++i) {
    fields_[i] = new CNumberField({}, CNumberField::EFaultPlace::kElsewhere);
    fields_[i]->setObjectName(QString("pivot") + names[i]);
    fields_[i]->Edit()->setAccessibleName(tr("Pivot %1").arg(names[i]));
    const int column = 2 * static_cast<int>(i);
    grid->addWidget(new QLabel(names[i]), 1, column);
    grid->addWidget(fields_[i], 1, column + 1);
    grid->setColumnStretch(column + 1, 1);
    connect(fields_[i]->Edit(), &QLineEdit::textEdited, this, &CPivotBox::Changed);
  }
  for (size_t i = 0; i < fields_.size(); ++i)
    fields_[i]->SetValue(last.point[i]);
  is_users_ = last.kind == EPivot::kPoint || (last.kind == EPivot::kVertex && vertex_ >= 0);
  Choose(is_users_ ? last.kind : EPivot::kOrigin);
  connect(kinds_, &QComboBox::activated, this, [this] { is_users_ = true; });
  connect(kinds_, &QComboBox::currentIndexChanged, this, [this] {
    ShowPlace();
    emit Changed();
  });
}

EPivot CPivotBox::Kind() const {
  return static_cast<EPivot>(kinds_->currentData().toInt());
}

void CPivotBox::Choose(EPivot kind) {
  kinds_->setCurrentIndex(kinds_->findData(static_cast<int>(kind)));
}

SPivotInput CPivotBox::Pivot() const {
  SPivotInput pivot = {.kind = Kind(), .vertex = vertex_};
  for (size_t i = 0; i < fields_.size(); ++i)
    pivot.point[i] = fields_[i]->Value().value_or(0.0);
  return pivot;
}

QString CPivotBox::Fault() const {
  for (const CNumberField* field : fields_)
    if (!field->IsValid()) return field->Edit()->accessibleName() + ": " + field->Fault();
  return {};
}

void CPivotBox::SetScope(SScope::EKind scope) {
  scope_ = scope;
  if (!is_users_) Choose(scope == SScope::EKind::kAll ? EPivot::kOrigin : EPivot::kMiddle);
  ShowPlace();
}

/// A point to be typed starts where the pivot was.
void CPivotBox::ShowPlace() {
  const bool is_typed = Kind() == EPivot::kPoint;
  if (!is_typed) {
    const std::vector<int32_t> selection = SelectionOf(model_, scope_);
    const Vector3 place =
        PivotPoint(model_, VerticesInScope(model_, {scope_, selection}), {.kind = Kind(), .vertex = vertex_});
    for (size_t i = 0; i < fields_.size(); ++i)
      fields_[i]->SetValue(place[i]);
  }
  for (CNumberField* field : fields_)
    field->setEnabled(is_typed);
}

}  // namespace veldra
