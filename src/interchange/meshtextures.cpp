#include "interchange/meshtextures.h"

#include <algorithm>

#include "model/texturenames.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/picture.h"
#include "platform/text.h"
#include "textures/rawtexture.h"

namespace veldra {

namespace {

constexpr size_t kNameLength = 8;
constexpr size_t kMostNamed = 100;
/// Each is looked for in several places; no model has as many.
constexpr size_t kMostPictures = 4096;

bool IsLetterOrDigit(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::string WithoutExtension(std::string_view name) {
  const size_t dot = name.rfind('.');
  return std::string(name.substr(0, dot == 0 ? std::string_view::npos : dot));
}

/// At most 8 letters and digits of the picture's name.
std::string GameName(std::string_view picture) {
  std::string name;
  for (const char c : UpperCase(WithoutExtension(FileNamePart(picture))))
    if (IsLetterOrDigit(c) && name.size() < kNameLength) name += c;
  return name.empty() ? "TEXTURE" : name;
}

/// The name with NUMBER at its end.
std::string Numbered(const std::string& name, int number) {
  const std::string digits = Format("%d", number);
  return name.substr(0, kNameLength - digits.size()) + digits;
}

/// A name that this program's own export has taken from a model serves as it is.
bool IsGameName(std::string_view name) {
  constexpr std::string_view kAlso = "_-$~!@^()&'{}%";
  return !name.empty() && name.size() <= kNameLength && std::ranges::all_of(name, [&](char c) {
    return IsLetterOrDigit(c) || kAlso.find(c) != std::string_view::npos;
  });
}

bool IsSameTexture(const SIndexedTexture& a, const SIndexedTexture& b) {
  return a.indices == b.indices && a.colors == b.colors;
}

class CMaterialPlanner {
 public:
  CMaterialPlanner(const SWaveMesh& mesh, const std::string& path, const std::string& pictures,
                   const SImportContext& context, CRemarks& remarks, std::span<const SNewTexture> earlier)
      : mesh_(mesh), path_(path), pictures_(pictures), context_(context), remarks_(remarks), earlier_(earlier) {}

  SMaterialPlan Plan();

 private:
  SWaveMap MapOf(size_t material) const;
  void PlanOne(SMaterialUse& use, const SWaveMap& map);
  std::string FindRaw(std::string_view name);
  std::string FindNear(std::string_view name);
  std::string MakeTexture(const std::string& picture, std::string& fault);
  std::optional<SIndexedTexture> TexelsOf(const std::string& picture, SError* error) const;
  std::string FreePath(const std::string& picture, const SIndexedTexture& texels);
  bool IsFree(const std::string& path, const SIndexedTexture& texels);
  void Load(const std::string& folder, std::map<std::string, std::string>& names) const;

  const SWaveMesh& mesh_;
  const std::string& path_;
  const std::string& pictures_;
  const SImportContext& context_;
  CRemarks& remarks_;
  std::span<const SNewTexture> earlier_;
  WaveMaps maps_;
  std::map<std::string, std::string> art_;    ///< upper-cased names in the texture directory, and as they are there
  std::map<std::string, std::string> there_;  ///< the same of the folder for the new ones
  std::map<std::string, std::string> by_picture_;  ///< RAW files by the pictures that they are made of
  std::optional<CTexturePlaces> places_;           ///< where else they may be
  SMaterialPlan plan_;
};

void CMaterialPlanner::Load(const std::string& folder, std::map<std::string, std::string>& names) const {
  for (const std::string& name : ListDirectory(folder))
    names.try_emplace(UpperCase(name), name);
}

SMaterialPlan CMaterialPlanner::Plan() {
  if (mesh_.material_names.empty()) return {};
  maps_ = ReadMaterials(path_, mesh_.material_files, remarks_);
  Load(context_.art_directory, art_);
  if (!pictures_.empty()) Load(pictures_, there_);
  if (context_.settings != nullptr) places_.emplace(*context_.settings, path_);
  for (size_t i = 0; i < mesh_.material_names.size(); ++i) {
    SMaterialUse& use = plan_.uses.emplace_back();
    use.material = mesh_.material_names[i];
    PlanOne(use, MapOf(i));
  }
  return std::move(plan_);
}

SWaveMap CMaterialPlanner::MapOf(size_t material) const {
  if (material < mesh_.material_pictures.size()) return {mesh_.material_pictures[material], DirectoryPart(path_)};
  const auto found = maps_.find(mesh_.material_names[material]);
  return found == maps_.end() ? SWaveMap{} : found->second;
}

void CMaterialPlanner::PlanOne(SMaterialUse& use, const SWaveMap& map) {
  const SMaterialName name = ParseMaterialName(use.material);
  use.type = name.type;
  use.is_untextured = use.material == kUntexturedMaterial;
  if (use.is_untextured) return;
  if (!map.picture.empty()) {
    use.raw = FindRaw(map.picture);
    const bool is_held = mesh_.held_pictures.contains(map.picture);
    if (is_held)
      use.picture = map.picture;
    else if (!pictures_.empty() && plan_.uses.size() <= kMostPictures)
      use.picture = FindPicture(path_, map);
    if (use.picture.empty()) use.fault = Format("there is no picture %s", DisplayName(map.picture).c_str());
  }
  if (use.raw.empty()) use.raw = FindRaw(name.texture);
  if (use.raw.empty()) use.raw = FindRaw(use.material);
  if (use.raw.empty() && !use.picture.empty() && !pictures_.empty()) use.raw = MakeTexture(use.picture, use.fault);
  // A picture that the file brings goes before what only has its name.
  for (const std::string_view name_of : {std::string_view(map.picture), name.texture, std::string_view(use.material)})
    if (use.raw.empty() && !name_of.empty()) use.raw = FindNear(name_of);
  if (use.raw.empty() && !use.fault.empty() && !pictures_.empty())
    remarks_.Add(Format("material %s: %s", DisplayName(use.material).c_str(), use.fault.c_str()));
}

/// The game's textures have their own format, so only the name of what they were made of tells which is meant.
std::string CMaterialPlanner::FindRaw(std::string_view name) {
  const std::string raw = TextureNameOf(name);
  const auto found = art_.find(raw);
  if (found == art_.end()) return "";
  std::string path = JoinPath(context_.art_directory, found->second);
  if (!IsFile(path)) return "";
  const std::string fault = TextureNameFault(raw);
  if (fault.empty()) return path;
  if (pictures_.empty()) remarks_.Add(fault);
  return "";
}

std::string CMaterialPlanner::FindNear(std::string_view name) {
  const std::string raw = TextureNameOf(name);
  const auto found = places_ && TextureNameFault(raw).empty() ? places_->FindNear(raw) : std::nullopt;
  return found && places_->Load(*found, context_.textures) != nullptr ? CTexturePlaces::PathOf(*found) : "";
}

std::optional<SIndexedTexture> CMaterialPlanner::TexelsOf(const std::string& picture, SError* error) const {
  const auto held = mesh_.held_pictures.find(picture);
  const bool is_held = held != mesh_.held_pictures.end();
  const bool is_tga = is_held && EqualNoCase(ExtensionPart(picture), "tga");
  const auto size = is_held ? DecodePictureSize(held->second, is_tga, error) : ReadPictureSize(picture, error);
  if (!size) return std::nullopt;
  const STextureOptions options = {.size = GameTextureSize(size->width, size->height)};
  return is_held ? TextureOfPicture(held->second, is_tga, options, error) : TextureOfPicture(picture, options, error);
}

std::string CMaterialPlanner::MakeTexture(const std::string& picture, std::string& fault) {
  const auto known = by_picture_.find(picture);
  if (known != by_picture_.end()) return known->second;
  SError error;
  auto texels = TexelsOf(picture, &error);
  std::string raw;
  if (texels) {
    raw = FreePath(picture, *texels);
    if (!there_.contains(FileNamePart(raw))) plan_.made.push_back({raw, picture, std::move(*texels)});
  } else {
    fault = Format("the picture %s %s", DisplayFileName(picture).c_str(), error.what.c_str());
  }
  return by_picture_.emplace(picture, raw).first->second;
}

/// Where the same texture is already it is taken.
std::string CMaterialPlanner::FreePath(const std::string& picture, const SIndexedTexture& texels) {
  const std::string own = UpperCase(WithoutExtension(FileNamePart(picture)));
  const std::string name = mesh_.is_own_export && IsGameName(own) ? own : GameName(picture);
  for (int number = 0;; ++number) {
    const std::string tried = number == 0 ? name : Numbered(name, number);
    const std::string path = JoinPath(pictures_, tried + ".RAW");
    if (!IsDeviceName(tried) && IsFree(path, texels)) return path;
  }
}

bool CMaterialPlanner::IsFree(const std::string& path, const SIndexedTexture& texels) {
  const std::string name = FileNamePart(path);
  const auto is_taken = [&](const SNewTexture& made) { return FileNamePart(made.path) == name; };
  if (std::ranges::any_of(plan_.made, is_taken)) return false;
  const auto other = std::ranges::find(earlier_, path, &SNewTexture::path);
  if (other != earlier_.end()) return IsSameTexture(other->texels, texels);
  const auto there = there_.find(name);
  const bool has_colors = there_.contains(FileNamePart(ChangeExtension(path, "ACT")));
  if (there == there_.end()) return !has_colors && !art_.contains(name);
  const auto old = ReadRawTexture(JoinPath(pictures_, there->second), texels.colors, nullptr);
  return there->second == name && old && old->has_own_colors && IsSameTexture(old->texels, texels);
}

}  // namespace

SMaterialPlan PlanMaterials(const SWaveMesh& mesh, const std::string& path, const std::string& pictures,
                            const SImportContext& context, CRemarks& remarks, std::span<const SNewTexture> earlier) {
  return CMaterialPlanner(mesh, path, pictures, context, remarks, earlier).Plan();
}

void DropUnused(SMaterialPlan& plan) {
  std::erase_if(plan.made, [&](const SNewTexture& made) {
    return std::ranges::find(plan.uses, made.path, &SMaterialUse::raw) == plan.uses.end();
  });
}

// --- Faces -----------------------------------------------------------------------------------------------------------

CMeshTextures::CMeshTextures(const SMaterialPlan& plan, STexture chosen, const SImportContext& context)
    : plan_(plan), chosen_(std::move(chosen)), face_type_(context.face_type), looks_(plan.uses.size() + 1) {
  for (const SNewTexture& made : plan.made)
    context.textures.AddTexture(made.path, made.texels);
  for (const SMaterialUse& use : plan.uses) {
    const STextureImage* const image = use.raw.empty() ? nullptr : context.textures.GetTexture(use.raw);
    by_material_.push_back({TextureNameOf(use.raw), image});
  }
}

CMeshTextures::SLook CMeshTextures::FindLook(int32_t material, CImportBuilder& builder) {
  const auto index = static_cast<size_t>(material);
  const SMaterialUse* const use = material < 0 ? nullptr : &plan_.uses[index];
  if (use != nullptr && use->is_untextured) return {};
  const bool has_own = use != nullptr && by_material_[index].image != nullptr;
  const STexture& texture = has_own ? by_material_[index] : chosen_;
  if (texture.image == nullptr) return {};
  CBinTexture*& entry = entries_[texture.name];
  if (entry == nullptr) entry = &builder.AddTexture(texture.name, *texture.image);
  return {entry, use != nullptr ? use->type.value_or(face_type_) : face_type_};
}

std::string CMeshTextures::Untextured() const {
  std::string names;
  size_t count = 0;
  for (size_t i = 0; i < plan_.uses.size(); ++i) {
    if (!looks_[i + 1] || plan_.uses[i].is_untextured || by_material_[i].image != nullptr) continue;
    if (++count <= kMostNamed) names += (names.empty() ? "" : ", ") + DisplayName(plan_.uses[i].material);
  }
  if (count > kMostNamed) names += Format(" and %zu more", count - kMostNamed);
  return names.empty() ? "" : "materials without a texture: " + names;
}

}  // namespace veldra
