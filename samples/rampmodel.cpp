#include "samples/rampmodel.h"

#include <array>
#include <cmath>

#include "samples/solids.h"

namespace veldra::samples {

namespace {

constexpr double kHalfWidth = 120;
constexpr double kFront = 220;
constexpr int kSteps = 6;

/// The deck's height where PART of its length is behind, rising ever more steeply.
double DeckHeight(double part) {
  return 8.0 + 112.0 * part * part;
}

double DeckZ(double part) {
  return kFront - 340.0 * part;
}

double Part(int step) {
  return static_cast<double>(step) / kSteps;
}

void AddDeck(CMeshBuilder& mesh) {
  mesh.Use("PLANKS.RAW");
  AddGrid(mesh, 2, kSteps, [](int column, int row) {
    const double v = row % 2 == 0 ? 1.0 : 0.5;
    return SCorner{{(column - 1) * kHalfWidth, DeckHeight(Part(row)), DeckZ(Part(row))},
                   {static_cast<double>(column % 2), v}};
  });
}

void AddMound(CMeshBuilder& mesh) {
  mesh.Use("DIRT.RAW");
  constexpr double kSpread = 34;
  for (const bool left : {false, true}) {
    mesh.Place({}, left);
    AddGrid(mesh, kSteps, 1, [](int column, int row) {
      const double part = Part(column);
      const double x = row == 0 ? kHalfWidth + kSpread * (0.3 + part) : kHalfWidth;
      return SCorner{{x, row == 0 ? 0.0 : DeckHeight(part), DeckZ(part)},
                     {static_cast<double>(column % 2), row == 0 ? 1.0 : 0.0}};
    });
  }
  mesh.PlaceAtOrigin();
  const double back = DeckZ(1);
  const double spread = kHalfWidth + kSpread * 1.3;
  mesh.AddQuad({{spread, 0, back}, {0, 1}}, {{-spread, 0, back}, {1, 1}}, {{-kHalfWidth, DeckHeight(1), back}, {1, 0}},
               {{kHalfWidth, DeckHeight(1), back}, {0, 0}});
  const double near = kHalfWidth + kSpread * 0.3;
  mesh.AddQuad({{-near, 0, kFront}, {0, 1}}, {{near, 0, kFront}, {1, 1}},
               {{kHalfWidth, DeckHeight(0), kFront}, {1, 0.9}}, {{-kHalfWidth, DeckHeight(0), kFront}, {0, 0.9}});
  mesh.AddQuad({{-spread, 0, back}, {0, 1}}, {{spread, 0, back}, {1, 1}}, {{near, 0, kFront}, {1, 0}},
               {{-near, 0, kFront}, {0, 0}});
}

void AddBillboard(CMeshBuilder& mesh) {
  constexpr double kZ = -150;
  mesh.Use("PLANKS.RAW");
  for (const double x : {-150.0, 150.0})
    AddTube(mesh, {x, 0, kZ}, {x, 470, kZ}, 9, 8, ECaps::kEnd);
  AddBox(mesh, {-141, 180, kZ - 6}, {141, 460, kZ + 2});
  mesh.Use("POSTER.RAW");
  mesh.AddQuad({{-138, 184, kZ + 4}, {0, 1}}, {{138, 184, kZ + 4}, {1, 1}}, {{138, 456, kZ + 4}, {1, 0}},
               {{-138, 456, kZ + 4}, {0, 0}});
}

}  // namespace

void BuildRamp(CMeshBuilder& mesh) {
  AddDeck(mesh);
  AddMound(mesh);
  mesh.Group("ramp", 0);
  const int32_t first = mesh.FaceCount();
  AddBillboard(mesh);
  mesh.Group("billboard", first);
}

}  // namespace veldra::samples
