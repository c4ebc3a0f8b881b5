#pragma once

#include "model/binmodel.h"
#include "render/viewstate.h"

namespace veldra {

/// From where a model can be looked at.
enum class EViewSide { kFront, kBack, kLeft, kRight, kTop, kBottom };
/// From the front: x to the right, y up, z toward the viewer.
SRotation RotationFor(EViewSide side);

/// Turns STATE so that the front of FACE can be seen, and moves it so that its middle is in a window of WIDTH × HEIGHT
/// pixels; each only where it is not so already. False when nothing was to be done. Whether other faces hide it is not
/// looked at.
bool BringIntoSight(SViewState& state, const CBinModel& model, const CBinFace& face, int width, int height);

}  // namespace veldra
