#pragma once

#include <string>

#include "model/binmodel.h"
#include "platform/files.h"

namespace veldra {

/// The model as Wavefront text: vertices with their integer coordinates, faces with 1-based corners, a quad as one face
/// of four. Textures, types and groups have no place in it.
CFileBytes WavefrontBytes(const CBinModel& model);
inline std::string WavefrontText(const CBinModel& model) {
  return std::string(WavefrontBytes(model).Text());
}

/// Writes it to PATH, replaced as a whole or not at all.
bool ExportWavefront(const CBinModel& model, const std::string& path, SError* error);

}  // namespace veldra
