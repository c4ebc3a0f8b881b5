#pragma once

#include <map>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "model/binmodel.h"
#include "platform/vector3.h"
#include "textures/texturefinder.h"

namespace veldra::samples {

struct SCorner {
  Vector3 at;
  STexCoord tex;
};

/// Adds faces to a model. Vertices come by themselves, one for each place; faces of which places fall together become
/// triangles or are left out.
class CMeshBuilder {
 public:
  CMeshBuilder(CBinModel& model, CTextureFinder& textures) : model_(model), textures_(textures) {}

  // How the faces from now on look.
  void Use(const std::string& texture, uint32_t type = kFaceTextured);
  void UseAnimation(const std::string& name, std::span<const std::string> frames, double rate);
  void UseNoTexture();

  /// Moves what is built from now on by OFFSET, after turning its x round when MIRRORED.
  void Place(const Vector3& offset, bool mirrored);
  void PlaceAtOrigin() { Place({}, false); }

  /// 3 or 4 corners, counter-clockwise seen from outside (before any mirroring).
  void AddFace(std::span<const SCorner> corners);
  void AddQuad(const SCorner& a, const SCorner& b, const SCorner& c, const SCorner& d);
  void AddTriangle(const SCorner& a, const SCorner& b, const SCorner& c);

  /// A face group NAME of everything built since FIRST_FACE, and a vertex group of the same name and its vertices.
  void Group(const std::string& name, int32_t first_face);
  int32_t FaceCount() const { return model_.FaceCount(); }
  /// The first texture that was not found, or "".
  const std::string& MissingTexture() const { return missing_; }

 private:
  CBinVertex* VertexAt(const Vector3& place);
  const STextureImage* Find(const std::string& name);

  CBinModel& model_;
  CTextureFinder& textures_;
  std::map<std::tuple<int32_t, int32_t, int32_t>, CBinVertex*> vertices_;
  CBinTexture* texture_ = nullptr;
  uint32_t type_ = kFaceUntextured;
  Vector3 offset_ = {};
  bool mirrored_ = false;
  std::string missing_;
};

}  // namespace veldra::samples
