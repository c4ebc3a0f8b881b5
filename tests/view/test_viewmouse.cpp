#include <gmock/gmock.h>

#include <QAbstractEventDispatcher>
#include <QtTest>

#include "render/scene.h"
#include "support/modelparts.h"
#include "support/scriptedquestions.h"
#include "view/tarn2view.h"

namespace veldra::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr EGroupKind kFaces = EGroupKind::kFaces;
constexpr EGroupKind kVertices = EGroupKind::kVertices;

/// A 3D view of a front wall (face 0, vertices 0 to 3), a larger one behind it to the right (face 1, 4 to 7) and a
/// vertex that no face uses, seen from the front without perspective.
class ViewMouse : public ::testing::Test {
 protected:
  static constexpr int kSide = 400;

  void SetUp() override {
    settings.render_mode = static_cast<int32_t>(ERenderMode::kSolid);
    settings.show_gizmo = settings.verts_3d = settings.only_3d = settings.axes_3d = settings.mouse_scheme = 0;
    settings.view_angle_x = settings.view_angle_y = settings.view_angle_z = 0;
    settings.orthographic = 1;
    document = std::make_shared<CTarnDoc>(SDocumentServices{questions, textures, settings});
    AddWall({-60, -60, 10}, 120);
    AddWall({20, -110, -10}, 165);
    document->Model().AddVertex({-189, -30, 0});
    document->SetModified(false);
  }
  void AddWall(const SPoint& low, int32_t side) {
    CBinModel& model = document->Model();
    const int32_t first = model.VertexCount();
    for (const auto& [right, up] : {std::pair{0, 0}, {side, 0}, {side, side}, {0, side}})
      model.AddVertex({low.x + right, low.y + up, low.z});
    MakeFace(model, {first, first + 1, first + 2, first + 3});
  }
  CTarnView& Show() {
    view = std::make_unique<CTarnView>(document);
    view->resize(kSide, kSide);
    view->show();
    view->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->HasDrawn(); }, 20000));
    view->setFocus();
    return *view;
  }
  /// Where a model point is seen.
  QPoint At(const SPoint& point) const {
    const SScreenPoint at = view->Camera().Project(point);
    return (QPointF(at.x, at.y) / view->devicePixelRatioF()).toPoint();
  }
  QPoint AtVertex(int32_t index) const { return At(document->Model().Vertex(index).Position()); }
  void Click(const QPoint& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
    QTest::mouseClick(view.get(), Qt::LeftButton, modifiers, at);
  }
  /// QTest::mouseMove does not carry the buttons that are held.
  void MoveTo(const QPoint& to, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
    QMouseEvent move(QEvent::MouseMove, to, view->mapToGlobal(to), Qt::NoButton, button, modifiers);
    QApplication::sendEvent(view.get(), &move);
  }
  void Drag(const QPoint& from, const QPoint& to, Qt::MouseButton button,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
    QTest::mousePress(view.get(), button, modifiers, from);
    MoveTo((from + to) / 2, button, modifiers);
    MoveTo(to, button, modifiers);
    QTest::mouseRelease(view.get(), button, modifiers, to);
  }
  void SelectVertices(const std::vector<int32_t>& vertices) const {
    document->Model().SelectAll(kVertices, false);
    document->Model().Select(kVertices, vertices, true);
  }
  SPoint Position(int32_t vertex) const { return document->Model().Vertex(vertex).Position(); }
  std::vector<int32_t> Selected(EGroupKind kind) const { return document->Model().Selected(kind); }
  QImage Grab() const { return view->Picture().convertToFormat(QImage::Format_RGB32); }

  CScriptedQuestions questions;
  CTextureStore textures{questions, GreyRamp()};
  CSettings settings;
  std::shared_ptr<CTarnDoc> document;
  std::unique_ptr<CTarnView> view;
};

TEST_F(ViewMouse, AClickMakesCurrentAndCtrlTakesIntoTheSelectionAndOut) {
  CTarnView& shown = Show();
  QSignalSpy changes(&shown, &CTarnView::CursorChanged);
  Click(At({0, 0, 10}));
  EXPECT_EQ(shown.Cursor().Face(), 0);
  EXPECT_EQ(changes.count(), 1);
  EXPECT_THAT(Selected(kFaces), IsEmpty());
  Click(At({150, 0, -10}), Qt::ControlModifier);
  Click(At({0, 0, 10}), Qt::ControlModifier);
  EXPECT_EQ(shown.Cursor().Face(), 0);
  EXPECT_THAT(Selected(kFaces), ElementsAre(0, 1));
  Click(At({150, 0, -10}), Qt::ControlModifier);
  EXPECT_THAT(Selected(kFaces), ElementsAre(0));
  Click(At({-150, 150, 0}));  // nothing there
  EXPECT_EQ(shown.Cursor().Face(), 1);

  Click(AtVertex(2));
  EXPECT_EQ(shown.Cursor().Vertex(), -1) << "vertices are not marked";
  shown.ToggleVertices();
  Click(AtVertex(2) + QPoint(2, 2), Qt::ControlModifier);
  EXPECT_EQ(shown.Cursor().Vertex(), 2);
  EXPECT_THAT(Selected(kVertices), ElementsAre(2));
  EXPECT_FALSE(document->IsModified());
}

TEST_F(ViewMouse, ARubberBandSelectsWhatShowsInItAndCtrlAdds) {
  CTarnView& shown = Show();
  Drag(At({-80, 80, 0}), At({-20, 20, 0}), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_THAT(Selected(kFaces), ElementsAre(0));
  Drag(At({120, 50, 0}), At({100, 20, 0}), Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_THAT(Selected(kFaces), ElementsAre(0, 1));
  Drag(At({120, 50, 0}), At({100, 20, 0}), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_THAT(Selected(kFaces), ElementsAre(1));
  shown.ToggleVertices();
  Drag(At({-80, -80, 0}), At({70, 70, 0}), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_THAT(Selected(kVertices), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(Selected(kFaces), ElementsAre(1));

  const QImage without = Grab();
  QTest::mousePress(&shown, Qt::LeftButton, Qt::ShiftModifier, At({-199, 150, 0}));
  MoveTo(At({180, -150, 0}), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_TRUE(shown.Band());
  EXPECT_NE(Grab(), without);
  QTest::keyClick(&shown, Qt::Key_Escape);
  EXPECT_FALSE(shown.Band());
  EXPECT_EQ(Grab(), without);
  QTest::mouseRelease(&shown, Qt::LeftButton, Qt::ShiftModifier, At({180, -150, 0}));
  EXPECT_THAT(Selected(kVertices), ElementsAre(0, 1, 2, 3));
  EXPECT_EQ(shown.State().rotation.y, 0.0);
}

TEST_F(ViewMouse, HiddenFacesAreNotThereAndThroughTakesWhatIsBehind) {
  CTarnView& shown = Show();
  const QPoint at = At({40, 0, 10});  // the front wall, before the other
  Click(at);
  EXPECT_EQ(shown.Cursor().Face(), 0);
  const QImage whole = Grab();
  document->Model().Hide(std::vector{0});
  EXPECT_NE(Grab(), whole);
  Click(at);
  EXPECT_EQ(shown.Cursor().Face(), 1);
  document->Model().ShowAll();
  EXPECT_EQ(shown.PickIn(QRectF(QRect(At({-65, 65, 10}), At({65, -65, 10}))), kVertices), (std::vector{0, 1, 2, 3}));
  document->Model().Select(kVertices, std::vector{4}, true);
  shown.ToggleSelectThrough();
  const std::vector<int32_t> behind = shown.PickIn(QRectF(QRect(At({-65, 65, 10}), At({65, -65, 10}))), kFaces);
  EXPECT_EQ(behind, std::vector{0});
  EXPECT_EQ(shown.PickIn(QRectF(shown.rect()), kFaces), (std::vector{0, 1}));
}

TEST_F(ViewMouse, EachSchemeTurnsAndMovesWithItsOwnButtons) {
  CTarnView& shown = Show();
  const QPoint from = shown.rect().center();
  const struct {
    EMouseScheme scheme;
    Qt::MouseButton button;
    Qt::KeyboardModifiers modifiers;
    bool turns, pans, zooms;
  } cases[] = {
      {EMouseScheme::kLeftTurns, Qt::LeftButton, Qt::NoModifier, true, false, false},
      {EMouseScheme::kLeftTurns, Qt::MiddleButton, Qt::NoModifier, false, true, false},
      {EMouseScheme::kLeftTurns, Qt::RightButton, Qt::NoModifier, false, true, false},
      {EMouseScheme::kMiddleTurns, Qt::MiddleButton, Qt::NoModifier, true, false, false},
      {EMouseScheme::kMiddleTurns, Qt::MiddleButton, Qt::ShiftModifier, false, true, false},
      {EMouseScheme::kRightTurns, Qt::RightButton, Qt::NoModifier, true, false, false},
      {EMouseScheme::kRightTurns, Qt::MiddleButton, Qt::NoModifier, false, true, false},
      {EMouseScheme::kRightTurns, Qt::LeftButton, Qt::NoModifier, false, false, false},
      {EMouseScheme::kAltTurns, Qt::MiddleButton, Qt::AltModifier, false, true, false},
      {EMouseScheme::kAltTurns, Qt::LeftButton, Qt::AltModifier, true, false, false},
      {EMouseScheme::kAltTurns, Qt::RightButton, Qt::AltModifier, false, false, true},
      {EMouseScheme::kAltTurns, Qt::MiddleButton, Qt::NoModifier, false, false, false},
  };
  for (const auto& row : cases) {
    settings.mouse_scheme = static_cast<int32_t>(row.scheme);
    shown.ZoomToFit();
    shown.RestoreRotation();
    const SViewState before = shown.State();
    Drag(from, from + QPoint(40, 10), row.button, row.modifiers);
    const std::string label = ::testing::PrintToString(int(row.scheme)) + " " + std::to_string(int(row.button));
    EXPECT_EQ(shown.State().rotation.y > 1.0, row.turns) << label;
    EXPECT_NEAR(shown.State().pan_x - before.pan_x, row.pans ? 0.1 : 0.0, row.zooms ? 1.0 : 1e-9) << label;
    EXPECT_NEAR(shown.State().pan_y - before.pan_y, row.pans ? -0.025 : 0.0, row.zooms ? 1.0 : 1e-9) << label;
    EXPECT_EQ(shown.State().zoom > 1.1 * before.zoom, row.zooms) << label;
    EXPECT_EQ(shown.Cursor().Face(), -1) << label;
  }
}

TEST_F(ViewMouse, DraggingASelectedVertexMovesTheSelection) {
  CTarnView& shown = Show();
  SelectVertices({4, 5});
  const SPoint four = Position(4);
  const SPoint five = Position(5);
  const QPoint from = AtVertex(5);
  Drag(from, from + QPoint(-30, -20), Qt::LeftButton);
  EXPECT_LT(Position(5).x, five.x);
  EXPECT_EQ(Position(5).z, five.z);
  EXPECT_EQ(Position(4).x - four.x, Position(5).x - five.x);
  EXPECT_TRUE(document->IsModified());
  EXPECT_NEAR((AtVertex(5) - from).x(), -30, 2);
  EXPECT_NEAR((AtVertex(5) - from).y(), -20, 2);
  EXPECT_EQ(shown.State().rotation.y, 0.0);

  const SPoint eight = Position(8);
  Drag(AtVertex(8), AtVertex(8) + QPoint(30, 0), Qt::LeftButton);  // not selected: the view turns
  EXPECT_EQ(Position(8), eight);
  EXPECT_NE(shown.State().rotation.y, 0.0);
}

TEST_F(ViewMouse, DraggingASelectedFaceMovesTheSelectedFaces) {
  CTarnView& shown = Show();
  const int32_t front = 0;
  document->Model().Select(kFaces, {&front, 1}, true);
  const SPoint before[] = {Position(0), Position(2), Position(4)};
  const QPoint from = At({-40, -40, 10});
  Drag(from, from + QPoint(0, -30), Qt::LeftButton);
  EXPECT_EQ(Position(0).x, before[0].x);
  EXPECT_GT(Position(0).y, before[0].y);
  EXPECT_EQ(Position(2).y - before[1].y, Position(0).y - before[0].y);
  EXPECT_EQ(Position(4), before[2]);
  EXPECT_EQ(document->Steps().BackName(), "Move Vertices");
  EXPECT_EQ(shown.State().rotation.x, 0.0);
}

TEST_F(ViewMouse, TheGizmoMovesTurnsAndResizesWhatIsSelected) {
  CTarnView& shown = Show();
  const int32_t front = 0;
  document->Model().Select(kFaces, {&front, 1}, true);
  EXPECT_FALSE(shown.Gizmo());
  shown.ToggleGizmo();
  ASSERT_TRUE(shown.Gizmo());
  const QPoint middle = At({0, 0, 10});
  const auto pull = [&](const QPoint& from, const QPoint& to) { Drag(middle + from, middle + to, Qt::LeftButton); };
  pull({105, 0}, {135, 8});
  EXPECT_GT(Position(0).x, -60);
  EXPECT_EQ(Position(0).y, -60);
  EXPECT_EQ(document->Steps().BackName(), "Move Vertices");
  document->StepBack();
  pull({56, 0}, {112, 0});
  EXPECT_NEAR(Position(0).x, -120, 4);
  EXPECT_EQ(document->Steps().BackName(), "Resize");
  document->StepBack();
  pull({57, -57}, {-57, -57});
  EXPECT_NEAR(Position(0).x, 60, 2);
  EXPECT_NEAR(Position(0).y, -60, 2);
  EXPECT_EQ(document->Steps().BackName(), "Turn");
  document->StepBack();
  EXPECT_EQ(shown.State().rotation.y, 0.0);
}

TEST_F(ViewMouse, ShiftBringsADragOntoTheVertexAtThePointer) {
  CTarnView& shown = Show();
  SelectVertices({5});
  const auto drag_to = [&](const QPoint& to) {
    QTest::mousePress(&shown, Qt::LeftButton, Qt::NoModifier, AtVertex(5));
    MoveTo(AtVertex(5) + QPoint(-20, -20), Qt::LeftButton);
    QTest::keyPress(&shown, Qt::Key_Shift, Qt::ShiftModifier);
    MoveTo(to, Qt::LeftButton, Qt::ShiftModifier);
  };
  const auto drop = [&] {
    QTest::keyRelease(&shown, Qt::Key_Shift);
    QTest::mouseRelease(&shown, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
  };
  const SPoint start = Position(5);
  const SPoint free = {start.x - 90, start.y + 90, start.z};
  drag_to(AtVertex(2) + QPoint(5, 4));
  EXPECT_EQ(Position(5), Position(2)) << "its depth as well";
  QTest::keyPress(&shown, Qt::Key_Z, Qt::ShiftModifier);
  EXPECT_EQ(Position(5), (SPoint{start.x, start.y, Position(2).z}));
  QTest::keyRelease(&shown, Qt::Key_Z, Qt::ShiftModifier);
  MoveTo(At(free), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_NEAR(Position(5).x, free.x, 2) << "no vertex there";
  drop();
  document->StepBack();
  EXPECT_EQ(Position(5), start);
  // Vertex 7 is behind the front wall and cannot be seen.
  drag_to(AtVertex(7));
  EXPECT_NE(Position(5), Position(7));
  drop();
  EXPECT_EQ(shown.State().rotation.y, 0.0);
}

TEST_F(ViewMouse, TheGizmoStandsAtThePivotAndTurnsAboutIt) {
  CTarnView& shown = Show();
  shown.ToggleGizmo();
  document->Model().Select(kFaces, std::vector{0}, true);
  using EKind = SPivotInput::EKind;
  const struct {
    SPivotInput pivot;
    int32_t vertex;
    Vector3 at;
  } cases[] = {{{.kind = EKind::kMiddle}, 5, {0, 0, 10}},
               {{.kind = EKind::kOrigin}, 5, {0, 0, 0}},
               {{.kind = EKind::kVertex}, 5, ToVector(Position(5))},
               {{.kind = EKind::kVertex}, -1, {0, 0, 10}},
               {{.kind = EKind::kPoint, .point = {7, 8, 9}}, 5, {7, 8, 9}}};
  for (const auto& row : cases) {
    shown.SetGizmoPivot(row.pivot);
    shown.Cursor().SetVertex(row.vertex);
    EXPECT_EQ(shown.Gizmo()->Pivot(), row.at) << static_cast<int>(row.pivot.kind);
  }
  QSignalSpy picked(&shown, &CTarnView::PivotPicked);
  shown.TogglePickPivot();
  Click(At({-199, 150, 0}));
  EXPECT_TRUE(shown.IsPickingPivot()) << "nothing there";
  Click(At({30, 20, 10}));
  Click(At({0, 0, 10}));
  ASSERT_EQ(picked.count(), 1);
  const auto at = picked.front().front().value<SPoint>();
  EXPECT_NEAR(at.x, 30, 1);
  EXPECT_NEAR(at.y, 20, 1);
  EXPECT_EQ(at.z, 10);
  shown.SetGizmoPivot({.kind = EKind::kPoint, .point = ToVector(Position(0))});
  const QPoint corner = AtVertex(0);
  Drag(corner + QPoint(57, -57), corner + QPoint(-57, -57), Qt::LeftButton);
  EXPECT_EQ(Position(0), (SPoint{-60, -60, 10}));
  EXPECT_NEAR(Position(1).y, 60, 2);
}

TEST_F(ViewMouse, AHeldAxisKeyBindsAMoveAndEscapePutsEverythingBack) {
  CTarnView& shown = Show();
  SelectVertices({5});
  const SPoint start = Position(5);
  const QPoint from = AtVertex(5);
  QTest::mousePress(&shown, Qt::LeftButton, Qt::NoModifier, from);
  MoveTo(from + QPoint(-30, -20), Qt::LeftButton);
  const SPoint free = Position(5);
  EXPECT_NE(free.x, start.x);
  EXPECT_NE(free.y, start.y);
  const std::pair<Qt::Key, SPoint> bound[] = {
      {Qt::Key_X, {free.x, start.y, start.z}}, {Qt::Key_Y, {start.x, free.y, start.z}}, {Qt::Key_Z, start}};
  for (const auto& [key, expected] : bound) {
    QTest::keyPress(&shown, key);
    EXPECT_EQ(Position(5), expected) << key;
    QTest::keyRelease(&shown, key);
    EXPECT_EQ(Position(5), free) << key;
  }
  EXPECT_TRUE(document->IsModified());
  QTest::keyClick(&shown, Qt::Key_Escape);
  EXPECT_EQ(Position(5), start);
  EXPECT_FALSE(document->IsModified());
  MoveTo(from + QPoint(-60, -20), Qt::LeftButton);
  QTest::mouseRelease(&shown, Qt::LeftButton, Qt::NoModifier, from);
  EXPECT_EQ(Position(5), start);
  EXPECT_EQ(shown.State().rotation.y, 0.0);

  document->SetReadOnly(true);
  Drag(from, from + QPoint(-30, 0), Qt::LeftButton);
  EXPECT_EQ(Position(5), start);
}

TEST_F(ViewMouse, AMoveEndsWhenItsVerticesGo) {
  CTarnView& shown = Show();
  SelectVertices({8});
  QTest::mousePress(&shown, Qt::LeftButton, Qt::NoModifier, AtVertex(8));
  MoveTo(AtVertex(8) + QPoint(20, 0), Qt::LeftButton);
  const int32_t last[] = {8};
  EXPECT_TRUE(document->Model().DeleteVertices(last, questions));
  MoveTo(QPoint(50, 50), Qt::LeftButton);
  QTest::keyClick(&shown, Qt::Key_Escape);
  QTest::mouseRelease(&shown, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
  EXPECT_EQ(document->Model().CheckInvariants(), "");
  EXPECT_EQ(document->Model().VertexCount(), 8);
}

TEST_F(ViewMouse, FollowingTurnsToAFaceChosenElsewhereOnly) {
  CTarnView& shown = Show();
  ASSERT_TRUE(shown.State().follow_current_face);
  shown.ViewBack();
  Click(At({150, 0, -10}));  // from behind
  EXPECT_EQ(shown.Cursor().Face(), 1);
  EXPECT_EQ(shown.State().rotation.y, 180.0);
  shown.Cursor().SetFace(0);
  EXPECT_NEAR(std::remainder(shown.State().rotation.y, 360.0), 0.0, 1e-6);
  shown.ToggleFollowFace();
  shown.ViewBack();
  shown.Cursor().SetFace(1);
  EXPECT_EQ(shown.State().rotation.y, 180.0);
}

TEST_F(ViewMouse, ZoomsByTheStepThatIsSetAndShowsTheFirstVertices) {
  CTarnView& shown = Show();
  settings.zoom_step = 0.5;  // as Preferences does it
  const double zoom = shown.State().zoom;
  shown.ZoomIn();
  EXPECT_EQ(shown.State().zoom, zoom + 0.5);

  document->Model().Clear();
  for (const SPoint& at : {SPoint{500, 0, 0}, SPoint{-900, 0, 0}, SPoint{0, 3000, 0}}) {
    document->Model().AddVertex(at);
    EXPECT_TRUE(shown.rect().contains(At(at))) << "the first vertices are seen";
  }
  const QPoint corner = AtVertex(2);
  EXPECT_NE(Grab().pixel(corner), Grab().pixel(corner + QPoint(9, 9))) << "and marked";
  EXPECT_EQ(shown.PickAt(corner), (SPick{kVertices, 2}));
}

TEST_F(ViewMouse, AnimationsRunWhileThePlayTimerDoesAndStopWithIt) {
  CBinModel& model = document->Model();
  SScene images;
  std::vector<CBinTexture::SFrame> frames = {{"A.RAW", images.Image({kRed})}, {"B.RAW", images.Image({kGreen})}};
  model.SetFaceTexture(0, &model.AddTexture(std::make_unique<CBinTexture>(model, "ANIMATION", frames, 5.0)));
  model.Face(0).SetType(kFaceTextured);
  model.ReportFacesChanged();
  settings.render_mode = static_cast<int32_t>(ERenderMode::kTextured);
  CTarnView& shown = Show();
  const auto is_green = [&] {
    const QColor seen = Grab().pixelColor(At({0, 0, 10}));
    return seen.green() > 2 * seen.red();
  };
  EXPECT_FALSE(is_green());
  shown.TogglePlay();
  EXPECT_EQ(QAbstractEventDispatcher::instance()->registeredTimers(&shown).size(), 1);
  EXPECT_TRUE(QTest::qWaitFor(is_green, 5000));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !is_green(); }, 5000));
  shown.TogglePlay();
  EXPECT_EQ(QAbstractEventDispatcher::instance()->registeredTimers(&shown).size(), 0);
  EXPECT_FALSE(is_green());
}

}  // namespace
}  // namespace veldra::testing
