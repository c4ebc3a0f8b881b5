#include "editing/facecommands.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "editing/commandinputs.h"
#include "editing/modelcommands.h"
#include "editing/texturecommands.h"
#include "model/normals.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// An angle of exactly the limit counts, whatever the last digits of a cosine are.
constexpr double kCosineTolerance = 1e-9;

SUnitNormal DirectionOf(SFacingInput::EDirection direction, const SUnitNormal& to_viewer) {
  using E = SFacingInput::EDirection;
  switch (direction) {
    case E::kPlusX:
      return {1, 0, 0};
    case E::kMinusX:
      return {-1, 0, 0};
    case E::kPlusY:
      return {0, 1, 0};
    case E::kMinusY:
      return {0, -1, 0};
    case E::kPlusZ:
      return {0, 0, 1};
    case E::kMinusZ:
      return {0, 0, -1};
    case E::kViewer:
      break;
  }
  return to_viewer;
}

std::vector<CBinVertex*> CornersOf(const CBinModel& model, const SFaceInput& input) {
  std::vector<CBinVertex*> corners;
  for (const int32_t index : input.corners)
    if (index >= 0) corners.push_back(&model.Vertex(index));
  return corners;
}

std::string Faces(size_t count) {
  return Counted(static_cast<int64_t>(count), "face", "faces");
}

bool IsUnit(double value) {
  return value >= 0.0 && value <= 1.0;
}

}  // namespace

std::vector<int32_t> FacesToEdit(const CEditCursor& cursor) {
  std::vector<int32_t> faces = cursor.Model().Selected(EGroupKind::kFaces);
  if (faces.empty() && cursor.Face() >= 0) faces.push_back(cursor.Face());
  return faces;
}

bool HasFaces(const CEditCursor& cursor) {
  return cursor.Model().FaceCount() > 0;
}

bool HasCurrentFace(const CEditCursor& cursor) {
  return cursor.Face() >= 0;
}

bool HasSelectedFaces(const CEditCursor& cursor) {
  return cursor.SelectedCount(EGroupKind::kFaces) > 0;
}

bool CanEditFace(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() && HasCurrentFace(cursor);
}

bool CanEditFaces(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() && (HasCurrentFace(cursor) || HasSelectedFaces(cursor));
}

bool CanDeleteSelectedFaces(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() && HasSelectedFaces(cursor);
}

bool CanGroupFaces(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() && HasFaces(cursor);
}

bool CanMakeTaggedFace(const CEditCursor& cursor) {
  return CanAddFace(cursor.Document()) && cursor.Tagged().size() >= 3;
}

void SelectCurrentFace(CEditCursor& cursor) {
  if (!HasCurrentFace(cursor)) return;
  const int32_t face = cursor.Face();
  cursor.Document().Model().Select(EGroupKind::kFaces, {&face, 1}, true);
}

std::vector<int32_t> FacesFacing(const CBinModel& model, const SUnitNormal& direction, double degrees) {
  const double least = std::cos(degrees * std::numbers::pi / 180.0) - kCosineTolerance;
  std::vector<int32_t> faces;
  for (int32_t i = 0; i < model.FaceCount(); ++i) {
    const CBinFace& face = model.Face(i);
    CalcFaceNormal(face);
    const SUnitNormal& normal = face.UnitNormal();
    const bool has_area = normal.x != 0.0 || normal.y != 0.0 || normal.z != 0.0;
    if (has_area && normal.x * direction.x + normal.y * direction.y + normal.z * direction.z >= least)
      faces.push_back(i);
  }
  return faces;
}

std::vector<int32_t> FacesFacing(const CBinModel& model, const SFacingInput& input, const SUnitNormal& to_viewer) {
  return FacesFacing(model, DirectionOf(input.direction, to_viewer), input.degrees);
}

int32_t SelectByFacing(CEditCursor& cursor, const SFacingInput& input, const SUnitNormal& to_viewer) {
  CBinModel& model = cursor.Document().Model();
  const std::vector<int32_t> faces = FacesFacing(model, input, to_viewer);
  if (!input.add) model.SelectAll(EGroupKind::kFaces, false);
  model.Select(EGroupKind::kFaces, faces, true);
  cursor.Document().Say("Selected " + Faces(faces.size()));
  return static_cast<int32_t>(faces.size());
}

void DeleteCurrentFace(CEditCursor& cursor) {
  if (!CanEditFace(cursor)) return;
  cursor.Document().KeepState("Delete Current Face");
  cursor.Document().Say(Format("Deleted face %d", cursor.Face()));
  cursor.Document().Model().RemoveFaces(cursor.Face(), 1);
}

void DeleteSelectedFaces(CEditCursor& cursor) {
  if (!CanDeleteSelectedFaces(cursor)) return;
  cursor.Document().KeepState("Delete Selected Faces");
  const std::vector<int32_t> faces = cursor.Model().Selected(EGroupKind::kFaces);
  cursor.Document().Model().RemoveFaces(faces);
  cursor.Document().Say("Deleted " + Faces(faces.size()));
}

void FlipFaces(CEditCursor& cursor) {
  if (!CanEditFaces(cursor)) return;
  cursor.Document().KeepState("Flip");
  const std::vector<int32_t> faces = FacesToEdit(cursor);
  cursor.Document().Model().TurnFacesRound(faces);
  cursor.Document().Say("Flipped " + Faces(faces.size()));
}

bool MakeTaggedFace(CEditCursor& cursor) {
  if (!CanMakeTaggedFace(cursor)) return false;
  CTarnDoc& document = cursor.Document();
  SAddFaceInput input;
  input.corners = {-1, -1, -1, -1};
  const std::vector<int32_t> tagged = cursor.Tagged();
  std::copy(tagged.begin(), tagged.end(), input.corners.begin());
  input.type = static_cast<uint32_t>(document.Settings().def_face_type);
  if (const CBinFace* current = cursor.FaceObject(); current != nullptr && current->Texture() != nullptr)
    input.texture = document.Model().TextureIndex(current->Texture());
  if (!AddFace(document, input)) return false;
  cursor.ClearTags();
  cursor.SetFace(document.Model().FaceCount() - 1);
  return true;
}

SFaceInput InputOf(const CBinFace& face) {
  SFaceInput input;
  input.type = face.Type();
  input.texture = face.Owner().TextureIndex(face.Texture());
  input.corners[3] = -1;
  for (int k = 0; k < face.CornerCount(); ++k) {
    input.corners[static_cast<size_t>(k)] = face.Corner(k)->Index();
    input.coords[static_cast<size_t>(k)] = face.TexCoord(k);
  }
  return input;
}

std::string InputFault(const CBinModel& model, const SFaceInput& input) {
  const SAddFaceInput as_new = {.corners = input.corners, .type = input.type, .texture = input.texture};
  std::string fault = InputFault(model, as_new);
  for (size_t k = 0; k < input.coords.size() && fault.empty(); ++k)
    if (!IsUnit(input.coords[k].u) || !IsUnit(input.coords[k].v))
      fault = Format("The texture coordinates of corner %zu must lie between 0 and 1.", k + 1);
  return fault;
}

void EditFace(CEditCursor& cursor, const SFaceInput& input) {
  if (!CanEditFace(cursor) || input == InputOf(*cursor.FaceObject())) return;
  CTarnDoc& document = cursor.Document();
  CBinModel& model = document.Model();
  document.KeepState("Edit Current Face");
  const CBinModel::CBusy all_at_once(model);
  CBinFace& face = *cursor.FaceObject();
  face.SetType(input.type);
  const std::vector<CBinVertex*> corners = CornersOf(model, input);
  if (!std::ranges::equal(corners, face.Corners())) model.SetFaceCorners(face.Index(), corners);
  model.SetFaceTexture(face.Index(), input.texture < 0 ? nullptr : &model.Texture(input.texture));
  for (size_t k = 0; k < input.coords.size(); ++k)
    face.SetTexCoord(static_cast<int>(k), OnTexel(face, input.coords[k]));
  model.ReportFacesChanged();
  document.Say(Format("Changed face %d", face.Index()));
}

SFacePlane ComputedPlane(const CBinModel& model, const SFaceInput& input) {
  const std::vector<CBinVertex*> corners = CornersOf(model, input);
  CBinFace face(corners.front()->Owner());
  face.SetCorners(corners);
  const SPoint normal = CalcFaceNormal(face);
  return {normal, CalcMagic(face, normal)};
}

std::string InputFault(const CBinModel& model, const SGroupFacesInput& input) {
  if (input.faces.empty()) return "There is no face to change.";
  if (!input.type || *input.type == kFaceUntextured) return "";
  const auto without =
      std::ranges::count_if(input.faces, [&](int32_t index) { return model.Face(index).Texture() == nullptr; });
  if (without == 0) return "";
  return Format("%lld of the faces have no texture, which this type needs.", static_cast<long long>(without));
}

namespace {

bool Changes(const CBinFace& face, const SGroupFacesInput& input) {
  if (input.type && *input.type != face.Type()) return true;
  if (input.magic == SGroupFacesInput::EMagic::kValue) return input.value != face.StoredMagic();
  if (input.magic != SGroupFacesInput::EMagic::kComputed) return false;
  const SPoint normal = CalcFaceNormal(face);
  return normal != face.StoredNormal() || CalcMagic(face, normal) != face.StoredMagic();
}

bool Changes(const CBinModel& model, const SGroupFacesInput& input) {
  return std::ranges::any_of(input.faces, [&](int32_t index) { return Changes(model.Face(index), input); });
}

}  // namespace

void GroupFaces(CEditCursor& cursor, const SGroupFacesInput& input) {
  CBinModel& model = cursor.Document().Model();
  if (!CanGroupFaces(cursor) || !InputFault(model, input).empty() || !Changes(model, input)) return;
  cursor.Document().KeepState("Group Face Type and Magic Number");
  for (const int32_t index : input.faces) {
    CBinFace& face = model.Face(index);
    if (input.type) face.SetType(*input.type);
    if (input.magic == SGroupFacesInput::EMagic::kValue) face.SetStored(face.StoredNormal(), input.value);
    if (input.magic != SGroupFacesInput::EMagic::kComputed) continue;
    const SPoint normal = CalcFaceNormal(face);
    face.SetStored(normal, CalcMagic(face, normal));
  }
  model.ReportFacesChanged();
  cursor.Document().Say("Changed " + Faces(input.faces.size()));
}

}  // namespace veldra
