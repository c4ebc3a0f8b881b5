#pragma once

#include <string>

#include "cli/session.h"
#include "model/binmodel.h"

namespace veldra {

/// The file that RAW means: a path, or a name in the texture directory, in any letter case; "" when there is none.
std::string TextureFile(const CSession& session, const std::string& raw);

/// The entry of MODEL for the texture RAW, which is looked for as TextureFile does and asked for when it is not there:
/// that of its name, else a new one. Null when it cannot be loaded, or MODEL has another texture of that name; the user
/// has been told.
CBinTexture* ModelTexture(CSession& session, CBinModel& model, const std::string& raw);

}  // namespace veldra
