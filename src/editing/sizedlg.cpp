#include "editing/sizedlg.h"

#include <QHBoxLayout>

#include "ui/screenplace.h"

namespace veldra {

namespace {

CSizePreview::Extents ExtentsOf(const SBounds& bounds) {
  return {SExtent{bounds.min.x, bounds.max.x}, SExtent{bounds.min.y, bounds.max.y},
          SExtent{bounds.min.z, bounds.max.z}};
}

}  // namespace

CSizeDialog::CSizeDialog(const char* name, const QString& title, const CBinModel& model, SScope::EKind last_scope,
                         QWidget* parent)
    : CFieldDialog(name, title, parent),
      model_(model),
      scope_(new CScopeBox(model, last_scope)),
      preview_(new CSizePreview) {
  preview_->SetPresent(ExtentsOf(model.Bounds()));
  connect(scope_, &CScopeBox::ScopeChanged, this, &CFieldDialog::Refresh);
}

void CSizeDialog::AddPivot(int32_t vertex, const SPivotInput& last) {
  pivot_ = new CPivotBox(model_, vertex, last);
  pivot_->SetScope(Scope());
  for (CNumberField* field : pivot_->Fields())
    Watch(field);
  connect(scope_, &CScopeBox::ScopeChanged, pivot_, [this] { pivot_->SetScope(Scope()); });
  connect(pivot_, &CPivotBox::Changed, this, &CFieldDialog::Refresh);
}

void CSizeDialog::LayOut(QWidget* fields) {
  auto* left = new QVBoxLayout;
  left->addWidget(fields);
  left->addWidget(scope_);
  if (pivot_ != nullptr) left->addWidget(pivot_);
  left->addStretch();
  auto* line = new QHBoxLayout;
  line->addLayout(left, 1);
  line->addWidget(preview_);
  Content()->addLayout(line);
  if (sizeHint().width() > RoomFor(*this).width()) preview_->MakeNarrow();
}

QString CSizeDialog::Fault() {
  const std::optional<SBounds> result = Result();
  preview_->SetResult(result ? std::optional(ExtentsOf(*result)) : std::nullopt);
  return result ? QString() : tr("The result would not fit in 32 bits.");
}

QString CSizeDialog::FieldFault() {
  preview_->SetResult(std::nullopt);
  return pivot_ == nullptr ? QString() : pivot_->Fault();
}

}  // namespace veldra
