#include "samples/paint.h"

#include <algorithm>
#include <cmath>

namespace veldra::samples {

namespace {

constexpr int kPointsAcross = 3;
/// Clearly above the parts below which the game takes a colour for transparent.
constexpr double kDarkest = 14.0;

double RandomAt(int64_t x, int64_t y, uint32_t seed) {
  uint32_t hash = static_cast<uint32_t>(x) * 0x8DA6B343u ^ static_cast<uint32_t>(y) * 0xD8163841u ^ seed * 0xCB1AB31Fu;
  hash = (hash ^ hash >> 15) * 0x2C1B3C6Du;
  hash = (hash ^ hash >> 12) * 0x297A2D39u;
  return static_cast<double>(hash ^ hash >> 15) / 4294967295.0;
}

int64_t Wrap(int64_t value, int64_t period) {
  return period == 0 ? value : (value % period + period) % period;
}

double PeriodicNoise(double x, double y, int64_t period, uint32_t seed) {
  const double left = std::floor(x);
  const double top = std::floor(y);
  const auto at = [&](int64_t dx, int64_t dy) {
    return RandomAt(Wrap(static_cast<int64_t>(left) + dx, period), Wrap(static_cast<int64_t>(top) + dy, period), seed);
  };
  const double right_part = Step(0, 1, x - left);
  const double upper = std::lerp(at(0, 0), at(1, 0), right_part);
  const double lower = std::lerp(at(0, 1), at(1, 1), right_part);
  return std::lerp(upper, lower, Step(0, 1, y - top));
}

uint8_t ToByte(double part) {
  return static_cast<uint8_t>(std::clamp(std::lround(part), 0L, 255L));
}

/// The mean of the points of one pixel.
SRgb PaintPixel(int x, int y, int size, const Painter& painter) {
  SRgb sum;
  int holes = 0;
  for (int i = 0; i < kPointsAcross * kPointsAcross; ++i) {
    const int row = i / kPointsAcross;
    const double u = (x + (i % kPointsAcross + 0.5) / kPointsAcross) / size;
    const double v = (y + (row + 0.5) / kPointsAcross) / size;
    const SRgb point = painter(u, v);
    if (point.is_hole) {
      ++holes;
      continue;
    }
    sum = {sum.red + point.red, sum.green + point.green, sum.blue + point.blue};
  }
  const int solid = kPointsAcross * kPointsAcross - holes;
  return holes > solid ? kHole : Scale(sum, 1.0 / solid);
}

}  // namespace

SImage Paint(int size, const Painter& painter) {
  SImage image = {size, size, {}};
  image.rgba.reserve(static_cast<size_t>(size) * static_cast<size_t>(size) * 4);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      SRgb color = PaintPixel(x, y, size, painter);
      if (!color.is_hole && std::max({color.red, color.green, color.blue}) < kDarkest) {
        color = {kDarkest, kDarkest, kDarkest};
      }
      const uint8_t alpha = color.is_hole ? 0 : 255;
      image.rgba.insert(image.rgba.end(), {ToByte(color.red), ToByte(color.green), ToByte(color.blue), alpha});
    }
  }
  return image;
}

SRgb Mix(const SRgb& a, const SRgb& b, double t) {
  t = std::clamp(t, 0.0, 1.0);
  return {std::lerp(a.red, b.red, t), std::lerp(a.green, b.green, t), std::lerp(a.blue, b.blue, t)};
}

SRgb Scale(const SRgb& color, double factor) {
  return {color.red * factor, color.green * factor, color.blue * factor};
}

double Step(double from, double to, double x) {
  const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
  return t * t * (3.0 - 2.0 * t);
}

double Noise(double x, double y, uint32_t seed) {
  return PeriodicNoise(x, y, 0, seed);
}

double Fractal(double x, double y, int octaves, uint32_t seed) {
  return TilingFractal(x, y, 0, octaves, seed);
}

double TilingFractal(double x, double y, int period, int octaves, uint32_t seed) {
  double sum = 0.0;
  double weights = 0.0;
  double weight = 1.0;
  for (int octave = 0; octave < octaves; ++octave) {
    const double scale = std::ldexp(1.0, octave);
    sum +=
        weight * PeriodicNoise(x * scale, y * scale, int64_t{period} << octave, seed + static_cast<uint32_t>(octave));
    weights += weight;
    weight *= 0.55;
  }
  return sum / weights;
}

}  // namespace veldra::samples
