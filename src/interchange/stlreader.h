#pragma once

#include <optional>
#include <span>

#include "interchange/importfault.h"
#include "interchange/wavemesh.h"
#include "platform/questions.h"

namespace veldra {

/// The triangles of an STL file, binary or text, with a group a "solid" that has a name; what lies in one place is one
/// vertex. PROGRESS may be null. Nothing with FAULT filled where the file is damaged or holds no triangle.
std::optional<SWaveMesh> ParseStl(std::span<const uint8_t> bytes, CProgress* progress, SImportFault& fault);

}  // namespace veldra
