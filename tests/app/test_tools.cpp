#include <gtest/gtest.h>

#include <QtTest>

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
