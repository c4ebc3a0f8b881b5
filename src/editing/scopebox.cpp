#include "editing/scopebox.h"

#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>

namespace veldra {

namespace {

SScope::EKind StartingScope(const CBinModel& model, SScope::EKind last) {
  using EKind = SScope::EKind;
  const bool has_faces = model.SelectedCount(EGroupKind::kFaces) > 0;
  const bool has_vertices = model.SelectedCount(EGroupKind::kVertices) > 0;
  if (has_faces && has_vertices && last != EKind::kAll) return last;
  if (has_faces) return EKind::kSelectedFaces;
  return has_vertices ? EKind::kSelectedVertices : EKind::kAll;
}

}  // namespace

CScopeBox::CScopeBox(const CBinModel& model, SScope::EKind last, QWidget* parent)
    : QGroupBox(tr("Apply to"), parent), group_(new QButtonGroup(this)) {
  using EKind = SScope::EKind;
  const struct {
    EKind kind;
    const char* name;
    const char* label;
    int count;
    const char* none;
  } rows[] = {
      {EKind::kAll, "allVertices", "&All Vertices", model.VertexCount(), ""},
      {EKind::kSelectedVertices, "selectedVertices", "Selected &Vertices", model.SelectedCount(EGroupKind::kVertices),
       "no vertex is selected"},
      {EKind::kSelectedFaces, "selectedFaces", "Selected &Faces", model.SelectedCount(EGroupKind::kFaces),
       "no face is selected"},
  };
  const SScope::EKind start = StartingScope(model, last);
  auto* grid = new QGridLayout(this);
  grid->setColumnStretch(1, 1);
  for (const auto& row : rows) {
    auto* button = new QRadioButton(row.label);
    button->setObjectName(row.name);
    const bool is_possible = row.kind == EKind::kAll || row.count > 0;
    button->setEnabled(is_possible);
    auto* note = new QLabel(is_possible ? QString("(%1)").arg(row.count) : QString("(%1)").arg(row.none));
    note->setEnabled(is_possible);
    group_->addButton(button, static_cast<int>(row.kind));
    button->setChecked(row.kind == start);
    const int line = grid->rowCount();
    grid->addWidget(button, line, 0);
    grid->addWidget(note, line, 1);
  }
  connect(group_, &QButtonGroup::idToggled, this, [this](int, bool is_on) {
    if (is_on) emit ScopeChanged();
  });
}

SScope::EKind CScopeBox::Scope() const {
  return static_cast<SScope::EKind>(group_->checkedId());
}

}  // namespace veldra
