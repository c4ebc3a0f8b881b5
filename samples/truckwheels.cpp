#include <array>
#include <cmath>
#include <numbers>
#include <string>

#include "samples/solids.h"
#include "samples/truck.h"
#include "samples/truckplan.h"

namespace veldra::samples {

namespace {

constexpr int kSegments = 14;  ///< of the wheels that the truck model itself has
constexpr int kLugs = 12;      ///< on each half of the tread
constexpr double kCarcassRadius = 73;
constexpr double kRimRadius = 40;

/// A place on the wheel: X outwards from its middle, RADIUS and ANGLE about its axle.
Vector3 OnWheel(double x, double radius, double angle) {
  return {x, radius * std::cos(angle), radius * std::sin(angle)};
}

double TurnOf(int part, int parts) {
  return 2.0 * std::numbers::pi * part / parts;
}

/// A ring of the wheel's outline.
struct SRing {
  double x;
  double radius;
};

/// The band between two rings as seen from the wheel's outer side, where the picture of the wheel lies over it.
void AddBand(CMeshBuilder& mesh, int segments, const SRing& inner, const SRing& outer, bool mirrored) {
  AddGrid(mesh, segments, 1, [&](int column, int row) {
    const SRing& ring = row == 0 ? inner : outer;
    const Vector3 at = OnWheel(ring.x, ring.radius, -TurnOf(column, segments));
    // Seen from the right the truck's front is on the left; on the other side the other way round.
    const double right = (mirrored ? 1.0 : -1.0) * at[2];
    const double reach = 2.0 * (kCarcassRadius + 2.0);
    return SCorner{at, {0.5 + right / reach, 0.5 - at[1] / reach}};
  });
}

void AddTread(CMeshBuilder& mesh, int segments, const SRing& right, const SRing& left) {
  AddGrid(mesh, segments, 1, [&](int column, int row) {
    const SRing& ring = row == 0 ? right : left;
    return SCorner{OnWheel(ring.x, ring.radius, -TurnOf(column, segments)),
                   {static_cast<double>(column % 2), row == 0 ? 1.0 : 0.55}};
  });
}

/// One bar of the tread, slanting from the middle to the shoulder on the SIDE 1 or -1.
void AddLug(CMeshBuilder& mesh, double angle, double side) {
  constexpr double kSlant = 0.20;
  constexpr double kHalfWidth = 0.12;
  const auto place = [&](double x, double radius, double from_middle, double width) {
    return OnWheel(side * x, radius, angle + from_middle * kSlant + side * width);
  };
  // Corners: middle and shoulder, each with its two edges, at the carcass and on top.
  const Vector3 low[4] = {place(1, kCarcassRadius - 2, 1, kHalfWidth), place(32, kCarcassRadius - 6, 0, kHalfWidth),
                          place(32, kCarcassRadius - 6, 0, -kHalfWidth), place(1, kCarcassRadius - 2, 1, -kHalfWidth)};
  const Vector3 high[4] = {
      place(2, kTyreRadius, 1, kHalfWidth * 0.85), place(30, kTyreRadius - 2, 0, kHalfWidth * 0.85),
      place(30, kTyreRadius - 2, 0, -kHalfWidth * 0.85), place(2, kTyreRadius, 1, -kHalfWidth * 0.85)};
  mesh.AddQuad({high[0], {0, 0}}, {high[1], {1, 0}}, {high[2], {1, 0.49}}, {high[3], {0, 0.49}});
  for (int i = 0; i < 4; ++i) {
    const int next = (i + 1) % 4;
    mesh.AddQuad({low[i], {0, 1}}, {low[next], {1, 1}}, {high[next], {1, 0.53}}, {high[i], {0, 0.53}});
  }
}

void AddTyre(CMeshBuilder& mesh, int segments, int lugs, bool mirrored) {
  const SRing rim = {24, kRimRadius};
  const SRing bulge = {33, 58};
  const SRing shoulder = {31, kCarcassRadius};
  mesh.Use("WHEEL.RAW");
  AddBand(mesh, segments, rim, bulge, mirrored);
  AddBand(mesh, segments, bulge, shoulder, mirrored);
  mesh.Use("TREAD.RAW");
  const SRing inner_shoulder = {-31, kCarcassRadius};
  const SRing inner_rim = {-26, kRimRadius};
  AddTread(mesh, segments, shoulder, inner_shoulder);
  AddTread(mesh, segments, inner_shoulder, inner_rim);
  for (int i = 0; i < lugs; ++i) {
    AddLug(mesh, TurnOf(2 * i, 2 * lugs), 1.0);
    AddLug(mesh, TurnOf(2 * i + 1, 2 * lugs), -1.0);
  }
}

void AddRim(CMeshBuilder& mesh, int segments, bool mirrored) {
  const SRing edge = {24, kRimRadius};
  const SRing dish = {11, 33};
  const SRing hub = {17, 13};
  const SRing cap = {27, 8};
  mesh.Use("WHEEL.RAW", kFaceShiny);
  AddBand(mesh, segments, dish, edge, mirrored);
  AddBand(mesh, segments, hub, dish, mirrored);
  AddBand(mesh, segments, cap, hub, mirrored);
  mesh.Use("FRAME.RAW");
  AddDisc(mesh, {cap.x, 0, 0}, {1, 0, 0}, cap.radius, segments);
}

void BuildWheelAt(CMeshBuilder& mesh, const Vector3& place, int segments, int lugs, bool left) {
  mesh.Place(place, left);
  AddTyre(mesh, segments, lugs, left);
  AddRim(mesh, segments, left);
  mesh.Use("TREAD.RAW");
  AddDisc(mesh, {-26, 0, 0}, {-1, 0, 0}, kRimRadius, segments);
  mesh.PlaceAtOrigin();
}

void BuildWheel(CMeshBuilder& mesh, const std::string& name, double z, bool left) {
  const int32_t first = mesh.FaceCount();
  BuildWheelAt(mesh, {left ? -kWheelTrack : kWheelTrack, kTyreRadius, z}, kSegments, kLugs, left);
  mesh.Group(name, first);
}

}  // namespace

void BuildTire(CMeshBuilder& mesh, int segments, bool left) {
  BuildWheelAt(mesh, {}, segments, segments * 3 / 4, left);
}

void BuildWheels(CMeshBuilder& mesh) {
  BuildWheel(mesh, "front left wheel", kFrontAxle, true);
  BuildWheel(mesh, "front right wheel", kFrontAxle, false);
  BuildWheel(mesh, "rear left wheel", kRearAxle, true);
  BuildWheel(mesh, "rear right wheel", kRearAxle, false);
}

}  // namespace veldra::samples
