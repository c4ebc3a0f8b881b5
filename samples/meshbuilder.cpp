#include "samples/meshbuilder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace veldra::samples {

const STextureImage* CMeshBuilder::Find(const std::string& name) {
  const STextureImage* image = textures_.Find(name);
  if (image == nullptr && missing_.empty()) missing_ = name;
  return image;
}

void CMeshBuilder::Use(const std::string& texture, uint32_t type) {
  type_ = type;
  texture_ = model_.FindTexture(texture, ETextureKind::kPlain);
  if (texture_ != nullptr) return;
  if (const STextureImage* image = Find(texture)) {
    texture_ = &model_.AddTexture(std::make_unique<CBinTexture>(model_, texture, image));
  }
}

void CMeshBuilder::UseAnimation(const std::string& name, std::span<const std::string> frames, double rate) {
  type_ = kFaceTextured;
  texture_ = nullptr;
  std::vector<CBinTexture::SFrame> images;
  for (const std::string& frame : frames) {
    const STextureImage* image = Find(frame);
    if (image == nullptr) return;
    images.push_back({frame, image});
  }
  texture_ = &model_.AddTexture(std::make_unique<CBinTexture>(model_, name, std::move(images), rate));
}

void CMeshBuilder::UseNoTexture() {
  type_ = kFaceUntextured;
  texture_ = nullptr;
}

void CMeshBuilder::Place(const Vector3& offset, bool mirrored) {
  offset_ = offset;
  mirrored_ = mirrored;
}

CBinVertex* CMeshBuilder::VertexAt(const Vector3& place) {
  const SPoint point = {static_cast<int32_t>(std::lround(place[0])), static_cast<int32_t>(std::lround(place[1])),
                        static_cast<int32_t>(std::lround(place[2]))};
  const auto [entry, is_new] = vertices_.try_emplace({point.x, point.y, point.z}, nullptr);
  if (is_new) entry->second = &model_.AddVertex(point);
  return entry->second;
}

void CMeshBuilder::AddFace(std::span<const SCorner> corners) {
  if (texture_ == nullptr && type_ != kFaceUntextured) return;  // its texture is missing, and reported as such
  std::vector<SPoint> points;
  std::vector<SCorner> kept;
  for (const SCorner& corner : corners) {
    const Vector3 place = Vector3{mirrored_ ? -corner.at[0] : corner.at[0], corner.at[1], corner.at[2]} + offset_;
    const SPoint point = {static_cast<int32_t>(std::lround(place[0])), static_cast<int32_t>(std::lround(place[1])),
                          static_cast<int32_t>(std::lround(place[2]))};
    if (std::ranges::find(points, point) != points.end()) continue;
    points.push_back(point);
    kept.push_back({place, corner.tex});
  }
  if (kept.size() < 3) return;
  if (mirrored_) std::ranges::reverse(kept);

  auto face = std::make_unique<CBinFace>(model_);
  std::vector<CBinVertex*> vertices;
  vertices.reserve(kept.size());
  for (const SCorner& corner : kept)
    vertices.push_back(VertexAt(corner.at));
  face->SetCorners(vertices);
  face->SetTexture(texture_);
  face->SetType(type_);
  for (size_t k = 0; k < kept.size() && texture_ != nullptr; ++k) {
    face->SetTexCoord(static_cast<int>(k), {std::clamp(kept[k].tex.u, 0.0, 1.0), std::clamp(kept[k].tex.v, 0.0, 1.0)});
  }
  model_.AddFace(std::move(face));
}

void CMeshBuilder::AddQuad(const SCorner& a, const SCorner& b, const SCorner& c, const SCorner& d) {
  AddFace(std::array{a, b, c, d});
}

void CMeshBuilder::AddTriangle(const SCorner& a, const SCorner& b, const SCorner& c) {
  AddFace(std::array{a, b, c});
}

void CMeshBuilder::Group(const std::string& name, int32_t first_face) {
  std::vector<int32_t> faces;
  std::set<int32_t> vertices;
  for (int32_t i = first_face; i < model_.FaceCount(); ++i) {
    faces.push_back(i);
    for (const CBinVertex* corner : model_.Face(i).Corners())
      vertices.insert(corner->Index());
  }
  model_.AddGroup(EGroupKind::kFaces, name, faces);
  model_.AddGroup(EGroupKind::kVertices, name, std::vector<int32_t>(vertices.begin(), vertices.end()));
}

}  // namespace veldra::samples
