#pragma once

#include <cstdint>
#include <span>

#include "model/binmodel.h"
#include "model/modelcheck.h"

namespace veldra {

/// There is one obvious thing to be done about findings of this kind.
bool CanMend(EFinding kind);

/// Does it about FINDINGS, which are of MODEL as it is; the others are left alone. Faces without area go, with the
/// vertices that only they use, of double faces the later one; bent quads become two triangles, vertices in one place
/// one; unused vertices go; texture coordinates are brought back to the edge of the texture.
void MendModel(CBinModel& model, std::span<const SFinding> findings);

}  // namespace veldra
