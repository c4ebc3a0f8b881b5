#pragma once

#include <optional>
#include <string>
#include <vector>

#include "interchange/importmodel.h"
#include "interchange/meshtextures.h"
#include "interchange/wavemesh.h"

namespace veldra {

/// What becomes of the coordinates of a Wavefront file, in this order; then they are cut off toward zero.
struct SWaveOptions {
  double scale = 1.0;    ///< above 0
  bool swap_yz = false;  ///< y and z change places; the faces are turned round, so that they still face outwards
  bool center = false;   ///< the middle of the model comes to 0 on all axes
  /// Above 0: evenly scaled so that the largest dimension becomes it, to within a unit, whatever SCALE is.
  double fit = 0;
  /// Where neither SCALE nor FIT say anything, the factor that an export of this program multiplied by is undone;
  /// coordinates are rounded then.
  bool undo_own_scale = true;
};

/// How large a truck is, which is what most meshes are for.
inline constexpr double kTruckSize = 450;

/// "" or, in words, what is wrong with SCALE.
std::string WaveScaleFault(double scale);

/// The bounds that the vertices of MESH have with OPTIONS; nothing when they do not fit into 32 bits.
std::optional<SBounds> WaveBounds(const SWaveMesh& mesh, const SWaveOptions& options);

/// Reads the Wavefront file PATH under a progress that can be stopped. Nothing on failure, and nothing is shown.
std::optional<SWaveMesh> ReadWavefront(const std::string& path, CQuestions& questions, SImportFault& fault);

/// How many faces of MESH show more than the whole texture, which an import cuts off.
size_t CountCutFaces(const SWaveMesh& mesh);

/// "" or, in words, which part of a size above 0 is nothing in whole units: SIZE is the mesh's, BOUNDS what the model
/// has of it.
std::string VanishedText(const SWavePoint& size, const SBounds& bounds);

/// What an import is made from.
struct SWaveFiles {
  std::string path;           ///< the mesh file; its material files lie beside it
  std::string texture;        ///< a RAW file, for faces whose material gives none; "": they become untextured
  std::string pictures = {};  ///< a folder for textures made of pictures; "": none are made
  /// What becomes of the materials, where that is settled already; else PlanMaterials is asked.
  const SMaterialPlan* plan = nullptr;
};

struct SImportOutcome {
  size_t cut_faces = 0;           ///< whose texture coordinates were cut off
  std::vector<SNewTexture> made;  ///< not yet on the disk
};

/// Appends MESH, read from FILES.path, to MODEL. Faces have the texture and the type of their material (PlanMaterials),
/// else FILES.texture and the context's type; its groups become face groups. Tells the user what was not taken over. On
/// failure MODEL is unchanged, and nothing is shown but what the loading of textures shows. Textures that are made are
/// written before MODEL changes, unless the caller, who asks for the OUTCOME, does that.
bool ImportWaveMesh(CBinModel& model, const SWaveMesh& mesh, const SWaveFiles& files, const SWaveOptions& options,
                    const SImportContext& context, SImportFault& fault, SImportOutcome* outcome = nullptr);

/// ReadWavefront and ImportWaveMesh in one.
bool ImportWavefront(CBinModel& model, const SWaveFiles& files, const SWaveOptions& options,
                     const SImportContext& context, SImportFault& fault, SImportOutcome* outcome = nullptr);

/// The files of TEXTURES, for ReplaceFileSets; they must outlive them.
std::vector<std::vector<SNewFile>> FilesOf(const std::vector<SNewTexture>& textures);

}  // namespace veldra
