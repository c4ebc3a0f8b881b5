#include "cli/modeltexture.h"

#include "interchange/importmodel.h"
#include "model/texturenames.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

std::string TextureFile(const CSession& session, const std::string& raw) {
  const std::string there = FindAnyCase(raw);
  return IsFile(there) ? there : FindAnyCase(JoinPath(session.Settings().art_dir, FileNamePart(raw)));
}

CBinTexture* ModelTexture(CSession& session, CBinModel& model, const std::string& raw) {
  const SImportContext context = {.textures = session.Textures(),
                                  .questions = session.Questions(),
                                  .art_directory = session.Settings().art_dir,
                                  .settings = &session.Settings()};
  SImportFault fault;
  const STextureImage* const image = FindImportTexture(raw, "", context, fault);
  if (image == nullptr) {
    if (!fault.is_told) session.Fail(fault.what);
    return nullptr;
  }
  const std::string name = TextureNameOf(raw);
  CBinTexture* const own = model.FindTexture(name, ETextureKind::kPlain);
  if (own == nullptr) return &model.AddTexture(std::make_unique<CBinTexture>(model, name, image));
  if (own->Image() == image || IsSameFile(own->Image()->path, image->path)) return own;
  session.Fail(Format("The model has a texture named \"%s\" already, of another file.", name.c_str()), raw);
  return nullptr;
}

}  // namespace veldra
