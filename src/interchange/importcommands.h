#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "interchange/importmodel.h"
#include "interchange/waveimport.h"

/// The editor's import commands, but for its windows.
namespace veldra {

struct SImportServices {
  SImportContext context;
  std::string directory;  ///< where the prompt for the files opens
  /// Opens a new document that is called TITLE until it is saved, and has FILL fill its model. When FILL returns false,
  /// the document goes away again, as if it had never been opened.
  std::function<void(const std::string& title, const std::function<bool(CBinModel& model)>& fill)> fill_new_document;
  /// What to do with the coordinates of MESH, read from PATH; nothing when cancelled.
  std::function<std::optional<SWaveOptions>(const SWaveMesh& mesh, const std::string& path)> ask_wave_options = {};
};

/// Imports PATHS in turn, each into a document of its own with the file's name, after asking for its texture. A file
/// whose texture is not chosen is skipped; one that cannot be read is told and not asked about.
void Import3dsFiles(const SImportServices& services, const std::vector<std::string>& paths);
/// The same for Wavefront files, for each of which the options are asked as well.
void ImportWavefrontFiles(const SImportServices& services, const std::vector<std::string>& paths);

/// "Import an Autodesk 3D Studio File": asks for the files, then Import3dsFiles.
void RunImport3ds(const SImportServices& services);
/// "Import WaveFront Model": asks for the files, then ImportWavefrontFiles.
void RunImportWavefront(const SImportServices& services);

}  // namespace veldra
