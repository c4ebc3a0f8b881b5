#pragma once

#include <optional>
#include <span>

#include "interchange/gltfbuffers.h"
#include "interchange/importfault.h"
#include "interchange/wavemesh.h"
#include "platform/questions.h"

namespace veldra {

/// A metre, which is the unit of glTF files, in the units of a model, of which 32 are a foot.
inline constexpr double kUnitsPerMetre = 105;

/// The triangles of a glTF 2.0 file's scene, text or binary, where its nodes put them: a group a node, materials with
/// their pictures or colours, texture coordinates. READ_FILE gives the buffers that the file only names. PROGRESS may
/// be null. Nothing with FAULT filled where the file is damaged, holds no triangle or needs what is not read.
std::optional<SWaveMesh> ParseGltf(std::span<const uint8_t> bytes, const gltf::FileReader& read_file,
                                   CProgress* progress, SImportFault& fault);

}  // namespace veldra
