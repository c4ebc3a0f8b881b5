#include "interchange/importmodel.h"

#include "model/appendmodel.h"
#include "model/normals.h"
#include "model/texturenames.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "textures/texturefinder.h"

namespace veldra {

const STextureImage* FindImportTexture(const std::string& path, const std::string& mesh, const SImportContext& context,
                                       SImportFault& fault) {
  fault = {TextureNameFault(TextureNameOf(path)), false};
  if (!fault.what.empty()) return nullptr;
  const std::string there = FindAnyCase(path);
  const STextureImage* image = nullptr;
  if (IsFile(there)) {
    image = context.textures.GetTexture(there);
  } else if (context.settings != nullptr) {
    CModelTextureFinder finder(context.textures, context.questions, *context.settings, mesh);
    image = finder.Find(FileNamePart(path));
  } else {
    CTextureFinder finder(context.textures, context.questions, context.art_directory);
    image = finder.Find(FileNamePart(path));
  }
  if (image == nullptr) fault = {Format("the texture %s could not be loaded", DisplayName(path).c_str()), false};
  return image;
}

std::string TooManyFaces(uint64_t size) {
  return Format("it makes more than %llu faces of %llu bytes, which no mesh does",
                static_cast<unsigned long long>(MostFaces(size)), static_cast<unsigned long long>(size));
}

void ShowImportFault(const std::string& path, const SImportFault& fault, CQuestions& questions) {
  if (fault.is_told) return;
  questions.Message({.text = Format("\"%s\" could not be imported.", DisplayPath(path).c_str()),
                     .caption = kErrorCaption,
                     .icon = EIcon::kError,
                     .details = fault.what});
}

CBinTexture& CImportBuilder::AddTexture(const std::string& name, const STextureImage& image) {
  return made_.AddTexture(std::make_unique<CBinTexture>(made_, name, &image));
}

void CImportBuilder::AddFace(std::span<const int32_t> corners, CBinTexture* texture, uint32_t type,
                             std::span<const STexCoord> coords) {
  VELDRA_ASSERT(corners.size() <= 4 && coords.size() >= corners.size());
  std::array<CBinVertex*, 4> vertices = {};
  auto face = std::make_unique<CBinFace>(made_);
  for (size_t k = 0; k < corners.size(); ++k) {
    vertices[k] = &made_.Vertex(corners[k]);
    if (type != kFaceUntextured) face->SetTexCoord(static_cast<int>(k), coords[k]);
  }
  face->SetCorners({vertices.data(), corners.size()});
  face->SetTexture(texture);
  face->SetType(type);
  const SPoint normal = CalcFaceNormal(*face);
  face->SetStored(normal, CalcMagic(*face, normal));
  made_.AddFace(std::move(face));
}

bool CImportBuilder::AppendTo(CBinModel& model, SImportFault& fault) {
  if (AppendModel(model, made_, false)) return true;
  fault = {"the models are too large together", false};
  return false;
}

CImportProgress::CImportProgress(CQuestions& questions, const std::string& path)
    : progress_(questions.BeginWork(Format("Importing %s", DisplayFileName(path).c_str()), true)) {}

}  // namespace veldra
