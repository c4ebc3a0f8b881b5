#include <gtest/gtest.h>

#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QUrl>
#include <QtTest>

#include "archive/testpod.h"
#include "model/binfile.h"
#include "podtools/podcreatordlg.h"
#include "podtools/podextractordlg.h"
#include "podtools/podviewerdlg.h"
#include "support/dialogdriver.h"
#include "support/modelparts.h"
#include "support/scriptedquestions.h"
#include "view/tarn2view.h"

namespace veldra::testing {

namespace {

/// A model file with one face that needs no texture.
std::string TriangleFile() {
  CBinModel model;
  for (const SPoint& corner : {SPoint{0, 0, 0}, SPoint{90, 0, 0}, SPoint{0, 90, 0}})
    model.AddVertex(corner);
  MakeFace(model, {0, 1, 2});
  CByteWriter out;
  SaveBin(model, {}, out);
  return {reinterpret_cast<const char*>(out.Bytes().data()), out.Size()};
}

class CPodDialogTest : public ::testing::Test {
 protected:
  CPodDialogTest() {
    settings.pod_dest_dir = folder.Path();
    settings.recreate_dir_structure = 0;
    settings.extract_deps = 0;
    settings.creator_pod_zip = 1;
  }

  std::string WriteArchive() {
    return folder.Write("TEST.POD", MakePod({{.name = "DATA\\README.TXT", .data = "first line"},
                                             {.name = "ART\\SKY.RAW", .data = std::string(64 * 64, '\5')},
                                             {.name = "ART\\SKY.ACT", .data = std::string(768, '\x40')},
                                             {.name = "MODELS\\TRI.BIN", .data = TriangleFile()},
                                             {.name = "SOUND\\X.WAV", .data = std::string("RIFF\0\1", 6)}}));
  }
  static void Show(QWidget& window) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  static void SelectRow(QTreeView& list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QRect place = list.visualRect(list.model()->index(row, 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, place.center());
  }
  static void Press(QWidget& window, const char* button) {
    QTest::mouseClick(Child<QPushButton>(window, button), Qt::LeftButton);
  }

  CTempFolder folder;
  CScriptedQuestions questions;
  CSettings settings;
  CStockFiles stock;
  const ColorTable colors = GreyRamp();
  SToolServices services{
      .questions = questions, .settings = settings, .stock = stock, .default_colors = colors, .game_folder = {}};
};

}  // namespace

TEST_F(CPodDialogTest, ShowsWhatEachKindOfEntryHolds) {
  CPodExtractorDialog dialog(services, nullptr);
  Show(dialog);
  ASSERT_TRUE(dialog.LoadArchive(WriteArchive()));
  auto* list = Child<QTreeView>(dialog, "entries");
  auto* preview = Child<CPodPreview>(dialog, "preview");
  ASSERT_EQ(list->model()->rowCount(), 5);

  const WId window = dialog.winId();
  SelectRow(*list, 0);
  ASSERT_NE(qobject_cast<QPlainTextEdit*>(preview->Shown()), nullptr);
  EXPECT_EQ(qobject_cast<QPlainTextEdit*>(preview->Shown())->toPlainText(), "first line");
  SelectRow(*list, 1);
  EXPECT_EQ(preview->Caption(), "Texture, 64 x 64");
  EXPECT_EQ(qobject_cast<QLabel*>(preview->Shown())->pixmap().toImage().pixelColor(5, 5), QColor(0x40, 0x40, 0x40));
  SelectRow(*list, 2);
  EXPECT_EQ(preview->Caption(), "Color table, 256 colors");
  SelectRow(*list, 3);
  auto* view = qobject_cast<CTarnView*>(preview->Shown());
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->Document().Model().FaceCount(), 1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return view->HasDrawn(); }));
  EXPECT_EQ(dialog.winId(), window) << "the window was made anew for the 3D view";
  // Not what the view would draw, but what the screen shows.
  const auto shows_model = [&] {
    const QPoint at = view->mapTo(&dialog, QPoint());
    const QImage seen =
        dialog.screen()->grabWindow(dialog.winId(), at.x(), at.y(), view->width(), view->height()).toImage();
    const SColor ground = view->State().background;
    return seen.pixelColor(2, 2) == QColor(ground.red, ground.green, ground.blue) &&
           seen.pixel(seen.rect().center()) != seen.pixel(2, 2);
  };
  EXPECT_TRUE(QTest::qWaitFor(shows_model));
  SelectRow(*list, 4);
  EXPECT_TRUE(qobject_cast<QLabel*>(preview->Shown())->text().startsWith("No preview"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !shows_model(); }));
  SelectRow(*list, 3);
  EXPECT_TRUE(QTest::qWaitFor(shows_model)) << "black since it was covered";
}

TEST_F(CPodDialogTest, APictureTakesTheTexturesPlaceAndTheGameIsStartedWithIt) {
  std::string started;
  services.start_game = [&](const std::string& archive, const std::string&) {
    started = archive;
    return true;
  };
  settings.game_command = "game";
  const std::string pod = WriteArchive();
  CPodExtractorDialog dialog(services, nullptr);
  ASSERT_TRUE(dialog.LoadArchive(pod));
  Show(dialog);
  const std::string picture = folder.Write("in/mine.png", "");
  SImage red = {.width = 128, .height = 128, .rgba = std::vector<uint8_t>(128 * 128 * 4, 255)};
  for (size_t i = 0; i < red.rgba.size(); ++i)
    if (i % 4 == 1 || i % 4 == 2) red.rgba[i] = 0;
  ASSERT_TRUE(WritePng(picture, red));
  const auto replace = [&](std::optional<EAnswer> answer = {}) {
    SelectRow(*Child<QTreeView>(dialog, "entries"), 1);
    questions.OnOpenFile("Replace SKY.RAW", picture);
    if (answer) questions.OnYesNo("beside the picture already", *answer);
    QTest::keyClick(&dialog, Qt::Key_R, Qt::ControlModifier);
  };
  replace();
  const auto colors_of = [&] { return std::string(dialog.Archive().ReadEntry(2)->Text()); };
  ASSERT_EQ(dialog.Archive().Entries().size(), 5u);
  EXPECT_EQ(dialog.Archive().ReadEntry(1)->View().size(), 64u * 64u) << "as wide as the old one";
  const uint8_t texel = dialog.Archive().ReadEntry(1)->View()[0];
  EXPECT_EQ(colors_of().substr(3u * texel, 3), std::string("\xFF\0\0", 3));
  dialog.Document().StepBack();
  EXPECT_EQ(colors_of(), std::string(768, '\x40')) << "both in one step";
  replace(EAnswer::kNo);
  EXPECT_FALSE(dialog.Document().IsModified());
  replace(EAnswer::kYes);
  QTest::keyClick(&dialog, Qt::Key_F9);
  EXPECT_TRUE(IsSameFile(started, pod));
  CPodDocument saved;
  ASSERT_TRUE(saved.Load(pod));
  EXPECT_EQ(saved.ReadEntry(1)->View()[0], texel);
}

TEST_F(CPodDialogTest, SearchesSortsAndExtractsWhatIsSelected) {
  CPodExtractorDialog dialog(services, nullptr);
  Show(dialog);
  ASSERT_TRUE(dialog.LoadArchive(WriteArchive()));
  auto* list = Child<QTreeView>(dialog, "entries");
  QTest::keyClicks(Child<QLineEdit>(dialog, "search"), "art/");
  ASSERT_EQ(list->model()->rowCount(), 2);
  list->sortByColumn(CPodListModel::kSize, Qt::AscendingOrder);
  EXPECT_EQ(list->model()->index(0, 0).data().toString(), "SKY.ACT");

  folder.Write("SKY.RAW", "old");
  folder.Write("SKY.ACT", "old");
  Press(dialog, "selectAll");
  questions.OnReplace("SKY.RAW", EReplaceAnswer::kNo).OnReplace("SKY.ACT", EReplaceAnswer::kYes);
  Press(dialog, "extract");
  EXPECT_EQ(ReadTestFile(folder.File("SKY.RAW")), "old");
  EXPECT_EQ(ReadTestFile(folder.File("SKY.ACT")).size(), 768u);
  EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{"Extracted 1 of 2 files"});
  EXPECT_TRUE(dialog.Archive().Entries()[2].extracted);
  EXPECT_FALSE(dialog.Archive().Entries()[1].extracted);
}

TEST_F(CPodDialogTest, ChangesTheArchiveAndGoesBack) {
  CPodExtractorDialog dialog(services, nullptr);
  Show(dialog);
  const std::string pod = WriteArchive();
  const std::string before = ReadTestFile(pod);
  ASSERT_TRUE(dialog.LoadArchive(pod));
  auto* list = Child<QTreeView>(dialog, "entries");
  const auto name = [&](size_t entry) { return std::string(dialog.Archive().Entries()[entry].Name()); };

  SelectRow(*list, 0);
  QTest::keyClick(&dialog, Qt::Key_F2);
  auto* editor = list->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  editor->setText("news.txt");
  QTest::keyClick(editor, Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return name(0) == "DATA\\NEWS.TXT"; }));
  SelectRow(*list, 4);
  QTest::keyClick(&dialog, Qt::Key_Delete);
  EXPECT_EQ(dialog.Archive().Entries().size(), 4u);
  SelectRow(*list, 1);
  QTest::keyClick(&dialog, Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(name(0), "ART\\SKY.RAW");

  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(QString::fromStdString(folder.Write("in/SKY.RAW", std::string(64 * 64, '\1')))),
                 QUrl::fromLocalFile(QString::fromStdString(folder.Write("in/HORN.WAV", "wave")))});
  questions.OnReplace("ART\\SKY.RAW", EReplaceAnswer::kYes);
  QDragEnterEvent enter({9, 9}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&dialog, &enter);
  QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&dialog, &drop);
  EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.Archive().Entries().size() == 5; }));
  EXPECT_TRUE(dialog.isWindowModified());
  EXPECT_EQ(ReadTestFile(pod), before) << "nothing is written before it is saved";

  // What a crash would leave is the same list.
  SError error;
  const SCopyLabel label{.title = "TEST.POD", .path = pod, .kind = ECopyKind::kArchive};
  const auto packed = dialog.Document().Pack(label, &error);
  const SCopyFile copy =
      ReadCopyFile(folder.Write("in/copy", {reinterpret_cast<const char*>(packed.data()), packed.size()}));
  CArchiveDocument recovered(questions, settings);
  const SDocumentCopy of_copy{.title = label.title, .path = pod, .modified = true};
  ASSERT_TRUE(recovered.OpenCopy(of_copy, copy));
  EXPECT_TRUE(recovered.IsModified());
  ASSERT_EQ(recovered.Archive().Entries().size(), 5u);
  const auto contents = [](const CPodDocument& archive) {
    std::vector<std::pair<std::string, std::string>> rows;
    for (size_t i = 0; i < archive.Entries().size(); ++i)
      rows.emplace_back(archive.Entries()[i].Name(), archive.ReadEntry(i)->Text());
    return rows;
  };
  const auto wanted = contents(recovered.Archive());

  questions.OnYesNoCancel("Save changes to TEST.POD?", EAnswer::kCancel);
  EXPECT_FALSE(dialog.LoadArchive(pod));
  QTest::keyClick(&dialog, Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(dialog.isWindowModified());
  CPodDocument saved;
  ASSERT_TRUE(saved.Load(pod));
  EXPECT_EQ(contents(saved), wanted);

  EXPECT_FALSE(recovered.Save(pod)) << "it would take bytes from where they are no more";
  EXPECT_FALSE(CArchiveDocument(questions, settings).OpenCopy(of_copy, copy));
  questions.TakeMessageTexts();
  SelectRow(*list, 0);
  QTest::keyClick(&dialog, Qt::Key_Delete);
  QTest::keyClick(&dialog, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_FALSE(dialog.isWindowModified());
  QTest::keyClick(&dialog, Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(dialog.Archive().Entries().size(), 4u);
  questions.OnYesNoCancel("Save changes", EAnswer::kCancel).OnYesNoCancel("Save changes", EAnswer::kNo);
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_TRUE(dialog.isVisible());
  Press(dialog, "close");
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(CPodDialogTest, ComparesTestsAndShowsEntriesInTheirOwnWindows) {
  CPodExtractorDialog dialog(services, nullptr);
  Show(dialog);
  ASSERT_TRUE(dialog.LoadArchive(WriteArchive()));
  auto* list = Child<QTreeView>(dialog, "entries");
  const std::string other =
      folder.Write("OTHER.POD", MakePod({{.name = "data\\readme.txt", .data = "first lime"},
                                         {.name = "ART\\SKY.ACT", .data = std::string(768, '\x40')},
                                         {.name = "SOUND\\NEW.WAV", .data = "new"}}));
  CDialogDriver driver;
  driver.On("podCompare", [](QWidget& compare) {
    auto* rows = Child<QTreeView>(compare, "compared");
    QStringList states;
    for (int i = 0; i < rows->model()->rowCount(); ++i)
      states.append(rows->model()->index(i, 3).data().toString());
    EXPECT_EQ(states.join(','), "differs,only here,only here,only here,only there");
    rows->selectAll();
    Press(compare, "takeOver");
    EXPECT_EQ(rows->model()->rowCount(), 3);
    compare.close();
  });
  questions.OnOpenFile("Compare With", other).OnReplace("DATA\\README.TXT", EReplaceAnswer::kYes);
  QTest::keyClick(&dialog, Qt::Key_D, Qt::ControlModifier);
  ASSERT_EQ(dialog.Archive().Entries().size(), 6u);
  EXPECT_EQ(dialog.Archive().ReadEntry(0)->Text(), "first lime");

  Show(dialog);
  QTest::keyClick(&dialog, Qt::Key_T, Qt::ControlModifier);
  auto* problems = Child<QTreeView>(dialog, "problems");
  ASSERT_EQ(problems->model()->rowCount(), 1);
  EXPECT_EQ(problems->model()->index(0, 1).data().toString(), "Nothing is wrong with the archive.");
  const std::string bad = folder.Write("BAD.POD", MakePod({{.name = "ART\\A.RAW", .data = "1234"},
                                                           {.name = "..\\B.RAW", .data = "x"},
                                                           {.name = "art\\a.raw", .data = "x"}}));
  questions.OnYesNoCancel("Save changes", EAnswer::kNo);
  ASSERT_TRUE(dialog.LoadArchive(bad));
  ASSERT_EQ(problems->model()->rowCount(), 2);
  problems->setCurrentIndex(problems->model()->index(1, 0));
  EXPECT_EQ(list->selectionModel()->selectedRows().size(), 2) << "both of the name";

  ASSERT_TRUE(dialog.LoadArchive(WriteArchive()));
  SelectRow(*list, 0);
  QTest::keyClick(list, Qt::Key_Return);
  auto* viewer = dialog.findChild<CPodViewerDlg*>();
  ASSERT_NE(viewer, nullptr);
  EXPECT_EQ(qobject_cast<QPlainTextEdit*>(viewer->Preview().Shown())->toPlainText(), "first line");
}

TEST_F(CPodDialogTest, CreatorCollectsOrdersAndWrites) {
  CPodCreatorDialog dialog(services, nullptr);
  Show(dialog);
  const std::string written = folder.File("NEW.POD");
  const std::string model = folder.Write("in/TRI.BIN", TriangleFile());
  const std::string sound = folder.Write("in/HORN.WAV", "wave");
  dialog.Add({model, sound, folder.Write("in/BIGFOOT.TRK", "stock"), folder.Write("in/TOOLONGNAME.RAW", "x")});
  EXPECT_EQ(
      questions.TakeMessageTexts(),
      std::vector<std::string>{"File \"TOOLONGNAME.RAW\" cannot be loaded.\nFile name cannot exceed 8 characters"});
  auto* files = Child<QTreeWidget>(dialog, "files");
  ASSERT_EQ(files->topLevelItemCount(), 3);
  SelectRow(*files, 1);
  Press(dialog, "up");
  EXPECT_EQ(files->topLevelItem(0)->text(0), "HORN.WAV");

  questions.OnSaveFile("Create POD File", SSavePath{written, 0});
  Press(dialog, "create");
  CPodDocument archive;
  ASSERT_TRUE(archive.Load(written));
  ASSERT_EQ(archive.Entries().size(), 2u) << "the stock truck is left out";
  EXPECT_EQ(archive.Entries()[0].Name(), "SOUND\\HORN.WAV");
  EXPECT_EQ(archive.Entries()[1].Name(), "MODELS\\TRI.BIN");

  QTest::mouseClick(Child<QCheckBox>(dialog, "leaveOutStock"), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
  EXPECT_EQ(settings.creator_pod_zip, 0);
  SelectRow(*files, 0);
  QTest::keyClick(files, Qt::Key_Delete);
  EXPECT_EQ(files->topLevelItemCount(), 2);
  questions.OnYesNo("has not been written", EAnswer::kNo).OnYesNo("has not been written", EAnswer::kYes);
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_TRUE(dialog.isVisible());
  Press(dialog, "close");
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(CPodDialogTest, CreatorTakesArchivesApartAndFindsWhatIsNeeded) {
  settings.creator_insert_pod = 1;
  settings.creator_show_deps = 1;
  CPodCreatorDialog dialog(services, nullptr);
  Show(dialog);
  dialog.Add({WriteArchive()});
  EXPECT_EQ(Child<QTreeWidget>(dialog, "files")->topLevelItemCount(), 5);
  dialog.Build().Clear();
  // The texture's colour table lies beside it, and nothing else is needed.
  folder.Write("in/SKY.ACT", std::string(768, 'a'));
  dialog.Add({folder.Write("in/SKY.RAW", std::string(64 * 64, '\5'))});
  ASSERT_EQ(Child<QTreeWidget>(dialog, "needed")->topLevelItemCount(), 1);
  Press(dialog, "addNeeded");
  EXPECT_EQ(Child<QTreeWidget>(dialog, "files")->topLevelItemCount(), 2);
  EXPECT_EQ(Child<QTreeWidget>(dialog, "needed")->topLevelItemCount(), 0);
}

}  // namespace veldra::testing
