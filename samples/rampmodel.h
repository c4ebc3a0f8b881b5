#pragma once

#include "samples/meshbuilder.h"

namespace veldra::samples {

/// A jump ramp of planks on a mound, and a poster above it.
void BuildRamp(CMeshBuilder& mesh);

}  // namespace veldra::samples
