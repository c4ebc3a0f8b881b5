#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QWheelEvent>
#include <QtTest>

#include "app/editorfixture.h"

namespace veldra::testing {

namespace {

int TimersOf(QObject& object) {
  return static_cast<int>(QAbstractEventDispatcher::instance()->registeredTimers(&object).size());
}

void Wheel(CTarnView& view, const QPoint& at, int notches) {
  QWheelEvent event(at, view.mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&view, &event);
}

/// QTest::mouseMove does not carry the buttons that are held.
void Drag(CTarnView& view, const QPoint& from, const QPoint& by, Qt::MouseButton button,
          Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::mousePress(&view, button, modifiers, from);
  QMouseEvent move(QEvent::MouseMove, from + by, view.mapToGlobal(from + by), Qt::NoButton, button, modifiers);
  QApplication::sendEvent(&view, &move);
  QTest::mouseRelease(&view, button, modifiers, from + by);
}

bool Same(const SRotation& a, const SRotation& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

}  // namespace

TEST_F(CEditorTest, RenderModesAndOptionsChangeWhatIsDrawn) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  std::vector<QImage> pictures;
  const auto expect_new_picture = [&](ECommand command) {
    Do(command);
    const QImage now = Picture(view);
    for (const QImage& earlier : pictures)
      EXPECT_NE(now, earlier) << CommandRow(command).name;
    pictures.push_back(now);
  };
  const int textured = Inked(view);
  EXPECT_GT(textured, view.width() * view.height() / 40);
  pictures.push_back(Picture(view));
  expect_new_picture(ECommand::kViewSolid);
  expect_new_picture(ECommand::kViewWireframe);
  EXPECT_LT(Inked(view), textured / 2);
  expect_new_picture(ECommand::kViewAxes);
  expect_new_picture(ECommand::kViewVertices);
  EXPECT_TRUE(view.State().vertices);
  expect_new_picture(ECommand::kViewSphericalMarkers);
  Do(ECommand::kViewWireframe);
  EXPECT_TRUE(view.State().vertices);
  EXPECT_TRUE(frame->Action(ECommand::kViewWireframe)->isChecked());
  EXPECT_FALSE(frame->Action(ECommand::kViewVertices)->isChecked());
  EXPECT_TRUE(frame->Action(ECommand::kViewVertexMarkers)->isChecked());
}

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

TEST_F(CEditorTest, NewViewsTakeTheSettings) {
  settings.render_mode = 1;
  settings.axes_3d = 1;
  settings.background = {10, 20, 30};
  settings.view_angle_y = 77;
  CTarnView& view = StartWith(WriteModel("a.bin"));
  EXPECT_EQ(view.State().mode, ERenderMode::kWireframe);
  EXPECT_TRUE(view.State().axes);
  EXPECT_EQ(view.State().rotation.y, 77);
  EXPECT_EQ(Picture(view).pixelColor(1, 1), QColor(10, 20, 30));
}

TEST_F(CEditorTest, KeysTurnZoomAndPlay) {
  settings.view_angle_x = settings.view_angle_y = settings.view_angle_z = 0;
  CTarnView& view = StartWith(WriteModel("a.bin"));
  const struct {
    Qt::Key key;
    SRotation turned;
  } turns[] = {{Qt::Key_Up, {-5, 0, 0}},   {Qt::Key_Down, {5, 0, 0}},   {Qt::Key_Left, {0, -5, 0}},
               {Qt::Key_Right, {0, 5, 0}}, {Qt::Key_PageUp, {0, 0, 5}}, {Qt::Key_PageDown, {0, 0, -5}}};
  const QImage straight = Picture(view);
  for (const auto& row : turns) {
    QTest::keyClick(&view, row.key);
    EXPECT_NEAR(view.State().rotation.x, row.turned.x, 1e-9) << row.key;
    EXPECT_NEAR(view.State().rotation.y, row.turned.y, 1e-9) << row.key;
    EXPECT_NEAR(view.State().rotation.z, row.turned.z, 1e-9) << row.key;
    EXPECT_NE(Picture(view), straight) << row.key;
    QTest::keyClick(&view, Qt::Key_5, Qt::KeypadModifier);
    EXPECT_TRUE(Same(view.State().rotation, {}));
  }
  QTest::keyClick(&view, Qt::Key_Left);
  QTest::keyClick(&view, Qt::Key_5);  // not on the number pad
  EXPECT_FALSE(Same(view.State().rotation, {}));

  Do(ECommand::kViewZoomToFit);
  const double zoom = view.State().zoom;
  QTest::keyClick(&view, Qt::Key_Plus);
  EXPECT_EQ(view.State().zoom, zoom + view.State().zoom_step);
  for (int i = 0; i < 20; ++i)
    QTest::keyClick(&view, Qt::Key_Minus);
  EXPECT_EQ(view.State().zoom, view.State().zoom_step);
  Do(ECommand::kViewZoomToFit);
  EXPECT_DOUBLE_EQ(view.State().zoom, zoom);
}

TEST_F(CEditorTest, PlayHasOneTimerAndTurnsTheModel) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  EXPECT_EQ(TimersOf(view), 0);
  QTest::keyClick(&view, Qt::Key_P);
  EXPECT_EQ(TimersOf(view), 1);
  Do(ECommand::kViewPlay);
  EXPECT_EQ(TimersOf(view), 0);
  Do(ECommand::kViewPlay);
  ASSERT_EQ(TimersOf(view), 1);
  EXPECT_EQ(QAbstractEventDispatcher::instance()->registeredTimers(&view).constFirst().interval, 5);
  EXPECT_TRUE(frame->Action(ECommand::kViewPlay)->isChecked());
  const SRotation before = view.State().rotation;
  EXPECT_TRUE(QTest::qWaitFor([&] { return !Same(view.State().rotation, before); }));
  Do(ECommand::kViewPlay);
  const SRotation stopped = view.State().rotation;
  QTest::qWait(30);
  EXPECT_TRUE(Same(view.State().rotation, stopped));
}

TEST_F(CEditorTest, MouseOrbitsMovesAndZoomsToThePointer) {
  settings.view_angle_x = settings.view_angle_y = settings.view_angle_z = 0;
  CTarnView& view = StartWith(WriteModel("a.bin"));
  const QPoint centre = view.rect().center();
  Drag(view, centre, {50, 0}, Qt::LeftButton);
  EXPECT_GT(view.State().rotation.y, 1.0);
  EXPECT_EQ(view.State().pan_x, 0.0);
  const SRotation turned = view.State().rotation;
  const double side = std::min(view.width(), view.height());
  Drag(view, centre, {30, 20}, Qt::MiddleButton);
  Drag(view, centre, {30, 20}, Qt::RightButton);
  EXPECT_TRUE(Same(view.State().rotation, turned));
  EXPECT_NEAR(view.State().pan_x, 60 / side, 1e-9);
  EXPECT_NEAR(view.State().pan_y, -40 / side, 1e-9);

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

TEST_F(CEditorTest, TheModelIsBuiltAgainOnlyWhenItChanged) {
  CTarnView& view = StartWith(WriteModel("a.bin", {.shift_x = 300}));
  const int built = view.Renderer().BuildCount();
  Do(ECommand::kViewAxes);
  Do(ECommand::kViewAxes);
  QTest::keyClick(&view, Qt::Key_Left);
  Picture(view);
  EXPECT_EQ(view.Renderer().BuildCount(), built);
  Do(ECommand::kModelCenterX);
  Picture(view);
  EXPECT_GT(view.Renderer().BuildCount(), built);
}

TEST_F(CEditorTest, TwoViewsOfOneDocumentFollowItAndHaveTheirOwnState) {
  CTarnView& first = StartWith(WriteModel("a.bin"));
  CTarnView& second = frame->Windows().AddView(first.SharedDocument(), false).View();
  WaitUntilDrawn(second);
  Do(ECommand::kViewWireframe);
  EXPECT_EQ(second.State().mode, ERenderMode::kWireframe);
  EXPECT_EQ(first.State().mode, ERenderMode::kTextured);
  Do(ECommand::kWindowTile);
  const QImage before = Picture(first);
  first.Document().Model().SetVertexPosition(0, {-300, -200, -100});
  Settle();
  EXPECT_NE(Picture(first), before);
  // No question: the document stays open in its other window.
  Do(ECommand::kFileClose);
  EXPECT_EQ(frame->Children().size(), 1);
  EXPECT_TRUE(frame->isWindowModified() || frame->ActiveChild()->isWindowModified());
}

}  // namespace veldra::testing
