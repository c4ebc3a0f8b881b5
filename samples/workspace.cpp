#include "samples/workspace.h"

#include "model/binfile.h"
#include "model/geometry.h"
#include "platform/paths.h"
#include "samples/rampmodel.h"
#include "samples/textures.h"
#include "samples/truck.h"
#include "settings/coptools.h"

namespace veldra::samples {

namespace {

/// The folders of a workspace, as the settings name them.
struct SFolders {
  std::string root;
  std::string art = JoinPath(root, "ART");
  std::string models = JoinPath(root, "MODELS");
  std::string trucks = JoinPath(root, "TRUCK");
  std::string palette = JoinPath(art, "METALCR2.ACT");
};

bool MakeFolders(const SFolders& folders, SError* error) {
  for (const std::string& folder : {folders.art, folders.models, folders.trucks}) {
    if (MakeDirectories(folder)) continue;
    error->what = folder + ": the folder cannot be made";
    return false;
  }
  return true;
}

bool WriteTextures(const SFolders& folders, SError* error) {
  for (const STextureDesign& design : TextureDesigns()) {
    if (!WriteTexture(design, folders.art, error)) return false;
  }
  return ReplaceFile(folders.palette, DefaultColors(), error);
}

void BuildTruck(CMeshBuilder& mesh) {
  BuildChassis(mesh);
  BuildBody(mesh);
  BuildCab(mesh);
  BuildBed(mesh);
  BuildTrim(mesh);
  BuildWheels(mesh);
  BuildMudFlaps(mesh);
  BuildGlass(mesh);
}

/// Builds one model with the textures of the workspace and saves it as the editor does.
bool WriteModel(const SFolders& folders, const char* name, void (*build)(CMeshBuilder&), CTextureStore& store,
                CQuestions& questions, SError* error) {
  CBinModel model;
  CTextureFinder finder(store, questions, folders.art);
  CMeshBuilder mesh(model, finder);
  build(mesh);
  if (!mesh.MissingTexture().empty()) {
    error->what = "texture " + mesh.MissingTexture() + " cannot be loaded";
    return false;
  }
  for (const EAxis axis : {EAxis::kX, EAxis::kY, EAxis::kZ})
    Center(model, axis);
  const SSaveOptions options = {.vertex_normals = model.HasFaceType(kFaceShiny)};
  return SaveBinFile(model, options, JoinPath(folders.models, name), error);
}

bool WriteSettings(const SFolders& folders, SError* error) {
  CSettings settings;
  settings.defpal = folders.palette;
  settings.art_dir = folders.art;
  settings.bin_dir = folders.models;
  settings.trk_dir = folders.trucks;
  settings.pod_dir = folders.root;
  settings.pod_dest_dir = folders.root;
  const std::string path = JoinPath(folders.root, kSettingsFileName);
  if (CopTools::WriteCfgFile(path, settings)) return true;
  error->what = path + ": the settings cannot be written";
  return false;
}

}  // namespace

bool WriteWorkspace(const std::string& directory, CQuestions& questions, SError* error) {
  const SFolders folders = {.root = AbsolutePath(directory)};
  if (!MakeFolders(folders, error) || !WriteTextures(folders, error)) return false;
  CTextureStore store(questions, DefaultColors());
  return WriteModel(folders, "TRUCK.BIN", BuildTruck, store, questions, error) &&
         WriteModel(folders, "RAMP.BIN", BuildRamp, store, questions, error) && WriteSettings(folders, error);
}

}  // namespace veldra::samples
