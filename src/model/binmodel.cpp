#include "model/binmodel.h"

#include <algorithm>
#include <atomic>
#include <unordered_map>
#include <unordered_set>

#include "model/modelstep.h"
#include "platform/assert.h"
#include "platform/text.h"

namespace veldra {

namespace {

template <class Item>
Item& At(const std::vector<std::unique_ptr<Item>>& items, int32_t index) {
  VELDRA_ASSERT(index >= 0 && static_cast<size_t>(index) < items.size());
  return *items[static_cast<size_t>(index)];
}

void Enclose(SBounds& bounds, const SPoint& position) {
  bounds.min = {std::min(bounds.min.x, position.x), std::min(bounds.min.y, position.y),
                std::min(bounds.min.z, position.z)};
  bounds.max = {std::max(bounds.max.x, position.x), std::max(bounds.max.y, position.y),
                std::max(bounds.max.z, position.z)};
}

void Enclose(std::optional<SBounds>& bounds, const SPoint& position) {
  if (!bounds) bounds = SBounds{position, position};
  Enclose(*bounds, position);
}

uint64_t NextIdentity() {
  // Models are made on other threads too, while pictures of files are drawn.
  static std::atomic<uint64_t> last = 0;
  return ++last;
}

}  // namespace

CBinModel::CBinModel() : identity_(NextIdentity()) {}

void SModelChange::Add(const SModelChange& other) {
  positions |= other.positions;
  topology |= other.topology;
  faces |= other.faces;
  textures |= other.textures;
  groups |= other.groups;
  selection |= other.selection;
  visibility |= other.visibility;
}

CBinModel::CBusy::CBusy(CBinModel& model) : model_(model), changing_(&model) {
  VELDRA_ASSERT(!model.busy_);
  model.busy_ = true;
}

CBinModel::CBusy::CBusy(const CBinModel& model) : model_(model) {
  VELDRA_ASSERT(!model.busy_);
  model.busy_ = true;
}

CBinModel::CBusy::~CBusy() {
  model_.busy_ = false;
  if (changing_ == nullptr) return;
  const SModelChange change = changing_->pending_;
  changing_->pending_ = {};
  if (change.Any() || change.selection || change.visibility) changing_->Report(change, true);
}

void CBinFace::NoteChange() const {
  if (owner_->recorder_ != nullptr) owner_->recorder_->BeforeFace(*this);
}

void CBinModel::Report(const SModelChange& change, bool is_noted) {
  are_moves_all_ = are_moves_all_ && (is_noted || !change.IsDrawn());
  if (busy_) {
    pending_.Add(change);
    return;
  }
  if (change.IsDrawn()) {
    ++revision_;
    if (!are_moves_all_) moves_.Forget(revision_);
    are_moves_all_ = true;
  }
  if (change.selection || change.topology) ++selection_revision_;
  if (observer_ != nullptr) observer_->OnModelChanged(*this, change);
}

CBinVertex& CBinModel::Vertex(int32_t index) const {
  return At(vertices_, index);
}

CBinFace& CBinModel::Face(int32_t index) const {
  return At(faces_, index);
}

CBinTexture& CBinModel::Texture(int32_t index) const {
  return At(textures_, index);
}

CBinTexture* CBinModel::FindTexture(std::string_view name, ETextureKind kind) const {
  for (const auto& entry : textures_) {
    if (entry->Kind() == kind && EqualNoCase(entry->Name(), name)) return entry.get();
  }
  return nullptr;
}

int32_t CBinModel::TextureIndex(const CBinTexture* entry) const {
  const auto found =
      std::find_if(textures_.begin(), textures_.end(), [entry](const auto& own) { return own.get() == entry; });
  return found == textures_.end() ? -1 : static_cast<int32_t>(found - textures_.begin());
}

int32_t CBinModel::Bound(int index) const {
  VELDRA_ASSERT(index >= 0 && index < 6);
  switch (index) {
    case 0:
      return bounds_.min.x;
    case 1:
      return bounds_.min.y;
    case 2:
      return bounds_.min.z;
    case 3:
      return bounds_.max.x;
    case 4:
      return bounds_.max.y;
    default:
      return bounds_.max.z;
  }
}

std::optional<SBounds> CBinModel::BoundsOfFaces(std::span<const int32_t> faces) const {
  std::optional<SBounds> bounds;
  for (const int32_t index : faces) {
    for (const CBinVertex* corner : Face(index).Corners())
      Enclose(bounds, corner->Position());
  }
  return bounds;
}

std::optional<SBounds> CBinModel::BoundsOfVertices(std::span<const int32_t> vertices) const {
  std::optional<SBounds> bounds;
  for (const int32_t index : vertices)
    Enclose(bounds, Vertex(index).Position());
  return bounds;
}

bool CBinModel::IsValid(const CBinVertex* vertex) const {
  return vertex != nullptr && vertex->index_ >= 0 && vertex->index_ < VertexCount() &&
         vertices_[static_cast<size_t>(vertex->index_)].get() == vertex;
}

bool CBinModel::IsValid(const CBinFace* face) const {
  return face != nullptr && face->index_ >= 0 && face->index_ < FaceCount() &&
         faces_[static_cast<size_t>(face->index_)].get() == face;
}

bool CBinModel::HasFaceType(uint32_t type) const {
  return std::any_of(faces_.begin(), faces_.end(), [type](const auto& face) { return face->Type() == type; });
}

bool CBinModel::HasFaceTypeAbove(uint32_t limit) const {
  return std::any_of(faces_.begin(), faces_.end(), [limit](const auto& face) { return face->Type() > limit; });
}

void CBinModel::Widen(const SPoint& position, bool first) {
  if (first) bounds_ = {position, position};
  Enclose(bounds_, position);
}

void CBinModel::RecomputeBounds() {
  if (vertices_.empty()) {
    bounds_.min = {};  // the maxima keep their values
    return;
  }
  bounds_ = {vertices_.front()->position_, vertices_.front()->position_};
  for (const auto& vertex : vertices_)
    Enclose(bounds_, vertex->position_);
}

void CBinModel::RecomputeMinima(int mask) {
  if (vertices_.empty()) {
    bounds_.min = {};
    return;
  }
  SPoint least = vertices_.front()->position_;
  for (const auto& vertex : vertices_) {
    const SPoint& position = vertex->position_;
    least = {std::min(least.x, position.x), std::min(least.y, position.y), std::min(least.z, position.z)};
  }
  if ((mask & 1) != 0) bounds_.min.x = least.x;
  if ((mask & 2) != 0) bounds_.min.y = least.y;
  if ((mask & 4) != 0) bounds_.min.z = least.z;
}

std::string CBinModel::CheckInvariants() const {
  for (const auto& check : {&CBinModel::FaceFault, &CBinModel::VertexFault, &CBinModel::TextureFault}) {
    std::string fault = (this->*check)();
    if (!fault.empty()) return fault;
  }
  std::string fault = GroupFault(EGroupKind::kFaces);
  return fault.empty() ? GroupFault(EGroupKind::kVertices) : fault;
}

std::string CBinModel::FaceFault() const {
  std::unordered_set<const CBinTexture*> entries = {nullptr};
  for (const auto& entry : textures_)
    entries.insert(entry.get());
  for (size_t i = 0; i < faces_.size(); ++i) {
    const CBinFace& face = *faces_[i];
    if (face.owner_ != this) return Format("face %zu belongs to another model", i);
    if (face.index_ != static_cast<int32_t>(i)) return Format("face %zu has index %d", i, face.index_);
    for (int k = 0; k < face.CornerCount(); ++k) {
      if (!IsValid(face.Corner(k))) return Format("face %zu: corner %d is no vertex of the model", i, k);
      for (int other = 0; other < k; ++other) {
        if (face.Corner(other) == face.Corner(k)) return Format("face %zu: corners %d and %d are one", i, other, k);
      }
    }
    if (!entries.contains(face.texture_)) return Format("face %zu: its texture is none of the model", i);
  }
  return "";
}

std::string CBinModel::VertexFault() const {
  std::vector<int32_t> uses(vertices_.size());
  for (const auto& face : faces_) {
    for (const CBinVertex* corner : face->Corners())
      ++uses[static_cast<size_t>(corner->index_)];
  }
  for (size_t i = 0; i < vertices_.size(); ++i) {
    const CBinVertex& vertex = *vertices_[i];
    if (vertex.owner_ != this) return Format("vertex %zu belongs to another model", i);
    if (vertex.index_ != static_cast<int32_t>(i)) return Format("vertex %zu has index %d", i, vertex.index_);
    SBounds widened = bounds_;
    Enclose(widened, vertex.position_);
    if (widened != bounds_) return Format("vertex %zu lies outside the bounds", i);
    const std::unordered_set<const CBinFace*> distinct(vertex.faces_.begin(), vertex.faces_.end());
    const bool all_use_it = std::all_of(distinct.begin(), distinct.end(), [&](const CBinFace* face) {
      return IsValid(face) && face->HasCorner(&vertex);
    });
    if (!all_use_it || vertex.faces_.Size() != uses[i] || distinct.size() != static_cast<size_t>(uses[i])) {
      return Format("vertex %zu: its face set does not hold the %d faces that use it", i, uses[i]);
    }
  }
  return "";
}

std::string CBinModel::TextureFault() const {
  std::unordered_map<const CBinTexture*, int32_t> uses;
  for (const auto& face : faces_)
    ++uses[face->texture_];
  for (size_t i = 0; i < textures_.size(); ++i) {
    const CBinTexture& entry = *textures_[i];
    if (entry.owner_ != this) return Format("texture %zu belongs to another model", i);
    if (entry.use_count_ != uses[&entry]) {
      return Format("texture %zu counts %d uses, %d faces use it", i, entry.use_count_, uses[&entry]);
    }
  }
  return "";
}

std::string CBinModel::GroupFault(EGroupKind kind) const {
  const int32_t count = kind == EGroupKind::kFaces ? FaceCount() : VertexCount();
  std::unordered_set<std::string_view> names;
  for (const CBinGroup& group : GroupsOf(kind)) {
    if (group.Kind() != kind) return Format("group \"%s\" stands among those of the other kind", group.Name().c_str());
    if (group.Name().empty()) return "a group has no name";
    if (!names.insert(group.Name()).second) return Format("two groups are named \"%s\"", group.Name().c_str());
    std::unordered_set<int32_t> members;
    for (const int32_t member : group.Members()) {
      if (member < 0 || member >= count)
        return Format("group \"%s\" holds %d of %d", group.Name().c_str(), member, count);
      if (!members.insert(member).second) return Format("group \"%s\" holds %d twice", group.Name().c_str(), member);
    }
  }
  return "";
}

}  // namespace veldra
