#include <cerrno>

#include "document/documentfixture.h"
#include "document/earlierstates.h"
#include "document/filenews.h"
#include "editing/modelcommands.h"
#include "platform/files.h"
#include "platform/filetime.h"

namespace veldra::testing {
namespace {

constexpr const char* kChangedElsewhere = "has been changed on the disk since it was opened.\nSave anyway";

/// A document with earlier states, saved as truck.bin, and what other programs do to the file.
class CFileChangesTest : public CDocumentTest {
 protected:
  CFileChangesTest() {
    folder.Write("GOOD.RAW", std::string(64 * 64, '\0'));
    services_.earlier_states = &states_;
    services_.make_picture = [](const CTarnDoc&) { return SImage{1, 1, {1, 2, 3, 4}}; };
    document_ = std::make_unique<CTarnDoc>(services_);
    FillGood(document_->Model());
    document_->Model().AddVertex({0, 0, 0});
    settings.unused_verts_msg = 0;
    EXPECT_TRUE(document_->SaveMTM(path_));
  }
  ~CFileChangesTest() override { SetFileFault({}); }

  /// Another model of VERTICES in the document's file.
  void ChangeElsewhere(int vertices) {
    CTarnDoc other(Services());
    for (int i = 0; i < vertices; ++i)
      other.Model().AddVertex({i, 0, 0});
    const auto before = FileWriteTime(path_);
    do {
      ASSERT_TRUE(other.SaveMTM(path_));
    } while (FileWriteTime(path_) == before);  // some file systems' clocks are coarse
  }
  /// The names of the kept states, the oldest first.
  std::string Kept(const CTarnDoc& document) const {
    std::string names;
    for (const SEarlierState& state : states_.List(document.StatesKey()))
      names = state.command + (names.empty() ? "" : ", ") + names;
    return names;
  }

  std::string path_ = folder.File("truck.bin");
  CEarlierStates states_{folder.File("states")};
  SDocumentServices services_ = Services();
  std::unique_ptr<CTarnDoc> document_;
};

TEST_F(CFileChangesTest, OnlyOtherContentByOthersIsAChange) {
  EXPECT_FALSE(document_->FileStamp().IsChanged()) << "its own first save";
  document_->CenterX();
  ASSERT_TRUE(document_->Saver().Save());
  EXPECT_EQ(TakeFileNews(*document_), EFileNews::kNone) << "its own save";
  folder.Write("truck.bin", ReadTestFile(path_));
  EXPECT_EQ(TakeFileNews(*document_), EFileNews::kNone) << "the same bytes anew";
  ChangeElsewhere(7);
  EXPECT_EQ(TakeFileNews(*document_), EFileNews::kChanged);
  EXPECT_EQ(TakeFileNews(*document_), EFileNews::kNone) << "told once";
  EXPECT_TRUE(document_->FileStamp().IsChanged());
  ASSERT_TRUE(document_->OnOpenDocument(path_));
  EXPECT_FALSE(document_->FileStamp().IsChanged());
  folder.Write("truck.bin.info", "something else");
  EXPECT_TRUE(document_->FileStamp().IsChanged()) << "the groups would be lost";

  // Of a save that gets half through, neither half is another program's.
  ASSERT_TRUE(document_->SaveMTM(path_));
  document_->Model().AddVertex({5, 5, 5});
  settings.not_centered_msg = 0;
  SetFileFault([](std::string_view call, std::string_view file) {
    return call == "rename" && file.ends_with(".info") ? ENOSPC : 0;
  });
  EXPECT_FALSE(document_->Saver().Save());
  SetFileFault({});
  ExpectOnlyMessage("Model could not be saved.");
  EXPECT_EQ(TakeFileNews(*document_), EFileNews::kNone);
  EXPECT_TRUE(document_->IsModified());
}

TEST_F(CFileChangesTest, NewsIsSettledWithOneQuestion) {
  constexpr const char* kLose = "again and lose the changes since it was last saved?";
  const struct {
    const char* what;
    bool modified, quietly;
    const char* question;  // "" for none
    EAnswer answer;
    bool loaded;
  } cases[] = {{"nothing to lose", false, false, "Load it again?", EAnswer::kYes, true},
               {"not wanted", false, false, "Load it again?", EAnswer::kNo, false},
               {"unsaved changes", true, false, kLose, EAnswer::kYes, true},
               {"unsaved changes stay", true, false, kLose, EAnswer::kNo, false},
               {"without asking", false, true, "", EAnswer::kNo, true},
               {"never without asking", true, true, kLose, EAnswer::kNo, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    document_->SetModified(c.modified);
    settings.reload_unmodified = c.quietly ? 1 : 0;
    const int32_t vertices = document_->Model().VertexCount();
    ChangeElsewhere(vertices + 1);
    if (*c.question != '\0') questions.OnYesNo(c.question, c.answer);
    SettleFileNews(*document_, TakeFileNews(*document_));
    EXPECT_EQ(document_->Model().VertexCount() != vertices, c.loaded);
    EXPECT_EQ(document_->IsModified(), c.modified && !c.loaded);
  }
  ExpectNoMessages();
}

TEST_F(CFileChangesTest, FileThatIsGoneIsSaidOnceAndIsToBeSaved) {
  for (const char* gone : {"truck.bin", "truck.bin.info"}) {
    SCOPED_TRACE(gone);
    ASSERT_TRUE(RemoveFile(folder.File(gone)));
    SettleFileNews(*document_, TakeFileNews(*document_));
    const auto texts = questions.TakeMessageTexts();
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_TRUE(texts[0].starts_with('"' + folder.File(gone) + "\" is no longer on the disk."));
    SettleFileNews(*document_, TakeFileNews(*document_));
    EXPECT_TRUE(document_->IsModified());
    EXPECT_TRUE(document_->Saver().Save()) << "written again without a question";
    EXPECT_TRUE(IsFile(folder.File(gone)));
    EXPECT_EQ(TakeFileNews(*document_), EFileNews::kNone);
  }
  ExpectNoMessages();
}

TEST_F(CFileChangesTest, SaveAsksBeforeAnythingElseAndKeepsWhatItOverwrites) {
  AddTriangle(document_->Model(), 0, 90, &document_->Model().Texture(0));
  ChangeElsewhere(7);
  const std::string theirs = ReadTestFile(path_);
  questions.OnYesNo(kChangedElsewhere, EAnswer::kNo);
  EXPECT_FALSE(document_->Saver().Save());
  EXPECT_EQ(ReadTestFile(path_), theirs);
  EXPECT_TRUE(document_->IsModified());

  questions.OnYesNo(kChangedElsewhere, EAnswer::kYes).OnYesNoCancel("Model is not centered", EAnswer::kCancel);
  EXPECT_FALSE(document_->Saver().Save());
  EXPECT_EQ(ReadTestFile(path_), theirs);
  questions.OnYesNoCancel("Model is not centered", EAnswer::kNo)
      .OnSaveFile("Save Document As", SSavePath{path_, 0})
      .OnYesNo(kChangedElsewhere, EAnswer::kYes);
  EXPECT_TRUE(document_->Saver().SaveAs());
  EXPECT_EQ(Kept(*document_), "Save, File before saving, Save");
  const auto states = states_.List(document_->StatesKey());
  EXPECT_EQ(states[1].vertices, 7) << "the other program's work";
  document_->CenterX();
  questions.OnYesNoCancel("Model is not centered", EAnswer::kNo);
  EXPECT_TRUE(document_->Saver().Save()) << "not asked again";
}

TEST_F(CFileChangesTest, ReloadAsksKeepsTheStateAndStaysOnFailure) {
  document_->CenterX();
  ChangeElsewhere(7);
  questions.OnYesNo("lose the changes since it was last saved?", EAnswer::kNo);
  EXPECT_FALSE(AskAndReload(*document_));
  questions.OnYesNo("lose the changes", EAnswer::kYes);
  ASSERT_TRUE(AskAndReload(*document_));
  EXPECT_EQ(document_->Model().VertexCount(), 7);
  EXPECT_FALSE(document_->IsModified() || document_->FileStamp().IsChanged());
  EXPECT_EQ(Kept(*document_), "Save, Reload") << "what Center X found is the saved state: once is enough";
  EXPECT_EQ(states_.List(document_->StatesKey())[0].vertices, 4);

  folder.Write("truck.bin", std::string("\x14\0\0\0", 4));
  EXPECT_FALSE(document_->Reload());
  ExpectOnlyMessage("Model is currupt and cannot be loaded");
  EXPECT_EQ(document_->Model().VertexCount(), 7);
  EXPECT_EQ(document_->Path(), path_);
  EXPECT_TRUE(document_->FileStamp().IsChanged());
}

TEST_F(CFileChangesTest, StatesAreKeptByCommandUnlessNothingChanges) {
  CTarnDoc document(services_);
  FillGood(document.Model());
  document.Model().AddVertex({3, 3, 3});
  document.CenterY();
  Translate(document, {});
  Rotate(document, {.angle = 0});
  MergeCloseVertices(document, {0});
  Resize(document, {.x = 1e30});
  EXPECT_EQ(Kept(document), "") << "nothing changed";
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1U);
  document.CenterAll();
  Resize(document, {.x = 2});
  document.DeleteAllUnused();
  MergeCloseVertices(document, {1000});
  const std::string before_save = "Center All, Resize, Delete All Unused, Merge close vertices";
  EXPECT_EQ(Kept(document), before_save);
  const std::string old_key = document.StatesKey();
  ASSERT_TRUE(document.SaveMTM(folder.File("new.bin")));
  EXPECT_EQ(Kept(document), before_save + ", Save") << "moved along";
  EXPECT_TRUE(states_.List(old_key).empty());
  EXPECT_EQ(states_.List(document.StatesKey())[0].picture.width, 1);
  ASSERT_TRUE(Translate(document, {.x = 1}));
  ASSERT_TRUE(InsertBinFile(document, path_));
  EXPECT_EQ(document.Model().VertexCount(), 5);
  SetFileFault([](std::string_view, std::string_view) { return ENOSPC; });
  EXPECT_TRUE(Translate(document, {.x = 1})) << "a full disk stops no command";
  SetFileFault({});
  EXPECT_EQ(Kept(document), before_save + ", Save, Insert BIN");
}

TEST_F(CFileChangesTest, FirstSaveKeepsTheFileAsItWasOpened) {
  CTarnDoc document(services_);
  ASSERT_TRUE(document.OnOpenDocument(path_));
  document.Model().SetVertexPosition(3, {1, 1, 1});  // no command of the document's
  ASSERT_TRUE(document.Saver().Save());
  CTarnDoc old(services_);
  const auto states = states_.List(document.StatesKey());
  ASSERT_EQ(states.size(), 3U);
  EXPECT_EQ(states[1].command, "File before saving");
  ASSERT_TRUE(old.OpenCopy({.title = "old"}, states_.Read(document.StatesKey(), states[1].id)));
  EXPECT_EQ(old.Model().Vertex(3).Position(), SPoint{});
}

TEST_F(CFileChangesTest, ReadOnlyByChoiceOutlivesReloadAndEndsWithSaveAs) {
  CTarnDoc document(services_);
  ASSERT_TRUE(document.OnOpenDocument(path_, true));
  EXPECT_TRUE(document.IsReadOnly());
  ASSERT_TRUE(document.Reload());
  EXPECT_TRUE(document.IsReadOnly());
  const std::string before = ReadTestFile(path_);
  document.Model().AddVertex({1, 1, 1});
  const std::string new_path = folder.File("new.bin");
  questions.OnSaveFile("Save Document As", SSavePath{new_path, 0});
  ASSERT_TRUE(document.Saver().Save());
  EXPECT_EQ(ReadTestFile(path_), before);
  EXPECT_NE(ReadTestFile(new_path), before);
  ASSERT_TRUE(document.Reload());
  EXPECT_EQ(document.Path(), new_path);
  EXPECT_FALSE(document.IsReadOnly());
}

TEST_F(CFileChangesTest, StoppedLoadAndSaveLeaveEverythingAsItWas) {
  document_->CenterX();
  const std::string before = ReadTestFile(path_);
  questions.CancelWorkAfter(0);
  EXPECT_FALSE(document_->Saver().Save());
  EXPECT_EQ(ReadTestFile(path_), before);
  EXPECT_TRUE(document_->IsModified());
  CTarnDoc document(services_);
  EXPECT_FALSE(document.OnOpenDocument(path_));
  EXPECT_EQ(document.Path(), "");
  ExpectNoMessages();
}

}  // namespace
}  // namespace veldra::testing
