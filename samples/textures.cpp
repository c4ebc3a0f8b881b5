#include "samples/textures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "platform/paths.h"
#include "platform/text.h"
#include "samples/lettering.h"
#include "textures/quantize.h"

namespace veldra::samples {

namespace {

constexpr double kPi = std::numbers::pi;

/// Sky above, horizon, ground below: what polished metal shows of them.
SRgb PaintChrome(double u, double v) {
  const double height = 0.5 + 0.5 * std::sin(2.0 * kPi * u);
  const SRgb sky = Mix({206, 226, 250}, {96, 132, 186}, (height - 0.5) * 2.0);
  const SRgb ground = Mix({52, 48, 50}, {168, 160, 150}, height * 2.0);
  const SRgb shine = height > 0.5 ? sky : ground;
  return Scale(shine, 0.97 + 0.06 * Noise(u * 3.0, v * 40.0, 3));
}

/// The upper half is the worn top of a lug, the lower its flanks.
SRgb PaintTread(double u, double v) {
  const double grain = 0.8 + 0.4 * TilingFractal(u * 16.0, v * 16.0, 16, 2, 21);
  if (v >= 0.5) return Scale({34, 34, 38}, grain);
  const bool is_sipe = std::abs(u - 0.5) < 0.03 && v > 0.08 && v < 0.42;
  const bool is_edge = u < 0.05 || u > 0.95 || v < 0.04 || v > 0.46;
  const SRgb dusty = Mix({62, 61, 63}, {104, 92, 76}, Fractal(u * 6.0, v * 6.0, 2, 4) - 0.3);
  return Scale(is_sipe ? SRgb{30, 30, 33} : is_edge ? SRgb{88, 86, 84} : dusty, grain);
}

/// Letters standing round a circle; FROM is where the first begins, in turns clockwise from the top.
double CircleTextDistance(const char* text, double x, double y, double radius, double height, double middle) {
  const double angle = std::atan2(x, y) - middle * 2.0 * kPi;
  const double wrapped = std::remainder(angle, 2.0 * kPi);
  const double along = wrapped * radius / height + TextWidth(text) / 2.0;
  return TextDistance(text, along, (std::hypot(x, y) - radius) / height);
}

SRgb PaintSidewall(double x, double y, double radius) {
  SRgb color = Scale({44, 44, 48}, 0.85 + 0.3 * Fractal(x * 30.0, y * 30.0, 2, 9));
  if (std::abs(radius - 0.56) < 0.012 || std::abs(radius - 0.93) < 0.012) color = Scale(color, 1.7);
  const double away = std::min(
      {CircleTextDistance("VELDRA", x, y, 0.65, 0.19, 0.0), CircleTextDistance("MUD KING", x, y, 0.65, 0.19, 0.5)});
  if (away < 0.1) return {244, 242, 232};
  return away < 0.17 ? SRgb{22, 22, 24} : color;
}

/// A polished dish with eight holes, and bolts round the hub.
SRgb PaintRim(double x, double y, double radius) {
  const double angle = std::atan2(y, x);
  const double shine = 0.72 + 0.28 * std::sin(angle * 2.0 + radius * 6.0);
  SRgb color = Scale({226, 230, 238}, shine);
  if (radius > 0.44) return Scale({250, 250, 250}, 0.8 + 0.2 * std::sin(angle));
  const double spoke = std::abs(std::remainder(angle, kPi / 4.0)) * radius;
  if (radius > 0.24 && radius < 0.40 && spoke > 0.055) return {24, 24, 30};
  const double bolt = std::hypot(radius - 0.175, std::remainder(angle + kPi / 8.0, kPi / 4.0) * radius);
  if (bolt < 0.026) return {90, 92, 100};
  if (radius < 0.115) color = Mix({236, 40, 30}, {120, 8, 8}, radius / 0.115);
  return color;
}

SRgb PaintWheel(double u, double v) {
  const double x = u * 2.0 - 1.0;
  const double y = 1.0 - v * 2.0;
  const double radius = std::hypot(x, y);
  return radius < 0.5 ? PaintRim(x, y, radius) : PaintSidewall(x, y, radius);
}

/// Looked through, with a rubber seal, a tint in dots and two reflections.
SRgb PaintGlass(double u, double v) {
  if (std::min({u, v, 1.0 - u, 1.0 - v}) < 0.05) return {28, 28, 32};
  const double slant = u + v * 0.6;
  const bool is_streak = (slant > 0.38 && slant < 0.54) || (slant > 0.60 && slant < 0.65);
  if (is_streak) return Mix({236, 244, 255}, {150, 180, 214}, v);
  const int column = static_cast<int>(u * 64.0);
  const int row = static_cast<int>(v * 64.0);
  if (v < 0.24 && (column + row) % 2 == 0) return {44, 66, 96};
  return kHole;
}

/// Chain mesh in a frame, with a plate.
SRgb PaintFlap(double u, double v) {
  if (std::min({u, v, 1.0 - u, 1.0 - v}) < 0.07) return {62, 62, 68};
  if (v > 0.34 && v < 0.62) {
    return Letter({38, 38, 42}, "V2K", (u - 0.24) * 50.0, (0.57 - v) * 50.0, 9.0, {255, 214, 40}, {206, 30, 24});
  }
  const double a = std::abs(std::remainder((u + v) * 8.0, 1.0));
  const double b = std::abs(std::remainder((u - v) * 8.0, 1.0));
  return std::min(a, b) < 0.14 ? Scale({150, 152, 160}, 0.8 + 1.4 * std::min(a, b)) : kHole;
}

SRgb PaintFrame(double u, double v) {
  const double bolt = std::hypot(std::remainder(u * 4.0 + 0.5, 1.0), std::remainder(v * 2.0 + 0.5, 1.0) * 2.0);
  if (bolt < 0.16) return Mix({210, 210, 214}, {110, 110, 116}, bolt / 0.16);
  const SRgb paint = Mix({196, 34, 26}, {148, 20, 18}, v);
  return Scale(paint, 0.8 + 0.4 * TilingFractal(u * 8.0, v * 8.0, 8, 3, 30));
}

SRgb PaintShock(double u, double v) {
  const double turn = std::fmod(v * 9.0 + u, 1.0);
  const double round = 0.65 + 0.35 * std::sin(kPi * turn / 0.6);
  return turn < 0.6 ? Scale({255, 206, 26}, round) : SRgb{48, 48, 54};
}

/// Aluminium with raised bars, every other one turned.
SRgb PaintPlate(double u, double v) {
  const double x = u * 6.0;
  const double y = v * 6.0;
  const bool is_turned = (static_cast<int>(x) + static_cast<int>(y)) % 2 == 0;
  const double dx = x - std::floor(x) - 0.5;
  const double dy = y - std::floor(y) - 0.5;
  const double along = (is_turned ? dx + dy : dx - dy) * 0.7071;
  const double across = (is_turned ? dx - dy : dx + dy) * 0.7071;
  const double bar = std::hypot(along / 0.42, across / 0.13);
  const SRgb metal = Scale({138, 142, 150}, 0.9 + 0.2 * TilingFractal(u * 12.0, v * 12.0, 12, 2, 40));
  return bar < 1.0 ? Scale({206, 210, 218}, 0.85 + 0.3 * across / 0.13) : metal;
}

SRgb PaintSeat(double u, double v) {
  if (std::abs(std::remainder(u * 5.0, 1.0)) < 0.07) return {150, 26, 22};
  return Scale({54, 52, 60}, 0.8 + 0.4 * Fractal(u * 20.0, v * 20.0, 2, 50));
}

SRgb PaintLamp(double u, double v) {
  const double away = std::hypot(u - 0.5, v - 0.5) * 2.0;
  if (away > 0.9) return {70, 72, 78};
  const double ribs = 0.93 + 0.07 * std::sin(u * 60.0);
  return Scale(Mix({255, 255, 244}, {246, 224, 150}, away * away), ribs);
}

/// The lamp in the beacon has turned by TURN: a bright flash somewhere round the glass.
SRgb PaintBeacon(double u, double v, double turn) {
  const double away = std::abs(std::remainder(u - turn, 1.0));
  const double flash = std::exp(-std::pow(away * 7.0, 2)) * (0.6 + 0.4 * std::sin(kPi * v));
  const double ribs = 0.86 + 0.14 * std::sin(v * 44.0);
  if (v > 0.9) return {60, 60, 66};
  return Scale(Mix({238, 112, 8}, {255, 248, 200}, flash * 1.2), ribs);
}

/// The light that lies on a beam: warm along its middle, faint at its rim.
SRgb PaintCone(double u, double v) {
  const double beam = std::sin(kPi * u) * (1.0 - 0.6 * v);
  return Mix({120, 104, 60}, {255, 246, 196}, beam);
}

/// A lamp's glow with four rays, on nothing.
SRgb PaintGlow(double u, double v) {
  const double x = u * 2.0 - 1.0;
  const double y = v * 2.0 - 1.0;
  const double rays = std::exp(-18.0 * std::abs(x * y));
  const double glow = std::exp(-3.5 * std::hypot(x, y)) * (0.7 + 0.6 * rays);
  return glow < 0.12 ? kHole : Mix({150, 110, 40}, {255, 255, 240}, glow * 1.4);
}

SRgb PaintDirt(double u, double v) {
  const double lumps = TilingFractal(u * 6.0, v * 6.0, 6, 5, 60);
  const SRgb soil = Mix({88, 58, 32}, {176, 134, 84}, lumps * 1.4 - 0.2);
  const bool is_stone = TilingFractal(u * 20.0, v * 20.0, 20, 1, 61) > 0.86;
  return is_stone ? Mix(soil, {168, 160, 150}, 0.7) : Scale(soil, 0.85 + 0.3 * Noise(u * 90.0, v * 90.0, 62));
}

SRgb PaintPlanks(double u, double v) {
  const double plank = v * 6.0;
  const double row = std::floor(plank);
  const double gap = plank - row;
  if (gap < 0.06) return {34, 24, 16};
  const double bend = 0.5 * Fractal(u * 2.5 + row * 17.0, gap * 0.8 + row * 9.0, 2, 70);
  const double rings = 0.5 + 0.5 * std::sin((gap + bend) * 44.0);
  const double grain = Fractal(u * 7.0 + row * 5.0, v * 110.0, 2, 72);
  const SRgb wood = Mix({128, 86, 48}, {200, 154, 96}, 0.55 * rings + 0.7 * grain - 0.1);
  const double nail = std::hypot((std::min(u, 1.0 - u) - 0.06) * 6.0, gap - 0.5);
  return nail < 0.1 ? SRgb{60, 60, 64} : Scale(wood, 0.82 + 0.18 * Noise(row * 3.0, 0.5, 71));
}

/// A sunset poster: sky, sun, hills, and the show's name.
SRgb PaintPoster(double u, double v) {
  if (std::min({u, v, 1.0 - u, 1.0 - v}) < 0.02) return {232, 190, 60};
  SRgb color = Mix({38, 18, 92}, {255, 122, 48}, v * 1.5);
  const double sun = std::hypot(u - 0.5, (v - 0.56) * 1.05);
  const bool is_band = v > 0.5 && std::fmod(v * 34.0, 1.0) < (v - 0.5) * 2.6;
  if (sun < 0.27 && !is_band) color = Mix({255, 244, 140}, {255, 84, 84}, (v - 0.3) * 2.2);
  const double far_hills = 0.66 + 0.1 * (Fractal(u * 5.0, 0.5, 4, 80) - 0.5) * 2.0;
  const double near_hills = 0.78 + 0.09 * (Fractal(u * 9.0, 0.5, 4, 81) - 0.5) * 2.0;
  if (v > far_hills) color = Mix({92, 30, 104}, {60, 16, 76}, (v - far_hills) * 8.0);
  if (v > near_hills) color = Scale({44, 18, 40}, 0.8 + 0.5 * Fractal(u * 60.0, v * 60.0, 3, 82));
  color = Letter(color, "VELDRA", (u - 0.09) * 100.0, (0.30 - v) * 100.0, 14.0, {255, 250, 236}, {206, 30, 24});
  return Letter(color, "MONSTER TRUCK SHOW", (u - 0.09) * 100.0, (0.93 - v) * 100.0, 7.0 * 0.66, {255, 214, 40},
                {60, 10, 40});
}

}  // namespace

std::vector<STextureDesign> TextureDesigns() {
  std::vector<STextureDesign> designs = {
      {"SIDES.RAW", 256, PaintSides}, {"TOP.RAW", 256, PaintTop},       {"ENDS.RAW", 256, PaintEnds},
      {"WHEEL.RAW", 256, PaintWheel}, {"TREAD.RAW", 64, PaintTread},    {"CHROME.RAW", 64, PaintChrome},
      {"GLASS.RAW", 64, PaintGlass},  {"FLAP.RAW", 64, PaintFlap},      {"FRAME.RAW", 64, PaintFrame},
      {"SHOCK.RAW", 64, PaintShock},  {"PLATE.RAW", 64, PaintPlate},    {"SEAT.RAW", 64, PaintSeat},
      {"LAMP.RAW", 64, PaintLamp},    {"MKCONE.RAW", 64, PaintCone},    {"MKGLOW.RAW", 64, PaintGlow},
      {"DIRT.RAW", 64, PaintDirt},    {"PLANKS.RAW", 256, PaintPlanks}, {"POSTER.RAW", 256, PaintPoster}};
  for (int frame = 0; frame < 4; ++frame) {
    designs.push_back({Format("BEACON%d.RAW", frame + 1), 64,
                       [frame](double u, double v) { return PaintBeacon(u, v, frame / 4.0); }});
  }
  return designs;
}

ColorTable DefaultColors() {
  constexpr std::array<int, 3> kSteps = {6, 7, 5};
  ColorTable colors = {};
  size_t at = 3;
  const auto add = [&](int red, int green, int blue) {
    for (const int part : {red, green, blue})
      colors[at++] = static_cast<uint8_t>(part);
  };
  for (int grey = 1; grey <= 45; ++grey)
    add(grey * 255 / 45, grey * 255 / 45, grey * 255 / 45);
  for (int i = 0; i < kSteps[0] * kSteps[1] * kSteps[2]; ++i) {
    add(i / (kSteps[1] * kSteps[2]) * 255 / (kSteps[0] - 1), i / kSteps[2] % kSteps[1] * 255 / (kSteps[1] - 1),
        i % kSteps[2] * 255 / (kSteps[2] - 1));
  }
  return colors;
}

bool WriteTexture(const STextureDesign& design, const std::string& folder, SError* error) {
  const SIndexedTexture texture = QuantizeTexture(Paint(design.size, design.painter), std::nullopt);
  const std::string path = JoinPath(folder, design.name);
  return ReplaceFile(path, texture.indices, error) && ReplaceFile(ChangeExtension(path, "ACT"), texture.colors, error);
}

}  // namespace veldra::samples
