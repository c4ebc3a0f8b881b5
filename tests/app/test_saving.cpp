#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QFile>
#include <QMessageBox>
#include <QtTest>

#include "app/editorfixture.h"
#include "app/qtquestions.h"
#include "model/binfile.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

namespace {

constexpr const char* kCentered = "Model is not centered along the vertical axis.";
constexpr const char* kSize = "Model uses a texture size not supported by MTM2.";
constexpr const char* kSizeOnOpening = "This model uses a texture size not supported by MTM2.";
constexpr const char* kUnused = "";  // a dialog of its own

struct SAnswer {
  const char* question;
  QString button;
};

void Expect(CDialogDriver& driver, const SAnswer& answer) {
  if (answer.question == kUnused) {
    driver.Click("unusedVertices", answer.button);
    return;
  }
  driver.On("messageBox", [answer](QWidget& box) {
    EXPECT_TRUE(dynamic_cast<QMessageBox&>(box).text().startsWith(answer.question));
    ClickButton(box, answer.button);
  });
}

}  // namespace

/// The file's vertices: how many, and their lowest and highest y.
struct SOnDisk {
  int32_t vertices;
  int32_t low;
  int32_t high;
  bool operator==(const SOnDisk&) const = default;
};

class CSavingTest : public CEditorTest {
 protected:
  /// As its file has it, read by an application that has nothing to do with the window's.
  SOnDisk OnDisk(const std::string& path) {
    CTextureStore textures(questions, GreyRamp());
    CTarnDoc document({.questions = questions, .textures = textures, .settings = app->Settings()});
    questions.OnYesNo(kSizeOnOpening, EAnswer::kYes);
    EXPECT_TRUE(document.OnOpenDocument(path));
    const SBounds& bounds = document.Model().Bounds();
    return {document.Model().VertexCount(), bounds.min.y, bounds.max.y};
  }
};

TEST_F(CSavingTest, TheQuestionsComeInTheirOrderAndEachAnswerCounts) {
  const SOnDisk before = {9, -500, 700};
  const SOnDisk added = {10, -500, 700};  // with the vertex that the test adds
  const SOnDisk centered = {10, -600, 600};
  const struct {
    const char* what;
    std::vector<SAnswer> answers;
    SOnDisk after;
    bool is_saved;
  } cases[] = {
      {"centred, then stopped", {{kCentered, "Yes"}, {kSize, "No"}}, before, false},
      {"cancel last", {{kCentered, "No"}, {kSize, "Yes"}, {kUnused, "Cancel save"}}, before, false},
      {"as it is", {{kCentered, "No"}, {kSize, "Yes"}, {kUnused, "Save Anyway"}}, added, true},
      {"centred", {{kCentered, "Yes"}, {kSize, "Yes"}, {kUnused, "Save Anyway"}}, centered, true},
      {"all mended",
       {{kCentered, "Yes"}, {kSize, "Yes"}, {kUnused, "Delete unused vertices and save"}},
       {8, -600, 600},
       true},
  };
  CQtQuestions dialogs;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    const std::string path = WriteModel("m.bin", {.shift_y = 100, .unused_vertex = true, .texture = "BIG.RAW"});
    Start(&dialogs);
    dialogs.SetParent(frame.get());
    {
      CDialogDriver driver;
      Expect(driver, {kSizeOnOpening, "Yes"});
      ASSERT_TRUE(frame->OpenFile(path));
      frame->ActiveDocument()->Model().AddVertex({1, 2, 3});
      for (const SAnswer& answer : row.answers)
        Expect(driver, answer);
      Do(ECommand::kFileSave);
    }
    EXPECT_EQ(OnDisk(path), row.after);
    EXPECT_EQ(frame->ActiveDocument()->IsModified(), !row.is_saved);
  }
  questions.TakeMessageTexts();
}

TEST_F(CSavingTest, ReadOnlyModelsAreSavedUnderAnotherNameOnly) {
  const std::string path = WriteModel("m.bin");
  const std::string original = ReadTestFile(path);
  Start();
  questions.OnOpenFiles("Open", SOpenFiles{.paths = {path, WriteModel("n.bin")}, .read_only = true});
  Do(ECommand::kFileOpen);
  ASSERT_EQ(frame->Children().size(), 2);
  frame->Windows().Activate(*app->FindDocument(path));
  EXPECT_TRUE(frame->windowTitle().contains("(Read-Only)"));
  // Another document must not take the name.
  frame->Files().New();
  frame->ActiveDocument()->Model().AddVertex({0, 0, 0});
  app->Settings().unused_verts_msg = 0;
  // By whatever way.
  ASSERT_TRUE(QFile::link(QString::fromStdString(folder.Path()), QString::fromStdString(folder.File("link"))));
  questions.OnSaveFile("Save Document As", SSavePath{.path = folder.File("link/m.bin"), .filter = 0});
  Do(ECommand::kFileSave);
  EXPECT_EQ(questions.TakeMessageTexts(),
            std::vector<std::string>{"Cannot save as that name.The file has been opened as read-only"});
  EXPECT_EQ(ReadTestFile(path), original);
  frame->ActiveDocument()->SetModified(false);
}

}  // namespace veldra::testing
