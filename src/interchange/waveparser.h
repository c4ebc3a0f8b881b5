#pragma once

#include <optional>
#include <string_view>

#include "interchange/importfault.h"
#include "interchange/wavemesh.h"
#include "platform/questions.h"

namespace veldra {

/// Reads a Wavefront text: v, vt, f, g, o, usemtl and mtllib; other lines are passed over. Nothing when it is damaged
/// ("line 12: corner 1 names vertex 9, there are 8") or when PROGRESS (may be null) was told to stop; FAULT says which.
/// The text may be anything; memory taken stays in proportion to it.
std::optional<SWaveMesh> ParseWavefront(std::string_view text, CProgress* progress, SImportFault& fault);

}  // namespace veldra
