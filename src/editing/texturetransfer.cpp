#include "editing/texturetransfer.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "editing/facecommands.h"
#include "editing/texturecommands.h"
#include "model/normals.h"
#include "model/texelgrid.h"
#include "platform/text.h"
#include "platform/vector3.h"

namespace veldra {

namespace {

constexpr double kSamePlane = 0.9999;  ///< the cosine between two normals

Vector3 At(const CBinVertex& vertex) {
  return ToVector(vertex.Position());
}

Vector3 NormalOf(const CBinFace& face) {
  CalcFaceNormal(face);
  return {face.UnitNormal().x, face.UnitNormal().y, face.UnitNormal().z};
}

/// How a face shows its texture, for any point of its plane.
class CPlaneMapping {
 public:
  explicit CPlaneMapping(const CBinFace& face)
      : origin_(At(*face.Corner(0))), x_(Normalized(At(*face.Corner(1)) - origin_)), y_(Cross(NormalOf(face), x_)) {
    const Vector3 second = At(*face.Corner(2)) - origin_;
    start_ = face.TexCoord(0);
    const double length = Dot(At(*face.Corner(1)) - origin_, x_);
    const double across = Dot(second, x_);
    const double up = Dot(second, y_);
    u_x_ = (face.TexCoord(1).u - start_.u) / length;
    v_x_ = (face.TexCoord(1).v - start_.v) / length;
    u_y_ = (face.TexCoord(2).u - start_.u - u_x_ * across) / up;
    v_y_ = (face.TexCoord(2).v - start_.v - v_x_ * across) / up;
  }

  STexCoord Of(const Vector3& at) const {
    const double x = Dot(at - origin_, x_);
    const double y = Dot(at - origin_, y_);
    return {start_.u + u_x_ * x + u_y_ * y, start_.v + v_x_ * x + v_y_ * y};
  }

 private:
  Vector3 origin_;
  Vector3 x_;
  Vector3 y_;
  STexCoord start_;
  double u_x_ = 0.0;
  double u_y_ = 0.0;
  double v_x_ = 0.0;
  double v_y_ = 0.0;
};

std::optional<std::pair<const CBinVertex*, const CBinVertex*>> SharedEdge(const CBinFace& face, const CBinFace& other) {
  for (int k = 0; k < face.CornerCount(); ++k) {
    const CBinVertex* const a = face.Corner(k);
    const CBinVertex* const b = face.Corner((k + 1) % face.CornerCount());
    if (other.HasCorner(a) && other.HasCorner(b)) return std::pair(a, b);
  }
  return std::nullopt;
}

/// Points of one face where they come to lie when it is laid into the plane of another about their edge.
class CFold {
 public:
  CFold(const CBinFace& face, const CBinFace& into) {
    const auto edge = SharedEdge(face, into);
    if (!edge) return;
    is_edge_ = true;
    start_ = At(*edge->first);
    along_ = Normalized(At(*edge->second) - start_);
    from_ = Cross(NormalOf(face), along_);
    to_ = Cross(NormalOf(into), along_);
  }
  Vector3 Of(const Vector3& at) const {
    if (!is_edge_) return at;
    return start_ + Dot(at - start_, along_) * along_ + Dot(at - start_, from_) * to_;
  }

 private:
  bool is_edge_ = false;
  Vector3 start_ = {};
  Vector3 along_ = {};
  Vector3 from_ = {};
  Vector3 to_ = {};
};

/// Back onto the texture by whole steps, and cut off where that does not do.
void BringBack(std::vector<double>& values) {
  constexpr double kSlack = 1e-6;
  const auto [low, high] = std::ranges::minmax(values);
  double by = -std::floor(low + kSlack);
  if (high + by > 1 + kSlack) by = high - low <= 1 ? 1 - high : -low;
  for (double& value : values)
    value = std::clamp(value + by, 0.0, 1.0);
}

std::vector<STexCoord> OnTexture(const std::vector<STexCoord>& coords) {
  std::vector<double> u;
  std::vector<double> v;
  for (const STexCoord& coord : coords) {
    u.push_back(coord.u);
    v.push_back(coord.v);
  }
  BringBack(u);
  BringBack(v);
  std::vector<STexCoord> back;
  back.reserve(coords.size());
  for (size_t k = 0; k < coords.size(); ++k)
    back.push_back({u[k], v[k]});
  return back;
}

void SetCoords(CBinFace& face, const std::vector<STexCoord>& coords) {
  for (size_t k = 0; k < coords.size(); ++k)
    face.SetTexCoord(static_cast<int>(k), NearestTexel(face, coords[k]));
}

/// A face that has never had a texture shows all of it.
void ShowWhole(CBinFace& face) {
  const auto is_first = [&](int k) { return face.TexCoord(k) == face.TexCoord(0); };
  if (!is_first(1) || !is_first(2)) return;
  SetCoords(face, {{0, 1}, {1, 1}, {1, 0}});
  if (face.CornerCount() == 4) face.SetTexCoord(3, {0, 0});
}

}  // namespace

// --- Assigning -------------------------------------------------------------------------------------------------------

bool CanAssignTexture(const CEditCursor& cursor) {
  return CanEditFaces(cursor) && cursor.Model().TextureCount() > 0;
}

void AssignTexture(CTarnDoc& document, std::span<const int32_t> faces, CBinTexture& entry) {
  if (document.IsReadOnly() || faces.empty()) return;
  const CStep step(document, "Assign Texture");
  document.KeepState("Assign Texture");
  CBinModel& model = document.Model();
  {
    const CBinModel::CBusy one_change(model);
    for (const int32_t index : faces) {
      CBinFace& face = model.Face(index);
      model.SetFaceTexture(index, &entry);
      if (face.Type() != kFaceUntextured) continue;
      face.SetType(static_cast<uint32_t>(document.Settings().def_face_type));
      ShowWhole(face);
    }
    model.ReportFacesChanged();
  }
  document.Say(entry.Name() + " assigned to " + Counted(static_cast<int64_t>(faces.size()), "face", "faces"));
}

void AssignTexture(CEditCursor& cursor, CBinTexture& entry) {
  if (CanAssignTexture(cursor)) AssignTexture(cursor.Document(), FacesToEdit(cursor), entry);
}

// --- Transfer --------------------------------------------------------------------------------------------------------

bool CTextureTransfer::CanTake(const CBinFace& face) {
  return face.Texture() != nullptr && face.Type() != kFaceUntextured && Length(NormalOf(face)) > 0.5;
}

CTextureTransfer::CTextureTransfer(CTarnDoc& document, int32_t source)
    : document_(document),
      model_(document.Model()),
      step_(document, "Give Texture"),
      given_({source}),
      has_it_(static_cast<size_t>(model_.FaceCount())),
      was_modified_(document.IsModified()) {
  has_it_[static_cast<size_t>(source)] = true;
}

bool CTextureTransfer::HasIt(int32_t face) const {
  return has_it_[static_cast<size_t>(face)];
}

/// The face among those that have it, the last first, that has an edge in common with FACE; else the source.
int32_t CTextureTransfer::Neighbor(int32_t face) const {
  for (auto other = given_.rbegin(); other != given_.rend(); ++other)
    if (SharedEdge(model_.Face(face), model_.Face(*other))) return *other;
  return given_.front();
}

void CTextureTransfer::GiveTo(int32_t face, EWay way) {
  if (HasIt(face) || document_.IsReadOnly() || Length(NormalOf(model_.Face(face))) < 0.5) return;
  if (before_.empty()) document_.KeepState("Give Texture");
  const CBinModel::CBusy one_change(model_);
  Give(face, way == EWay::kProject ? given_.front() : Neighbor(face), way != EWay::kProject);
  if (way == EWay::kPlane) FillPlane(face);
  model_.ReportFacesChanged();
}

void CTextureTransfer::Give(int32_t index, int32_t from, bool folds) {
  CBinFace& face = model_.Face(index);
  const CBinFace& giver = model_.Face(from);
  SBefore& before = before_.emplace_back(SBefore{index, face.Type(), face.Texture(), {}});
  const CPlaneMapping mapping(giver);
  const CFold fold(face, giver);
  std::vector<STexCoord> coords;
  for (int k = 0; k < face.CornerCount(); ++k) {
    const Vector3 at = At(*face.Corner(k));
    before.coords.push_back(face.TexCoord(k));
    coords.push_back(mapping.Of(folds ? fold.Of(at) : at));
  }
  model_.SetFaceTexture(index, giver.Texture());
  if (face.Type() == kFaceUntextured) face.SetType(giver.Type());
  SetCoords(face, OnTexture(coords));
  given_.push_back(index);
  has_it_[static_cast<size_t>(index)] = true;
}

/// All that hangs together with FACE by edges and lies in its plane.
void CTextureTransfer::FillPlane(int32_t face) {
  const Vector3 normal = NormalOf(model_.Face(face));
  std::vector<int32_t> next = {face};
  while (!next.empty()) {
    const int32_t from = next.back();
    next.pop_back();
    for (const CBinVertex* corner : model_.Face(from).Corners()) {
      for (const CBinFace* other : corner->Faces()) {
        const bool is_wanted = !HasIt(other->Index()) && Dot(NormalOf(*other), normal) > kSamePlane;
        if (!is_wanted || !SharedEdge(*other, model_.Face(from))) continue;
        Give(other->Index(), from, true);
        next.push_back(other->Index());
      }
    }
  }
}

void CTextureTransfer::Cancel() {
  if (before_.empty()) return;
  PutBack();
  for (const SBefore& before : before_)
    has_it_[static_cast<size_t>(before.face)] = false;
  before_.clear();
  given_.resize(1);
  document_.SetModified(was_modified_);
}

void CTextureTransfer::PutBack() {
  const CBinModel::CBusy one_change(model_);
  for (const SBefore& before : before_) {
    CBinFace& face = model_.Face(before.face);
    model_.SetFaceTexture(before.face, before.texture);
    face.SetType(before.type);
    for (size_t k = 0; k < before.coords.size(); ++k)
      face.SetTexCoord(static_cast<int>(k), before.coords[k]);
  }
  model_.ReportFacesChanged();
}

}  // namespace veldra
