#include "truckscene/truckoverlay.h"

#include <gtest/gtest.h>

#include <numbers>

namespace veldra {
namespace {

TEST(TruckOverlay, LightsLookWhereHeadingPitchAndSpinSay) {
  constexpr double kQuarter = std::numbers::pi / 2;
  const double half = std::numbers::sqrt2 / 2;
  const struct {
    double heading, pitch, speed, seconds;
    TruckPoint direction;
  } cases[] = {{0, 0, 0, 9, {0, 0, 1}},
               {kQuarter, 0, 0, 0, {1, 0, 0}},
               {-kQuarter, 0, 0, 0, {-1, 0, 0}},
               {0, kQuarter, 0, 0, {0, 1, 0}},
               {kQuarter, -kQuarter / 2, 0, 0, {half, -half, 0}},
               {0, 0, kQuarter, 3, {-1, 0, 0}},
               {kQuarter, kQuarter / 2, kQuarter, 1, {0, half, -half}}};
  for (const auto& row : cases) {
    TruckLight light;
    light.heading = row.heading;
    light.pitch = row.pitch;
    light.heading_speed = row.speed;
    for (size_t axis = 0; axis < 3; ++axis)
      EXPECT_NEAR(LightDirection(light, row.seconds)[axis], row.direction[axis], 1e-9) << row.heading << ' ' << axis;
  }
}

TEST(TruckOverlay, LightsBlinkByTheirTimes) {
  const struct {
    int32_t on, off;
    double seconds;
    bool is_lit;
  } cases[] = {{250, 750, 0, true}, {250, 750, 0.2, true}, {250, 750, 0.3, false}, {250, 750, 1.1, true},
               {0, 750, 0.3, true}, {250, 0, 0.3, true},   {-5, 750, 0.3, true},   {INT32_MAX, INT32_MAX, 3e6, false}};
  for (const auto& row : cases) {
    TruckLight light;
    light.ms_on = row.on;
    light.ms_off = row.off;
    EXPECT_EQ(IsLit(light, row.seconds), row.is_lit) << row.on << ' ' << row.seconds;
  }
}

}  // namespace
}  // namespace veldra
