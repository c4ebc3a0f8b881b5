#pragma once

#include <span>
#include <string>
#include <vector>

#include "mapping/texel.h"

/// What is done to places on a texture. POINTS is never empty; each result has as many places, in the same order, on
/// texels and between them.
namespace veldra {

Texels Moved(std::span<const STexel> points, const STexel& by);
/// Clockwise for who looks at the texture. Turns by 90 degrees are exact.
Texels Turned(std::span<const STexel> points, const STexel& pivot, double degrees);
Texels Scaled(std::span<const STexel> points, const STexel& pivot, double across, double down);
enum class ETexelAxis { kAcross, kDown };
/// Left becomes right, or top becomes bottom, within the points' bounds.
Texels Flipped(std::span<const STexel> points, ETexelAxis axis);
/// The bounds become AREA; in a direction in which they have no size they come to its middle.
Texels Stretched(std::span<const STexel> points, const STexelRect& area);
/// On whole texels.
Texels Snapped(std::span<const STexel> points);
/// In one line, across or down, whichever they are nearer to.
Texels Straightened(std::span<const STexel> points);
/// Moved onto a texture of WIDTH as a whole, and made smaller, evenly, where they are too large for it.
Texels KeptInside(std::span<const STexel> points, int width);
/// BY, but only as far as POINTS with BOUNDS stay on a texture of WIDTH.
STexel StoppedAtEdge(const STexelRect& bounds, const STexel& by, int width);

// --- Parts of a texture, as atlases have them ------------------------------------------------------------------------
/// Column and row of a texture of WIDTH that is cut into PARTS a side, in whole texels.
STexelRect PartOf(int width, int parts, int column, int row);
struct STexturePart {
  STexelRect area;
  std::string name;  ///< "the whole texture", "quarter 3 of 4"
};
/// The whole texture, its quarters and its ninths, row by row.
std::vector<STexturePart> TextureParts(int width);

enum class EJustify { kLeft, kCenter, kRight, kTop, kMiddle, kBottom };
/// How far BOUNDS have to go to lie against SIDE of the texture at PRESS 0, and at later ones against that of its
/// halves, thirds and quarters in turn, as far as they stay on it; then of the whole again.
STexel JustifyOffset(const STexelRect& bounds, EJustify side, int width, int press);

/// By how many degrees OUTLINE, a face, has to be turned so that an edge becomes its lowest, level: the edge that is
/// nearest to it, or where one is so already, the next one.
double AlignAngle(std::span<const STexel> outline);

}  // namespace veldra
