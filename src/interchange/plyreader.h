#pragma once

#include <optional>
#include <span>

#include "interchange/importfault.h"
#include "interchange/wavemesh.h"
#include "platform/questions.h"

namespace veldra {

/// The vertices and polygons of a PLY file, text or binary of either byte order, with the texture coordinates of its
/// vertices or of its faces' corners, and the picture that a comment names. PROGRESS may be null. Nothing with FAULT
/// filled where the file is damaged or holds no faces.
std::optional<SWaveMesh> ParsePly(std::span<const uint8_t> bytes, CProgress* progress, SImportFault& fault);

}  // namespace veldra
