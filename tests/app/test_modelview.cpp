#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QWheelEvent>
#include <QtTest>

#include "app/editorfixture.h"

namespace veldra::testing {

namespace {

void Wheel(CTarnView& view, const QPoint& at, int notches) {
  QWheelEvent event(at, view.mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&view, &event);
}

bool Same(const SRotation& a, const SRotation& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

}  // namespace

TEST_F(CEditorTest, AnOptionFlipsAloneAndChoosingTheModeAgainKeepsIt) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  const std::pair<ECommand, bool SViewState::*> options[] = {
      {ECommand::kViewOnly3D, &SViewState::only_3d},
      {ECommand::kViewAxes, &SViewState::axes},
      {ECommand::kViewVertexMarkers, &SViewState::vertices},
      {ECommand::kViewSphericalMarkers, &SViewState::spherical_markers},
      {ECommand::kViewHighQuality, &SViewState::high_quality},
      {ECommand::kViewTransparency, &SViewState::transparency},
      {ECommand::kViewFollowFace, &SViewState::follow_current_face},
  };
  for (const auto& [command, option] : options) {
    const SViewState before = view.State();
    Do(command);
    for (const auto& [other_command, other] : options) {
      const bool expected = other == option ? !(before.*other) : before.*other;
      EXPECT_EQ(view.State().*other, expected) << CommandRow(command).name;
      EXPECT_EQ(frame->Action(other_command)->isChecked(), expected) << CommandRow(other_command).name;
    }
  }
  for (int i = 0; i < 2; ++i)
    Do(ECommand::kViewSolid);
  EXPECT_EQ(view.State().mode, ERenderMode::kSolid);
  EXPECT_TRUE(frame->Action(ECommand::kViewSolid)->isChecked());
}

TEST_F(CEditorTest, KeysTurnByTheStep) {
  settings.rotate_step = 12;
  settings.view_angle_x = settings.view_angle_y = settings.view_angle_z = 0;
  CTarnView& view = StartWith(WriteModel("a.bin"));
  const struct {
    Qt::Key key;
    SRotation turned;
  } turns[] = {{Qt::Key_Up, {-12, 0, 0}},   {Qt::Key_Down, {12, 0, 0}},   {Qt::Key_Left, {0, -12, 0}},
               {Qt::Key_Right, {0, 12, 0}}, {Qt::Key_PageUp, {0, 0, 12}}, {Qt::Key_PageDown, {0, 0, -12}}};
  for (const auto& row : turns) {
    QTest::keyClick(&view, row.key);
    EXPECT_NEAR(view.State().rotation.x, row.turned.x, 1e-9) << row.key;
    EXPECT_NEAR(view.State().rotation.y, row.turned.y, 1e-9) << row.key;
    EXPECT_NEAR(view.State().rotation.z, row.turned.z, 1e-9) << row.key;
    QTest::keyClick(&view, Qt::Key_5, Qt::KeypadModifier);
    EXPECT_TRUE(Same(view.State().rotation, {}));
  }
  QTest::keyClick(&view, Qt::Key_Left);
  QTest::keyClick(&view, Qt::Key_5);  // not on the number pad
  EXPECT_FALSE(Same(view.State().rotation, {}));
}

TEST_F(CEditorTest, TheWheelZoomsToThePointer) {
  settings.view_angle_x = settings.view_angle_y = settings.view_angle_z = 0;
  CTarnView& view = StartWith(WriteModel("a.bin"));
  const QPoint centre = view.rect().center();
  Do(ECommand::kViewZoomToFit);
  const SViewState fitted = view.State();
  const int before = Inked(view);
  const QPoint pointer = centre + QPoint(100, -80);
  Wheel(view, pointer, 2);
  EXPECT_GT(view.State().zoom, 1.2);
  EXPECT_GT(Inked(view), before);
  EXPECT_LT(view.State().pan_x, 0.0);
  EXPECT_LT(view.State().pan_y, 0.0);
  Wheel(view, pointer, -2);
  EXPECT_NEAR(view.State().zoom, fitted.zoom, 1e-9);
  EXPECT_NEAR(view.State().pan_x, fitted.pan_x, 1e-9);
  Wheel(view, pointer, -500);
  EXPECT_GE(view.State().zoom, view.State().zoom_step);
}

}  // namespace veldra::testing
