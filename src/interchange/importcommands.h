#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "interchange/importmodel.h"
#include "interchange/waveimport.h"

/// The editor's import commands, but for its windows.
namespace veldra {

/// One mesh file on the way in.
struct SMeshJob {
  std::string path;
  SWaveMesh mesh;
  std::string texture;   ///< a RAW file, of faces whose material gives none; "" for none
  SWaveOptions options;  ///< at first what the format says of itself
  SMaterialPlan plan;
  bool has_own_axes = false;  ///< which one is up does not go by what was chosen for other files
  bool is_wanted = true;
};

struct SImportServices {
  SImportContext context;
  std::string directory;  ///< where the prompt for the files opens
  /// Opens a new document that is called TITLE until it is saved, and has FILL fill its model. When FILL returns false,
  /// the document goes away again, as if it had never been opened.
  std::function<void(const std::string& title, const std::function<bool(CBinModel& model)>& fill)> fill_new_document;
  /// Lets the user change what becomes of JOBS; false when cancelled.
  std::function<bool(std::vector<SMeshJob>& jobs)> ask_jobs = {};
};

/// Imports PATHS in turn, each into a document of its own with the file's name, after asking for its texture. A file
/// whose texture is not chosen is skipped; one that cannot be read is told and not asked about.
void Import3dsFiles(const SImportServices& services, const std::vector<std::string>& paths);
/// The same for Wavefront files; what becomes of all of them is asked at once.
void ImportWavefrontFiles(const SImportServices& services, const std::vector<std::string>& paths);

/// "Import an Autodesk 3D Studio File": asks for the files, then Import3dsFiles.
void RunImport3ds(const SImportServices& services);
/// "Import WaveFront Model": asks for the files, then ImportWavefrontFiles.
void RunImportWavefront(const SImportServices& services);
/// Mesh files of all kinds with their materials; what becomes of all of them is asked at once.
void ImportMeshFiles(const SImportServices& services, const std::vector<std::string>& paths);
/// Asks for the files, then ImportMeshFiles.
void RunImportMeshes(const SImportServices& services);

}  // namespace veldra
