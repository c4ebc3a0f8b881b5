#include "interchange/importcommands.h"

#include "interchange/import3ds.h"
#include "platform/text.h"

namespace veldra {

namespace {

const SFileFilter kAllFiles = {"All Files *.*", "*.*"};

SFilePrompt FilesPrompt3ds(const std::string& directory) {
  return {.title = "Import 3ds File",
          .filters = {{"Autodesk 3D Studio *.3ds", "*.3ds"}, kAllFiles},
          .directory = directory,
          .name = "",
          .default_extension = "3ds"};
}

SFilePrompt FilesPromptWavefront(const std::string& directory) {
  return {.title = "Import WaveFront Model",
          .filters = {{"Wavefront *.obj", "*.obj"}, kAllFiles},
          .directory = directory,
          .name = "",
          .default_extension = "obj"};
}

SFilePrompt TexturePrompt(const std::string& title, const std::string& directory) {
  return {.title = title,
          .filters = {{"MTM Texture *.raw", "*.raw"}, kAllFiles},
          .directory = directory,
          .name = "",
          .default_extension = "raw"};
}

/// Imports PATH with TEXTURE; false with FAULT when it failed.
using ImportOne = std::function<bool(const std::string& path, const std::string& texture, SImportFault& fault)>;

void ImportEach(const SImportServices& services, const std::vector<std::string>& paths,
                const SFilePrompt& texture_prompt, const ImportOne& import_one) {
  CQuestions& questions = services.context.questions;
  for (const std::string& path : paths) {
    const auto texture = questions.AskOpenFile(texture_prompt);
    if (!texture) continue;
    SImportFault fault;
    if (!import_one(path, *texture, fault)) ShowImportFault(path, fault, questions);
  }
}

bool ImportOneWavefront(const SImportServices& services, const SWaveFiles& files, SImportFault& fault) {
  const auto mesh = ReadWavefront(files.path, services.context.questions, fault);
  if (!mesh) return false;
  const auto options = services.ask_wave_options(*mesh, files.path);
  if (!options) {
    fault.is_told = true;
    return false;
  }
  bool is_done = false;
  services.fill_new_document([&](CBinModel& model) {
    is_done = ImportWaveMesh(model, *mesh, files, *options, services.context, fault);
    return is_done;
  });
  return is_done;
}

}  // namespace

void Import3dsFiles(const SImportServices& services, const std::vector<std::string>& paths) {
  const std::string title = "Please select a default texture for the 3ds model";
  const auto import_one = [&](const std::string& path, const std::string& texture, SImportFault& fault) {
    bool is_done = false;
    services.fill_new_document([&](CBinModel& model) {
      is_done = ImportFrom3ds(model, path, texture, services.context, &fault);
      return is_done;
    });
    return is_done;
  };
  ImportEach(services, paths, TexturePrompt(title, services.context.art_directory), import_one);
}

void ImportWavefrontFiles(const SImportServices& services, const std::vector<std::string>& paths) {
  const std::string title = "Please select a texture for Wavefront model";
  const auto import_one = [&](const std::string& path, const std::string& texture, SImportFault& fault) {
    return ImportOneWavefront(services, {path, texture}, fault);
  };
  ImportEach(services, paths, TexturePrompt(title, services.context.art_directory), import_one);
}

void RunImport3ds(const SImportServices& services) {
  const auto files = services.context.questions.AskOpenFiles(FilesPrompt3ds(services.directory));
  if (files) Import3dsFiles(services, files->paths);
}

void RunImportWavefront(const SImportServices& services) {
  const auto files = services.context.questions.AskOpenFiles(FilesPromptWavefront(services.directory));
  if (files) ImportWavefrontFiles(services, files->paths);
}

}  // namespace veldra
