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

std::vector<int32_t> CBinModel::PickedVertices() const {
  std::vector<const CBinVertex*> picked;
  for (const auto& vertex : vertices_) {
    if (vertex->selected_ && vertex->pick_ == 0) return {};
    if (vertex->selected_) picked.push_back(vertex.get());
  }
  std::ranges::sort(picked, {}, [](const CBinVertex* vertex) { return vertex->pick_; });
  std::vector<int32_t> indices;
  indices.reserve(picked.size());
  for (const CBinVertex* vertex : picked)
    indices.push_back(vertex->Index());
  return indices;
}

/// One that is selected already keeps its place in the order.
void CBinModel::Mark(CBinVertex& vertex, bool selected, uint32_t pick) {
  const bool was_selected = vertex.selected_;
  vertex.selected_ = selected && !vertex.IsHidden();
  if (!vertex.selected_ || !was_selected) vertex.pick_ = vertex.selected_ ? pick : 0;
}

void CBinModel::Select(EGroupKind kind, std::span<const int32_t> indices, bool selected) {
  const uint32_t pick = indices.size() == 1 ? ++last_pick_ : 0;
  for (const int32_t index : indices) {
    if (kind == EGroupKind::kFaces) {
      Face(index).selected_ = selected && !Face(index).IsHidden();
    } else {
      Mark(Vertex(index), selected, pick);
    }
  }
  ReportSelection();
}

void CBinModel::SelectAll(EGroupKind kind, bool selected) {
  if (kind == EGroupKind::kFaces) {
    for (const auto& face : faces_)
      face->selected_ = selected && !face->IsHidden();
  } else {
    for (const auto& vertex : vertices_)
      Mark(*vertex, selected);
  }
  ReportSelection();
}

void CBinModel::InvertSelection(EGroupKind kind) {
  if (kind == EGroupKind::kFaces) {
    for (const auto& face : faces_)
      face->selected_ = !face->selected_ && !face->IsHidden();
  } else {
    for (const auto& vertex : vertices_)
      Mark(*vertex, !vertex->selected_);
  }
  ReportSelection();
}

void CBinModel::Hide(std::span<const int32_t> faces) {
  for (const int32_t index : faces) {
    Face(index).hidden_ = true;
    Face(index).selected_ = false;
  }
  for (const auto& vertex : vertices_)
    Mark(*vertex, vertex->selected_);
  Report({.selection = true, .visibility = true});
}

void CBinModel::ShowAll() {
  for (const auto& face : faces_)
    face->hidden_ = false;
  Report({.visibility = true});
}

int32_t CBinModel::HiddenCount() const {
  return static_cast<int32_t>(std::ranges::count_if(faces_, [](const auto& face) { return face->IsHidden(); }));
}

void CBinModel::ReportSelection() {
  SModelChange change;
  change.selection = true;
  Report(change);
}

}  // namespace veldra
