#include <algorithm>
#include <cmath>

#include "samples/lettering.h"
#include "samples/textures.h"
#include "samples/truckplan.h"

namespace veldra::samples {

namespace {

constexpr SRgb kPaint = {58, 30, 150};
constexpr SRgb kDeepPaint = {26, 14, 78};
constexpr SRgb kChrome = {214, 220, 228};
constexpr SRgb kRubber = {26, 26, 30};
constexpr SRgb kWhite = {248, 246, 238};
constexpr SRgb kYellow = {255, 214, 40};
constexpr SRgb kRed = {206, 30, 24};

/// Metallic paint: darker below, with flakes.
SRgb BodyPaint(double across, double height_part) {
  const double flakes = 0.9 + 0.2 * Noise(across * 0.9, height_part * 90.0, 7);
  const double sheen = 1.0 + 0.35 * std::exp(-std::pow((height_part - 0.72) * 9.0, 2));
  return Scale(Mix(kDeepPaint, kPaint, height_part * 1.4), flakes * sheen);
}

/// How deep a point lies inside the flames, about -1..1; they start at DEPTH = 0 and lick backwards. ACROSS counts
/// tongues, of which every other one is long.
double FlameDepth(double depth, double across) {
  const double sway = 0.30 * std::sin(depth * 11.0 + across * 0.7) * std::min(1.0, depth * 4.0);
  const double lane = across + sway;
  const double tongue = std::floor(lane);
  const double from_middle = std::abs(lane - tongue - 0.5) * 2.0;
  const bool is_long = std::fmod(std::abs(tongue), 2.0) < 1.0;
  const double length = (is_long ? 0.42 : 0.24) + 0.16 * Noise(tongue + 0.5, 3.5, 11);
  return 0.15 + length * std::pow(1.0 - from_middle, 1.5) - depth;
}

/// Flames over BASE, with a pale edge.
SRgb WithFlames(const SRgb& base, double depth, double across) {
  constexpr SRgb kEdge = {168, 224, 255};
  constexpr SRgb kTips = {232, 40, 14};
  constexpr SRgb kMiddle = {255, 140, 16};
  constexpr SRgb kHeart = {255, 236, 96};
  const double inside = FlameDepth(depth, across);
  if (inside < -0.02) return base;
  if (inside < 0.0) return kEdge;
  const double heat = inside * 1.9 + 0.12 + 0.3 * (Fractal(depth * 16.0, across * 3.0, 3, 5) - 0.5);
  return heat < 0.5 ? Mix(kTips, kMiddle, heat * 2.0) : Mix(kMiddle, kHeart, heat * 2.0 - 1.0);
}

bool InBox(double x, double y, double left, double right, double bottom, double top) {
  return x >= left && x <= right && y >= bottom && y <= top;
}

SRgb WithDoor(const SRgb& base, double z, double y) {
  if (InBox(z, y, -6, 10, 200, 205)) return kChrome;
  const bool is_outer = InBox(z, y, -22, 60, 148, 222);
  const bool is_inner = InBox(z, y, -20.5, 58.5, 149.5, 222);
  return is_outer && !is_inner ? Scale(base, 0.45) : base;
}

/// One side: FROM_LEFT grows from the picture's left, where the lettering begins.
SRgb PaintSide(double z, double y, double from_left, double text_start) {
  SRgb color = BodyPaint(z, (y - kBodyBottom) / (kBeltLine - kBodyBottom));
  color = WithFlames(color, (kFrontEnd - z) / (kFrontEnd - kRearEnd), (y - 132) / 23.0);
  color = WithDoor(color, z, y);
  if (InBox(z, y, -300, 300, 143, 146)) color = kYellow;
  return Letter(color, "VELDRA", from_left - text_start, y - 187, 24, kWhite, kRed);
}

SRgb PaintHeadlight(const SRgb& base, double x, double y) {
  if (InBox(x, y, 47, 76, 170, 198)) {
    const double away = std::hypot(x - 61.5, y - 184) / 12.0;
    if (away > 1.0) return kChrome;
    const double ribs = 0.92 + 0.08 * std::sin(x * 2.4);
    return Scale(Mix({255, 255, 240}, {178, 196, 214}, away), away > 0.86 ? 0.6 : ribs);
  }
  if (InBox(x, y, 47, 76, 159, 167)) return Scale({255, 150, 20}, 0.85 + 0.15 * std::sin(x * 2.0));
  return base;
}

SRgb PaintGrille(const SRgb& base, double x, double y) {
  if (!InBox(x, y, 0, 44, 158, 200)) return base;
  if (!InBox(x, y, 0, 41, 161, 197)) return kChrome;
  const double bar = std::fmod(y - 161, 7.2);
  if (bar > 4.4) return Mix(Scale(kChrome, 0.55), kChrome, (bar - 4.4) / 2.8);
  return std::fmod(x, 10.0) < 1.2 ? Scale(kChrome, 0.5) : kRubber;
}

SRgb PaintFront(double x, double y) {
  SRgb color = BodyPaint(x, (y - kBodyBottom) / (kBeltLine - kBodyBottom));
  color = WithFlames(color, std::abs(y - 178) / 200.0, x / 30.0 + 0.5);
  color = PaintGrille(color, std::abs(x), y);
  color = PaintHeadlight(color, std::abs(x), y);
  return Letter(color, "VELDRA", x + 20, y - 203, 8, kWhite, kRed);
}

SRgb PaintRear(double x, double y) {
  SRgb color = BodyPaint(x, (y - kBodyBottom) / (kBeltLine - kBodyBottom));
  if (InBox(std::abs(x), y, 58, 60, 150, 214)) color = Scale(color, 0.45);
  if (InBox(std::abs(x), y, 63, 76, 160, 206)) {
    color = y > 176 ? SRgb{214, 20, 18} : y > 168 ? SRgb{255, 150, 20} : SRgb{240, 240, 240};
    if (std::fmod(y, 4.0) < 0.8) color = Scale(color, 0.7);
  }
  if (InBox(x, y, -54, 54, 150, 153)) color = kYellow;
  color = Letter(color, "VELDRA", -x + 48, y - 186, 17, kWhite, kRed);
  return Letter(color, "MONSTER TRUCK", -x + 46, y - 170, 7.4, kYellow, kDeepPaint);
}

}  // namespace

SRgb Letter(const SRgb& base, const char* text, double x, double y, double height, const SRgb& fill,
            const SRgb& outline) {
  // A little slanted, as if in a hurry.
  const double away = TextDistance(text, (x - 0.2 * y) / height, y / height);
  if (away < 0.085) return fill;
  return away < 0.16 ? outline : base;
}

SRgb PaintSides(double u, double v) {
  if (kLeftSide.Holds(v)) return PaintSide(kLeftSide.Across(u), kLeftSide.Up(v), kLeftSide.Across(u), -184);
  return PaintSide(kRightSide.Across(u), kRightSide.Up(v), -kRightSide.Across(u), 46);
}

SRgb PaintTop(double u, double v) {
  const double x = kAbove.Across(u);
  const double z = kAbove.Up(v);
  SRgb color = BodyPaint(x * 1.7 + z, 0.75 - std::abs(x) / 300.0);
  color = WithFlames(color, (kFrontEnd - z) / 300.0, x / 30.0 + 0.5);
  // Read by who stands before the truck, or by who looks down on it.
  return Letter(color, "66", x + 28, 2 - z, 30, kWhite, kRed);
}

SRgb PaintEnds(double u, double v) {
  if (kFrontView.Holds(v)) return PaintFront(kFrontView.Across(u), kFrontView.Up(v));
  return PaintRear(kRearView.Across(u), kRearView.Up(v));
}

}  // namespace veldra::samples
