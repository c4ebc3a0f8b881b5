#pragma once

#include <string>

#include "platform/files.h"
#include "platform/questions.h"

namespace veldra::samples {

/// Writes the sample workspace into DIRECTORY, made when it is not there: settings that point at it, the textures and
/// their colour tables (ART), models (MODELS), a truck (TRUCK) with its sounds (SOUND) and its archive (MUDKING.POD),
/// and a mesh to import (barn.obj). On failure ERROR says why.
bool WriteWorkspace(const std::string& directory, CQuestions& questions, SError* error);

}  // namespace veldra::samples
