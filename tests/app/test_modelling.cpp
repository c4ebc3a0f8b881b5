#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>
#include <algorithm>
#include <cmath>

#include "app/editorfixture.h"
#include "model/binfile.h"
#include "model/normals.h"
#include "samples/workspace.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

namespace {

/// What a modder does with mouse and keys, in the real window.
class CModellingTest : public CEditorTest {
 protected:
  CTarnView& View() const { return *frame->ActiveView(); }
  CBinModel& Model() const { return frame->ActiveDocument()->Model(); }
  QPoint At(const Vector3& point) const {
    const SScreenPoint at = View().Camera().Project(point);
    return (QPointF(at.x, at.y) / View().devicePixelRatioF()).toPoint();
  }
  QPoint AtVertex(int32_t index) const { return At(ToVector(Model().Vertex(index).Position())); }
  void Click(const QPoint& at, Qt::KeyboardModifiers held = Qt::ControlModifier) const {
    QTest::mouseClick(&View(), Qt::LeftButton, held, at);
    Settle();
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) const {
    QTest::keyClick(&View(), key, held);
    Settle();
  }
  void Drag(const QPoint& from, const QPoint& to) const {
    CTarnView& view = View();
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, from);
    for (const QPoint& at : {(from + to) / 2, to}) {
      QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(&view, &move);
    }
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, to);
    Settle();
  }
  std::vector<int32_t> LastFace() const {
    std::vector<int32_t> corners;
    for (const CBinVertex* corner : Model().Face(Model().FaceCount() - 1).Corners())
      corners.push_back(corner->Index());
    return corners;
  }
};

Vector3 MiddleOf(const CBinFace& face) {
  Vector3 sum = {};
  for (const CBinVertex* corner : face.Corners())
    sum = sum + ToVector(corner->Position());
  return 1.0 / face.CornerCount() * sum;
}

}  // namespace

TEST_F(CModellingTest, TheRoofOfTheSampleTruckIsRaisedByDragging) {
  SError error;
  ASSERT_TRUE(samples::WriteWorkspace(folder.File("game"), questions, &error)) << error.what;
  const std::string path = folder.File("game/MODELS/TRUCK.BIN");
  StartWith(path);
  frame->resize(1100, 800);
  Settle();
  const CBinGroup& cab = *Model().FindGroup(kFaces, "cab");
  std::vector<int32_t> roof;
  int32_t top = 0;
  for (const int32_t face : cab.Members())
    for (const CBinVertex* corner : Model().Face(face).Corners())
      top = std::max(top, corner->Position().y);
  constexpr int32_t kHump = 5;
  const auto is_high = [&](const CBinVertex* corner) { return corner->Position().y >= top - kHump; };
  for (const int32_t face : cab.Members())
    if (std::ranges::all_of(Model().Face(face).Corners(), is_high)) roof.push_back(face);
  ASSERT_EQ(roof.size(), 8U);

  // Without what stands on it, which keeps its height.
  Model().Select(kFaces, cab.Members(), true);
  Press(Qt::Key_H, Qt::ShiftModifier);
  Press(Qt::Key_7);
  Do(ECommand::kViewZoomToFit);
  Do(ECommand::kFaceDeselectAll);
  for (const int32_t face : roof)
    Click(At(MiddleOf(Model().Face(face))));
  ASSERT_EQ(Model().Selected(kFaces), roof);
  Press(Qt::Key_H, Qt::AltModifier);
  Press(Qt::Key_1);
  const std::optional<CGizmo> gizmo = View().Gizmo();
  ASSERT_TRUE(gizmo);
  const QPoint middle = At(gizmo->Pivot());
  Drag(middle + QPoint(0, -100), middle + QPoint(7, -140));
  Do(ECommand::kFileSave);

  CBinModel before;
  CBinModel after;
  const auto load = [&](CBinModel& model, const std::string& file) {
    CTextureFinder finder(app->Textures(), questions, folder.File("game/ART"));
    const SLoadContext context = {finder, questions};
    return LoadBinFile(model, file, context);
  };
  ASSERT_TRUE(load(after, path));
  ASSERT_TRUE(samples::WriteWorkspace(folder.File("unchanged"), questions, &error)) << error.what;
  ASSERT_TRUE(load(before, folder.File("unchanged/MODELS/TRUCK.BIN")));
  ASSERT_EQ(after.VertexCount(), before.VertexCount());
  ASSERT_EQ(after.FaceCount(), before.FaceCount());
  const std::vector<int32_t> raised = VerticesInScope(before, SScope::OfFaces(roof));
  const int32_t rise = after.Vertex(raised[0]).Position().y - before.Vertex(raised[0]).Position().y;
  EXPECT_GT(rise, 5);
  for (int32_t i = 0; i < before.VertexCount(); ++i) {
    SPoint wanted = before.Vertex(i).Position();
    if (std::ranges::binary_search(raised, i)) wanted.y += rise;
    ASSERT_EQ(after.Vertex(i).Position(), wanted) << i;
  }
  for (int32_t i = 0; i < before.FaceCount(); ++i) {
    EXPECT_EQ(after.Face(i).Type(), before.Face(i).Type());
    for (int k = 0; k < before.Face(i).CornerCount(); ++k) {
      EXPECT_EQ(after.Face(i).Corner(k)->Index(), before.Face(i).Corner(k)->Index());
      EXPECT_EQ(after.Face(i).TexCoord(k), before.Face(i).TexCoord(k));
    }
  }
}

TEST_F(CModellingTest, FacesAreMadeBridgedAndFlattenedFromClicks) {
  settings.verts_3d = 1;
  settings.view_angle_x = settings.view_angle_y = settings.view_angle_z = 0;
  settings.show_gizmo = 0;
  StartWith(WriteModel("box.bin")).ToggleFollowFace();
  // The box's front wall, vertices 1, 5, 7, 3, is a hole; the vertices are clicked clockwise.
  for (int32_t face = 0; face < Model().FaceCount(); ++face)
    if (MiddleOf(Model().Face(face))[2] == 400.0) Model().RemoveFaces(face, 1);
  for (const int32_t vertex : {7, 5, 1, 3})
    Click(AtVertex(vertex));
  Press(Qt::Key_O);
  EXPECT_EQ(LastFace(), (std::vector{7, 3, 1, 5})) << "from the first one, looking at the viewer";
  Do(ECommand::kEditStepBack);
  Do(ECommand::kVertexDeselectAll);
  for (const int32_t vertex : {1, 7, 5, 3})
    Click(AtVertex(vertex));
  Press(Qt::Key_E, Qt::ShiftModifier);
  ASSERT_EQ(Model().FaceCount(), 6);
  EXPECT_EQ(Model().Selected(kFaces), std::vector{5});
  EXPECT_EQ(frame->ActiveDocument()->Steps().BackName(), "Bridge");
  EXPECT_GT(CalcFaceNormal(Model().Face(5)).z, 0);
  // The wall's corners that were pulled out and in go back into one plane.
  Model().SetVertexPositions(
      std::vector{1, 3, 5, 7},
      std::vector<SPoint>{{-1000, -600, 420}, {-1000, 600, 380}, {1000, -600, 380}, {1000, 600, 420}});
  CDialogDriver driver;
  driver.On("setToPlane", [](QWidget& dialog) {
    Child<QRadioButton>(dialog, "fitting")->click();
    EXPECT_EQ(Child<QLabel>(dialog, "result")->text(), "4 vertices, which move by up to 20.0");
    ClickButton(dialog, "OK");
  });
  Press(Qt::Key_L, Qt::ShiftModifier);
  for (const int32_t vertex : {1, 3, 5, 7})
    EXPECT_EQ(Model().Vertex(vertex).Position().z, 400) << vertex;
}

TEST_F(CModellingTest, HiddenFacesAreSaidToBeSoUntilTheyAreShown) {
  StartWith(WriteModel("box.bin"));
  auto* hidden = frame->findChild<QPushButton*>("hiddenFaces");
  EXPECT_FALSE(hidden->isVisible());
  Model().Hide(std::vector{0, 2});
  Settle();
  EXPECT_EQ(hidden->text(), "2 faces are hidden: Show All");
  EXPECT_TRUE(hidden->toolTip().contains("or Ctrl+H, shows")) << hidden->toolTip().toStdString();
  QTest::mouseClick(hidden, Qt::LeftButton);
  Settle();
  EXPECT_EQ(Model().HiddenCount(), 0);
  EXPECT_FALSE(hidden->isVisible());
}

TEST_F(CModellingTest, TheGizmosPivotIsThatOfAllViewsOfTheSession) {
  settings.show_gizmo = 1;
  CTarnView& view = StartWith(WriteModel("box.bin"));
  view.Cursor().SetVertex(7);
  Model().Select(kFaces, std::vector{0}, true);
  Do(ECommand::kGizmoVertex);
  EXPECT_EQ(view.Gizmo()->Pivot(), ToVector(Model().Vertex(7).Position()));
  EXPECT_TRUE(frame->Action(ECommand::kGizmoVertex)->isChecked());
  EXPECT_TRUE(frame->Action(ECommand::kViewTextured)->isChecked()) << "a choice of its own";
  CDialogDriver driver;
  driver.On("gizmoPivot", [](QWidget& dialog) {
    EXPECT_EQ(Child<QLineEdit>(dialog, "pivotX")->text(), "1000") << "where it is now";
    TypeInto(dialog, "pivotX", "30");
    ClickButton(dialog, "OK");
  });
  Do(ECommand::kGizmoPoint);
  EXPECT_EQ(view.Gizmo()->Pivot(), (Vector3{30, 600, 400}));
  Do(ECommand::kWindowNew);
  EXPECT_EQ(View().Gizmo()->Pivot(), (Vector3{30, 600, 400}));
  Do(ECommand::kGizmoToOrigin);
  EXPECT_EQ(Model().Vertex(7).Position(), (SPoint{970, 0, 0}));
  EXPECT_EQ(View().Gizmo()->Pivot(), Vector3{}) << "the same place of the model";
  EXPECT_FALSE(frame->Action(ECommand::kGizmoToOrigin)->isEnabled());
}

}  // namespace veldra::testing
