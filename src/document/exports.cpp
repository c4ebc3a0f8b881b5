#include "document/exports.h"

#include "document/tarn2doc.h"
#include "interchange/import3ds.h"
#include "interchange/modelreport.h"
#include "interchange/wavefront.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kCannotExport = "This version cannot write %s files";

/// Nothing when the user cancelled.
std::optional<std::string> AskPath(const CTarnDoc& document, const std::string& title, std::vector<SFileFilter> filters,
                                   const std::string& extension) {
  const SFilePrompt prompt = {.title = title,
                              .filters = std::move(filters),
                              .directory = document.ModelDirectory(),
                              .name = ChangeExtension(document.Title(), extension),
                              .default_extension = extension};
  const auto chosen = document.Services().questions.AskSaveFile(prompt);
  return chosen ? std::optional(chosen->path) : std::nullopt;
}

void Write(CTarnDoc& document, const std::string& path, const std::function<bool(SError& error)>& write) {
  SError error;
  bool written = false;
  {
    const std::string title = Format("Writing %s", FileNamePart(path).c_str());
    const auto work = document.Services().questions.BeginWork(title, false);
    written = write(error);
  }
  if (written) {
    document.Say("Wrote " + path);
  } else {
    document.ShowError(Format("\"%s\" could not be written.", path.c_str()), error.what);
  }
}

}  // namespace

bool CanSaveTextureList(const CTarnDoc& document) {
  return document.Model().TextureCount() > 0;
}

void SaveTextureList(CTarnDoc& document) {
  if (!CanSaveTextureList(document)) return;
  const auto path =
      AskPath(document, "Save Texture File", {{"Response Files *.lst", "*.lst"}, {"All Files *.*", "*.*"}}, "lst");
  if (!path) return;
  Write(document, *path, [&](SError& error) { return ReplaceFile(*path, TextureList(document.Model()), &error); });
}

void ExportWavefront(CTarnDoc& document) {
  const auto path = AskPath(document, "Export Wavefront File", {{"Wavefront *.obj", "*.obj"}}, "obj");
  if (path) Write(document, *path, [&](SError& error) { return ExportWavefront(document.Model(), *path, &error); });
}

bool CanExport3ds(const CTarnDoc& document) {
  return document.Model().VertexCount() > 0;
}

void Export3ds(CTarnDoc& document) {
  if (!CanExport3ds(document)) return;
  ExportTo3ds(document.Model(), document.Path());
  document.Say(Format(kCannotExport, "3D Studio"));
}

void ExportVrml(CTarnDoc& document) {
  document.Say(Format(kCannotExport, "VRML"));
}

}  // namespace veldra
