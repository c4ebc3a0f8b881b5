#include <algorithm>
#include <new>
#include <numeric>
#include <utility>

#include "model/arrayedits.h"
#include "model/modelstep.h"
#include "platform/assert.h"

// How steps come about. How one goes over them is in modelstep.cpp.

namespace veldra {

CStepRecorder::CStepRecorder(CBinModel& model) : model_(model) {
  VELDRA_ASSERT(model.recorder_ == nullptr);
  model.recorder_ = this;
}

CStepRecorder::~CStepRecorder() {
  model_.recorder_ = nullptr;
}

std::unique_ptr<CModelStep> CStepRecorder::Take() {
  if (step_ != nullptr) DropUnchanged();
  is_lost_ = false;
  before_.reset();
  noted_bytes_ = 0;
  std::unique_ptr<CModelStep> step = std::move(step_);
  if (step != nullptr && step->IsEmpty()) step.reset();
  return step;
}

void CStepRecorder::GoOnWith(std::unique_ptr<CModelStep> step) {
  VELDRA_ASSERT(step_ == nullptr);
  noted_bytes_ = step->Bytes();
  step_ = std::move(step);
  ++edit_number_;
  // A change of what the last edit holds already is no further note.
  const CModelStep::SEdit* const last = step_->edits_.empty() ? nullptr : &step_->edits_.back();
  if (last == nullptr || (last->what != EWhat::kPositions && last->what != EWhat::kFaceValues)) return;
  const int32_t count = last->what == EWhat::kPositions ? model_.VertexCount() : model_.FaceCount();
  Noting([&] {
    for (const int32_t index : last->indices)
      IsFirstNote(index, count);
  });
}

void CStepRecorder::Lose() {
  step_.reset();
  before_.reset();
  is_lost_ = true;
}

/// What cannot be noted must not keep the change from being made.
template <typename Note>
void CStepRecorder::Noting(const Note& note) {
  if (is_lost_) return;
  try {
    note();
  } catch (const std::bad_alloc&) {
    Lose();
  }
}

CModelStep& CStepRecorder::Step() {
  if (step_ == nullptr) step_ = std::make_unique<CModelStep>(model_);
  return *step_;
}

CModelStep::SEdit& CStepRecorder::NewEdit(EWhat what) {
  Step().edits_.push_back({.what = what});
  ++edit_number_;
  return Step().edits_.back();
}

/// The last edit, when it is one of these: further items can join it.
CModelStep::SEdit& CStepRecorder::Edit(EWhat what) {
  const bool goes_on = step_ != nullptr && !step_->edits_.empty() && step_->edits_.back().what == what;
  return goes_on ? step_->edits_.back() : NewEdit(what);
}

/// Whether the last edit has to take the item; later changes of it are covered by the first.
bool CStepRecorder::IsFirstNote(int32_t index, int32_t count) {
  if (marks_.size() < static_cast<size_t>(count)) marks_.resize(static_cast<size_t>(count));
  return std::exchange(marks_[static_cast<size_t>(index)], edit_number_) != edit_number_;
}

void CStepRecorder::CheckBytes() {
  if (noted_bytes_ > most_bytes_) Lose();
}

/// The bounds as they are.
void CStepRecorder::BeforeVerticesCome() {
  Noting([&] { static_cast<void>(Step()); });
}

void CStepRecorder::BeforePositions(std::span<const int32_t> vertices) {
  Noting([&] {
    CModelStep::SEdit& edit = Edit(EWhat::kPositions);
    for (const int32_t index : vertices) {
      if (!IsFirstNote(index, model_.VertexCount())) continue;
      edit.indices.push_back(index);
      edit.vertices.push_back({model_.Vertex(index).Position()});
      noted_bytes_ += sizeof(int32_t) + sizeof(CModelStep::SVertexValues);
    }
    CheckBytes();
  });
}

void CStepRecorder::BeforeFace(const CBinFace& face) {
  if (is_rebuilding_) return;
  Noting([&] {
    CModelStep::SEdit& edit = Edit(EWhat::kFaceValues);
    if (!IsFirstNote(face.Index(), model_.FaceCount())) return;
    CModelStep::CTextureNumbers textures(model_);
    edit.faces.push_back(CModelStep::ValuesOf(face, textures));
    edit.indices.push_back(face.Index());
    noted_bytes_ += sizeof(int32_t) + sizeof(CModelStep::SFaceValues);
    CheckBytes();
  });
}

void CStepRecorder::BeforeVerticesGo(std::span<const int32_t> vertices) {
  Noting([&] {
    CModelStep::SEdit& edit = NewEdit(EWhat::kVertices);
    edit.indices.assign(vertices.begin(), vertices.end());
    for (const int32_t index : vertices)
      edit.vertices.push_back({model_.Vertex(index).Position(), model_.Vertex(index).IsSelected()});
    noted_bytes_ += vertices.size() * (sizeof(int32_t) + sizeof(CModelStep::SVertexValues));
    CheckBytes();
  });
}

void CStepRecorder::AfterVerticesCame(std::span<const int32_t> vertices) {
  Noting([&] {
    const bool goes_on = step_ != nullptr && !step_->edits_.empty() && step_->edits_.back().what == EWhat::kVertices &&
                         step_->edits_.back().is_in && step_->edits_.back().indices.back() < vertices.front();
    CModelStep::SEdit& edit = goes_on ? step_->edits_.back() : NewEdit(EWhat::kVertices);
    edit.is_in = true;
    edit.indices.insert(edit.indices.end(), vertices.begin(), vertices.end());
  });
}

void CStepRecorder::BeforeFacesGo(std::span<const int32_t> faces) {
  Noting([&] {
    CModelStep::SEdit& edit = NewEdit(EWhat::kFaces);
    CModelStep::CTextureNumbers textures(model_);
    edit.indices.assign(faces.begin(), faces.end());
    for (const int32_t index : faces)
      edit.faces.push_back(CModelStep::ValuesOf(model_.Face(index), textures));
    noted_bytes_ += faces.size() * (sizeof(int32_t) + sizeof(CModelStep::SFaceValues));
    CheckBytes();
  });
}

void CStepRecorder::AfterFacesCame(int32_t position, int32_t count) {
  Noting([&] {
    const bool goes_on = step_ != nullptr && !step_->edits_.empty() && step_->edits_.back().what == EWhat::kFaces &&
                         step_->edits_.back().is_in && step_->edits_.back().indices.back() < position;
    CModelStep::SEdit& edit = goes_on ? step_->edits_.back() : NewEdit(EWhat::kFaces);
    edit.is_in = true;
    for (int32_t i = 0; i < count; ++i)
      edit.indices.push_back(position + i);
  });
}

void CStepRecorder::BeforeTextureGoes(int32_t index) {
  Noting([&] {
    const CBinTexture& entry = model_.Texture(index);
    CModelStep::SEdit& edit = NewEdit(EWhat::kTexture);
    edit.indices = {index};
    edit.texture = std::make_unique<CBinTexture>(entry);
  });
}

void CStepRecorder::AfterTextureCame(int32_t index) {
  Noting([&] {
    CModelStep::SEdit& edit = NewEdit(EWhat::kTexture);
    edit.is_in = true;
    edit.indices = {index};
  });
}

void CStepRecorder::BeforeGroups() {
  Noting([&] {
    if (Step().groups_) return;
    Step().groups_ = CModelStep::SGroups{model_.FaceGroups(), model_.VertexGroups()};
    noted_bytes_ = Step().Bytes();
    CheckBytes();
  });
}

CBinModel* CStepRecorder::ForOldContents() {
  CBinModel* old = nullptr;
  BeforeGroups();  // those of the step's beginning
  Noting([&] {
    auto made = std::make_unique<CBinModel>();
    CModelStep::SEdit& edit = NewEdit(EWhat::kContents);
    edit.contents = std::move(made);
    old = edit.contents.get();
  });
  return old;
}

// --- Rebuilding ------------------------------------------------------------------------------------------------------

void CStepRecorder::BeforeRebuild() {
  if (std::exchange(is_rebuilding_, true)) return;
  Noting([&] {
    SBefore before;
    before.vertices.reserve(static_cast<size_t>(model_.VertexCount()));
    for (int32_t i = 0; i < model_.VertexCount(); ++i)
      before.vertices.push_back({model_.Vertex(i).Position(), model_.Vertex(i).IsSelected()});
    CModelStep::CTextureNumbers textures(model_);
    before.faces.reserve(static_cast<size_t>(model_.FaceCount()));
    for (int32_t i = 0; i < model_.FaceCount(); ++i)
      before.faces.push_back(CModelStep::ValuesOf(model_.Face(i), textures));
    if (!model_.FaceGroups().empty() || !model_.VertexGroups().empty()) BeforeGroups();
    BeforeVerticesCome();
    before_ = std::move(before);
  });
}

void CStepRecorder::AfterRebuild(std::span<const int32_t> vertex_map, std::span<const int32_t> face_map) {
  is_rebuilding_ = false;
  Noting([&] {
    if (before_) NoteRebuilt(vertex_map, face_map);
  });
  before_.reset();
}

namespace {

/// Which of the items that there were are which now, where the order of those that stayed is the same: for each the new
/// index or -1. Whatever is said here is compared; it only decides how small the step becomes.
std::vector<int32_t> StayedItems(std::span<const int32_t> map, size_t old_count, int32_t new_count) {
  std::vector<int32_t> now(old_count, -1);
  if (map.size() != old_count) return now;
  int32_t next = 0;
  for (size_t i = 0; i < old_count; ++i)
    if (map[i] == next && next < new_count) now[i] = next++;
  return now;
}

std::vector<int32_t> Gone(std::span<const int32_t> now) {
  std::vector<int32_t> gone;
  for (size_t i = 0; i < now.size(); ++i)
    if (now[i] < 0) gone.push_back(static_cast<int32_t>(i));
  return gone;
}

int32_t StayedCount(std::span<const int32_t> now) {
  return static_cast<int32_t>(std::ranges::count_if(now, [](int32_t index) { return index >= 0; }));
}

}  // namespace

/// In an order in which each edit finds what it needs, back and forward: faces take other corners while all vertices
/// are there, faces go before their vertices, and come after them.
void CStepRecorder::NoteRebuilt(std::span<const int32_t> vertex_map, std::span<const int32_t> face_map) {
  SBefore& before = *before_;
  std::vector<int32_t> vertex_now = StayedItems(vertex_map, before.vertices.size(), model_.VertexCount());
  std::vector<int32_t> face_now = StayedItems(face_map, before.faces.size(), model_.FaceCount());
  if (NoteChangedFaces(vertex_now, face_now)) {
    NoteChangedPositions(vertex_now);
  } else {
    std::ranges::fill(vertex_now, -1);
    std::ranges::fill(face_now, -1);
  }
  if (std::vector<int32_t> gone = Gone(face_now); !gone.empty()) {
    CModelStep::SEdit& edit = NewEdit(EWhat::kFaces);
    for (const int32_t index : gone)
      edit.faces.push_back(before.faces[static_cast<size_t>(index)]);
    edit.indices = std::move(gone);
  }
  if (std::vector<int32_t> gone = Gone(vertex_now); !gone.empty()) {
    CModelStep::SEdit& edit = NewEdit(EWhat::kVertices);
    for (const int32_t index : gone)
      edit.vertices.push_back(before.vertices[static_cast<size_t>(index)]);
    edit.indices = std::move(gone);
  }
  const int32_t old_vertices = StayedCount(vertex_now);
  const int32_t old_faces = StayedCount(face_now);
  if (old_vertices < model_.VertexCount()) AfterVerticesCame(Range(old_vertices, model_.VertexCount() - old_vertices));
  if (old_faces < model_.FaceCount()) AfterFacesCame(old_faces, model_.FaceCount() - old_faces);
  noted_bytes_ = Step().Bytes();
  CheckBytes();
}

void CStepRecorder::NoteChangedPositions(std::span<const int32_t> vertex_now) {
  CModelStep::SEdit changed{.what = EWhat::kPositions};
  for (size_t i = 0; i < vertex_now.size(); ++i) {
    if (vertex_now[i] < 0 || model_.Vertex(vertex_now[i]).Position() == before_->vertices[i].position) continue;
    changed.indices.push_back(static_cast<int32_t>(i));
    changed.vertices.push_back(before_->vertices[i]);
  }
  if (!changed.indices.empty()) NewEdit(EWhat::kPositions) = std::move(changed);
}

/// False, nothing noted, when a face that stayed has a corner that has only come: edits know no order for that.
bool CStepRecorder::NoteChangedFaces(std::span<const int32_t> vertex_now, std::span<const int32_t> face_now) {
  std::vector<int32_t> vertex_before(static_cast<size_t>(model_.VertexCount()), -1);
  for (size_t i = 0; i < vertex_now.size(); ++i)
    if (vertex_now[i] >= 0) vertex_before[static_cast<size_t>(vertex_now[i])] = static_cast<int32_t>(i);
  CModelStep::CTextureNumbers textures(model_);
  CModelStep::SEdit changed{.what = EWhat::kFaceValues};
  for (size_t i = 0; i < face_now.size(); ++i) {
    if (face_now[i] < 0) continue;
    CModelStep::SFaceValues values = CModelStep::ValuesOf(model_.Face(face_now[i]), textures);
    for (int32_t& corner : values.corners) {
      if (corner < 0) continue;
      corner = vertex_before[static_cast<size_t>(corner)];
      if (corner < 0) return false;
    }
    const CModelStep::SFaceValues& old = before_->faces[i];
    if (values.IsSameContent(old)) continue;
    changed.indices.push_back(static_cast<int32_t>(i));
    changed.faces.push_back(old);
  }
  if (!changed.indices.empty()) NewEdit(EWhat::kFaceValues) = std::move(changed);
  return true;
}

// --- What came back to what it was -----------------------------------------------------------------------------------

/// Of the last edit, which the model still shows as it left it: a drag that was given up, a dialog that was cancelled.
void CStepRecorder::DropUnchanged() {
  if (step_->edits_.empty()) return;
  CModelStep::SEdit& edit = step_->edits_.back();
  if (edit.what != EWhat::kPositions && edit.what != EWhat::kFaceValues) return;
  CModelStep::CTextureNumbers textures(model_);
  size_t kept = 0;
  for (size_t i = 0; i < edit.indices.size(); ++i) {
    const int32_t index = edit.indices[i];
    const bool is_same = edit.what == EWhat::kPositions
                             ? edit.vertices[i].position == model_.Vertex(index).Position()
                             : edit.faces[i].IsSameContent(CModelStep::ValuesOf(model_.Face(index), textures));
    if (is_same) continue;
    edit.indices[kept] = index;
    if (edit.what == EWhat::kPositions) edit.vertices[kept] = edit.vertices[i];
    if (edit.what == EWhat::kFaceValues) edit.faces[kept] = edit.faces[i];
    ++kept;
  }
  if (kept == 0) return step_->edits_.pop_back();
  edit.indices.resize(kept);
  edit.vertices.resize(std::min(kept, edit.vertices.size()));
  edit.faces.resize(std::min(kept, edit.faces.size()));
}

}  // namespace veldra
