#include <algorithm>

#include "model/binmodel.h"

namespace veldra {

namespace {

template <typename Members>
std::vector<int32_t> SelectedOf(const Members& members) {
  std::vector<int32_t> selected;
  for (const auto& member : members)
    if (member->IsSelected()) selected.push_back(member->Index());
  return selected;
}

template <typename Members>
int32_t CountSelected(const Members& members) {
  return static_cast<int32_t>(
      std::count_if(members.begin(), members.end(), [](const auto& member) { return member->IsSelected(); }));
}

}  // namespace

std::vector<int32_t> CBinModel::Selected(EGroupKind kind) const {
  return kind == EGroupKind::kFaces ? SelectedOf(faces_) : SelectedOf(vertices_);
}

int32_t CBinModel::SelectedCount(EGroupKind kind) const {
  return kind == EGroupKind::kFaces ? CountSelected(faces_) : CountSelected(vertices_);
}

void CBinModel::Select(EGroupKind kind, std::span<const int32_t> indices, bool selected) {
  for (const int32_t index : indices)
    (kind == EGroupKind::kFaces ? Face(index).selected_ : Vertex(index).selected_) = selected;
  ReportSelection();
}

void CBinModel::SelectAll(EGroupKind kind, bool selected) {
  if (kind == EGroupKind::kFaces) {
    for (const auto& face : faces_)
      face->selected_ = selected;
  } else {
    for (const auto& vertex : vertices_)
      vertex->selected_ = selected;
  }
  ReportSelection();
}

void CBinModel::InvertSelection(EGroupKind kind) {
  if (kind == EGroupKind::kFaces) {
    for (const auto& face : faces_)
      face->selected_ = !face->selected_;
  } else {
    for (const auto& vertex : vertices_)
      vertex->selected_ = !vertex->selected_;
  }
  ReportSelection();
}

void CBinModel::ReportSelection() {
  SModelChange change;
  change.selection = true;
  Report(change);
}

}  // namespace veldra
