#pragma once

#include <vector>

#include "platform/glcontext.h"
#include "render/modelgeometry.h"
#include "render/viewcamera.h"
#include "settings/settings.h"

/// What is drawn beside the faces.
namespace veldra {

/// Stands out from BACKGROUND.
struct SInk {
  SColor line;
  SColor marker;
  static SInk For(const SColor& background);
};

/// The three axes from the origin in red, green and blue, each with its letter turned to the viewer, in the ball of
/// radius 1. Sets its own colours; lighting and texturing are off.
void DrawAxes();

/// A ball of RADIUS about the origin, with normals.
void DrawBall(double radius);

/// The radius of the spherical markers of COUNT vertices in parts of the model's: smaller the more there are.
double BallRadius(int count);

/// From here on OpenGL's coordinates are the window's pixels from its upper left corner, on top of everything.
void EnterWindow(int width, int height);
/// Light with a dark rim, about AT in the window's coordinates; the middle stays free.
void DrawCrossHairs(const SScreenPoint& at, double pixel_ratio);
/// A flag with NUMBER, 1 to 9, that points to AT.
void DrawNumber(const SScreenPoint& at, int number, double pixel_ratio);
/// A rectangle that is being drawn with the mouse, in the window's coordinates.
void DrawBand(const SScreenPoint& from, const SScreenPoint& to, double pixel_ratio);
/// How far apart the digits of AppendNumber are, before scaling.
inline constexpr double kDigitAdvance = 8.0;
/// Appends the strokes of NUMBER, 0 or more, two ends each: from LEFT and TOP in the window, 10 pixels high times
/// SCALE.
void AppendNumber(int32_t number, double left, double top, double scale, std::vector<FloatPoint>& ends);

/// Picture of what a shiny face mirrors, for GL_SPHERE_MAP: a bright spot and a soft sky on black, to be added to the
/// face's own colours. Hands it over to the texture that is bound.
void UploadShine();

}  // namespace veldra
