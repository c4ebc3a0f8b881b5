#include <algorithm>
#include <array>
#include <cmath>

#include "samples/solids.h"
#include "samples/truck.h"
#include "samples/truckplan.h"

namespace veldra::samples {

namespace {

constexpr double kBodyHalfWidth = 75;
constexpr double kBedFloor = 184;
constexpr double kBedHalfWidth = 66;
constexpr double kTailgateInside = -197;
constexpr double kRoofHalfWidth = 58;
constexpr double kRoofFront = 26;
constexpr double kRoofBack = -50;

/// Where along the truck the body is cut into strips, from the front: closely at the wheel arches.
constexpr std::array kStations = {205.0,  195.0,  181.5,  175.0,  163.0,  145.0,  125.0,  105.0, 87.0,
                                  75.0,   68.5,   40.0,   0.0,    -40.0,  -63.5,  -70.0,  -82.0, -100.0,
                                  -120.0, -140.0, -158.0, -170.0, -176.5, -190.0, -197.0, -205.0};
constexpr int kStrips = static_cast<int>(kStations.size()) - 1;
/// How high, between the body's lower edge and the belt line, the rows of its sides lie.
constexpr std::array kRows = {0.0, 0.25, 0.7, 1.0};
constexpr int kRowCount = static_cast<int>(kRows.size()) - 1;
constexpr int kColumns = 4;  ///< across bonnet, front and roof

int StationOf(double z) {
  return static_cast<int>(std::ranges::find(kStations, z) - kStations.begin());
}

double FromAxle(double z) {
  return std::min(std::abs(z - kFrontAxle), std::abs(z - kRearAxle));
}

double LowerEdge(double z) {
  const double away = FromAxle(z);
  if (away >= kArchRadius) return kBodyBottom;
  return std::max(kBodyBottom, kArchHeight + std::sqrt(kArchRadius * kArchRadius - away * away));
}

double BeltLine(double z) {
  return kBeltLine - 14.0 * std::pow(std::max(0.0, (z - kCowl) / (kFrontEnd - kCowl)), 2);
}

/// Half of the body's width at T of its height: rounded, flared at the wheel arches, narrower at the ends.
double SideX(double z, double t) {
  const double round = 3.0 - 12.0 * (t - 0.5) * (t - 0.5);
  const double flare = FromAxle(z) < kArchRadius ? 8.0 * (1.0 - t) * (1.0 - t) : 0.0;
  const double end = 5.0 * std::pow(std::max(0.0, (std::abs(z) - 185.0) / 20.0), 2);
  return kBodyHalfWidth - 3.0 + round + flare - end;
}

double SideY(double z, double t) {
  return std::lerp(LowerEdge(z), BeltLine(z), t);
}

const SPlane& SideView(bool left) {
  return left ? kLeftSide : kRightSide;
}

SCorner Project(const SPlane& plane, const Vector3& at, double across, double up) {
  return {at, plane.At(across, up)};
}

SCorner FromAbove(const Vector3& at) {
  return Project(kAbove, at, at[0], at[2]);
}

void AddSide(CMeshBuilder& mesh, bool left) {
  mesh.Place({}, left);
  AddGrid(mesh, kStrips, kRowCount, [left](int column, int row) {
    const double z = kStations[static_cast<size_t>(column)];
    const double t = kRows[static_cast<size_t>(row)];
    const Vector3 at = {SideX(z, t), SideY(z, t), z};
    return Project(SideView(left), at, at[2], at[1]);
  });
  mesh.PlaceAtOrigin();
}

void AddUnderside(CMeshBuilder& mesh) {
  for (int i = 0; i < kStrips; ++i) {
    const double front = kStations[static_cast<size_t>(i)];
    const double back = kStations[static_cast<size_t>(i) + 1];
    const auto corner = [](double z, double side) { return SCorner{{side * SideX(z, 0), LowerEdge(z), z}, {}}; };
    mesh.AddQuad(corner(front, -1), corner(back, -1), corner(back, 1), corner(front, 1));
  }
}

/// -1..1 across the truck.
double AcrossOf(int column) {
  return 2.0 * column / kColumns - 1.0;
}

/// How far the body bends outward in its middle.
double Crown(double across, double height) {
  return height * (1.0 - across * across);
}

double FrontBow(double across) {
  return Crown(across, 6.0);
}

void AddBonnet(CMeshBuilder& mesh) {
  const int rows = StationOf(kCowl);
  AddGrid(mesh, kColumns, rows, [](int column, int row) {
    const double z = kStations[static_cast<size_t>(row)];
    const double across = AcrossOf(column);
    const double bow = row == 0 ? FrontBow(across) : 0.0;
    return FromAbove({across * SideX(z, 1), BeltLine(z) + Crown(across, 9.0), z + bow});
  });
}

void AddFront(CMeshBuilder& mesh) {
  AddGrid(mesh, kColumns, kRowCount, [](int column, int row) {
    const double t = kRows[static_cast<size_t>(row)];
    const double across = AcrossOf(column);
    const Vector3 at = {across * SideX(kFrontEnd, t), SideY(kFrontEnd, t) + t * t * Crown(across, 9.0),
                        kFrontEnd + t * FrontBow(across)};
    return Project(kFrontView, at, at[0], at[1]);
  });
}

void AddTailgate(CMeshBuilder& mesh) {
  AddGrid(mesh, 2, kRowCount, [](int column, int row) {
    const double t = kRows[static_cast<size_t>(row)];
    const Vector3 at = {(1 - column) * SideX(kRearEnd, t), SideY(kRearEnd, t), kRearEnd};
    return Project(kRearView, at, at[0], at[1]);
  });
}

/// The air scoop on the bonnet.
void AddScoop(CMeshBuilder& mesh) {
  const Vector3 front_left = {-24, 238, 146};
  const Vector3 front_right = {24, 238, 146};
  const Vector3 back_left = {-19, 236, 78};
  const Vector3 back_right = {19, 236, 78};
  const auto down = [](const Vector3& at) { return FromAbove({at[0], at[1] - 22, at[2]}); };
  mesh.AddQuad(FromAbove(front_left), FromAbove(front_right), FromAbove(back_right), FromAbove(back_left));
  mesh.AddQuad(down(front_right), down(back_right), FromAbove(back_right), FromAbove(front_right));
  mesh.AddQuad(down(back_left), down(front_left), FromAbove(front_left), FromAbove(back_left));
  mesh.Use("TREAD.RAW");
  mesh.AddQuad({down(front_left).at, {0, 1}}, {down(front_right).at, {1, 1}}, {front_right, {1, 0.55}},
               {front_left, {0, 0.55}});
}

// The cab
// --------------------------------------------------------------------------------------------------------------

/// Four places, counter-clockwise from the lower left one as seen from outside.
using Pane = std::array<Vector3, 4>;

Vector3 Inside(const Pane& pane, double across, double up) {
  const Vector3 lower = (1 - across) * pane[0] + across * pane[1];
  const Vector3 upper = (1 - across) * pane[3] + across * pane[2];
  return (1 - up) * lower + up * upper;
}

/// A window and the wall that it is set in.
struct SWindow {
  Pane wall;
  double side_margin;  ///< part of the wall's width
  double lower_margin;
  double upper_margin;

  Pane Glass() const {
    return {Inside(wall, side_margin, lower_margin), Inside(wall, 1 - side_margin, lower_margin),
            Inside(wall, 1 - side_margin, 1 - upper_margin), Inside(wall, side_margin, 1 - upper_margin)};
  }
};

SWindow Windscreen() {
  return {{{{-SideX(kCowl, 1), kBeltLine, kCowl},
            {SideX(kCowl, 1), kBeltLine, kCowl},
            {kRoofHalfWidth, kRoof, kRoofFront},
            {-kRoofHalfWidth, kRoof, kRoofFront}}},
          0.07,
          0.1,
          0.08};
}

SWindow RearWindow() {
  return {{{{SideX(kCabBack, 1), kBeltLine, kCabBack},
            {-SideX(kCabBack, 1), kBeltLine, kCabBack},
            {-kRoofHalfWidth, kRoof, kRoofBack},
            {kRoofHalfWidth, kRoof, kRoofBack}}},
          0.1,
          0.14,
          0.14};
}

/// Door window and quarter window of the right side.
std::array<SWindow, 2> SideWindows() {
  const Pane side = {{{SideX(kCowl, 1), kBeltLine, kCowl},
                      {SideX(kCabBack, 1), kBeltLine, kCabBack},
                      {kRoofHalfWidth, kRoof, kRoofBack},
                      {kRoofHalfWidth, kRoof, kRoofFront}}};
  constexpr double kPost = 0.62;
  const Vector3 low = Inside(side, kPost, 0);
  const Vector3 high = Inside(side, kPost, 1);
  return {{{{{side[0], low, high, side[3]}}, 0.07, 0.06, 0.13}, {{{low, side[1], side[2], high}}, 0.12, 0.06, 0.13}}};
}

template <class TProject>
void AddWindowWall(CMeshBuilder& mesh, const SWindow& window, const TProject& project) {
  const Pane glass = window.Glass();
  for (size_t i = 0; i < 4; ++i) {
    const size_t next = (i + 1) % 4;
    mesh.AddQuad(project(window.wall[i]), project(window.wall[next]), project(glass[next]), project(glass[i]));
  }
}

void AddGlass(CMeshBuilder& mesh, const SWindow& window) {
  const Pane glass = window.Glass();
  mesh.AddQuad({glass[0], {0, 1}}, {glass[1], {1, 1}}, {glass[2], {1, 0}}, {glass[3], {0, 0}});
}

void AddRoof(CMeshBuilder& mesh) {
  constexpr int kRoofRows = 2;
  AddGrid(mesh, kColumns, kRoofRows, [](int column, int row) {
    const double across = AcrossOf(column);
    const double part = static_cast<double>(row) / kRoofRows;
    const double hump = Crown(across, 5.0) * (row == 1 ? 1.0 : 0.0);
    return FromAbove({across * kRoofHalfWidth, kRoof + hump, std::lerp(kRoofFront, kRoofBack, part)});
  });
}

void AddSeats(CMeshBuilder& mesh) {
  mesh.Use("SEAT.RAW");
  for (const double x : {-32.0, 32.0}) {
    AddBox(mesh, {x - 20, kBeltLine - 8, -26}, {x + 20, kBeltLine + 4, 16});
    AddBox(mesh, {x - 20, kBeltLine + 4, -38}, {x + 20, kBeltLine + 46, -26});
  }
}

// The bed
// --------------------------------------------------------------------------------------------------------------

/// A wall or the floor of the bed, the plate's pattern COLUMNS times across it.
void AddPlate(CMeshBuilder& mesh, const Pane& pane, int columns, int rows) {
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const auto at = [&](int dx, int dy) {
        return SCorner{Inside(pane, static_cast<double>(column + dx) / columns, static_cast<double>(row + dy) / rows),
                       {static_cast<double>(dx), 1.0 - dy}};
      };
      mesh.AddQuad(at(0, 0), at(1, 0), at(1, 1), at(0, 1));
    }
  }
}

/// The upper edges of the bed's sides and of the tailgate.
void AddRails(CMeshBuilder& mesh) {
  for (const bool left : {false, true}) {
    mesh.Place({}, left);
    for (int i = StationOf(kCabBack); i + 2 <= kStrips; ++i) {
      const double front = kStations[static_cast<size_t>(i)];
      const double back = kStations[static_cast<size_t>(i) + 1];
      const auto rail = [left](double x, double z) {
        return Project(SideView(left), {x, kBeltLine, z}, z, kBeltLine - 1);
      };
      mesh.AddQuad(rail(kBedHalfWidth, front), rail(SideX(front, 1), front), rail(SideX(back, 1), back),
                   rail(kBedHalfWidth, back));
    }
  }
  mesh.PlaceAtOrigin();
  const auto edge = [](double x, double z) { return Project(kLeftSide, {x, kBeltLine, z}, z, kBeltLine - 1); };
  mesh.AddQuad(edge(-SideX(kTailgateInside, 1), kTailgateInside), edge(SideX(kTailgateInside, 1), kTailgateInside),
               edge(SideX(kRearEnd, 1), kRearEnd), edge(-SideX(kRearEnd, 1), kRearEnd));
}

}  // namespace

void BuildBody(CMeshBuilder& mesh) {
  const int32_t first = mesh.FaceCount();
  mesh.Use("SIDES.RAW");
  AddSide(mesh, true);
  AddSide(mesh, false);
  mesh.Use("ENDS.RAW");
  AddFront(mesh);
  AddTailgate(mesh);
  mesh.UseNoTexture();
  AddUnderside(mesh);
  mesh.Group("body", first);

  const int32_t bonnet = mesh.FaceCount();
  mesh.Use("TOP.RAW");
  AddBonnet(mesh);
  AddScoop(mesh);
  mesh.Group("hood", bonnet);
}

void BuildCab(CMeshBuilder& mesh) {
  const int32_t first = mesh.FaceCount();
  mesh.Use("TOP.RAW");
  AddRoof(mesh);
  AddWindowWall(mesh, Windscreen(), FromAbove);
  AddWindowWall(mesh, RearWindow(), FromAbove);
  mesh.Use("SIDES.RAW");
  for (const bool left : {false, true}) {
    mesh.Place({}, left);
    for (const SWindow& window : SideWindows()) {
      AddWindowWall(mesh, window, [left](const Vector3& at) { return Project(SideView(left), at, at[2], at[1]); });
    }
  }
  mesh.PlaceAtOrigin();
  AddSeats(mesh);
  AddBox(mesh, {-68, kBeltLine - 14, kCabBack + 1}, {68, kBeltLine - 8, kCowl - 2});
  mesh.Group("cab", first);
}

void BuildBed(CMeshBuilder& mesh) {
  const int32_t first = mesh.FaceCount();
  const double w = kBedHalfWidth;
  const double low = kBedFloor;
  const double high = kBeltLine;
  mesh.Use("PLATE.RAW");
  AddPlate(mesh, {{{-w, low, kTailgateInside}, {-w, low, kCabBack}, {w, low, kCabBack}, {w, low, kTailgateInside}}}, 3,
           3);
  AddPlate(mesh, {{{-w, low, kCabBack}, {-w, low, kTailgateInside}, {-w, high, kTailgateInside}, {-w, high, kCabBack}}},
           4, 1);
  AddPlate(mesh, {{{w, low, kTailgateInside}, {w, low, kCabBack}, {w, high, kCabBack}, {w, high, kTailgateInside}}}, 4,
           1);
  AddPlate(mesh, {{{w, low, kCabBack}, {-w, low, kCabBack}, {-w, high, kCabBack}, {w, high, kCabBack}}}, 4, 1);
  AddPlate(mesh,
           {{{-w, low, kTailgateInside},
             {w, low, kTailgateInside},
             {w, high, kTailgateInside},
             {-w, high, kTailgateInside}}},
           4, 1);
  mesh.Use("SIDES.RAW");
  AddRails(mesh);
  mesh.Group("bed", first);
}

void BuildGlass(CMeshBuilder& mesh) {
  const int32_t first = mesh.FaceCount();
  mesh.Use("GLASS.RAW", kFaceTransparentMtm2);
  AddGlass(mesh, Windscreen());
  AddGlass(mesh, RearWindow());
  for (const bool left : {false, true}) {
    mesh.Place({}, left);
    for (const SWindow& window : SideWindows())
      AddGlass(mesh, window);
  }
  mesh.PlaceAtOrigin();
  mesh.Group("windows", first);
}

}  // namespace veldra::samples
