#include "editing/editcursor.h"

#include <algorithm>

#include "platform/assert.h"

namespace veldra {

namespace {

int32_t Count(const CBinModel& model, EGroupKind kind) {
  return kind == EGroupKind::kFaces ? model.FaceCount() : model.VertexCount();
}

const void* Item(const CBinModel& model, EGroupKind kind, int32_t index) {
  if (kind == EGroupKind::kFaces) return &model.Face(index);
  return &model.Vertex(index);
}

bool IsSelected(const CBinModel& model, EGroupKind kind, int32_t index) {
  return kind == EGroupKind::kFaces ? model.Face(index).IsSelected() : model.Vertex(index).IsSelected();
}

bool IsHidden(const CBinModel& model, EGroupKind kind, int32_t index) {
  return kind == EGroupKind::kFaces ? model.Face(index).IsHidden() : model.Vertex(index).IsHidden();
}

/// The next index in a ring of COUNT; from -1 the first, backwards the last.
int32_t Next(int32_t index, int32_t count, bool forward) {
  if (forward) return index + 1 < count ? index + 1 : 0;
  return index > 0 ? index - 1 : count - 1;
}

}  // namespace

CEditCursor::CEditCursor(CTarnDoc& document) : document_(document), model_(document.Model()) {
  document_.AddObserver(this);
}

CEditCursor::~CEditCursor() {
  document_.RemoveObserver(this);
}

int CEditCursor::Corner() const {
  if (face_.index < 0 || vertex_.index < 0) return -1;
  const std::span<CBinVertex* const> corners = FaceObject()->Corners();
  const auto found = std::find(corners.begin(), corners.end(), VertexObject());
  return found == corners.end() ? -1 : static_cast<int>(found - corners.begin());
}

std::vector<int32_t> CEditCursor::Tagged() const {
  std::vector<int32_t> vertices;
  vertices.reserve(tagged_.size());
  for (const SPlace& place : tagged_)
    vertices.push_back(place.index);
  return vertices;
}

int32_t CEditCursor::SelectedCount(EGroupKind kind) const {
  SCount& known = selected_counts_[kind == EGroupKind::kFaces ? 0 : 1];
  if (known.count < 0 || known.revision != model_.SelectionRevision())
    known = {model_.SelectionRevision(), model_.SelectedCount(kind)};
  return known.count;
}

int32_t CEditCursor::HiddenCount() const {
  if (hidden_count_ < 0) hidden_count_ = model_.HiddenCount();
  return hidden_count_;
}

CBinFace* CEditCursor::FaceObject() const {
  return face_.index < 0 ? nullptr : &model_.Face(face_.index);
}

CBinVertex* CEditCursor::VertexObject() const {
  return vertex_.index < 0 ? nullptr : &model_.Vertex(vertex_.index);
}

void CEditCursor::SetFace(int32_t index) {
  Set(face_, PlaceOf(EGroupKind::kFaces, index));
}

void CEditCursor::SetVertex(int32_t index) {
  Set(vertex_, PlaceOf(EGroupKind::kVertices, index));
}

void CEditCursor::SetCorner(int corner) {
  if (face_.index >= 0) SetVertex(FaceObject()->Corner(corner)->Index());
}

void CEditCursor::CycleFaces(bool forward) {
  Cycle(EGroupKind::kFaces, face_, forward, false);
}

void CEditCursor::CycleVertices(bool forward) {
  Cycle(EGroupKind::kVertices, vertex_, forward, false);
}

void CEditCursor::CycleSelectedFaces(bool forward) {
  Cycle(EGroupKind::kFaces, face_, forward, true);
}

void CEditCursor::CycleSelectedVertices(bool forward) {
  Cycle(EGroupKind::kVertices, vertex_, forward, true);
}

void CEditCursor::CycleCorners(bool forward) {
  if (face_.index >= 0) SetCorner(Next(Corner(), FaceObject()->CornerCount(), forward));
}

void CEditCursor::LastCorner() {
  if (face_.index >= 0) SetCorner(FaceObject()->CornerCount() - 1);
}

bool CEditCursor::ToggleTag(int32_t vertex) {
  const SPlace place = PlaceOf(EGroupKind::kVertices, vertex);
  VELDRA_ASSERT(place.index >= 0);
  const auto found = std::find(tagged_.begin(), tagged_.end(), place);
  if (found != tagged_.end()) {
    tagged_.erase(found);
  } else if (tagged_.size() < kMostTags) {
    tagged_.push_back(place);
  } else {
    return false;
  }
  Report();
  return true;
}

void CEditCursor::ClearTags() {
  if (tagged_.empty()) return;
  tagged_.clear();
  Report();
}

void CEditCursor::Set(SPlace& place, const SPlace& now) {
  if (place == now) return;
  place = now;
  Report();
}

void CEditCursor::Cycle(EGroupKind kind, SPlace& place, bool forward, bool selected_only) {
  const int32_t count = Count(model_, kind);
  int32_t index = place.index;
  for (int32_t steps = 0; steps < count; ++steps) {
    index = Next(index, count, forward);
    if ((selected_only && !IsSelected(model_, kind, index)) || IsHidden(model_, kind, index)) continue;
    Set(place, PlaceOf(kind, index));
    return;
  }
}

CEditCursor::SPlace CEditCursor::PlaceOf(EGroupKind kind, int32_t index) const {
  if (index < 0) return {};
  return {index, Item(model_, kind, index)};
}

/// Where the item of PLACE stands now, or -1.
int32_t CEditCursor::Find(EGroupKind kind, const SPlace& place) const {
  const int32_t count = Count(model_, kind);
  if (place.index >= 0 && place.index < count && Item(model_, kind, place.index) == place.item) return place.index;
  for (int32_t i = 0; i < count; ++i) {
    if (Item(model_, kind, i) == place.item) return i;
  }
  return -1;
}

CEditCursor::SPlace CEditCursor::Followed(EGroupKind kind, const SPlace& place) const {
  if (place.index < 0) return place;
  const int32_t found = Find(kind, place);
  return PlaceOf(kind, found >= 0 ? found : std::min(place.index, Count(model_, kind) - 1));
}

void CEditCursor::OnDocumentChanged(const CTarnDoc&, const SModelChange& change) {
  if (change.topology || change.visibility) hidden_count_ = -1;
  if (!change.topology) return;
  const SPlace face = Followed(EGroupKind::kFaces, face_);
  const SPlace vertex = Followed(EGroupKind::kVertices, vertex_);
  std::vector<SPlace> tagged;
  for (const SPlace& place : tagged_) {
    if (const int32_t found = Find(EGroupKind::kVertices, place); found >= 0) tagged.push_back({found, place.item});
  }
  if (face == face_ && vertex == vertex_ && tagged == tagged_) return;
  face_ = face;
  vertex_ = vertex;
  tagged_ = std::move(tagged);
  Report();
}

void CEditCursor::Report() const {
  if (on_changed_) on_changed_();
}

}  // namespace veldra
