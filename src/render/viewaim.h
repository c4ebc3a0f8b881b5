#pragma once

#include "render/viewcamera.h"

namespace veldra {

/// From where a model can be looked at.
enum class EViewSide { kFront, kBack, kLeft, kRight, kTop, kBottom };
/// From the front: x to the right, y up, z toward the viewer.
SRotation RotationFor(EViewSide side);

/// The bounds of what a view of MODEL shows: where vertices are not marked, those without a face are left out.
SBounds ShownBounds(const SViewState& state, const CBinModel& model);
/// What MODEL shows as large as it goes in a window of WIDTH × HEIGHT pixels, and in its middle; a tenth of the window
/// stays free. The rotation stays. The zoom is that of SViewState::ZoomToFit for as much as is seen from this side.
void Frame(SViewState& state, const CBinModel& model, int width, int height);
/// All corners of BOUNDS are in the window of CAMERA.
bool IsInSight(const CViewCamera& camera, const SBounds& bounds);
/// STATE's centre goes on to the middle of BOUNDS when the two have parted so far that nothing of them can be seen near
/// it.
void FollowWhatLeft(SViewState& state, const SBounds& bounds);

/// Turns STATE so that the front of FACE can be seen, and moves it so that its middle is in a window of WIDTH × HEIGHT
/// pixels; each only where it is not so already: a face that is seen all but edgewise counts as not seen. False when
/// nothing was to be done. Whether other faces hide it is not looked at.
bool BringIntoSight(SViewState& state, const CBinModel& model, const CBinFace& face, int width, int height);

}  // namespace veldra
