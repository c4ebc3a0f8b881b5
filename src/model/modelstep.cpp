#include "model/modelstep.h"

#include <algorithm>
#include <new>
#include <utility>

#include "model/arrayedits.h"
#include "platform/assert.h"

namespace veldra {

namespace {

/// ADDED come to stand at INDICES, ascending, which are places in the list as it will be.
template <class Items>
void SpreadIn(Items& items, Items added, std::span<const int32_t> indices) {
  Items all;
  all.reserve(items.size() + added.size());
  size_t own = 0;
  for (size_t k = 0; k < added.size(); ++k) {
    while (all.size() < static_cast<size_t>(indices[k]))
      all.push_back(std::move(items[own++]));
    all.push_back(std::move(added[k]));
  }
  while (own < items.size())
    all.push_back(std::move(items[own++]));
  items = std::move(all);
}

size_t BytesOf(const CBinModel::Groups& groups) {
  size_t bytes = groups.size() * sizeof(CBinGroup);
  for (const CBinGroup& group : groups)
    bytes += group.Members().size() * sizeof(int32_t);
  return bytes;
}

size_t BytesOf(const CBinModel& model) {
  return static_cast<size_t>(model.VertexCount()) * (sizeof(CBinVertex) + sizeof(void*)) +
         static_cast<size_t>(model.FaceCount()) * (sizeof(CBinFace) + sizeof(void*)) + BytesOf(model.FaceGroups()) +
         BytesOf(model.VertexGroups());
}

}  // namespace

CModelStep::CModelStep(const CBinModel& model) : bounds_(model.bounds_), scale_word_(model.scale_word_) {}

size_t CModelStep::Bytes() const {
  size_t bytes = sizeof(CModelStep);
  for (const SEdit& edit : edits_) {
    bytes += sizeof(SEdit) + edit.indices.size() * sizeof(int32_t) + edit.vertices.size() * sizeof(SVertexValues) +
             edit.faces.size() * sizeof(SFaceValues);
    if (edit.contents != nullptr) bytes += BytesOf(*edit.contents);
  }
  return groups_ ? bytes + BytesOf(groups_->faces) + BytesOf(groups_->vertices) : bytes;
}

bool CModelStep::SFaceValues::IsSameContent(const SFaceValues& other) const {
  return corners == other.corners && texture == other.texture && type == other.type && coords == other.coords &&
         stored_normal == other.stored_normal && stored_magic == other.stored_magic;
}

// --- Back and forward ------------------------------------------------------------------------------------------------

void CModelStep::Swap(CBinModel& model) {
  const CBinModel::CBusy one_change(model);
  std::vector<SEdit*> order;
  order.reserve(edits_.size());
  for (SEdit& edit : edits_)
    order.push_back(&edit);
  if (!is_back_) std::reverse(order.begin(), order.end());
  const SBounds bounds = model.bounds_;
  const int32_t scale_word = model.scale_word_;
  // Out of the way of the edits, of which one may replace them with everything else.
  SGroups groups;
  if (groups_) groups = {model.face_groups_, model.vertex_groups_};
  SwapEdits(model, order);
  if (groups_) {
    model.face_groups_ = std::move(groups_->faces);
    model.vertex_groups_ = std::move(groups_->vertices);
    *groups_ = std::move(groups);
  }
  model.bounds_ = std::exchange(bounds_, bounds);
  model.scale_word_ = std::exchange(scale_word_, scale_word);
  is_back_ = !is_back_;
  const bool are_moves = std::ranges::all_of(edits_, [](const SEdit& edit) { return edit.what == EWhat::kPositions; });
  model.Report(Change(), are_moves);
}

/// All or none of them.
void CModelStep::SwapEdits(CBinModel& model, std::span<SEdit* const> edits) {
  size_t done = 0;
  try {
    for (; done < edits.size(); ++done)
      SwapEdit(model, *edits[done]);
  } catch (const std::bad_alloc&) {
    // There was memory for the way here; it is free again.
    while (done > 0)
      SwapEdit(model, *edits[--done]);
    throw;
  }
}

SModelChange CModelStep::Change() const {
  SModelChange change;
  change.groups = groups_.has_value();
  for (const SEdit& edit : edits_) {
    change.positions |= edit.what == EWhat::kPositions || edit.what == EWhat::kContents;
    change.topology |= edit.what == EWhat::kVertices || edit.what == EWhat::kFaces || edit.what == EWhat::kContents ||
                       edit.what == EWhat::kFaceValues;
    change.faces |= edit.what == EWhat::kFaceValues || edit.what == EWhat::kContents;
    change.textures |= edit.what == EWhat::kTexture || edit.what == EWhat::kContents;
    change.groups |= edit.what == EWhat::kContents;
  }
  change.selection = change.topology;
  return change;
}

void CModelStep::SwapEdit(CBinModel& model, SEdit& edit) {
  switch (edit.what) {
    case EWhat::kPositions:
      return SwapPositions(model, edit);
    case EWhat::kFaceValues:
      return SwapFaceValues(model, edit);
    case EWhat::kVertices:
      return edit.is_in ? TakeVertices(model, edit) : PutVertices(model, edit);
    case EWhat::kFaces:
      return edit.is_in ? TakeFaces(model, edit) : PutFaces(model, edit);
    case EWhat::kTexture:
      return ToggleTexture(model, edit);
    case EWhat::kContents:
      return SwapContents(model, edit);
  }
}

void CModelStep::SwapPositions(CBinModel& model, SEdit& edit) {
  model.moves_.Note(edit.indices, model.revision_ + 1);
  for (size_t i = 0; i < edit.indices.size(); ++i)
    std::swap(edit.vertices[i].position, model.Vertex(edit.indices[i]).position_);
}

int32_t CModelStep::CTextureNumbers::Of(const CBinTexture* entry) {
  if (entry != last_) number_ = model_.TextureIndex(entry);
  last_ = entry;
  return number_;
}

CModelStep::SFaceValues CModelStep::ValuesOf(const CBinFace& face, CTextureNumbers& textures) {
  SFaceValues values;
  for (int k = 0; k < face.CornerCount(); ++k)
    values.corners[static_cast<size_t>(k)] = face.Corner(k)->Index();
  values.texture = face.texture_ == nullptr ? -1 : textures.Of(face.texture_);
  values.type = face.type_;
  values.coords = face.tex_coords_;
  values.stored_normal = face.stored_normal_;
  values.stored_magic = face.stored_magic_;
  values.is_selected = face.selected_;
  return values;
}

/// FACE is in no vertex's set and not counted by its texture.
void CModelStep::SetValues(CBinModel& model, CBinFace& face, const SFaceValues& values) {
  face.corners_ = {};
  for (size_t k = 0; k < values.corners.size() && values.corners[k] >= 0; ++k)
    face.corners_[k] = &model.Vertex(values.corners[k]);
  face.texture_ = values.texture < 0 ? nullptr : &model.Texture(values.texture);
  face.type_ = values.type;
  face.tex_coords_ = values.coords;
  face.stored_normal_ = values.stored_normal;
  face.stored_magic_ = values.stored_magic;
}

void CModelStep::SwapFaceValues(CBinModel& model, SEdit& edit) {
  CTextureNumbers textures(model);
  for (size_t i = 0; i < edit.indices.size(); ++i) {
    CBinFace& face = model.Face(edit.indices[i]);
    const SFaceValues now = ValuesOf(face, textures);
    model.UnregisterCorners(face);
    if (face.texture_ != nullptr) --face.texture_->use_count_;
    SetValues(model, face, edit.faces[i]);
    model.Attach(face);
    edit.faces[i] = now;
  }
}

void CModelStep::TakeVertices(CBinModel& model, SEdit& edit) {
  VELDRA_ASSERT(model.AreUnused(edit.indices));
  edit.vertices.reserve(edit.indices.size());
  for (const int32_t index : edit.indices)
    edit.vertices.push_back({model.Vertex(index).position_, model.Vertex(index).selected_});
  MoveOut(model.vertices_, edit.indices);
  model.RenumberVertices(static_cast<size_t>(edit.indices.front()));
  edit.is_in = false;
}

void CModelStep::PutVertices(CBinModel& model, SEdit& edit) {
  CBinModel::Vertices vertices;
  vertices.reserve(edit.vertices.size());
  for (const SVertexValues& values : edit.vertices) {
    vertices.push_back(std::make_unique<CBinVertex>(model, values.position));
    vertices.back()->selected_ = values.is_selected;
  }
  SpreadIn(model.vertices_, std::move(vertices), edit.indices);
  model.RenumberVertices(static_cast<size_t>(edit.indices.front()));
  edit.vertices = {};
  edit.is_in = true;
}

void CModelStep::TakeFaces(CBinModel& model, SEdit& edit) {
  CTextureNumbers textures(model);
  edit.faces.reserve(edit.indices.size());
  std::vector<CBinVertex*> corners;
  corners.reserve(edit.indices.size() * 4);
  for (const int32_t index : edit.indices)
    edit.faces.push_back(ValuesOf(model.Face(index), textures));
  const CBinModel::Faces taken = MoveOut(model.faces_, edit.indices);
  for (const auto& face : taken) {
    face->index_ = -1;
    corners.insert(corners.end(), face->Corners().begin(), face->Corners().end());
    if (face->texture_ != nullptr) --face->texture_->use_count_;
  }
  model.ForgetRemovedFaces(std::move(corners));
  model.RenumberFaces(static_cast<size_t>(edit.indices.front()));
  edit.is_in = false;
}

void CModelStep::PutFaces(CBinModel& model, SEdit& edit) {
  CBinModel::Faces faces;
  faces.reserve(edit.faces.size());
  for (const SFaceValues& values : edit.faces) {
    faces.push_back(std::make_unique<CBinFace>(model));
    SetValues(model, *faces.back(), values);
    faces.back()->selected_ = values.is_selected;
    model.Attach(*faces.back());
  }
  SpreadIn(model.faces_, std::move(faces), edit.indices);
  model.RenumberFaces(static_cast<size_t>(edit.indices.front()));
  edit.faces = {};
  edit.is_in = true;
}

void CModelStep::ToggleTexture(CBinModel& model, SEdit& edit) {
  const auto place = model.textures_.begin() + std::ptrdiff_t{edit.indices.front()};
  if (edit.is_in) {
    VELDRA_ASSERT((*place)->use_count_ == 0);
    edit.texture = std::move(*place);
    model.textures_.erase(place);
  } else {
    model.textures_.insert(place, std::move(edit.texture));
  }
  edit.is_in = !edit.is_in;
}

void CModelStep::SwapContents(CBinModel& model, SEdit& edit) {
  CBinModel now;
  model.MoveContentsTo(now);
  edit.contents->MoveContentsTo(model);
  now.MoveContentsTo(*edit.contents);
}

}  // namespace veldra
