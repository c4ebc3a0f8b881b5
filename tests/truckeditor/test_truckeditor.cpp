#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QListWidget>
#include <QMimeData>
#include <QSignalSpy>
#include <QTreeWidget>
#include <QUrl>

#include "archive/poddocument.h"
#include "document/filenews.h"
#include "platform/files.h"
#include "platform/sound.h"
#include "platform/text.h"
#include "truckeditor/truckeditorfixture.h"
#include "truckeditor/trucknamespage.h"
#include "truckeditor/truckview.h"

namespace veldra::testing {
namespace {

TEST_F(CTruckEditorTest, NamesSayWhereTheirFilesAre) {
  ASSERT_TRUE(editor->OpenFile(TruckPath()));
  Show(0);
  EXPECT_NE(Note("bodyModelNote").indexOf("MKBODY.BIN"), -1) << "in the folder of the models";
  EXPECT_EQ(Note("tireModelsNote").left(3), "In ");
  Type("tireModels", "NOKING");
  EXPECT_EQ(Truck().tire_base_name, "NOKING");
  EXPECT_EQ(Note("tireModelsNote"),
            "Not found: NOKING08L.BIN, NOKING08R.BIN, NOKING10L.BIN, NOKING10R.BIN, NOKING16L.BIN, NOKING16R.BIN");
  Type("truckName", " Big \u00E9 ");
  EXPECT_EQ(Truck().name, "Big \xE9") << "a byte a letter, without the blanks around it";
  Type("truckName", "\u4E2D");
  EXPECT_EQ(Truck().name, "") << "what was a name last";
  EXPECT_EQ(Note("truckNameNote"), "The game has no letters like these.");

  questions.OnOpenFile("Select a file", "/anywhere/Mking10l.bin");
  Click("tireModelsBrowse");
  EXPECT_EQ(Truck().tire_base_name, "MKING");
  for (const char* file : {"wheel.bin", "16L.BIN"})
    EXPECT_EQ(TireBaseOfFile(file), UpperCase(file));
}

TEST_F(CTruckEditorTest, NumbersGoIntoTheTruckAsOneTypes) {
  ASSERT_TRUE(editor->OpenFile(TruckPath()));
  Show(1);
  const double before = Truck().tires[kFrontLeftTire][2];
  Type("frontlefttire2", "4.25");
  EXPECT_EQ(Truck().tires[kFrontLeftTire][2], 4.25);
  Type("frontlefttire2", "4,5");
  EXPECT_EQ(Truck().tires[kFrontLeftTire][2], 4) << "what was a number last";
  EXPECT_FALSE(Child<QLabel>(*editor, "frontlefttireFault")->text().isEmpty());
  Child<QLineEdit>(*editor, "axlebar0")->setFocus();
  EXPECT_EQ(Child<QLineEdit>(*editor, "frontlefttire2")->text(), "4");
  EXPECT_TRUE(Child<QLabel>(*editor, "frontlefttireFault")->text().isEmpty());
  editor->Document().Undo();
  EXPECT_EQ(Truck().tires[kFrontLeftTire][2], before) << "a line is one step";
  Click("mirrorRight");
  EXPECT_EQ(Truck().tires[kFrontLeftTire][0], -Truck().tires[kFrontRightTire][0]);
  EXPECT_EQ(Truck().tires[kRearLeftTire][2], Truck().tires[kRearRightTire][2]);
  Show(2);
  Type("scrapepoint121", "-7");
  EXPECT_EQ(Truck().scrape_points[11][1], -7);
}

TEST_F(CTruckEditorTest, Lights) {
  Show(3);
  auto* const list = Child<QListWidget>(*editor, "lights");
  EXPECT_FALSE(Child<QLineEdit>(*editor, "cone0")->isEnabled()) << "no light yet";
  for (int i = 0; i < kTruckLights; ++i) {
    Click("addLight");
    Type("lightPosition0", std::to_string(i).c_str());
  }
  EXPECT_FALSE(Child<QPushButton>(*editor, "addLight")->isEnabled());
  EXPECT_EQ(list->currentRow(), 13);
  Click("lightUp");
  EXPECT_EQ(list->currentRow(), 12);
  EXPECT_EQ(Truck().lights[12].position[0], 13);
  EXPECT_EQ(Child<QLineEdit>(*editor, "lightPosition0")->text(), "13");
  Click("deleteLight");
  EXPECT_EQ(Truck().light_count, 13);
  EXPECT_EQ(Child<QLineEdit>(*editor, "lightPosition0")->text(), "12");

  list->setCurrentRow(0);
  auto* const type = Child<QComboBox>(*editor, "lightType");
  type->setFocus();
  QTest::keyClick(type, Qt::Key_Down);
  QTest::keyClick(type, Qt::Key_Down);
  EXPECT_EQ(Truck().lights[0].type, 2);
  EXPECT_EQ(list->item(0)->text(), "0  Roof Light");
  editor->Document().Change("", [](CTruck& truck) { truck.lights[0].type = 5; });
  EXPECT_EQ(type->currentText(), "type 5");

  Type("blink0", "250");
  Type("coneTexture", "MKCONE.RAW");
  EXPECT_EQ(Truck().lights[0].ms_on, 250);
  const auto color = Child<QLabel>(*editor, "coneColor")->property("color").value<QColor>();
  EXPECT_GT(color.red(), color.blue()) << "the texture is a warm white";
  Type("coneTexture", "A,B.RAW");
  EXPECT_EQ(Note("coneTextureNote"), "A truck file cannot hold a name with a comma here.");
}

TEST_F(CTruckEditorTest, SoundsWarnOfWhatWouldNotBeRead) {
  ASSERT_TRUE(editor->OpenFile(TruckPath()));
  Show(4);
  EXPECT_EQ(Note("waveFile1Note").left(3), "In ");
  EXPECT_EQ(Child<QPushButton>(*editor, "play1")->isEnabled(), CSoundPlayer::WhyNot().empty());
  Type("waveFile1", "IDLE.MP3");
  EXPECT_EQ(Note("waveFile1Note"), "The name must end in .WAV, or it is not read again.");
  EXPECT_FALSE(Child<QPushButton>(*editor, "play1")->isEnabled());
  Type("waveFile1", "");
  EXPECT_NE(Note("waveFile2Note").indexOf("The line before it is empty"), -1);
}

TEST_F(CTruckEditorTest, PointsAreDraggedInThePicture) {
  ASSERT_TRUE(editor->OpenFile(TruckPath()));
  Show(5);
  auto* const view = Child<CTruckView>(*editor, "truckView");
  const STruckPointId tire = {ETruckPoint::kTire, kFrontRightTire};
  ASSERT_TRUE(QTest::qWaitFor([&] { return view->PlaceOf(tire).has_value(); }));
  EXPECT_EQ(view->UnitsPerFoot(), 32) << "guessed from the body and its points";
  EXPECT_GT(view->Scene().Model().FaceCount(), 500);
  // What lies before a point would be taken in its place.
  for (const char* box : {"showScrapePoints", "showLights"})
    Child<QCheckBox>(*editor, box)->setChecked(false);
  view->Picture();
  const QPoint from = view->PlaceOf(tire)->toPoint();
  const QPoint to = from + QPoint(30, -20);
  const TruckPoint before = Truck().tires[kFrontRightTire];
  const SBounds parts = view->Scene().PartBounds();
  QTest::mousePress(view, Qt::LeftButton, {}, from);
  EXPECT_EQ(Child<QComboBox>(*editor, "points")->currentText(), "Front right tire");
  QTest::mouseMove(view, from + QPoint(10, -10));
  QTest::mouseMove(view, to);
  QTest::mouseRelease(view, Qt::LeftButton, {}, to);
  view->Picture();
  const TruckPoint after = Truck().tires[kFrontRightTire];
  EXPECT_GT(after[1], before[1]);
  const QPointF reached = *view->PlaceOf(tire) - to;
  EXPECT_LT(std::hypot(reached.x(), reached.y()), 2.0) << "it stays under the mouse";
  EXPECT_NE(view->Scene().PartBounds(), parts) << "the tire's model came along";
  editor->Document().Undo();
  EXPECT_EQ(Truck().tires[kFrontRightTire], before) << "a drag is one step";

  const auto drag = [&](const STruckPointId& id, Qt::KeyboardModifiers modifiers) {
    view->Picture();
    const QPoint start = view->PlaceOf(id)->toPoint();
    QTest::mousePress(view, Qt::LeftButton, modifiers, start);
    QTest::mouseMove(view, start + QPoint(10, -10));
    QTest::mouseMove(view, start + QPoint(30, -20));
    QTest::mouseRelease(view, Qt::LeftButton, modifiers, start + QPoint(30, -20));
  };
  Child<QCheckBox>(*editor, "mirrored")->setChecked(true);
  drag(tire, {});
  const TruckPoint& right = Truck().tires[kFrontRightTire];
  EXPECT_NE(right, before);
  EXPECT_EQ(Truck().tires[kFrontLeftTire], (TruckPoint{0.0 - right[0], right[1], right[2]}));
  editor->Document().Undo();
  Child<QCheckBox>(*editor, "showLights")->setChecked(true);
  Child<QCheckBox>(*editor, "showPositions")->setChecked(false);
  const STruckPointId light = {ETruckPoint::kLight, 0};
  const auto other = MirroredPoint(Truck(), light);
  ASSERT_TRUE(other && view->PlaceOf(light));
  const TruckLight old_light = Truck().lights[0];
  drag(light, Qt::ShiftModifier);
  const TruckLight& aimed = Truck().lights[0];
  EXPECT_EQ(aimed.position, old_light.position);
  EXPECT_GT(aimed.pitch, old_light.pitch);
  EXPECT_NEAR(Truck().lights[static_cast<size_t>(other->index)].heading, -aimed.heading, 1e-5);
  EXPECT_EQ(Truck().lights[static_cast<size_t>(other->index)].pitch, aimed.pitch);
  editor->Document().Undo();
  EXPECT_EQ(Truck().lights[0], old_light);
  Child<QCheckBox>(*editor, "showPositions")->setChecked(true);
  view->Select(tire);

  Type("selectedPoint1", "9");
  EXPECT_EQ(Truck().tires[kFrontRightTire][1], 9);
  const SRotation rotation = view->State().rotation;
  QTest::mousePress(view, Qt::LeftButton, {}, QPoint(5, 5));
  QTest::mouseMove(view, QPoint(40, 5));
  QTest::mouseRelease(view, Qt::LeftButton, {}, QPoint(40, 5));
  EXPECT_NE(view->State().rotation.y, rotation.y) << "beside the points the truck is turned";
}

TEST_F(CTruckEditorTest, TheCameraShowsTheWholeTruckFromEachSide) {
  ASSERT_TRUE(editor->OpenFile(TruckPath()));
  Show(5);
  auto* const view = Child<CTruckView>(*editor, "truckView");
  ASSERT_TRUE(QTest::qWaitFor([&] { return view->HasDrawn(); }));
  for (const auto look : {&C3DView::ViewFront, &C3DView::ViewLeft, &C3DView::ViewTop}) {
    (view->*look)();
    view->ZoomToFit();
    view->Picture();
    // The tires are its corners, and fill more than half of what there is.
    QRectF seen;
    for (size_t tire = 0; tire < Truck().tires.size(); ++tire) {
      const auto place = view->PlaceOf({ETruckPoint::kTire, static_cast<int>(tire)});
      ASSERT_TRUE(place.has_value());
      seen |= QRectF(*place - QPointF(1, 1), QSizeF(2, 2));
    }
    EXPECT_TRUE(QRectF(view->rect()).contains(seen));
    EXPECT_GT(std::max(seen.width() / view->width(), seen.height() / view->height()), 0.4);
  }
}

TEST_F(CTruckEditorTest, UnsavedChangesAreAskedAbout) {
  CTempFolder folder;
  const std::string path = folder.File("new.trk");
  editor->Document().Change("", [](CTruck& truck) { truck.name = "One"; });
  questions.OnYesNoCancel("Save changes to Untitled?", EAnswer::kCancel);
  EXPECT_FALSE(editor->OpenFile(TruckPath()));
  EXPECT_EQ(Truck().name, "One");
  questions.OnYesNoCancel("Save changes to Untitled?", EAnswer::kYes);
  questions.OnSaveFile("Save Truck As", SSavePath{folder.File("new")});
  EXPECT_TRUE(editor->OpenFile(TruckPath()));
  CTruck saved;
  ASSERT_TRUE(saved.Load(path)) << "the extension is added";
  EXPECT_EQ(saved.name, "One");

  const CTruck sample = Truck();
  folder.Write("long.trk", "truckname\n" + std::string(17 << 20, 'x'));
  for (const char* name : {"none.trk", "long.trk"}) {
    EXPECT_FALSE(editor->OpenFile(folder.File(name)));
    EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{kFailedToLoadTruck}) << name;
  }
  EXPECT_EQ(Truck(), sample) << "the truck that was there stays";

  editor->Document().Change("", [](CTruck& truck) { truck.name = "Two"; });
  questions.OnSaveFile("Save Truck As", SSavePath{folder.File("none/t.trk")});
  EXPECT_FALSE(editor->SaveAs());
  EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{kFailedToOpenDestination});
  questions.OnYesNoCancel("Save changes to MUDKING.TRK?", EAnswer::kCancel);
  QCloseEvent close;
  QApplication::sendEvent(editor.get(), &close);
  EXPECT_FALSE(close.isAccepted());
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
  questions.OnYesNoCancel("Save changes to MUDKING.TRK?", EAnswer::kNo);
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(editor.get(), &enter);
  QDropEvent drop({5, 5}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(editor.get(), &drop);
  EXPECT_EQ(Truck().name, "One");
}

TEST_F(CTruckEditorTest, EarlierStatesAndForeignChangesAreKept) {
  CTempFolder folder;
  const std::string path = folder.File("t.trk");
  CTruck first;
  first.name = "One";
  ASSERT_TRUE(first.Save(path) && editor->OpenFile(path));
  CTruckDocument& document = editor->Document();
  document.Change("", [](CTruck& truck) {
    truck.AddLight();
    truck.lights[0].type = 2;  // a truck file gives another one back
  });
  ASSERT_TRUE(editor->Save());
  Show(3);
  Click("deleteLight");
  EXPECT_EQ(Truck().light_count, 0);
  const auto commands = [&] {
    std::string all;
    for (const SEarlierState& state : states.List(document.StatesKey()))
      all += state.command + "; ";
    return all;
  };
  EXPECT_EQ(commands(), "Save; File before saving; ") << "what was saved is not kept twice";
  CDialogDriver dialogs;
  dialogs.On("earlierStates", [](QWidget& dialog) {
    EXPECT_TRUE(Child<QTreeWidget>(dialog, "states")->isColumnHidden(2));
    ClickButton(dialog, "Go back to this state");
  });
  editor->EarlierStates();
  EXPECT_EQ(Truck().lights[0].type, 2);
  EXPECT_FALSE(document.IsModified());
  document.Undo();
  EXPECT_EQ(Truck().light_count, 0) << "going back is a step";

  first.name = "Other";
  ASSERT_TRUE(first.Save(path));
  questions.OnYesNo("Save anyway and lose those changes?", EAnswer::kNo);
  EXPECT_FALSE(editor->Save());
  questions.OnYesNo("lose the changes since it was last saved?", EAnswer::kYes);
  editor->Reload();
  EXPECT_EQ(Truck(), first);
  EXPECT_EQ(TakeFileNews(document), EFileNews::kNone);
  document.Undo();
  EXPECT_TRUE(document.IsModified());
  ASSERT_TRUE(RemoveFile(path));
  EXPECT_EQ(TakeFileNews(document), EFileNews::kGone);
  document.Redo();
  EXPECT_TRUE(document.IsModified()) << "no file holds it";
  EXPECT_TRUE(editor->Save());
  EXPECT_EQ(TakeFileNews(document), EFileNews::kNone) << "its own writing";
}

TEST_F(CTruckEditorTest, PackingShowsWhatIsMissingAndWritesTheRest) {
  const std::string copy = JoinPath(settings.trk_dir, "OTHER.TRK");
  ASSERT_TRUE(editor->OpenFile(TruckPath()));
  ASSERT_TRUE(Truck().Save(copy) && editor->OpenFile(copy));
  const CTempFolder folder;
  const std::string pod = folder.File("out.pod");
  editor->Document().Change("", [](CTruck& truck) { truck.bar_texture = "NOWHERE.RAW"; });
  questions.OnYesNo("Save it now?", EAnswer::kYes);
  questions.OnOpenFiles("Add Files to the Archive", SOpenFiles{{folder.Write("READ.TXT", "me")}});
  questions.OnSaveFile("Write Archive", SSavePath{pod});
  questions.OnYesNo("Show the archive in the extractor?", EAnswer::kYes);
  CDialogDriver dialogs;
  dialogs.On("packTruck", [](QWidget& dialog) {
    EXPECT_NE(Child<QLabel>(dialog, "packMissing")->text().indexOf("2 files were not found"), -1);
    auto* const list = Child<QTreeWidget>(dialog, "packList");
    EXPECT_EQ(list->topLevelItem(0)->text(0), "NOWHERE.RAW");
    EXPECT_EQ(list->topLevelItem(0)->text(2), "not found");
    EXPECT_EQ(list->topLevelItem(1)->text(0), "NOWHERE.ACT");
    EXPECT_EQ(list->topLevelItem(2)->text(0), "OTHER.TRK");
    Child<QCheckBox>(dialog, "leaveOutStock")->setChecked(false);
    ClickButton(dialog, "Add Files...");
    ClickButton(dialog, "Write archive...");
  });
  editor->PackTruck();
  EXPECT_EQ(shown_archive, pod);
  CPodDocument archive;
  ASSERT_TRUE(archive.Load(pod));
  EXPECT_EQ(archive.FindAll("TRUCK\\OTHER.TRK").size(), 1u);
  EXPECT_EQ(archive.FindAll("MODELS\\MKING16R.BIN").size(), 1u);
  EXPECT_EQ(archive.FindAll("NOWHERE.RAW").size(), 0u);
  const auto written = ReadTestFile(pod);

  // The same again, as the truck was packed the last time it was open.
  ASSERT_TRUE(RemoveFile(pod) && editor->OpenFile(copy));
  questions.OnYesNo("2 files were not found", EAnswer::kNo).OnYesNo("2 files were not found", EAnswer::kYes);
  editor->PackAgain();
  EXPECT_FALSE(FileExists(pod));
  editor->PackAgain();
  EXPECT_EQ(ReadTestFile(pod), written);
  ASSERT_TRUE(archive.Load(pod));
  EXPECT_EQ(archive.ReadEntry(archive.FindAll("READ.TXT").front())->Text(), "me");

  // With the game, when the settings know how.
  auto* const start = Child<QAction>(*editor, "packAndStartTruck");
  EXPECT_FALSE(start->isEnabled());
  settings.game_command = "game {archive}";
  ASSERT_TRUE(RemoveFile(pod));
  questions.OnYesNo("2 files were not found", EAnswer::kYes);
  editor->PackAndStart();
  EXPECT_TRUE(IsSameFile(started.first, pod) && IsSameFile(started.second, copy));
  EXPECT_EQ(ReadTestFile(pod), written);
  QEvent activation(QEvent::ActivationChange);
  QApplication::sendEvent(editor.get(), &activation);
  EXPECT_TRUE(start->isEnabled());
  folder.Write("T.TRK.pack", "archive out/A.POD\r\nstock in\nfile X.TXT\nnonsense");
  const auto packed = ReadPackMemory(folder.File("T.TRK"));
  ASSERT_TRUE(packed);
  EXPECT_EQ(packed->archive, folder.File("out/A.POD"));
  EXPECT_FALSE(packed->leaves_out_stock);
  EXPECT_EQ(packed->more_files, std::vector<std::string>{folder.File("X.TXT")});
  folder.Write("T.TRK.pack", "");
  EXPECT_FALSE(ReadPackMemory(folder.File("T.TRK")));
}

}  // namespace
}  // namespace veldra::testing
