#include <algorithm>
#include <utility>

#include "model/arrayedits.h"
#include "model/binmodel.h"
#include "model/modelstep.h"
#include "model/normals.h"
#include "platform/assert.h"
#include "platform/questions.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kVertexInUseText = "Vertex is currently in use and cannot be deleted";
constexpr const char* kAnimationInUseText = "Animation \"%s\" is currently\n in use and cannot be deleted.";

SMessage Refusal(std::string text) {
  return {.text = std::move(text), .icon = EIcon::kWarning};
}

}  // namespace

void CBinModel::Clear() {
  if (recorder_ != nullptr) recorder_->Lose();
  SModelChange change;
  change.topology = !vertices_.empty() || !faces_.empty();
  change.textures = !textures_.empty();
  change.groups = !face_groups_.empty() || !vertex_groups_.empty();
  faces_.clear();
  vertices_.clear();
  textures_.clear();
  face_groups_.clear();
  vertex_groups_.clear();
  bounds_ = {};
  scale_word_ = 0x10000;
  if (change.Any()) Report(change);
}

void CBinModel::TakeContents(CBinModel& other) {
  VELDRA_ASSERT(&other != this && !other.busy_);
  const CBusy busy(*this);
  if (CBinModel* const old = recorder_ == nullptr ? nullptr : recorder_->ForOldContents()) MoveContentsTo(*old);
  other.MoveContentsTo(*this);
  const SModelChange everything = {
      .positions = true, .topology = true, .faces = true, .textures = true, .groups = true, .selection = true};
  other.Clear();
  other.Report(everything);
  Report(everything);
}

/// EMPTY becomes what this model is, which keeps nothing but its bounds and its scale word.
void CBinModel::MoveContentsTo(CBinModel& empty) {
  empty.vertices_ = std::exchange(vertices_, {});
  empty.faces_ = std::exchange(faces_, {});
  empty.textures_ = std::exchange(textures_, {});
  empty.face_groups_ = std::exchange(face_groups_, {});
  empty.vertex_groups_ = std::exchange(vertex_groups_, {});
  empty.bounds_ = bounds_;
  empty.scale_word_ = scale_word_;
  empty.last_pick_ = std::max(empty.last_pick_, last_pick_);
  for (const auto& vertex : empty.vertices_)
    vertex->owner_ = &empty;
  for (const auto& face : empty.faces_)
    face->owner_ = &empty;
  for (const auto& entry : empty.textures_)
    entry->owner_ = &empty;
}

void CBinModel::Reserve(size_t vertices, size_t faces) {
  vertices_.reserve(vertices);
  faces_.reserve(faces);
}

CBinVertex& CBinModel::AddVertex(const SPoint& position) {
  if (recorder_ != nullptr) recorder_->BeforeVerticesCome();
  Widen(position, vertices_.empty());
  vertices_.push_back(std::make_unique<CBinVertex>(*this, position));
  CBinVertex* const vertex = vertices_.back().get();
  vertex->index_ = VertexCount() - 1;
  if (recorder_ != nullptr) recorder_->AfterVerticesCame({&vertex->index_, 1});
  if (observer_ != nullptr) observer_->OnVerticesAdded({&vertex, 1});
  Report({.topology = true});
  return *vertex;
}

CBinFace& CBinModel::AddFace(std::unique_ptr<CBinFace> face) {
  VELDRA_ASSERT(face != nullptr && face->index_ < 0);
  face->index_ = FaceCount();
  Attach(*face);
  faces_.push_back(std::move(face));
  if (recorder_ != nullptr) recorder_->AfterFacesCame(FaceCount() - 1, 1);
  Report({.topology = true});
  return *faces_.back();
}

CBinTexture& CBinModel::AddTexture(std::unique_ptr<CBinTexture> entry) {
  VELDRA_ASSERT(entry != nullptr && entry->owner_ == this);
  textures_.push_back(std::move(entry));
  if (recorder_ != nullptr) recorder_->AfterTextureCame(TextureCount() - 1);
  Report({.textures = true});
  return *textures_.back();
}

bool CBinModel::DeleteTexture(CBinTexture& entry, CQuestions& questions) {
  const int32_t index = TextureIndex(&entry);
  VELDRA_ASSERT(index >= 0);
  if (entry.use_count_ > 0) {
    questions.Message(Refusal(Format(kAnimationInUseText, entry.name_.c_str())));
    return false;
  }
  if (recorder_ != nullptr) recorder_->BeforeTextureGoes(index);
  textures_.erase(textures_.begin() + std::ptrdiff_t{index});
  Report({.textures = true});
  return true;
}

// --- Bookkeeping -----------------------------------------------------------------------------------------------------

void CBinModel::Attach(CBinFace& face) {
  VELDRA_ASSERT(face.owner_ == this);
  VELDRA_ASSERT(face.corners_[2] != nullptr);
  RegisterCorners(face);
  if (face.texture_ != nullptr) ++face.texture_->use_count_;
}

void CBinModel::RegisterCorners(CBinFace& face) {
  for (CBinVertex* corner : face.Corners()) {
    VELDRA_ASSERT(corner->owner_ == this && corner->index_ >= 0);
    corner->faces_.Insert(&face);
  }
}

void CBinModel::UnregisterCorners(CBinFace& face) {
  for (CBinVertex* corner : face.Corners())
    corner->faces_.Erase(&face);
}

/// Each vertex once, so that a vertex with many removed faces costs one pass over its set.
void CBinModel::ForgetRemovedFaces(std::vector<CBinVertex*> vertices) {
  std::sort(vertices.begin(), vertices.end(), std::less<>());
  vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
  for (CBinVertex* vertex : vertices)
    vertex->faces_.EraseRemoved();
}

void CBinModel::RenumberVertices(size_t first) {
  for (size_t i = first; i < vertices_.size(); ++i)
    vertices_[i]->index_ = static_cast<int32_t>(i);
}

void CBinModel::RenumberFaces(size_t first) {
  for (size_t i = first; i < faces_.size(); ++i)
    faces_[i]->index_ = static_cast<int32_t>(i);
}

// --- Faces -----------------------------------------------------------------------------------------------------------

void CBinModel::InsertFaces(Faces faces, int32_t position) {
  VELDRA_ASSERT(!busy_);
  VELDRA_ASSERT(!faces.empty());
  VELDRA_ASSERT(position >= 0 && position <= FaceCount());
  for (const auto& face : faces) {
    VELDRA_ASSERT(face != nullptr && face->index_ < 0);
    Attach(*face);
    const SPoint normal = CalcFaceNormal(*face);
    face->SetStored(normal, CalcMagic(*face, normal));
  }
  const auto count = static_cast<int32_t>(faces.size());
  if (!face_groups_.empty() && position < FaceCount()) NoteGroups();
  ShiftMembers(face_groups_, position, count);
  MoveIn(faces_, std::move(faces), position);
  RenumberFaces(static_cast<size_t>(position));
  if (recorder_ != nullptr) recorder_->AfterFacesCame(position, count);
  Report({.topology = true, .groups = !face_groups_.empty()});
}

void CBinModel::RemoveFaces(std::span<const int32_t> indices) {
  VELDRA_ASSERT(IsAscendingBelow(indices, faces_.size()));
  if (indices.empty()) return;
  if (recorder_ != nullptr) recorder_->BeforeFacesGo(indices);
  if (!face_groups_.empty()) NoteGroups();
  RemapMembers(face_groups_, MapWithout(indices, faces_.size()));
  const Faces removed = MoveOut(faces_, indices);
  std::vector<CBinVertex*> corners;
  for (const auto& face : removed) {
    face->index_ = -1;
    corners.insert(corners.end(), face->Corners().begin(), face->Corners().end());
    if (face->texture_ != nullptr) {
      VELDRA_ASSERT(face->texture_->use_count_ > 0);
      --face->texture_->use_count_;
    }
  }
  ForgetRemovedFaces(std::move(corners));
  RenumberFaces(static_cast<size_t>(indices.front()));
  Report({.topology = true, .groups = !face_groups_.empty()});
}

void CBinModel::RemoveFaces(int32_t position, int32_t count) {
  VELDRA_ASSERT(position >= 0 && count >= 0 && count <= FaceCount() - position);
  RemoveFaces(Range(position, count));
}

void CBinModel::SetFaceCorners(int32_t index, std::span<CBinVertex* const> corners) {
  CBinFace& face = Face(index);
  face.NoteChange();
  UnregisterCorners(face);
  face.index_ = -1;
  face.SetCorners(corners);
  face.index_ = index;
  RegisterCorners(face);
  Report({.topology = true});
}

void CBinModel::SetFaceTexture(int32_t index, CBinTexture* texture) {
  CBinFace& face = Face(index);
  VELDRA_ASSERT(texture == nullptr || TextureIndex(texture) >= 0);
  if (face.texture_ == texture) return;
  face.NoteChange();
  if (face.texture_ != nullptr) --face.texture_->use_count_;
  if (texture != nullptr) ++texture->use_count_;
  face.texture_ = texture;
  Report({.faces = true});
}

void CBinModel::TurnFacesRound(std::span<const int32_t> indices) {
  for (const int32_t index : indices) {
    CBinFace& face = Face(index);
    face.NoteChange();
    const std::ptrdiff_t count = face.CornerCount();
    std::reverse(face.corners_.begin() + 1, face.corners_.begin() + count);
    std::reverse(face.tex_coords_.begin() + 1, face.tex_coords_.begin() + count);
  }
  if (!indices.empty()) Report({.topology = true});
}

int32_t CBinModel::ReplaceFaceType(uint32_t from, uint32_t to) {
  int32_t count = 0;
  for (const auto& face : faces_) {
    if (face->type_ != from) continue;
    face->NoteChange();
    face->type_ = to;
    ++count;
  }
  if (count > 0) Report({.faces = true});
  return count;
}

int32_t CBinModel::ReplaceFaceTypesAbove(uint32_t limit, uint32_t to) {
  int32_t count = 0;
  for (const auto& face : faces_) {
    if (face->type_ <= limit) continue;
    face->NoteChange();
    face->type_ = to;
    ++count;
  }
  if (count > 0) Report({.faces = true});
  return count;
}

void CBinModel::ReportFacesChanged() {
  Report({.faces = true});
}

// --- Vertices --------------------------------------------------------------------------------------------------------

void CBinModel::InsertVertices(Vertices vertices, int32_t position) {
  VELDRA_ASSERT(position >= -1 && position <= VertexCount());
  if (vertices.empty()) return;
  if (recorder_ != nullptr) recorder_->BeforeVerticesCome();
  if (!vertex_groups_.empty() && position < VertexCount()) NoteGroups();
  bool first = vertices_.empty();
  std::vector<CBinVertex*> added;
  for (const auto& vertex : vertices) {
    VELDRA_ASSERT(vertex != nullptr && vertex->owner_ == this && vertex->index_ < 0);
    Widen(vertex->position_, first);
    first = false;
    added.push_back(vertex.get());
  }
  if (position < 0) {
    PutBack(std::move(vertices));
  } else {
    ShiftMembers(vertex_groups_, position, static_cast<int32_t>(vertices.size()));
    MoveIn(vertices_, std::move(vertices), position);
  }
  RenumberVertices(0);
  if (recorder_ != nullptr) NoteCame(added);
  if (observer_ != nullptr) observer_->OnVerticesAdded(added);
  Report({.topology = true, .groups = !vertex_groups_.empty()});
}

void CBinModel::NoteCame(std::span<CBinVertex* const> vertices) {
  std::vector<int32_t> indices;
  for (const CBinVertex* vertex : vertices)
    indices.push_back(vertex->index_);
  recorder_->AfterVerticesCame(indices);
}

void CBinModel::PutBack(Vertices vertices) {
  Vertices merged;
  merged.reserve(vertices_.size() + vertices.size());
  std::vector<int32_t> map;
  map.reserve(vertices_.size());
  const auto take_own = [&](size_t below) {
    while (map.size() < std::min(below, vertices_.size())) {
      auto& own = vertices_[map.size()];
      map.push_back(static_cast<int32_t>(merged.size()));
      merged.push_back(std::move(own));
    }
  };
  for (auto& vertex : vertices) {
    const auto place = static_cast<size_t>(-1 - vertex->index_);
    VELDRA_ASSERT(place >= map.size() && place <= vertices_.size());
    take_own(place);
    merged.push_back(std::move(vertex));
  }
  take_own(vertices_.size());
  RemapMembers(vertex_groups_, map);
  vertices_ = std::move(merged);
}

CBinModel::Vertices CBinModel::TakeVertices(std::span<const int32_t> indices) {
  VELDRA_ASSERT(IsAscendingBelow(indices, vertices_.size()));
  VELDRA_ASSERT(AreUnused(indices));
  if (indices.empty()) return {};
  if (recorder_ != nullptr) recorder_->BeforeVerticesGo(indices);
  if (!vertex_groups_.empty()) NoteGroups();
  RemapMembers(vertex_groups_, MapWithout(indices, vertices_.size()));
  Vertices taken = MoveOut(vertices_, indices);
  NotePlaces(taken, indices);
  RenumberVertices(static_cast<size_t>(indices.front()));
  RecomputeBounds();
  Report({.topology = true, .groups = !vertex_groups_.empty()});
  return taken;
}

/// Where among those that stayed they were.
void CBinModel::NotePlaces(const Vertices& taken, std::span<const int32_t> indices) {
  for (size_t k = 0; k < taken.size(); ++k)
    taken[k]->index_ = -1 - (indices[k] - static_cast<int32_t>(k));
}

bool CBinModel::AreUnused(std::span<const int32_t> indices) const {
  return std::all_of(indices.begin(), indices.end(), [this](int32_t index) { return Vertex(index).Faces().Empty(); });
}

bool CBinModel::DeleteVertices(std::span<const int32_t> indices, CQuestions& questions) {
  if (!AreUnused(indices)) {
    questions.Message(Refusal(kVertexInUseText));
    return false;
  }
  Vertices taken = TakeVertices(indices);
  if (observer_ != nullptr && !taken.empty()) observer_->OnVerticesDeleted(taken);
  return true;
}

bool CBinModel::DeleteVertices(int32_t position, int32_t count, CQuestions& questions) {
  VELDRA_ASSERT(position >= 0 && count >= 0 && count <= VertexCount() - position);
  return DeleteVertices(Range(position, count), questions);
}

std::vector<int32_t> CBinModel::UnusedVertices() const {
  std::vector<int32_t> unused;
  for (const auto& vertex : vertices_) {
    if (vertex->faces_.Empty()) unused.push_back(vertex->index_);
  }
  return unused;
}

void CBinModel::SetVertexPosition(int32_t index, const SPoint& position) {
  SetVertexPositions({&index, 1}, {&position, 1});
}

void CBinModel::SetVertexPositions(std::span<const int32_t> indices, std::span<const SPoint> positions) {
  VELDRA_ASSERT(indices.size() == positions.size());
  if (indices.empty()) return;
  moves_.Note(indices, revision_ + 1);
  if (recorder_ != nullptr) recorder_->BeforePositions(indices);
  for (size_t i = 0; i < indices.size(); ++i)
    Vertex(indices[i]).position_ = positions[i];
  RecomputeBounds();
  Report({.positions = true}, true);
}

void CBinModel::SetTexCoords(std::span<const int32_t> faces, std::span<const std::array<STexCoord, 4>> coords) {
  VELDRA_ASSERT(faces.size() == coords.size());
  if (faces.empty()) return;
  std::vector<int32_t> corners;
  for (const int32_t index : faces)
    for (const CBinVertex* corner : Face(index).Corners())
      corners.push_back(corner->Index());
  moves_.Note(corners, revision_ + 1);
  for (size_t i = 0; i < faces.size(); ++i) {
    Face(faces[i]).NoteChange();
    Face(faces[i]).tex_coords_ = coords[i];
  }
  Report({.faces = true}, true);
}

// --- Whole-model rebuilding ------------------------------------------------------------------------------------------

std::pair<CBinModel::Vertices, CBinModel::Faces> CBinModel::TakeAll() {
  if (recorder_ != nullptr) recorder_->BeforeRebuild();
  for (const auto& entry : textures_)
    entry->use_count_ = 0;
  Report({.topology = true});
  return {std::exchange(vertices_, {}), std::exchange(faces_, {})};
}

void CBinModel::Adopt(CBinFace& face, std::span<CBinVertex* const> corners, CBinTexture* texture) {
  VELDRA_ASSERT(!IsValid(&face));
  VELDRA_ASSERT(corners.size() == 3 || corners.size() == 4);
  std::array<CBinVertex*, 4> all = {};
  std::copy(corners.begin(), corners.end(), all.begin());
  face.owner_ = this;
  face.corners_ = all;
  face.texture_ = texture;
}

void CBinModel::Discard(Vertices vertices, std::span<const int32_t> indices) {
  VELDRA_ASSERT(vertices.size() == indices.size());
  NotePlaces(vertices, indices);
  for (const auto& vertex : vertices)
    vertex->faces_.Clear();
  if (observer_ != nullptr && !vertices.empty()) observer_->OnVerticesDeleted(vertices);
}

void CBinModel::Rebuild(Vertices vertices, Faces faces, std::span<const int32_t> vertex_map,
                        std::span<const int32_t> face_map) {
  TakeAll();
  vertices_ = std::move(vertices);
  faces_ = std::move(faces);
  // One walk each: a large model is far from the processor, and each walk fetches it again.
  if (vertices_.empty()) RecomputeBounds();
  for (size_t i = 0; i < vertices_.size(); ++i) {
    CBinVertex& vertex = *vertices_[i];
    vertex.owner_ = this;
    vertex.index_ = static_cast<int32_t>(i);
    vertex.faces_.Clear();
    Widen(vertex.position_, i == 0);
  }
  for (size_t i = 0; i < faces_.size(); ++i) {
    CBinFace& face = *faces_[i];
    face.owner_ = this;
    face.index_ = static_cast<int32_t>(i);
    VELDRA_ASSERT(face.texture_ == nullptr || face.texture_->owner_ == this);
    Attach(face);
  }
  if (!vertex_map.empty()) RemapMembers(vertex_groups_, vertex_map);
  if (!face_map.empty()) RemapMembers(face_groups_, face_map);
  if (recorder_ != nullptr) recorder_->AfterRebuild(vertex_map, face_map);
  Report({.topology = true, .groups = !face_groups_.empty() || !vertex_groups_.empty()});
}

}  // namespace veldra
