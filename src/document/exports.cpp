#include "document/exports.h"

#include "document/tarn2doc.h"
#include "interchange/import3ds.h"
#include "interchange/modelreport.h"
#include "interchange/waveexport.h"
#include "interchange/wavefront.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kReplaceBeside =
    "Materials and pictures beside the Wavefront file are there already.\nWould you like to replace them?";
constexpr const char* kCannotExport = "This version cannot write %s files";

/// Nothing when the user cancelled.
std::optional<SSavePath> AskSavePath(const CTarnDoc& document, const std::string& title,
                                     std::vector<SFileFilter> filters, const std::string& extension) {
  const SFilePrompt prompt = {.title = title,
                              .filters = std::move(filters),
                              .directory = document.ModelDirectory(),
                              .name = ChangeExtension(document.Title(), extension),
                              .default_extension = extension};
  return document.Services().questions.AskSaveFile(prompt);
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

/// The user knows of the file that was chosen. A picture beside it can be one that somebody painted.
bool MayReplaceBeside(CTarnDoc& document, const std::string& path) {
  std::string names;
  for (const std::string& file : FilesOfExport(document.Model(), path))
    if (file != path && FileExists(file)) names += DisplayFileName(file) + '\n';
  if (names.empty()) return true;
  const SMessage question = {.text = kReplaceBeside, .icon = EIcon::kQuestion, .details = names, .usual = EAnswer::kNo};
  return document.Services().questions.AskYesNo(question) == EAnswer::kYes;
}

}  // namespace

bool CanSaveTextureList(const CTarnDoc& document) {
  return document.Model().TextureCount() > 0;
}

void SaveTextureList(CTarnDoc& document) {
  if (!CanSaveTextureList(document)) return;
  const auto chosen =
      AskSavePath(document, "Save Texture File", {{"Response Files *.lst", "*.lst"}, {"All Files *.*", "*.*"}}, "lst");
  if (!chosen) return;
  const std::string& path = chosen->path;
  Write(document, path, [&](SError& error) { return ReplaceFile(path, TextureList(document.Model()), &error); });
}

void ExportWavefront(CTarnDoc& document) {
  const int32_t largest = document.Settings().largest_wf_dim;
  const auto chosen = AskSavePath(document, "Export Wavefront File",
                                  {{"Wavefront *.obj", "*.obj"},
                                   {"Wavefront with materials *.obj", "*.obj"},
                                   {Format("Wavefront with materials, scaled to %d units *.obj", largest), "*.obj"}},
                                  "obj");
  if (!chosen) return;
  const std::string& path = chosen->path;
  if (chosen->filter == 0)
    return Write(document, path, [&](SError& error) { return ExportWavefront(document.Model(), path, &error); });
  const SWaveExportOptions options = {.largest = chosen->filter == 2 ? double(largest) : 0.0};
  if (!MayReplaceBeside(document, path)) return;
  Write(document, path, [&](SError& error) {
    return ExportWithMaterials(document.Model(), path, options, document.Services().textures.DefaultColors(), &error);
  });
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
