#pragma once

#include <string>
#include <vector>

#include "model/binmodel.h"
#include "platform/files.h"
#include "textures/texturefiles.h"

namespace veldra {

struct SWaveExportOptions {
  /// Above 0: the coordinates are scaled evenly so that the largest dimension becomes it. The factor stands in the
  /// file, for an import to undo it.
  double largest = 0;
};

/// What ExportWithMaterials writes: PATH first.
std::vector<std::string> FilesOfExport(const CBinModel& model, const std::string& path);

/// Writes the model with what WavefrontBytes leaves out: PATH with texture coordinates, groups and a material for each
/// texture and type (materialname.h), beside it a material file and a PNG a texture with its table of colours. An
/// animation stands by its first frame. DEFAULTS are the colours of textures that have none. All files are written or
/// none, which ERROR says.
bool ExportWithMaterials(const CBinModel& model, const std::string& path, const SWaveExportOptions& options,
                         const ColorTable& defaults, SError* error);

}  // namespace veldra
