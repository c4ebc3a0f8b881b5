#pragma once

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "interchange/importmodel.h"
#include "interchange/materialname.h"
#include "interchange/wavematerials.h"
#include "interchange/wavemesh.h"
#include "textures/picturetexture.h"

/// Which textures the materials of a mesh file mean.
namespace veldra {

/// A texture that an import makes of a picture and that is not on the disk yet.
struct SNewTexture {
  std::string path;     ///< of its RAW file
  std::string picture;  ///< what it is made of
  SIndexedTexture texels;
};

/// What becomes of a material.
struct SMaterialUse {
  std::string material;          ///< its name in the file
  std::optional<uint32_t> type;  ///< of its faces, where its name says one
  bool is_untextured = false;    ///< it says that its faces have no texture
  std::string raw;  ///< its texture's path in the store, a file's, an archive's or of SMaterialPlan::made; "" for none
                    ///< of its own
  std::string picture;  ///< its file, or its name in the mesh's held_pictures; "" where there is none
  std::string fault;    ///< why the picture does not serve; ""
};

struct SMaterialPlan {
  std::vector<SMaterialUse> uses;  ///< in the order of the mesh's names
  std::vector<SNewTexture> made;
};

/// What the materials of MESH, read from PATH, become: the RAW file in the texture directory that is named like the
/// picture, else like the material. With PICTURES, a folder, pictures that have none are made into textures in it,
/// under names that the game takes and nothing there has, nor EARLIER, what other plans make, unless that is the same
/// texture. What then has none gets the RAW of those names that lies near the mesh or in an archive.
SMaterialPlan PlanMaterials(const SWaveMesh& mesh, const std::string& path, const std::string& pictures,
                            const SImportContext& context, CRemarks& remarks,
                            std::span<const SNewTexture> earlier = {});
/// Forgets the textures of PLAN that no material has any more.
void DropUnused(SMaterialPlan& plan);

/// Gives faces their textures and types by a plan.
class CMeshTextures {
 public:
  struct STexture {
    std::string name;  ///< as model files have it
    const STextureImage* image = nullptr;
  };
  struct SLook {
    CBinTexture* texture = nullptr;  ///< null only with type 0x19
    uint32_t type = kFaceUntextured;
  };

  /// CHOSEN is what faces get whose material has none; without an image they become untextured.
  CMeshTextures(const SMaterialPlan& plan, STexture chosen, const SImportContext& context);

  /// For a face of MATERIAL, a position in the plan, or -1. BUILDER, which is always the same, gets the texture's entry
  /// when it is first asked for.
  SLook Look(int32_t material, CImportBuilder& builder) {
    std::optional<SLook>& look = looks_[static_cast<size_t>(material + 1)];
    if (!look) look = FindLook(material, builder);
    return *look;
  }
  /// The names of those materials that were asked for and have no texture of their own, as far as they do not say so
  /// themselves: a line for the user; "" for none.
  std::string Untextured() const;

 private:
  SLook FindLook(int32_t material, CImportBuilder& builder);

  const SMaterialPlan& plan_;
  STexture chosen_;
  uint32_t face_type_;
  std::vector<STexture> by_material_;
  std::vector<std::optional<SLook>> looks_;  ///< once asked for; the first is that of faces without a material
  std::map<std::string, CBinTexture*> entries_;
};

}  // namespace veldra
