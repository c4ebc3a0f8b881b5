#pragma once

#include <optional>
#include <string>

#include "interchange/3dstudiofile.h"
#include "interchange/wavemesh.h"

namespace veldra {

/// Reads the 3D Studio file PATH as a mesh, in its own units; WITH_MATERIALS with its materials, texture coordinates
/// and a group an object. Nothing on failure, as C3DStudioFile tells it.
std::optional<SWaveMesh> Read3dsMesh(const std::string& path, bool with_materials, CQuestions& questions,
                                     SImportFault& fault);

/// The same of a file that has been read.
SWaveMesh MeshOf(const C3DStudioFile& file);

/// What turns a 3D Studio file's units into those of a model.
inline constexpr double kStudioScale = 10000;

}  // namespace veldra
