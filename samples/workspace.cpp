#include "samples/workspace.h"

#include <functional>
#include <string_view>

#include "archive/podwriter.h"
#include "archive/stockfiles.h"
#include "model/binfile.h"
#include "model/geometry.h"
#include "packing/packtruck.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "samples/rampmodel.h"
#include "samples/sounds.h"
#include "samples/textures.h"
#include "samples/truck.h"
#include "samples/truckfile.h"
#include "settings/coptools.h"

namespace veldra::samples {

namespace {

/// The folders of a workspace, as the settings name them.
struct SFolders {
  std::string root;
  std::string art = JoinPath(root, "ART");
  std::string models = JoinPath(root, "MODELS");
  std::string trucks = JoinPath(root, "TRUCK");
  std::string sounds = JoinPath(root, "SOUND");
  std::string palette = JoinPath(art, "METALCR2.ACT");
};

bool MakeFolders(const SFolders& folders, SError* error) {
  for (const std::string& folder : {folders.art, folders.models, folders.trucks, folders.sounds}) {
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

/// Without what the game moves by itself: wheels, axles and shocks.
void BuildTruckBody(CMeshBuilder& mesh) {
  BuildFrame(mesh);
  BuildBody(mesh);
  BuildCab(mesh);
  BuildBed(mesh);
  BuildTrim(mesh);
  BuildMudFlaps(mesh);
  BuildGlass(mesh);
}

/// Builds one model with the textures of the workspace and saves it as the editor does. MIDDLE (may be null) becomes
/// the place that centring made its origin.
bool WriteModel(const SFolders& folders, const std::string& name, const std::function<void(CMeshBuilder&)>& build,
                CTextureStore& store, CQuestions& questions, SError* error, SPoint* middle = nullptr) {
  CBinModel model;
  CTextureFinder finder(store, questions, folders.art);
  CMeshBuilder mesh(model, finder);
  build(mesh);
  if (!mesh.MissingTexture().empty()) {
    error->what = "texture " + mesh.MissingTexture() + " cannot be loaded";
    return false;
  }
  const SPoint before = model.Vertex(0).Position();
  for (const EAxis axis : {EAxis::kX, EAxis::kY, EAxis::kZ})
    Center(model, axis);
  const SPoint after = model.Vertex(0).Position();
  if (middle != nullptr) *middle = {before.x - after.x, before.y - after.y, before.z - after.z};
  const SSaveOptions options = {.vertex_normals = model.HasFaceType(kFaceShiny)};
  return SaveBinFile(model, options, JoinPath(folders.models, name), error);
}

/// The truck for the game: models, sounds and truck file.
bool WriteTruck(const SFolders& folders, CTextureStore& store, CQuestions& questions, SError* error) {
  SPoint middle;
  if (!WriteModel(folders, kTruckBodyModel, BuildTruckBody, store, questions, error, &middle) ||
      !WriteModel(folders, kTruckAxleModel, BuildAxle, store, questions, error))
    return false;
  for (const int segments : {8, 10, 16}) {
    for (const bool left : {true, false}) {
      const std::string name = Format("%s%02d%s.BIN", kTruckTireBase, segments, left ? "L" : "R");
      const auto build = [&](CMeshBuilder& mesh) { BuildTire(mesh, segments, left); };
      if (!WriteModel(folders, name, build, store, questions, error)) return false;
    }
  }
  for (const SSoundDesign& design : SoundDesigns())
    if (!ReplaceFile(JoinPath(folders.sounds, design.name), EngineSound(design), error)) return false;
  return SampleTruck(middle).Save(JoinPath(folders.trucks, kTruckFileName), error);
}

bool WriteTruckArchive(const SFolders& folders, const CSettings& settings, CQuestions& questions, SError* error) {
  const std::string truck = JoinPath(folders.trucks, kTruckFileName);
  const CStockFiles stock;
  const STruckPackPlan plan = PlanTruckPack(truck, PlacesForTruck(truck, settings, ""), stock);
  for (const STruckPackRow* lacking : plan.Lacking(false))
    error->what = LackingText(*lacking) + ", is not there";
  return plan.Lacking(false).empty() &&
         CreatePod(questions, JoinPath(folders.root, kTruckArchiveName), plan.Sources(false));
}

/// As modelling programs write it: in metres, z upwards.
constexpr std::string_view kBarnMesh =
    "o barn\n"
    "v -3 -4 0\nv 3 -4 0\nv 3 4 0\nv -3 4 0\nv -3 -4 3\nv 3 -4 3\nv 3 4 3\nv -3 4 3\nv 0 -4 5\nv 0 4 5\n"
    "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\nvt 0.5 1\n"
    "g walls\n"
    "f 1/1 2/2 6/3 5/4\nf 2/1 3/2 7/3 6/4\nf 3/1 4/2 8/3 7/4\nf 4/1 1/2 5/3 8/4\nf 5/1 6/2 9/5\nf 7/1 8/2 10/5\n"
    "g roof\n"
    "f 6/1 7/2 10/3 9/4\nf 8/1 5/2 9/3 10/4\n";

CSettings WorkspaceSettings(const SFolders& folders) {
  CSettings settings;
  settings.defpal = folders.palette;
  settings.art_dir = folders.art;
  settings.bin_dir = folders.models;
  settings.trk_dir = folders.trucks;
  settings.pod_dir = folders.root;
  settings.pod_dest_dir = folders.root;
  return settings;
}

bool WriteSettings(const SFolders& folders, const CSettings& settings, SError* error) {
  const std::string path = JoinPath(folders.root, kSettingsFileName);
  if (CopTools::WriteCfgFile(path, settings)) return true;
  error->what = path + ": the settings cannot be written";
  return false;
}

}  // namespace

bool WriteWorkspace(const std::string& directory, CQuestions& questions, SError* error) {
  const SFolders folders = {.root = AbsolutePath(directory)};
  if (!MakeFolders(folders, error) || !WriteTextures(folders, error)) return false;
  const CSettings settings = WorkspaceSettings(folders);
  CTextureStore store(questions, DefaultColors());
  return WriteModel(folders, "TRUCK.BIN", BuildTruck, store, questions, error) &&
         WriteModel(folders, "RAMP.BIN", BuildRamp, store, questions, error) &&
         WriteTruck(folders, store, questions, error) && WriteTruckArchive(folders, settings, questions, error) &&
         ReplaceFile(JoinPath(folders.root, "barn.obj"), kBarnMesh, error) && WriteSettings(folders, settings, error);
}

}  // namespace veldra::samples
