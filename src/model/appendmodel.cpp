#include "model/appendmodel.h"

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>

#include "model/normals.h"
#include "platform/assert.h"
#include "platform/text.h"

namespace veldra {

namespace {

bool FitTogether(int32_t a, int32_t b) {
  return int64_t{a} + b <= std::numeric_limits<int32_t>::max();
}

bool PlaysTheSame(const CBinTexture& a, const CBinTexture& b) {
  const auto same_name = [](const auto& x, const auto& y) { return EqualNoCase(x.name, y.name); };
  return a.Rate() == b.Rate() &&
         std::equal(a.Frames().begin(), a.Frames().end(), b.Frames().begin(), b.Frames().end(), same_name);
}

/// MODEL's entry that stands for ENTRY of another model: one that it has, or a copy.
CBinTexture* TakeOver(CBinModel& model, const CBinTexture& entry) {
  CBinTexture* own = model.FindTexture(entry.Name(), entry.Kind());
  if (entry.Kind() == ETextureKind::kPlain) {
    return own ? own : &model.AddTexture(std::make_unique<CBinTexture>(model, entry.Name(), entry.Image()));
  }
  if (own && PlaysTheSame(*own, entry)) return own;
  std::string name = entry.Name();
  for (int number = 2; model.FindTexture(name, entry.Kind()); ++number)
    name = entry.Name() + Format(" %d", number);
  return &model.AddTexture(std::make_unique<CBinTexture>(model, name, entry.Frames(), entry.Rate()));
}

/// For each of OTHER's entries the one in MODEL; null stays null.
std::map<const CBinTexture*, CBinTexture*> TakeOverTextures(CBinModel& model, const CBinModel& other) {
  std::map<const CBinTexture*, CBinTexture*> own = {{nullptr, nullptr}};
  for (int32_t i = 0; i < other.TextureCount(); ++i)
    own[&other.Texture(i)] = TakeOver(model, other.Texture(i));
  return own;
}

void TakeOverGroups(CBinModel& model, EGroupKind kind, const CBinModel::Groups& groups, int32_t shift) {
  CBinModel::Groups shifted;
  for (const CBinGroup& group : groups) {
    std::vector<int32_t> members = group.Members();
    for (int32_t& member : members)
      member += shift;
    shifted.emplace_back(group.Name(), kind, std::move(members));
  }
  model.AddGroups(kind, std::move(shifted));
}

template <typename List>
void MoveBehind(List& list, List& tail) {
  list.insert(list.end(), std::make_move_iterator(tail.begin()), std::make_move_iterator(tail.end()));
}

/// The arrays of both, with OTHER's behind MODEL's own.
void Join(CBinModel& model, CBinModel& other, const std::map<const CBinTexture*, CBinTexture*>& textures) {
  auto [vertices, faces] = model.TakeAll();
  std::vector<int32_t> vertex_map(vertices.size());
  std::iota(vertex_map.begin(), vertex_map.end(), 0);
  std::vector<int32_t> face_map(faces.size());
  std::iota(face_map.begin(), face_map.end(), 0);
  auto [other_vertices, other_faces] = other.TakeAll();
  for (const auto& face : other_faces)
    model.Adopt(*face, face->Corners(), textures.at(face->Texture()));
  MoveBehind(vertices, other_vertices);
  MoveBehind(faces, other_faces);
  model.Rebuild(std::move(vertices), std::move(faces), vertex_map, face_map);
}

}  // namespace

bool AppendModel(CBinModel& model, CBinModel& other, bool recompute_magic) {
  VELDRA_ASSERT(&model != &other);
  const int32_t old_vertices = model.VertexCount();
  const int32_t old_faces = model.FaceCount();
  if (!FitTogether(old_vertices, other.VertexCount()) || !FitTogether(old_faces, other.FaceCount())) return false;
  const CBinModel::CBusy busy(model);
  const CBinModel::CBusy other_busy(other);
  if (recompute_magic) {
    for (int32_t i = 0; i < other.FaceCount(); ++i) {
      CBinFace& face = other.Face(i);
      face.SetStored(face.StoredNormal(), CalcMagic(face));
    }
  }
  const CBinModel::Groups face_groups = other.FaceGroups();
  const CBinModel::Groups vertex_groups = other.VertexGroups();
  Join(model, other, TakeOverTextures(model, other));
  other.Clear();
  TakeOverGroups(model, EGroupKind::kFaces, face_groups, old_faces);
  TakeOverGroups(model, EGroupKind::kVertices, vertex_groups, old_vertices);
  return true;
}

}  // namespace veldra
