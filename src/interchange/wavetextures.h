#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "interchange/importmodel.h"
#include "interchange/wavemesh.h"

namespace veldra {

/// The textures of a Wavefront file's faces: by its materials, or the one that was chosen for it.
class CWaveTextures {
 public:
  struct STexture {
    std::string name;  ///< as model files have it
    const STextureImage* image = nullptr;
  };

  /// Reads the material files that MESH, read from PATH, names.
  CWaveTextures(const SWaveMesh& mesh, const std::string& path, STexture chosen, const SImportContext& context,
                CRemarks& remarks);

  /// BUILDER's entry for a face of MATERIAL (a position in the mesh's names, or -1), made when it is first asked for.
  CBinTexture& Entry(int32_t material, CImportBuilder& builder);

 private:
  STexture OfPicture(const std::string& picture, const SImportContext& context, CRemarks& remarks);

  STexture chosen_;
  std::vector<std::optional<STexture>> by_material_;
  std::map<std::string, std::string> art_;  ///< upper-cased names in the texture directory, and as they are there
  std::map<std::string, CBinTexture*> entries_;
};

}  // namespace veldra
