#include "render/gizmo.h"

#include <gtest/gtest.h>

#include "render/scene.h"

namespace veldra::testing {
namespace {

using EKind = SGizmoHandle::EKind;

/// Seen from the front with one unit a pixel, about (100, 50, 0), which is at 500, 350 of the window.
CGizmo Seen(const SRotation& rotation) {
  SViewState state;
  state.orthographic = true;
  state.extent = 800.0 / 1.0559;  // with the air around a model that fits
  state.rotation = rotation;
  return {CViewCamera(state, {{-400, -400, -400}, {400, 400, 400}}, 800, 800), {100, 50, 0}, 1.0};
}

TEST(Gizmo, HandlesAreWhereTheyAreDrawnAndNoneThatPointsAtTheViewer) {
  const CGizmo gizmo = Seen({});
  const struct {
    double x, y;
    std::optional<SGizmoHandle> handle;
  } cases[] = {
      {500, 350, SGizmoHandle{EKind::kMove, {}}},
      {500 + 56, 350, SGizmoHandle{EKind::kResize, EAxis::kX}},
      {500 + 110, 352, SGizmoHandle{EKind::kMove, EAxis::kX}},
      {499, 350 - 105, SGizmoHandle{EKind::kMove, EAxis::kY}},
      {500 - 57, 350 - 57, SGizmoHandle{EKind::kTurn, EAxis::kZ}},
      {500 - 105, 350, std::nullopt},
      {500 + 30, 350 - 30, std::nullopt},
  };
  for (const auto& row : cases)
    EXPECT_EQ(gizmo.HandleAt(row.x, row.y), row.handle) << row.x << ' ' << row.y;
}

TEST(Gizmo, TurnsWithThePointerAndResizesWithItsDistance) {
  const SScreenPoint right = {.x = 581, .y = 350};
  const SScreenPoint above = {.x = 500, .y = 269};
  EXPECT_NEAR(Seen({}).DegreesBetween(EAxis::kZ, right, above), 90, 0.5);
  EXPECT_NEAR(Seen({0, 180, 0}).DegreesBetween(EAxis::kZ, {.x = 381, .y = 350}, {.x = 300, .y = 269}), -90, 0.5);
  // From its side the ring is a line: along it, by its radius, is a radian.
  EXPECT_NEAR(Seen({}).DegreesBetween(EAxis::kY, {.x = 500, .y = 350}, {.x = 581, .y = 350}), 57.3, 0.5);
  EXPECT_NEAR(Seen({}).DegreesBetween(EAxis::kX, {.x = 500, .y = 350}, {.x = 500, .y = 431}), 57.3, 0.5);
  EXPECT_NEAR(Seen({}).FactorBetween(EAxis::kX, {.x = 556, .y = 350}, {.x = 612, .y = 300}), 2.0, 0.02);
  EXPECT_EQ(Seen({}).FactorBetween(EAxis::kX, {.x = 556, .y = 350}, {.x = 0, .y = 350}), 0.0);
}

}  // namespace
}  // namespace veldra::testing
