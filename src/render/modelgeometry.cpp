#include "render/modelgeometry.h"

#include <algorithm>
#include <unordered_map>

#include "model/normals.h"

namespace veldra {

namespace {

constexpr int kLooks = 4;
constexpr int kHidden = -1;

/// Numbers what faces look like: texture × look. Neighbours mostly share a texture, so the last answer is kept.
class CBatchNumbers {
 public:
  int Number(const CBinFace& face) {
    const EFaceLook look = FaceLook(face);
    const CBinTexture* texture = look == EFaceLook::kUntextured ? nullptr : face.Texture();
    if (texture != last_ || textures_.empty()) slot_ = Slot(texture);
    last_ = texture;
    return slot_ * kLooks + static_cast<int>(look);
  }
  int Count() const { return static_cast<int>(textures_.size()) * kLooks; }
  const CBinTexture* Texture(int number) const { return textures_[static_cast<size_t>(number / kLooks)]; }
  static EFaceLook Look(int number) { return static_cast<EFaceLook>(number % kLooks); }

 private:
  int Slot(const CBinTexture* texture) {
    const auto [place, is_new] = slots_.try_emplace(texture, static_cast<int>(textures_.size()));
    if (is_new) textures_.push_back(texture);
    return place->second;
  }

  std::unordered_map<const CBinTexture*, int> slots_;
  std::vector<const CBinTexture*> textures_;
  const CBinTexture* last_ = nullptr;
  int slot_ = 0;
};

std::array<float, 2> TexelCenter(const CBinFace& face, int corner) {
  const STexCoord& coord = face.TexCoord(corner);
  const double width = face.Texture() != nullptr ? face.Texture()->Width() : 0;
  if (width < 1.0) return {static_cast<float>(coord.u), static_cast<float>(coord.v)};
  return {static_cast<float>((coord.u * (width - 1.0) + 0.5) / width),
          static_cast<float>((coord.v * (width - 1.0) + 0.5) / width)};
}

/// Whether a face goes from FROM to TO. Gives up where so many faces meet that looking would take longer than drawing.
bool HasEdge(const CBinVertex& from, const CBinVertex& to) {
  constexpr int32_t kMostFaces = 32;
  const CFaceSet& faces = from.Faces().Size() < to.Faces().Size() ? from.Faces() : to.Faces();
  if (faces.Size() > kMostFaces) return false;
  for (const CBinFace* face : faces) {
    const int count = face->CornerCount();
    for (int k = 0; k < count && !face->IsHidden(); ++k) {
      if (face->Corner(k) == &from && face->Corner((k + 1) % count) == &to) return true;
    }
  }
  return false;
}

}  // namespace

CModelSpace::CModelSpace(const SBounds& bounds) {
  const Vector3 low = ToVector(bounds.min);
  const Vector3 high = ToVector(bounds.max);
  center_ = 0.5 * (low + high);
  radius_ = std::max(1.0, Length(high - low) / 2.0);
}

FloatPoint CModelSpace::Place(const SPoint& point) const {
  return {static_cast<float>((point.x - center_[0]) / radius_), static_cast<float>((point.y - center_[1]) / radius_),
          static_cast<float>((point.z - center_[2]) / radius_)};
}

EFaceLook FaceLook(const CBinFace& face) {
  if (face.Texture() == nullptr || face.Type() == kFaceUntextured) return EFaceLook::kUntextured;
  if (face.Type() == kFaceTransparentMtm || face.Type() == kFaceTransparentMtm2) return EFaceLook::kTransparent;
  return face.Type() == kFaceShiny ? EFaceLook::kShiny : EFaceLook::kTextured;
}

SFaceBatches BatchFaces(const CBinModel& model) {
  const auto count = static_cast<size_t>(model.FaceCount());
  CBatchNumbers numbers;
  std::vector<int> number_of_face(count);
  for (size_t k = 0; k < count; ++k) {
    const CBinFace& face = model.Face(static_cast<int32_t>(k));
    number_of_face[k] = face.IsHidden() ? kHidden : numbers.Number(face);
  }

  // A counting sort: where each number's faces begin, then each face to the next free place of its number.
  std::vector<size_t> begin(static_cast<size_t>(numbers.Count()) + 1);
  for (const int number : number_of_face)
    if (number != kHidden) ++begin[static_cast<size_t>(number) + 1];
  for (size_t k = 1; k < begin.size(); ++k)
    begin[k] += begin[k - 1];
  SFaceBatches result;
  result.order.resize(begin.back());
  std::vector<size_t> next = begin;
  for (size_t k = 0; k < count; ++k) {
    if (number_of_face[k] == kHidden) continue;
    result.order[next[static_cast<size_t>(number_of_face[k])]++] = static_cast<int32_t>(k);
  }
  for (int number = 0; number < numbers.Count(); ++number) {
    const size_t first = begin[static_cast<size_t>(number)];
    const size_t size = begin[static_cast<size_t>(number) + 1] - first;
    if (size == 0) continue;
    result.batches.push_back({.texture = numbers.Texture(number),
                              .look = CBatchNumbers::Look(number),
                              .faces = std::span<const int32_t>(result.order).subspan(first, size)});
  }
  return result;
}

void AppendFace(const CBinFace& face, const CModelSpace& space, std::vector<SFaceVertex>& out) {
  CalcFaceNormal(face);
  const SUnitNormal& unit = face.UnitNormal();
  const FloatPoint normal = {static_cast<float>(unit.x), static_cast<float>(unit.y), static_cast<float>(unit.z)};
  std::array<SFaceVertex, 4> corners;
  const int count = face.CornerCount();
  for (int k = 0; k < count; ++k) {
    corners[static_cast<size_t>(k)] = {TexelCenter(face, k), normal, space.Place(face.Corner(k)->Position())};
  }
  out.insert(out.end(), {corners[0], corners[1], corners[2]});
  if (count == 4) out.insert(out.end(), {corners[0], corners[2], corners[3]});
}

void AppendEdges(const CBinFace& face, const CModelSpace& space, std::vector<FloatPoint>& out) {
  if (face.IsHidden()) return;
  const int count = face.CornerCount();
  for (int k = 0; k < count; ++k) {
    const CBinVertex& from = *face.Corner(k);
    const CBinVertex& to = *face.Corner((k + 1) % count);
    if (from.Index() > to.Index() && HasEdge(to, from)) continue;
    out.push_back(space.Place(from.Position()));
    out.push_back(space.Place(to.Position()));
  }
}

}  // namespace veldra
