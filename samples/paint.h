#pragma once

#include <cstdint>
#include <functional>

#include "platform/png.h"

/// Pictures drawn by functions: a painter says which colour a point has, and every pixel is the mean of a few points.
namespace veldra::samples {

struct SRgb {
  double red = 0.0;  ///< 0..255
  double green = 0.0;
  double blue = 0.0;
  bool is_hole = false;
};

inline constexpr SRgb kHole = {0, 0, 0, true};

/// The colour at (u, v), both 0..1, from the picture's top left corner.
using Painter = std::function<SRgb(double u, double v)>;

/// A square picture. Where half of a pixel is a hole its alpha is 0; what is solid never comes near black, which would
/// be transparent in the game.
SImage Paint(int size, const Painter& painter);

/// A for T = 0 to B for T = 1; T is clamped.
SRgb Mix(const SRgb& a, const SRgb& b, double t);
SRgb Scale(const SRgb& color, double factor);
/// 0 below FROM, 1 above TO, smooth between.
double Step(double from, double to, double x);
/// Smooth random values 0..1 that change once a unit of x and y; the same for the same SEED.
double Noise(double x, double y, uint32_t seed);
/// Noise of several scales laid over each other, 0..1.
double Fractal(double x, double y, int octaves, uint32_t seed);
/// Noise that goes on seamlessly after PERIOD units in both directions.
double TilingFractal(double x, double y, int period, int octaves, uint32_t seed);

}  // namespace veldra::samples
