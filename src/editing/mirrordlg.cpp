#include "editing/mirrordlg.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <algorithm>

namespace veldra {

CMirrorDialog::CMirrorDialog(const CBinModel& model, int32_t vertex, const SMirrorInput& last, QWidget* parent)
    : CFieldDialog("mirror", tr("Mirror Model"), parent),
      scope_(new CScopeBox(model, last.scope)),
      pivot_(new CPivotBox(model, vertex, last.pivot)) {
  auto* box = new QGroupBox(tr("Mirror along"));
  auto* line = new QHBoxLayout(box);
  const struct {
    const char* name;
    QString label;
    bool is_on;
  } rows[] = {{"x", tr("&X axis"), last.x}, {"y", tr("&Y axis"), last.y}, {"z", tr("&Z axis"), last.z}};
  for (size_t i = 0; i < axes_.size(); ++i) {
    axes_[i] = new QCheckBox(rows[i].label);
    axes_[i]->setObjectName(rows[i].name);
    axes_[i]->setChecked(rows[i].is_on);
    connect(axes_[i], &QCheckBox::toggled, this, &CFieldDialog::Refresh);
    line->addWidget(axes_[i]);
  }
  line->addStretch();
  Content()->addWidget(box);
  Content()->addWidget(scope_);
  Content()->addWidget(pivot_);
  pivot_->SetScope(scope_->Scope());
  for (CNumberField* field : pivot_->Fields())
    Watch(field);
  connect(scope_, &CScopeBox::ScopeChanged, pivot_, [this] { pivot_->SetScope(scope_->Scope()); });
  StartWith(axes_[0]);
  Refresh();
}

SMirrorInput CMirrorDialog::Input() const {
  return {.x = axes_[0]->isChecked(),
          .y = axes_[1]->isChecked(),
          .z = axes_[2]->isChecked(),
          .scope = scope_->Scope(),
          .pivot = pivot_->Pivot()};
}

QString CMirrorDialog::Fault() {
  const bool has_axis = std::any_of(axes_.begin(), axes_.end(), [](const QCheckBox* box) { return box->isChecked(); });
  return has_axis ? QString() : tr("Choose at least one axis.");
}

}  // namespace veldra
