#include "model/modelcheck.h"

#include <utility>

#include "model/modelchecker.h"

namespace veldra {

namespace {

constexpr uint32_t kTextureEnd = 0x00FFFFFF;

/// The records of a file.
class CCheckedRecords : public CCheckedModel {
 public:
  CCheckedRecords(const SModelRecords& model, const FindTextureWidth& texture_width)
      : model_(model), texture_width_(texture_width) {}

  size_t VertexCount() const override { return model_.vertices.size(); }
  SPoint Vertex(size_t index) const override { return model_.vertices[index]; }
  size_t FaceCount() const override { return model_.faces.size(); }

  SCheckedFace Face(size_t index) const override {
    const SModelRecords::SFace& record = model_.faces[index];
    SCheckedFace face = {.count = record.corners.size(), .textures = record.textures};
    for (size_t k = 0; k < face.count; ++k) {
      face.vertices[k] = record.corners[k].vertex;
      face.is_off[k] = record.corners[k].u > kTextureEnd || record.corners[k].v > kTextureEnd;
    }
    return face;
  }

  std::vector<SCheckedTexture> Textures() const override {
    std::vector<SCheckedTexture> textures;
    textures.reserve(model_.textures.size());
    for (const SModelRecords::STexture& texture : model_.textures)
      textures.push_back({texture.name, texture_width_(texture.file_name)});
    return textures;
  }

 private:
  const SModelRecords& model_;
  const FindTextureWidth& texture_width_;
};

}  // namespace

const char* FindingName(EFinding kind) {
  constexpr const char* kNames[kFindingCount] = {"missing-texture", "texture-size", "long-name",       "no-area",
                                                 "bent-quad",       "double-face",  "repeated-corner", "same-place",
                                                 "unused-vertex",   "off-texture",  "too-large"};
  return kNames[static_cast<size_t>(kind)];
}

std::vector<SFinding> CheckModel(const SModelRecords& model, const FindTextureWidth& texture_width) {
  CModelChecker checker(std::make_unique<CCheckedRecords>(model, texture_width));
  checker.Go(SIZE_MAX);
  return checker.TakeFindings();
}

}  // namespace veldra
