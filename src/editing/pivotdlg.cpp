#include "editing/pivotdlg.h"

namespace veldra {

CPivotDialog::CPivotDialog(const CBinModel& model, int32_t vertex, const Vector3& present, QWidget* parent)
    : CFieldDialog("gizmoPivot", tr("Gizmo Pivot"), parent),
      pivot_(new CPivotBox(model, vertex, {.kind = SPivotInput::EKind::kPoint, .point = present})) {
  using EKind = SScope::EKind;
  const bool has_faces = model.SelectedCount(EGroupKind::kFaces) > 0;
  const bool has_vertices = model.SelectedCount(EGroupKind::kVertices) > 0;
  pivot_->SetScope(has_faces ? EKind::kSelectedFaces : has_vertices ? EKind::kSelectedVertices : EKind::kAll);
  for (CNumberField* field : pivot_->Fields())
    Watch(field);
  connect(pivot_, &CPivotBox::Changed, this, &CFieldDialog::Refresh);
  Content()->addWidget(pivot_);
  StartWith(pivot_->Fields()[0]->Edit());
  Refresh();
}

}  // namespace veldra
