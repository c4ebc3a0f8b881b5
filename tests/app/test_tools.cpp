#include <gtest/gtest.h>

#include <QtTest>

#include "archive/podedit.h"
#include "archive/podwriter.h"
#include "editorfixture.h"
#include "platform/files.h"
#include "podtools/podcreatordlg.h"
#include "podtools/podextractordlg.h"
#include "support/dialogdriver.h"
#include "truck/truck.h"
#include "truckeditor/truckeditordlg.h"

namespace veldra::testing {

TEST_F(CEditorTest, AnImportedModelIsAnUnsavedDocument) {
  Start();
  const std::string model = folder.Write("model.obj", "v 0 0 0\nv 90 0 0\nv 0 90 0\nf 1 2 3\n");
  questions.OnOpenFiles("Import WaveFront Model", SOpenFiles{{model}})
      .OnOpenFile("Please select a texture for Wavefront model", folder.File("GRID.RAW"));
  CDialogDriver driver;
  driver.Click("importMeshes", "OK");
  Do(ECommand::kImportWavefront);
  ASSERT_EQ(frame->Children().size(), 1);
  EXPECT_EQ(frame->ActiveDocument()->Model().FaceCount(), 1);
  EXPECT_EQ(frame->ActiveDocument()->Model().Bounds().max.x, 450) << "the size that is offered";
  EXPECT_EQ(frame->ActiveDocument()->Title(), "model.obj");
  questions.OnYesNoCancel("Save changes", EAnswer::kNo);
  EXPECT_TRUE(frame->close());
}

TEST_F(CEditorTest, AModelIsChangedInsideItsArchive) {
  Start();
  const std::string pod = folder.File("TEST.POD");
  // The archive's own texture is another one than that of the texture folder.
  const std::string texture = folder.Write("in/GRID.RAW", std::string(64 * 64, '\7'));
  ASSERT_TRUE(CreatePod(questions, pod,
                        {{.name = "A.BIN", .bytes = {.path = WriteModel("A.BIN")}},
                         {.name = "GRID.RAW", .bytes = {.path = texture}},
                         {.name = "N.TXT", .bytes = {.path = folder.Write("n.txt", "note")}}}));
  EXPECT_TRUE(frame->OpenFile(pod));
  auto* extractor = frame->findChild<CPodExtractorDialog*>();
  auto* list = extractor->findChild<QTreeView*>("entries");
  const auto open = [&](int row) {
    list->setCurrentIndex(list->model()->index(row, 0));
    QTest::keyClick(list, Qt::Key_Return);
  };
  open(0);
  ASSERT_EQ(frame->Children().size(), 1);
  open(0);
  ASSERT_EQ(frame->Children().size(), 1) << "it is open already";
  CTarnDoc& document = *frame->ActiveDocument();
  EXPECT_EQ(document.Title(), "A.BIN (TEST.POD)");
  EXPECT_TRUE(document.IsReadOnly());
  EXPECT_TRUE(document.Model().Texture(0).Frames().front().image->path.starts_with(pod));

  Do(ECommand::kFileEditInArchive);
  document.Model().AddVertex({1, 2, 3});
  // The list has unsaved changes of its own.
  list->setCurrentIndex(list->model()->index(2, 0));
  extractor->findChild<QAction*>("removeEntry")->trigger();
  app->Settings().unused_verts_msg = app->Settings().not_centered_msg = 0;
  questions.OnYesNo("Save them too?", EAnswer::kNo).OnYesNo("Save them too?", EAnswer::kYes);
  Do(ECommand::kFileSave);
  EXPECT_TRUE(document.IsModified());
  Do(ECommand::kFileSave);
  EXPECT_FALSE(document.IsModified());
  EXPECT_EQ(extractor->Archive().Entries().size(), 2u);
  CPodDocument saved;
  ASSERT_TRUE(saved.Load(pod));
  ASSERT_EQ(saved.Entries().size(), 2u);
  EXPECT_EQ(saved.ReadEntry(1)->Text(), std::string(64 * 64, '\7'));
  const int32_t vertices = document.Model().VertexCount();

  // Somebody else has changed it since.
  document.Model().AddVertex({4, 5, 6});
  CScriptedQuestions other;
  const std::string old_model = ReadTestFile(folder.File("A.BIN"));
  ASSERT_TRUE(ReplaceInPod(other, saved, "A.BIN", folder.File("A.BIN")));
  questions.OnYesNo("has been changed since it was opened", EAnswer::kNo);
  Do(ECommand::kFileSave);
  ASSERT_TRUE(saved.Load(pod));
  EXPECT_EQ(saved.ReadEntry(0)->Text(), old_model);
  EXPECT_EQ(document.Model().VertexCount(), vertices + 1);
  questions.OnYesNoCancel("Save changes to A.BIN (TEST.POD)?", EAnswer::kNo);
  EXPECT_TRUE(frame->close());
}

TEST_F(CEditorTest, TrucksAndArchivesOpenInWindowsOfTheirOwn) {
  Start();
  CTruck truck;
  truck.name = "Test truck";
  const std::string trk = folder.File("TEST.TRK");
  ASSERT_TRUE(truck.Save(trk));
  const std::string pod = folder.File("TEST.POD");
  ASSERT_TRUE(CreatePod(questions, pod, {{.name = "TEST.TRK", .bytes = {.path = trk}}}));
  EXPECT_TRUE(frame->OpenFile(trk));
  auto* editor = frame->findChild<CTruckEditorDlg*>();
  ASSERT_NE(editor, nullptr);
  EXPECT_TRUE(frame->OpenFile(pod));
  auto* extractor = frame->findChild<CPodExtractorDialog*>();
  ASSERT_NE(extractor, nullptr);
  EXPECT_EQ(extractor->Archive().Entries().size(), 1u);
  EXPECT_TRUE(frame->Children().isEmpty());

  // The truck inside it, which is saved back.
  auto* entries = extractor->findChild<QTreeView*>("entries");
  entries->selectionModel()->setCurrentIndex(entries->model()->index(0, 0),
                                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  extractor->findChild<QAction*>("openEntry")->trigger();
  EXPECT_EQ(editor->Document().Title(), "TEST.TRK (TEST.POD)");
  editor->Document().Change("", [](CTruck& changed) { changed.name = "Changed truck"; });
  questions.OnYesNoCancel("Save TEST.TRK back into TEST.POD?", EAnswer::kYes);
  EXPECT_TRUE(editor->Save());
  EXPECT_FALSE(editor->Document().IsModified());
  CPodDocument saved;
  ASSERT_TRUE(saved.Load(pod));
  EXPECT_NE(saved.ReadEntry(0)->Text().find("Changed truck"), std::string_view::npos);

  // One of each kind: the next archive takes the window over.
  EXPECT_TRUE(frame->OpenFile(pod));
  EXPECT_EQ(frame->findChildren<CPodExtractorDialog*>().size(), 1);

  Do(ECommand::kToolsCreator);
  auto* creator = frame->findChild<CPodCreatorDialog*>();
  ASSERT_NE(creator, nullptr);
  creator->Add({trk});
  questions.OnYesNo("has not been written", EAnswer::kNo);
  EXPECT_FALSE(frame->close()) << "the archive under construction would be lost";
  questions.OnYesNo("has not been written", EAnswer::kYes);
  EXPECT_TRUE(frame->close());
}

}  // namespace veldra::testing
