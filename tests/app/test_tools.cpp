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

namespace {

constexpr const char* kTriangle = "v 0 0 0\nv 90 0 0\nv 0 90 0\nf 1 2 3\n";

template <typename Window>
Window* Opened(CMainFrame& frame) {
  return frame.findChild<Window*>();
}

}  // namespace

TEST_F(CEditorTest, ImportSkipsOnlyTheFileWhoseTextureIsNotChosen) {
  Start();
  const std::string first = folder.Write("first.obj", kTriangle);
  const std::string second = folder.Write("second.obj", kTriangle);
  const std::string broken = folder.Write("broken.obj", "v 0 0 0\nf 1 2 3\n");
  const std::string texture = folder.Write("IMPORT.RAW", std::string(64 * 64, '\7'));
  questions.OnOpenFiles("Import WaveFront Model", SOpenFiles{{first, second, broken}})
      .OnOpenFile("Please select a texture for Wavefront model", std::nullopt)
      .OnOpenFile("Please select a texture for Wavefront model", texture);
  CDialogDriver driver;
  driver.Click("importOptions", "OK");
  Do(ECommand::kImportWavefront);
  ASSERT_EQ(frame->Children().size(), 1);
  EXPECT_EQ(frame->ActiveDocument()->Model().FaceCount(), 1);
  EXPECT_TRUE(frame->ActiveDocument()->IsModified());
  EXPECT_EQ(frame->ActiveDocument()->Title(), "second.obj");
  ASSERT_EQ(questions.Messages().size(), 1u) << "the broken file is told";
  const std::string details = questions.Messages()[0].details;
  EXPECT_NE(details.find("line 2"), std::string::npos) << details;
  questions.TakeMessageTexts();
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
  auto* editor = Opened<CTruckEditorDlg>(*frame);
  ASSERT_NE(editor, nullptr);
  EXPECT_TRUE(frame->OpenFile(pod));
  auto* extractor = Opened<CPodExtractorDialog>(*frame);
  ASSERT_NE(extractor, nullptr);
  EXPECT_EQ(extractor->Archive().Entries().size(), 1u);
  EXPECT_TRUE(frame->Children().isEmpty());

  // One of each kind: the next archive takes the window over.
  EXPECT_TRUE(frame->OpenFile(pod));
  EXPECT_EQ(frame->findChildren<CPodExtractorDialog*>().size(), 1);

  Do(ECommand::kToolsCreator);
  auto* creator = Opened<CPodCreatorDialog>(*frame);
  ASSERT_NE(creator, nullptr);
  creator->Add({trk});
  questions.OnYesNo("has not been written", EAnswer::kNo);
  EXPECT_FALSE(frame->close()) << "the archive under construction would be lost";
  questions.OnYesNo("has not been written", EAnswer::kYes);
  EXPECT_TRUE(frame->close());
}

TEST_F(CEditorTest, TheStockFileListIsBuiltFromAGame) {
  settings.creator_pod_zip = 1;
  Start();
  const std::string wave = folder.Write("game/OWNHORN.WAV", "x");
  ASSERT_TRUE(CreatePod(questions, folder.File("game/SOUND.POD"), {{.name = "OWNHORN.WAV", .bytes = {.path = wave}}}));
  questions.OnFolder("Folder of the installed game", folder.File("game"));
  Do(ECommand::kToolsStockList);
  EXPECT_TRUE(FileExists(folder.File("Veldra.stock")));
  EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{"The stock-file list has been built."});
  Do(ECommand::kToolsCreator);
  auto* creator = Opened<CPodCreatorDialog>(*frame);
  ASSERT_NE(creator, nullptr);
  creator->Add({wave});
  EXPECT_TRUE(creator->Build().Sources(true).empty()) << "every installation has it now";
  creator->Build().Clear();
  questions.OnYesNo("has not been written", EAnswer::kYes);
  EXPECT_TRUE(frame->close());
}

}  // namespace veldra::testing
