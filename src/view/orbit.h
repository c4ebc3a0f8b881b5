#pragma once

#include "render/viewstate.h"

namespace veldra {

/// What a drag or a key turns, in degrees, counter-clockwise for who looks against the axis.
struct STurn {
  double screen_x = 0.0;  ///< about the horizontal axis of the screen
  double model_y = 0.0;   ///< about the model's own vertical axis, so that a model which stands upright stays so
  double screen_z = 0.0;  ///< about the line of sight
};

SRotation Turned(const SRotation& rotation, const STurn& turn);

}  // namespace veldra
