#include "document/tarn2doc.h"
#include "interchange/import3ds.h"
#include "interchange/modelreport.h"
#include "interchange/wavefront.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

// What is written beside the model itself.

namespace veldra {

/// Nothing when the user cancelled.
std::optional<std::string> CTarnDoc::AskExportPath(const std::string& title, std::vector<SFileFilter> filters,
                                                   const std::string& extension) {
  const SFilePrompt prompt = {.title = title,
                              .filters = std::move(filters),
                              .directory = ModelDirectory(),
                              .name = ChangeExtension(Title(), extension),
                              .default_extension = extension};
  const auto chosen = services_.questions.AskSaveFile(prompt);
  return chosen ? std::optional(chosen->path) : std::nullopt;
}

void CTarnDoc::Export(const std::string& path, const std::function<bool(SError& error)>& write) {
  SError error;
  bool written = false;
  {
    const auto work = services_.questions.BeginWork(Format("Writing %s", FileNamePart(path).c_str()), false);
    written = write(error);
  }
  if (!written) ShowError(Format("\"%s\" could not be written.", path.c_str()), error.what);
}

void CTarnDoc::SaveTextureList() {
  if (!CanSaveTextureList()) return;
  const auto path =
      AskExportPath("Save Texture File", {{"Response Files *.lst", "*.lst"}, {"All Files *.*", "*.*"}}, "lst");
  if (path) Export(*path, [&](SError& error) { return ReplaceFile(*path, TextureList(model_), &error); });
}

void CTarnDoc::ExportWavefront() {
  const auto path = AskExportPath("Export Wavefront File", {{"Wavefront *.obj", "*.obj"}}, "obj");
  if (path) Export(*path, [&](SError& error) { return veldra::ExportWavefront(model_, *path, &error); });
}

void CTarnDoc::Export3ds() {
  if (CanExport3ds()) ExportTo3ds(model_, path_);
}

}  // namespace veldra
