#pragma once

#include <optional>

#include "model/binmodel.h"
#include "platform/files.h"
#include "platform/png.h"
#include "render/viewstate.h"

namespace veldra {

/// The 3D view as a picture, drawn in memory without a display. Nothing when OpenGL cannot be had or WIDTH or HEIGHT is
/// not 1 to kLargestImageSide; ERROR says why. SECONDS is the time of the animated textures. No OpenGL context may be
/// current on the calling thread; none is afterwards.
std::optional<SImage> DrawModelPicture(const CBinModel& model, const SViewState& state, int width, int height,
                                       SError* error, double seconds = 0.0);

}  // namespace veldra
