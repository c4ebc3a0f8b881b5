#include <algorithm>
#include <array>
#include <string>

#include "samples/solids.h"
#include "samples/truck.h"
#include "samples/truckplan.h"

namespace veldra::samples {

namespace {

constexpr double kRailX = 36;
constexpr double kRailLow = 116;
constexpr double kRailHigh = 130;

void AddFrame(CMeshBuilder& mesh) {
  mesh.Use("FRAME.RAW");
  for (const double x : {-kRailX, kRailX}) {
    for (const double z : {-190.0, -63.0, 64.0})
      AddBox(mesh, {x - 6, kRailLow, z}, {x + 6, kRailHigh, z + 127});
  }
  for (const double z : {-180.0, -60.0, 60.0, 180.0}) {
    AddTube(mesh, {-kRailX + 6, 123, z}, {kRailX - 6, 123, z}, 6, 6, ECaps::kNone);
  }
  // Posts that carry the body.
  for (const double x : {-kRailX, kRailX}) {
    for (const double z : {-185.0, -20.0, 25.0, 188.0})
      AddTube(mesh, {x, kRailHigh, z}, {x, 146, z}, 5, 4, ECaps::kNone);
  }
}

void AddAxle(CMeshBuilder& mesh, double z) {
  const double y = kTyreRadius;
  mesh.Use("FRAME.RAW");
  AddTube(mesh, {-90, y, z}, {90, y, z}, 9, 8, ECaps::kNone);
  mesh.Use("CHROME.RAW", kFaceShiny);
  AddStump(mesh, {0, y, z}, {26, y, z}, 23, 10, 8, ECaps::kNone);
  AddStump(mesh, {-26, y, z}, {0, y, z}, 10, 23, 8, ECaps::kNone);
}

/// Two links and two coil-over shocks for each wheel of the axle at Z.
void AddSuspension(CMeshBuilder& mesh, double z) {
  const double inwards = z > 0 ? -1.0 : 1.0;
  for (const bool left : {false, true}) {
    mesh.Place({}, left);
    mesh.Use("CHROME.RAW", kFaceShiny);
    AddTube(mesh, {56, 70, z}, {kRailX, kRailLow, z + inwards * 92}, 4, 5, ECaps::kNone);
    mesh.Use("SHOCK.RAW");
    for (const double side : {-1.0, 1.0}) {
      AddTube(mesh, {68, 86, z + side * 9}, {46, 176, z + side * 26}, 7, 6, ECaps::kNone);
    }
  }
  mesh.PlaceAtOrigin();
}

void AddDriveline(CMeshBuilder& mesh) {
  mesh.Use("FRAME.RAW");
  AddBox(mesh, {-16, 100, -22}, {16, 140, 24});
  mesh.Use("CHROME.RAW", kFaceShiny);
  AddTube(mesh, {0, 82, kRearAxle + 22}, {0, 112, -22}, 5, 6, ECaps::kNone);
  AddTube(mesh, {0, 112, 24}, {0, 82, kFrontAxle - 22}, 5, 6, ECaps::kNone);
}

/// A push bar before the grille.
void AddFrontBumper(CMeshBuilder& mesh) {
  AddTube(mesh, {-80, 150, 219}, {80, 150, 219}, 9, 8, ECaps::kBoth);
  AddTube(mesh, {-34, 176, 221}, {34, 176, 221}, 4, 6, ECaps::kNone);
  for (const double x : {-34.0, 34.0})
    AddTube(mesh, {x, 142, 221}, {x, 186, 221}, 4, 6, ECaps::kEnd);
  for (const double x : {-40.0, 40.0})
    AddTube(mesh, {x, 150, 196}, {x, 150, 214}, 5, 6, ECaps::kNone);
}

void AddRollBar(CMeshBuilder& mesh) {
  constexpr double kTop = 282;
  for (const double x : {-58.0, 58.0}) {
    AddTube(mesh, {x, 184, -80}, {x * 0.95, kTop, -76}, 5, 6, ECaps::kNone);
    AddTube(mesh, {x, 186, -150}, {x * 0.95, kTop - 4, -78}, 4, 6, ECaps::kNone);
  }
  AddTube(mesh, {-60, kTop, -76}, {60, kTop, -76}, 5, 6, ECaps::kBoth);
}

void AddPipes(CMeshBuilder& mesh) {
  for (const double x : {-54.0, 54.0}) {
    AddTube(mesh, {x * 0.6, 184, -72}, {x * 0.6, 268, -72}, 6, 6, ECaps::kNone);
    AddStump(mesh, {x * 0.6, 268, -72}, {x * 0.6, 304, -82}, 6, 8, 6, ECaps::kNone);
  }
}

void AddLamps(CMeshBuilder& mesh) {
  for (const double x : {-46.0, -23.0, 0.0, 23.0, 46.0}) {
    mesh.Use("CHROME.RAW", kFaceShiny);
    AddStump(mesh, {x, 297, 12}, {x, 297, 26}, 5, 10, 8, ECaps::kNone);
    mesh.Use("LAMP.RAW");
    AddDisc(mesh, {x, 297, 26}, {0, 0, 1}, 10, 8);
  }
}

void AddBeacon(CMeshBuilder& mesh) {
  const std::array<std::string, 4> frames = {"BEACON1.RAW", "BEACON2.RAW", "BEACON3.RAW", "BEACON4.RAW"};
  mesh.UseAnimation("BEACON", frames, 8.0);
  AddStump(mesh, {0, 285, -40}, {0, 305, -40}, 11, 9, 10, ECaps::kEnd);
}

}  // namespace

void BuildChassis(CMeshBuilder& mesh) {
  const int32_t first = mesh.FaceCount();
  AddFrame(mesh);
  AddDriveline(mesh);
  for (const double z : {kFrontAxle, kRearAxle}) {
    AddAxle(mesh, z);
    AddSuspension(mesh, z);
  }
  mesh.Group("chassis", first);
}

void BuildFrame(CMeshBuilder& mesh) {
  const int32_t first = mesh.FaceCount();
  AddFrame(mesh);
  mesh.Group("frame", first);
}

void BuildAxle(CMeshBuilder& mesh) {
  AddAxle(mesh, 0);
}

void BuildTrim(CMeshBuilder& mesh) {
  const int32_t first = mesh.FaceCount();
  mesh.Use("CHROME.RAW", kFaceShiny);
  AddFrontBumper(mesh);
  AddTube(mesh, {-80, 150, -215}, {80, 150, -215}, 8, 8, ECaps::kBoth);
  AddRollBar(mesh);
  AddPipes(mesh);
  AddTube(mesh, {-58, 288, 12}, {58, 288, 12}, 3, 6, ECaps::kBoth);
  AddLamps(mesh);
  mesh.Group("trim", first);

  const int32_t beacon = mesh.FaceCount();
  AddBeacon(mesh);
  mesh.Group("beacon", beacon);
}

void BuildMudFlaps(CMeshBuilder& mesh) {
  const int32_t first = mesh.FaceCount();
  mesh.Use("CHROME.RAW", kFaceShiny);
  AddTube(mesh, {-146, 146, -212}, {146, 146, -212}, 4, 6, ECaps::kBoth);
  mesh.Use("FLAP.RAW", kFaceTransparentMtm);
  for (const bool left : {false, true}) {
    const double inner = left ? -90 : 90;
    const double outer = left ? -146 : 146;
    const double from = std::min(inner, outer);
    const double to = std::max(inner, outer);
    for (const double turned : {0.0, 1.0}) {
      const double z = turned > 0 ? -213 : -212;
      const double a = turned > 0 ? to : from;
      const double b = turned > 0 ? from : to;
      mesh.AddQuad({{a, 52, z}, {0, 1}}, {{b, 52, z}, {1, 1}}, {{b, 146, z}, {1, 0}}, {{a, 146, z}, {0, 0}});
    }
  }
  mesh.Group("mud flaps", first);
}

}  // namespace veldra::samples
