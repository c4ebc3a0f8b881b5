#include <gtest/gtest.h>

#include <QAction>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>
#include <QWheelEvent>
#include <QtTest>

#include "app/editorfixture.h"
#include "mapping/mappingwidget.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

namespace {

using Numbers = std::vector<int32_t>;

/// The box of the tests: each of its six faces fills the texture of 64 texels.
class CMappingTest : public CEditorTest {
 protected:
  CTarnView& Open(const Numbers& selected, EMappingMode mode) {
    settings.tex_edit_mode = static_cast<int32_t>(mode);
    CTarnView& view = StartWith(WriteModel("a.bin"));
    view.Document().Model().Select(kFaces, selected, true);
    QTest::keyClick(&view, Qt::Key_T);
    Settle();
    map = &frame->Docks().Mapping().Map();
    session = &frame->Docks().Mapping().Session();
    return view;
  }
  QPoint At(double x, double y) const { return map->PlaceOf({x, y}).toPoint(); }
  void Press(const QPoint& at, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mousePress(map, Qt::LeftButton, modifiers, at);
  }
  void MoveTo(const QPoint& at, Qt::KeyboardModifiers modifiers = {}) {
    QMouseEvent move(QEvent::MouseMove, at, map->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(map, &move);
  }
  void Release(const QPoint& at, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseRelease(map, Qt::LeftButton, modifiers, at);
    Settle();
  }
  void Drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = {}) {
    Press(from, modifiers);
    MoveTo((from + to) / 2, modifiers);
    MoveTo(to, modifiers);
    Release(to, modifiers);
  }
  void Click(const QPoint& at, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(map, Qt::LeftButton, modifiers, at);
    Settle();
  }
  STexel Corner(int32_t face, int corner) const {
    return TexelOf(frame->ActiveDocument()->Model().Face(face).TexCoord(corner), 64);
  }
  STexelRect Bounds(int32_t face) const {
    const Texels corners = {Corner(face, 0), Corner(face, 1), Corner(face, 2), Corner(face, 3)};
    return BoundsOf(corners);
  }
  Numbers SelectedFaces() { return frame->ActiveDocument()->Model().Selected(kFaces); }
  void PressButton(const char* name) {
    QTest::mouseClick(Child<QPushButton>(*frame, name), Qt::LeftButton);
    Settle();
  }

  CMappingView* map = nullptr;
  CMappingSession* session = nullptr;
};

}  // namespace

TEST_F(CMappingTest, MovesAllSelectedFacesWithTheMouseAndTheKeys) {
  CTarnView& view = Open({0, 2}, EMappingMode::kFaces);
  CTarnDoc& document = view.Document();
  EXPECT_TRUE(map->hasFocus());
  EXPECT_TRUE(Child<QLabel>(*frame, "mappingCounts")->text().startsWith("2 of 2 faces, 7 of 7 corners selected"));
  PressButton("fitMapping");  // the whole, which it fills already
  PressButton("fitMapping");
  PressButton("fitMapping");
  ASSERT_EQ(Bounds(0), (STexelRect{{32, 0}, {63, 31}})) << "the second quarter";
  const size_t states = app->EarlierStates().List(document.StatesKey()).size();
  const uint64_t revision = document.Model().Revision();
  Press(At(50, 10));
  MoveTo(At(40, 15));
  EXPECT_EQ(Bounds(2), (STexelRect{{22, 5}, {53, 36}})) << "the model has it at once";
  MoveTo(At(-40, 20));
  EXPECT_EQ(Bounds(2), (STexelRect{{0, 10}, {31, 41}})) << "it stops at the edge";
  QTest::keyClick(map, Qt::Key_Escape);
  Release(At(-40, 20));
  EXPECT_EQ(Bounds(2), (STexelRect{{32, 0}, {63, 31}}));
  EXPECT_GT(document.Model().Revision(), revision);
  Drag(At(50, 10), At(47, 14), Qt::ShiftModifier);
  EXPECT_EQ(Bounds(0), (STexelRect{{32, 4}, {63, 35}})) << "one direction only";
  EXPECT_EQ(app->EarlierStates().List(document.StatesKey()).size(), states + 1) << "none for the drag taken back";
  QTest::keyClick(map, Qt::Key_Left);
  QTest::keyClick(map, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Bounds(0), (STexelRect{{31, 12}, {62, 43}}));
  EXPECT_EQ(Bounds(1), WholeTexture(64)) << "not selected";
}

TEST_F(CMappingTest, SelectsCornersFacesAndIslands) {
  Open({0, 2, 4}, EMappingMode::kFaces);
  Click(At(20, 20));
  ASSERT_EQ(SelectedFaces().size(), 1u);
  const Numbers first = SelectedFaces();
  Click(At(20, 20));
  EXPECT_NE(SelectedFaces(), first) << "the one below it";
  EXPECT_EQ(session->Faces().Faces().size(), 3u);
  Click(At(20, 20), Qt::ControlModifier);
  Click(At(20, 20), Qt::ControlModifier);
  map->ZoomBy(0.5, map->rect().center());
  Drag(At(-10, -10), At(5, 5));
  EXPECT_EQ(SelectedFaces(), (Numbers{0, 2, 4})) << "by rubber band";
  Click(At(-8, 20));
  EXPECT_EQ(SelectedFaces(), Numbers{});
  QTest::keyClick(map, Qt::Key_1);
  Drag(At(-10, -10), At(5, 5));
  EXPECT_LE(session->Faces().SelectedPoints().size(), 3u);
  EXPECT_FALSE(frame->ActiveDocument()->Model().Selected(kVertices).empty());
  Drag(At(0, 0), At(9, 3));
  EXPECT_EQ(Corner(0, 0) == (STexel{9, 3}) || Corner(0, 1) == (STexel{9, 3}) || Corner(0, 2) == (STexel{9, 3}) ||
                Corner(0, 3) == (STexel{9, 3}),
            true);
  QTest::keyClick(map, Qt::Key_3);
  QTest::keyClick(map, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(SelectedFaces(), (Numbers{0, 2, 4}));
}

TEST_F(CMappingTest, GuidesComeBackInTheNextRun) {
  Open({0}, EMappingMode::kFaces);
  session->SetGuides({{7}, {9}});
  EXPECT_TRUE(frame->close());
  Open({0}, EMappingMode::kFaces);
  EXPECT_EQ(session->Guides(), (STextureGuides{{7}, {9}}));
}

TEST_F(CMappingTest, GuidesArePulledFromTheRulers) {
  settings.snap_to_guides = 1;
  settings.snap_within = 8;
  Open({0}, EMappingMode::kFaces);
  auto* ruler = Child<CGuideRuler>(*frame, "upperRuler");
  const QPoint target = map->mapToGlobal(At(5, 40));
  QTest::mousePress(ruler, Qt::LeftButton, {}, ruler->rect().center());
  QMouseEvent move(QEvent::MouseMove, ruler->mapFromGlobal(target), target, Qt::NoButton, Qt::LeftButton, {});
  QCoreApplication::sendEvent(ruler, &move);
  QTest::mouseRelease(ruler, Qt::LeftButton, {}, ruler->mapFromGlobal(target));
  Settle();
  EXPECT_EQ(session->Guides(), (STextureGuides{{}, {40}}));
  EXPECT_EQ(app->Settings().show_guides, 1) << "who pulls one wants to see it";
  Child<QDoubleSpinBox>(*frame, "guidePlace")->setValue(12);
  PressButton("addUpright");
  PressButton("fitMapping");
  PressButton("fitMapping");
  PressButton("fitMapping");
  Drag(At(50, 16), At(50 - 20.5, 16));
  EXPECT_EQ(Bounds(0).min.x, 12) << "a side snaps to it";
  Drag(At(12, 60), At(-60, 60));
  EXPECT_EQ(session->Guides().across, std::vector<double>()) << "dropped outside";
  auto* list = Child<QListWidget>(*frame, "guides");
  ASSERT_EQ(list->count(), 1);
  list->selectAll();
  PressButton("removeGuides");
  EXPECT_EQ(session->Guides(), STextureGuides());
}

TEST_F(CMappingTest, ToolsTakeNumbersAndKeepTheirPlaces) {
  CTarnView& view = Open({0, 2}, EMappingMode::kFaces);
  Child<QDoubleSpinBox>(*frame, "boundsWidth")->setValue(15);
  Child<QDoubleSpinBox>(*frame, "boundsTop")->setValue(8);
  EXPECT_EQ(Bounds(2), (STexelRect{{0, 0}, {15, 63}})) << "it has to stay on the texture";
  Child<QDoubleSpinBox>(*frame, "boundsHeight")->setValue(20);
  Child<QDoubleSpinBox>(*frame, "boundsTop")->setValue(8);
  EXPECT_EQ(Bounds(2), (STexelRect{{0, 8}, {15, 28}}));
  PressButton("justifyRight");
  EXPECT_EQ(Bounds(0).max.x, 63);
  PressButton("justifyRight");
  EXPECT_EQ(Bounds(0).max.x, 31) << "the next part";
  PressButton("justifyRight");
  EXPECT_EQ(Bounds(0).max.x, 20);
  view.Document().SetReadOnly(true);
  Settle();
  EXPECT_FALSE(Child<QPushButton>(*frame, "justifyRight")->isEnabled());
  Drag(At(15, 20), At(40, 20));
  EXPECT_EQ(Bounds(0).max.x, 20);
  QWheelEvent wheel(At(10, 10), map->mapToGlobal(At(10, 10)), {}, {0, 240}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
  const QPointF before = At(10, 10);
  QCoreApplication::sendEvent(map, &wheel);
  EXPECT_LT(QLineF(before, map->PlaceOf({10, 10})).length(), 2.0) << "the texel under the pointer stays there";
  frame->WriteWindowState();
  EXPECT_NE(app->Settings().tex_dlg_offset_x, 0);
  view.Document().SetModified(false);
  Do(ECommand::kFileClose);
  EXPECT_EQ(Child<QLabel>(*frame, "mappingCounts")->text(), "No model is open.");
}

TEST_F(CMappingTest, PicturesAreSeenAsTexturesBeforeTheyAreMade) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  QImage picture(300, 200, QImage::Format_RGB32);
  picture.fill(QColor(10, 20, 200));
  const QString path = QString::fromStdString(folder.File("sky.png"));
  ASSERT_TRUE(picture.save(path));
  questions.OnOpenFiles("Import Picture", SOpenFiles{{path.toStdString()}});
  questions.OnSaveFile("Save Texture", SSavePath{folder.File("SKY.RAW")});
  CDialogDriver driver;
  driver.On("importPicture", [&](QWidget& dialog) {
    EXPECT_EQ(Child<QComboBox>(dialog, "size")->currentText(), "256 x 256");
    Child<QComboBox>(dialog, "size")->setCurrentIndex(0);
    auto* original = Child<QWidget>(dialog, "original");
    QTest::mousePress(original, Qt::LeftButton, {}, {20, 20});
    QMouseEvent move(QEvent::MouseMove, QPointF(120, 90), original->mapToGlobal(QPointF(120, 90)), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(original, &move);
    QTest::mouseRelease(original, Qt::LeftButton, {}, {120, 90});
    EXPECT_TRUE(Child<QLabel>(dialog, "counts")->text().contains("0 texels transparent"));
    Child<QComboBox>(dialog, "palette")->setCurrentIndex(2);
    EXPECT_FALSE(IsOkEnabled(dialog));
    Child<QComboBox>(dialog, "palette")->setCurrentIndex(0);
    ClickButton(dialog, "OK");
  });
  Do(ECommand::kTextureImport);
  const CBinTexture* const made = view.Document().Model().FindTexture("SKY.RAW", ETextureKind::kPlain);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->Width(), 64);
}

// --- Giving textures to faces ----------------------------------------------------------------------------------------

TEST_F(CMappingTest, TexturesAreGivenToFaces) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  WaitUntilDrawn(view);
  CBinModel& model = view.Document().Model();
  CBinTexture& other = model.AddTexture(
      std::make_unique<CBinTexture>(model, "OTHER.RAW", app->Textures().GetBlankTexture("OTHER.RAW", 64)));
  std::map<int32_t, QPoint> places;
  for (int x = 5; x < view.width(); x += 10)
    for (int y = 5; y < view.height(); y += 10)
      if (const auto pick = view.PickAt(QPointF(x, y)); pick && pick->kind == kFaces) places[pick->index] = {x, y};
  ASSERT_GE(places.size(), 2u);
  const int32_t first = places.begin()->first;
  const int32_t second = std::next(places.begin())->first;

  frame->Docks().Dock(EToolDock::kTextureList).raise();
  Settle();
  auto* list = Child<QTreeView>(*frame, "textures");
  const QPoint row = list->visualRect(list->model()->index(1, 0)).center();
  model.Select(kFaces, Numbers{first}, true);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row);
  Settle();
  EXPECT_EQ(model.Face(first).Texture(), &other);
  EXPECT_EQ(other.UseCount(), 1);

  const auto drag = [&](bool gives_up) {
    const QPoint from = places[first];
    const QPoint to = places[second];
    QTest::mousePress(&view, Qt::LeftButton, Qt::AltModifier, from);
    for (const QPoint& at : {(from + to) / 2, to}) {
      QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::AltModifier);
      QCoreApplication::sendEvent(&view, &move);
    }
    if (gives_up) QTest::keyClick(&view, Qt::Key_Escape);
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::AltModifier, to);
    Settle();
  };
  drag(true);
  EXPECT_EQ(other.UseCount(), 1);
  drag(false);
  EXPECT_EQ(model.Face(second).Texture(), &other);
}

}  // namespace veldra::testing
