#include "mapping/mappingsession.h"

#include <algorithm>

#include "editing/facecommands.h"
#include "mapping/islandtools.h"
#include "platform/text.h"

namespace veldra {

bool IsMapped(const CBinFace& face) {
  return face.Texture() != nullptr && face.Type() != kFaceUntextured;
}

CMappingSession::CMappingSession(CSettings& settings, std::function<CEditCursor*()> cursor)
    : settings_(settings), cursor_(std::move(cursor)) {}

void CMappingSession::Changed() const {
  if (on_changed_) on_changed_();
}

// --- Following -------------------------------------------------------------------------------------------------------

void CMappingSession::NoteRevisions() {
  identity_ = model_->Identity();
  revision_ = model_->Revision();
  selection_revision_ = model_->SelectionRevision();
}

void CMappingSession::Follow(bool has_other_items) {
  CEditCursor* const cursor = cursor_();
  if (cursor != nullptr && cursor->Model().IsBusy()) return;
  const CBinModel* const model = cursor == nullptr ? nullptr : &cursor->Model();
  const bool is_other = has_other_items || model != model_ || (model != nullptr && model->Identity() != identity_);
  const bool is_changed = is_other || (model != nullptr && model->Revision() != revision_);
  const bool is_selected_anew = model != nullptr && model->SelectionRevision() != selection_revision_;
  if (is_changed) End();  // what was under way is over
  if (is_other) faces_.Clear();
  model_ = model;
  if (model == nullptr) {
    TakeFaces();
  } else if (is_other) {
    chosen_ = FacesToEdit(*cursor);
    TakeFaces();
  } else if (is_selected_anew) {
    TakeSelection();
  } else if (is_changed || (chosen_.size() <= 1 && cursor->Face() != current_face_)) {
    if (model->SelectedCount(EGroupKind::kFaces) == 0 && chosen_.size() <= 1) chosen_ = FacesToEdit(*cursor);
    TakeFaces();
  }
  current_face_ = cursor == nullptr ? -1 : cursor->Face();
  Changed();
}

/// The selection was made elsewhere; the vertices may be all that was selected anew.
void CMappingSession::TakeSelection() {
  const std::vector<int32_t> faces = FacesToEdit(*cursor_());
  const bool has_other_faces = faces != (Mode() == EMappingMode::kCorners ? chosen_ : SelectedModelFaces());
  if (has_other_faces) chosen_ = faces;
  TakeFaces();
  const std::vector<int32_t> vertices = model_->Selected(EGroupKind::kVertices);
  if (has_other_faces)
    faces_.SelectAll(true);
  else if (Mode() == EMappingMode::kCorners && !vertices.empty())
    faces_.SelectVertices(vertices);
}

std::vector<int32_t> CMappingSession::SelectedModelFaces() const {
  std::vector<int32_t> indices;
  for (const int32_t face : faces_.SelectedFaces())
    indices.push_back(faces_.Faces()[static_cast<size_t>(face)].index);
  return indices;
}

void CMappingSession::TakeFaces() {
  textures_.clear();
  unmapped_ = 0;
  CEditCursor* const cursor = model_ == nullptr ? nullptr : cursor_();
  if (cursor == nullptr) {
    chosen_.clear();
    texture_ = nullptr;
    texture_name_.clear();
    faces_.Clear();
    return;
  }
  std::erase_if(chosen_, [this](int32_t face) { return face >= model_->FaceCount(); });
  std::map<int32_t, int32_t> uses;
  for (const int32_t index : chosen_) {
    const CBinFace& face = model_->Face(index);
    if (IsMapped(face))
      ++uses[model_->TextureIndex(face.Texture())];
    else
      ++unmapped_;
  }
  for (const auto& [texture, count] : uses)
    textures_.push_back(&model_->Texture(texture));
  ChooseTexture(*cursor, uses);
  Read();
}

/// That which is shown, else that of the current face, else the one that most faces have. USES: faces by texture.
void CMappingSession::ChooseTexture(const CEditCursor& cursor, const std::map<int32_t, int32_t>& uses) {
  const auto is_used = [this](const CBinTexture* texture) {
    return std::ranges::find(textures_, texture) != textures_.end();
  };
  if (is_used(texture_)) return;
  texture_ = nullptr;
  if (uses.empty()) return;
  const CBinFace* const current = cursor.FaceObject();
  const auto most = std::ranges::max_element(uses, {}, [](const auto& use) { return use.second; });
  texture_ = current != nullptr && is_used(current->Texture()) ? current->Texture() : &model_->Texture(most->first);
}

void CMappingSession::Read() {
  texture_name_ = texture_ == nullptr ? "" : UpperCase(texture_->Name());
  std::vector<int32_t> faces;
  for (const int32_t index : chosen_)
    if (texture_ != nullptr && IsMapped(model_->Face(index)) && model_->Face(index).Texture() == texture_)
      faces.push_back(index);
  if (faces.empty())
    faces_.Clear();
  else
    faces_.Take(*model_, faces, texture_->Width());
  NoteRevisions();
}

/// The model is as it was read or written here last.
bool CMappingSession::IsUpToDate() const {
  const CEditCursor* const cursor = cursor_();
  if (cursor == nullptr || &cursor->Model() != model_ || model_->IsBusy()) return false;
  return model_->Identity() == identity_ && model_->Revision() == revision_;
}

/// The cursor, where the model is up to date or could be read again; null else.
CEditCursor* CMappingSession::Ready() {
  if (!IsUpToDate()) Follow(true);
  return IsUpToDate() ? cursor_() : nullptr;
}

std::vector<const CBinTexture*> CMappingSession::Textures() const {
  return IsUpToDate() ? textures_ : std::vector<const CBinTexture*>();
}

void CMappingSession::ShowTexture(const CBinTexture& texture) {
  if (Ready() == nullptr || std::ranges::find(textures_, &texture) == textures_.end() || texture_ == &texture) return;
  texture_ = &texture;
  Read();
  Changed();
}

std::vector<Texels> CMappingSession::OtherFaces() const {
  std::vector<Texels> outlines;
  if (Texture() == nullptr) return outlines;
  std::vector<bool> is_here(static_cast<size_t>(model_->FaceCount()), false);
  for (const SMappedFace& face : faces_.Faces())
    is_here[static_cast<size_t>(face.index)] = true;
  for (int32_t i = 0; i < model_->FaceCount(); ++i) {
    const CBinFace& face = model_->Face(i);
    if (is_here[static_cast<size_t>(i)] || face.Texture() != texture_ || !IsMapped(face)) continue;
    Texels& outline = outlines.emplace_back();
    for (int k = 0; k < face.CornerCount(); ++k)
      outline.push_back(TexelOf(face.TexCoord(k), texture_->Width()));
  }
  return outlines;
}

bool CMappingSession::IsReadOnly() const {
  const CEditCursor* const cursor = cursor_();
  return cursor == nullptr || cursor->Document().IsReadOnly();
}

EMappingMode CMappingSession::Mode() const {
  return static_cast<EMappingMode>(std::clamp(settings_.tex_edit_mode, 0, 2));
}

void CMappingSession::SetMode(EMappingMode mode) {
  if (mode == Mode()) return;
  settings_.tex_edit_mode = static_cast<int32_t>(mode);
  if (mode == EMappingMode::kFaces) faces_.SelectFaces(faces_.SelectedFaces(), ESelect::kOnly);
  if (mode == EMappingMode::kIslands) faces_.SelectIslands(faces_.SelectedFaces(), ESelect::kOnly);
  Changed();
}

// --- Selection -------------------------------------------------------------------------------------------------------

void CMappingSession::GiveSelection() {
  CBinModel& model = cursor_()->Document().Model();
  if (Mode() == EMappingMode::kCorners) {
    model.SelectAll(EGroupKind::kVertices, false);
    model.Select(EGroupKind::kVertices, faces_.SelectedVertices(), true);
  } else {
    model.SelectAll(EGroupKind::kFaces, false);
    model.Select(EGroupKind::kFaces, SelectedModelFaces(), true);
  }
  NoteRevisions();
}

void CMappingSession::Select(const std::function<void(CMappedFaces&)>& change) {
  if (Ready() == nullptr || faces_.Empty()) return;
  change(faces_);
  GiveSelection();
  Changed();
}

void CMappingSession::SelectAll(bool is_selected) {
  Select([&](CMappedFaces& faces) { faces.SelectAll(is_selected); });
}

void CMappingSession::InvertSelection() {
  Select(
      [this](CMappedFaces& faces) { Mode() == EMappingMode::kCorners ? faces.InvertPoints() : faces.InvertFaces(); });
}

std::optional<STexelRect> CMappingSession::SelectedBounds() const {
  const Texels places = faces_.PlacesOf(faces_.SelectedPoints());
  return places.empty() ? std::nullopt : std::optional(BoundsOf(places));
}

void CMappingSession::TakeApart() {
  if (Ready() == nullptr) return;
  faces_.TakeApart(Mode());
  Changed();
}

// --- Actions ---------------------------------------------------------------------------------------------------------

bool CMappingSession::Begin(const char* name, bool whole_faces) {
  CEditCursor* const cursor = Ready();
  if (IsUnderWay() || cursor == nullptr || cursor->Document().IsReadOnly()) return false;
  moved_ = whole_faces ? faces_.PointsOfTouchedFaces() : faces_.SelectedPoints();
  if (moved_.empty()) return false;
  action_ = name;
  start_ = faces_.PlacesOf(moved_);
  coords_ = faces_.Read(*model_, moved_);
  was_modified_ = cursor->Document().IsModified();
  is_written_ = false;
  step_ = std::make_unique<CStep>(cursor->Document(), action_);
  return true;
}

Texels CMappingSession::Staying() const {
  std::vector<bool> is_moved(faces_.Points().size(), false);
  for (const int32_t point : moved_)
    is_moved[static_cast<size_t>(point)] = true;
  Texels staying;
  for (size_t i = 0; i < is_moved.size(); ++i)
    if (!is_moved[i]) staying.push_back(faces_.Points()[i].at);
  return staying;
}

void CMappingSession::Try(const Texels& places) {
  if (!IsUnderWay() || Ready() == nullptr || !IsUnderWay()) return;
  const Texels wanted = is_on_texels_ ? Snapped(places) : places;
  if (wanted == faces_.PlacesOf(moved_)) return;
  faces_.Place(moved_, wanted);
  if (settings_.preview != 0) WriteMoved();
  Changed();
}

void CMappingSession::WriteMoved() {
  CTarnDoc& document = cursor_()->Document();
  if (!is_written_) document.KeepState(action_);
  is_written_ = true;
  faces_.Write(document.Model(), moved_);
  document.Model().ReportFacesChanged();
  NoteRevisions();
}

void CMappingSession::End() {
  moved_.clear();
  step_.reset();
}

void CMappingSession::Finish() {
  if (!IsUnderWay() || Ready() == nullptr || !IsUnderWay()) return;
  CTarnDoc& document = cursor_()->Document();
  if (faces_.PlacesOf(moved_) == start_) {
    Cancel();
    return;
  }
  if (settings_.preview == 0) WriteMoved();
  End();
  faces_.Settle();
  if (Mode() != EMappingMode::kCorners) faces_.SelectFaces(faces_.SelectedFaces(), ESelect::kOnly);
  document.Say("Done: " + action_);
  Changed();
}

void CMappingSession::Cancel() {
  if (!IsUnderWay() || Ready() == nullptr || !IsUnderWay()) return;
  CTarnDoc& document = cursor_()->Document();
  faces_.Place(moved_, start_);
  if (is_written_) {
    faces_.Restore(document.Model(), moved_, coords_);
    document.Model().ReportFacesChanged();
    document.SetModified(was_modified_);
    NoteRevisions();
  }
  End();
  Changed();
}

void CMappingSession::Apply(const char* name, const Transform& transform, bool whole_faces) {
  if (!Begin(name, whole_faces)) return;
  Try(KeptInside(transform(start_), faces_.Width()));
  Finish();
}

// --- Tools -----------------------------------------------------------------------------------------------------------

void CMappingSession::Move(const STexel& by) {
  Apply("Move Mapping",
        [&](const Texels& points) { return Moved(points, StoppedAtEdge(BoundsOf(points), by, faces_.Width())); });
}

void CMappingSession::Turn(double degrees) {
  const STexel pivot = Pivot();
  Apply(
      "Rotate Mapping", [&](const Texels& points) { return Turned(points, pivot, degrees); },
      settings_.tex_rot_sel_verts_only == 0);
}

void CMappingSession::Scale(double across, double down) {
  const STexel pivot = Pivot();
  Apply("Scale Mapping", [&](const Texels& points) {
    // No larger than the texture, each way for itself.
    const STexelRect bounds = BoundsOf(points);
    const auto most = [this](double size, double factor) {
      return size * std::abs(factor) > faces_.Width() - 1 ? std::copysign((faces_.Width() - 1) / size, factor) : factor;
    };
    return Scaled(points, pivot, most(bounds.Width(), across), most(bounds.Height(), down));
  });
}

void CMappingSession::Flip(ETexelAxis axis) {
  Apply("Flip Mapping", [&](const Texels& points) { return Flipped(points, axis); });
}

/// How often TOOL was pressed before without anything else between.
int CMappingSession::PressesOf(const std::string& tool) {
  const bool is_again = pressed_.tool == tool && pressed_.bounds == SelectedBounds();
  pressed_ = {tool, is_again ? pressed_.count + 1 : 0, std::nullopt};
  return pressed_.count;
}

void CMappingSession::Justify(EJustify side) {
  const int press = PressesOf(Format("justify %d", static_cast<int>(side)));
  Apply("Justify Mapping", [&](const Texels& points) {
    return Moved(points, JustifyOffset(BoundsOf(points), side, faces_.Width(), press));
  });
  pressed_.bounds = SelectedBounds();
}

void CMappingSession::Fit(const STexelRect& area) {
  Apply("Fit Mapping", [&](const Texels& points) { return Stretched(points, area); });
}

void CMappingSession::FitNext() {
  const std::vector<STexturePart> parts = TextureParts(faces_.Width());
  const STexturePart& part = parts[static_cast<size_t>(PressesOf("fit")) % parts.size()];
  Fit(part.area);
  pressed_.bounds = SelectedBounds();
  if (CEditCursor* const cursor = cursor_()) cursor->Document().Say("Fitted to " + part.name);
}

void CMappingSession::AlignToEdge() {
  const std::vector<int32_t> selected = faces_.SelectedFaces();
  if (selected.empty()) return;
  const double degrees = AlignAngle(faces_.Outline(faces_.Faces()[static_cast<size_t>(selected.front())]));
  const STexel pivot = Pivot();
  Apply("Align Mapping", [&](const Texels& points) { return Turned(points, pivot, degrees); });
}

void CMappingSession::Straighten() {
  Apply("Straighten Mapping", [](const Texels& points) { return Straightened(points); });
}

void CMappingSession::SnapToTexels() {
  Apply("Snap Mapping to Texels", [](const Texels& points) { return Snapped(points); });
}

void CMappingSession::MapByGeometry(const SProjection& projection, const STexelRect& area) {
  CEditCursor* const cursor = Ready();
  const std::vector<int32_t> selected = faces_.SelectedFaces();
  if (IsUnderWay() || cursor == nullptr || cursor->Document().IsReadOnly() || selected.empty()) return;
  std::vector<CornerTexels> places = MapFromGeometry(*model_, SelectedModelFaces(), projection, area);
  for (CornerTexels& corners : places)
    for (STexel& at : corners)
      at = is_on_texels_ ? Rounded(at) : at;
  faces_.PlaceCorners(selected, places);
  faces_.SelectFaces(selected, ESelect::kOnly);
  action_ = "Map from Geometry";
  is_written_ = false;
  moved_ = faces_.SelectedPoints();
  const CStep step(cursor->Document(), action_);
  WriteMoved();
  moved_.clear();
  cursor->Document().Say("Mapped " + Counted(static_cast<int64_t>(selected.size()), "face", "faces"));
  Changed();
}

void CMappingSession::Weld() {
  if (!Begin("Weld Mapping")) return;
  Try(Welded(faces_, moved_));
  Finish();
  faces_.Join();
  Changed();
}

void CMappingSession::Sew() {
  if (!Begin("Sew Mapping")) return;
  Try(KeptInside(Sewn(faces_, moved_), faces_.Width()));
  Finish();
  faces_.Join();
  Changed();
}

void CMappingSession::Pack(const STexelRect& area, double gap) {
  if (!Begin("Pack Mapping")) return;
  Try(Packed(faces_, moved_, area, gap));
  Finish();
}

// --- Pivot and guides ------------------------------------------------------------------------------------------------

STexel CMappingSession::Pivot() const {
  const auto bounds = SelectedBounds();
  return pivot_ || !bounds ? pivot_.value_or(STexel{}) : bounds->Middle();
}

void CMappingSession::SetPivot(const std::optional<STexel>& pivot) {
  pivot_ = pivot;
  Changed();
}

const STextureGuides& CMappingSession::Guides() const {
  static const STextureGuides kNone;
  const auto found = std::ranges::find(guides_, texture_name_, &NamedGuides::value_type::first);
  return found == guides_.end() ? kNone : found->second;
}

void CMappingSession::SetGuides(const STextureGuides& guides) {
  if (texture_name_.empty()) return;
  KeepGuides(guides_, texture_name_, guides);
  Changed();
}

}  // namespace veldra
