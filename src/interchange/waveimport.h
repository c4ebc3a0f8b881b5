#pragma once

#include <optional>
#include <string>

#include "interchange/importmodel.h"
#include "interchange/wavemesh.h"

namespace veldra {

/// What becomes of the coordinates of a Wavefront file, in this order; then they are cut off toward zero.
struct SWaveOptions {
  double scale = 1.0;    ///< above 0
  bool swap_yz = false;  ///< y and z change places; the faces are turned round, so that they still face outwards
  bool center = false;   ///< the middle of the model comes to 0 on all axes
};

/// "" or, in words, what is wrong with SCALE.
std::string WaveScaleFault(double scale);

/// The bounds that the vertices of MESH have with OPTIONS; nothing when they do not fit into 32 bits.
std::optional<SBounds> WaveBounds(const SWaveMesh& mesh, const SWaveOptions& options);

/// Reads the Wavefront file PATH under a progress that can be stopped. Nothing on failure, and nothing is shown.
std::optional<SWaveMesh> ReadWavefront(const std::string& path, CQuestions& questions, SImportFault& fault);

/// What an import is made from.
struct SWaveFiles {
  std::string path;     ///< the Wavefront file; its material files lie beside it
  std::string texture;  ///< a RAW file
};

/// Appends MESH, read from FILES.path, to MODEL. Faces have the texture whose name their material's picture has when
/// the texture directory holds it, else FILES.texture; its groups become face groups. Tells the user what was not taken
/// over. On failure MODEL is unchanged, and nothing is shown but what the loading of textures shows.
bool ImportWaveMesh(CBinModel& model, const SWaveMesh& mesh, const SWaveFiles& files, const SWaveOptions& options,
                    const SImportContext& context, SImportFault& fault);

/// ReadWavefront and ImportWaveMesh in one.
bool ImportWavefront(CBinModel& model, const SWaveFiles& files, const SWaveOptions& options,
                     const SImportContext& context, SImportFault& fault);

}  // namespace veldra
