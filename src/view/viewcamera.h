#pragma once

#include "view/viewstate.h"

namespace veldra {

/// Sets OpenGL's viewport and matrices for STATE. The origin is the bounds' centre, and the ball of radius 1 about it
/// holds both the model of MODEL_RADIUS model units and what fills the window at zoom 1. Returns the model's radius in
/// this unit, 0 to 1.
///
/// The view is in perspective, along -z with y up while nothing is turned. The camera stands outside the ball whatever
/// the zoom, which narrows its angle: nothing is cut off in front.
double SetCamera(const SViewState& state, double model_radius, int width, int height);

}  // namespace veldra
