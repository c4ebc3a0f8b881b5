#include "interchange/wavetextures.h"

#include "interchange/wavematerials.h"
#include "model/texturenames.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

CWaveTextures::CWaveTextures(const SWaveMesh& mesh, const std::string& path, STexture chosen,
                             const SImportContext& context, CRemarks& remarks)
    : chosen_(std::move(chosen)), by_material_(mesh.material_names.size()) {
  if (mesh.material_names.empty()) return;
  const WaveMaps maps = ReadMaterials(path, mesh.material_files, remarks);
  if (maps.empty()) return;
  for (const std::string& name : ListDirectory(context.art_directory))
    art_.try_emplace(UpperCase(name), name);
  for (size_t i = 0; i < by_material_.size(); ++i) {
    const auto map = maps.find(mesh.material_names[i]);
    if (map == maps.end()) continue;
    const STexture texture = OfPicture(map->second, context, remarks);
    if (texture.image != nullptr) by_material_[i] = texture;
  }
}

/// The game's textures have their own format, so only the picture's name tells which is meant.
CWaveTextures::STexture CWaveTextures::OfPicture(const std::string& picture, const SImportContext& context,
                                                 CRemarks& remarks) {
  const std::string name = TextureNameOf(picture);
  const auto found = art_.find(name);
  if (found == art_.end()) {
    Trace(">> ImportWaveMesh(): no texture %s for %s\n", name.c_str(), picture.c_str());
    return {};
  }
  if (const std::string fault = TextureNameFault(name); !fault.empty()) {
    remarks.Add(fault);
    return {};
  }
  const std::string path = JoinPath(context.art_directory, found->second);
  return {name, IsFile(path) ? context.textures.GetTexture(path) : nullptr};
}

CBinTexture& CWaveTextures::Entry(int32_t material, CImportBuilder& builder) {
  const bool has_own = material >= 0 && by_material_[static_cast<size_t>(material)].has_value();
  const STexture& texture = has_own ? *by_material_[static_cast<size_t>(material)] : chosen_;
  CBinTexture*& entry = entries_[texture.name];
  if (entry == nullptr) entry = &builder.AddTexture(texture.name, *texture.image);
  return *entry;
}

}  // namespace veldra
