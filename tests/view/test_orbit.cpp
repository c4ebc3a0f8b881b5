#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "view/orbit.h"

namespace veldra {

namespace {

struct SDirection {
  double x, y, z;
};

/// Turns from axis A toward axis B.
void Spin(double& a, double& b, double degrees) {
  const double c = std::cos(degrees * std::numbers::pi / 180.0);
  const double s = std::sin(degrees * std::numbers::pi / 180.0);
  const double old_a = a;
  a = c * old_a - s * b;
  b = s * old_a + c * b;
}

/// Where the drawing puts model direction D: turned about Z, then Y, then X.
SDirection OnScreen(const SRotation& rotation, SDirection d) {
  Spin(d.x, d.y, rotation.z);
  Spin(d.z, d.x, rotation.y);
  Spin(d.y, d.z, rotation.x);
  return d;
}

}  // namespace

TEST(Orbit, TurnsAboutOneAxisAdd) {
  const SRotation turned = Turned({10, 20, 30}, {.screen_x = 25});
  EXPECT_NEAR(turned.x, 35, 1e-9);
  EXPECT_NEAR(turned.z, 30, 1e-9);
  EXPECT_NEAR(Turned({0, 0, 30}, {.screen_z = 25}).z, 55, 1e-9);
}

TEST(Orbit, DraggingMovesWhatIsInFrontWithTheMouse) {
  EXPECT_GT(OnScreen(Turned({}, {.model_y = 10}), {0, 0, 1}).x, 0.1);
  EXPECT_LT(OnScreen(Turned({}, {.screen_x = 10}), {0, 0, 1}).y, -0.1);
}

TEST(Orbit, TheModelsUprightStaysUprightOnTheScreen) {
  SRotation rotation;
  for (int i = 0; i < 200; ++i) {
    rotation = Turned(rotation, {.screen_x = i % 3 == 0 ? 1.0 : 0.0, .model_y = 7.0});
    EXPECT_NEAR(OnScreen(rotation, {0, 1, 0}).x, 0.0, 1e-9) << i;
  }
  // A full turn comes back to the same picture, through the angle at which X and Z turn about the same line.
  SRotation turned = {20, 0, 0};
  for (int i = 0; i < 72; ++i)
    turned = Turned(turned, {.model_y = 5.0});
  for (const SDirection axis : {SDirection{1, 0, 0}, SDirection{0, 1, 0}, SDirection{0, 0, 1}}) {
    const SDirection before = OnScreen({20, 0, 0}, axis);
    const SDirection after = OnScreen(turned, axis);
    EXPECT_NEAR(before.x, after.x, 1e-6);
    EXPECT_NEAR(before.y, after.y, 1e-6);
    EXPECT_NEAR(before.z, after.z, 1e-6);
  }
}

}  // namespace veldra
