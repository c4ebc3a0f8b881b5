#include <cerrno>

#include "document/documentfixture.h"
#include "document/earlierstates.h"
#include "document/recoverykeeper.h"
#include "editing/modelcommands.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace veldra::testing {
namespace {

using namespace std::chrono_literals;

class CRecoveryKeeperTest : public CDocumentTest {
 protected:
  /// One run of the program.
  struct SProgram {
    explicit SProgram(CRecoveryKeeperTest& test)
        : states(test.folder.File("states")),
          folder(test.folder.File("recovery")),
          keeper(folder, [&test] { return test.now_; }),
          services(test.Services()) {
      services.earlier_states = &states;
    }
    std::unique_ptr<CTarnDoc> NewDocument() {
      auto document = std::make_unique<CTarnDoc>(services);
      keeper.Watch(*document);
      return document;
    }
    CEarlierStates states;
    CRecoveryFolder folder;
    CRecoveryKeeper keeper;
    SDocumentServices services;
  };
  CRecoveryKeeperTest() {
    folder.Write("GOOD.RAW", std::string(64 * 64, '\0'));
    settings.unused_verts_msg = settings.not_centered_msg = 0;
  }
  ~CRecoveryKeeperTest() override { SetFileFault({}); }

  /// Copies on the disk, of whichever program.
  size_t Copies() const {
    size_t copies = 0;
    for (const std::string& session : ListDirectory(folder.File("recovery")))
      for (const std::string& name : ListDirectory(JoinPath(folder.File("recovery"), session)))
        copies += name.ends_with(".copy") ? 1 : 0;
    return copies;
  }
  void Wait(CRecoveryKeeper& keeper, std::chrono::seconds time) {
    now_ += time;
    keeper.Tick(now_);
  }

  CRecoveryKeeper::Time now_{1000s};
};

TEST_F(CRecoveryKeeperTest, CopyComesWithinSecondsAndGoesWithTheSave) {
  SProgram program(*this);
  const auto document = program.NewDocument();
  Wait(program.keeper, 100s);
  EXPECT_EQ(Copies(), 0U) << "nothing to lose yet";
  FillGood(document->Model());
  Wait(program.keeper, 2s);
  EXPECT_EQ(Copies(), 0U);
  {
    const CBinModel::CBusy busy(document->Model());
    Wait(program.keeper, 1s);
    EXPECT_EQ(Copies(), 0U) << "not of a model that is being worked on";
  }
  Wait(program.keeper, 1s);
  EXPECT_EQ(Copies(), 1U);
  ASSERT_TRUE(document->SaveMTM(folder.File("truck.bin")));
  EXPECT_EQ(Copies(), 0U);

  for (int second = 0; second < 10; second += 2) {
    EXPECT_EQ(Copies(), 0U) << "at work without a pause for " << second << " s";
    document->Model().AddVertex({second, 0, 0});
    Wait(program.keeper, 2s);
  }
  EXPECT_EQ(Copies(), 1U) << "ten seconds at most";
  ASSERT_TRUE(document->Saver().Save());
  document->CenterX();
  ASSERT_TRUE(document->Reload());
  ASSERT_TRUE(document->Reload());
  Wait(program.keeper, 100s);
  EXPECT_EQ(Copies(), 0U) << "reading a file anew is no change of the user's";
}

TEST_F(CRecoveryKeeperTest, ClosedDocumentLeavesNothingAndALostOneEverything) {
  SProgram program(*this);
  auto closed = program.NewDocument();
  FillGood(closed->Model());
  Wait(program.keeper, 5s);
  ASSERT_EQ(Copies(), 1U);
  program.keeper.Closed(*closed);
  closed.reset();
  EXPECT_EQ(Copies(), 0U);
  auto lost = program.NewDocument();
  FillGood(lost->Model());
  lost.reset();
  EXPECT_EQ(Copies(), 1U) << "nobody was asked whether its changes may go";
  Wait(program.keeper, 100s);
}

TEST_F(CRecoveryKeeperTest, LeftoversComeBackAsTheDocumentsThatTheyWere) {
  const std::string path = folder.File("truck.bin");
  std::string untitled;
  {
    SProgram died(*this);
    const auto saved = died.NewDocument();
    FillGood(saved->Model());
    ASSERT_TRUE(saved->SaveMTM(path));
    Translate(*saved, {.x = 77});
    const auto never_saved = died.NewDocument();
    FillGood(never_saved->Model());
    Translate(*never_saved, {.y = 1});
    untitled = never_saved->Title();
    Wait(died.keeper, 5s);
  }
  SProgram program(*this);
  const auto leftovers = program.keeper.Leftovers();
  ASSERT_EQ(leftovers.size(), 2U);
  for (const SLeftover& leftover : leftovers) {
    CTarnDoc document(program.services);
    ASSERT_TRUE(program.keeper.TakeOver(leftover, document));
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.Model().FaceCount(), 1);
    const bool is_saved = document.Title() == "truck.bin";
    EXPECT_EQ(document.Path(), is_saved ? path : "");
    EXPECT_EQ(document.Title(), is_saved ? "truck.bin" : untitled);
    EXPECT_EQ(document.Model().Bounds().min, (is_saved ? SPoint{77, -10, 0} : SPoint{0, -9, 0}));
    EXPECT_FALSE(program.states.List(document.StatesKey()).empty());
    EXPECT_EQ(Copies(), &leftover == &leftovers[0] ? 2U : 1U) << "its own copy in place of the leftover";
    if (is_saved) {
      EXPECT_TRUE(document.Saver().Save());
    } else {
      EXPECT_TRUE(document.SaveMTM(folder.File("new.bin")));
      EXPECT_EQ(program.states.List(document.StatesKey()).size(), 2U);
    }
    EXPECT_EQ(Copies(), &leftover == &leftovers[0] ? 1U : 0U);
  }
}

TEST_F(CRecoveryKeeperTest, DamagedLeftoverIsToldAndCanBeDiscarded) {
  {
    SProgram died(*this);
    FillGood(died.NewDocument()->Model());
  }
  SProgram program(*this);
  auto leftovers = program.keeper.Leftovers();
  ASSERT_EQ(leftovers.size(), 1U);
  const std::string copy = JoinPath(JoinPath(folder.File("recovery"), leftovers[0].session), leftovers[0].file);
  ASSERT_TRUE(ReplaceFile(copy, ReadTestFile(copy).substr(0, 60)));
  leftovers = program.keeper.Leftovers();
  ASSERT_EQ(leftovers.size(), 1U);
  CTarnDoc document(program.services);
  EXPECT_FALSE(program.keeper.TakeOver(leftovers[0], document));
  EXPECT_FALSE(questions.Messages().at(0).details.empty());
  EXPECT_EQ(Copies(), 1U) << "for who can mend it";
  EXPECT_EQ(document.Model().VertexCount(), 0);
  EXPECT_TRUE(program.keeper.Discard(leftovers[0]));
  EXPECT_EQ(Copies(), 0U);
}

TEST_F(CRecoveryKeeperTest, FailureIsKnownAndTriedAgain) {
  SProgram program(*this);
  const auto document = program.NewDocument();
  FillGood(document->Model());
  SetFileFault([](std::string_view, std::string_view) { return ENOSPC; });
  Wait(program.keeper, 5s);
  EXPECT_NE(program.keeper.Fault(), "");
  SetFileFault({});
  Wait(program.keeper, 9s);
  EXPECT_EQ(Copies(), 0U);
  Wait(program.keeper, 1s);
  EXPECT_EQ(Copies(), 1U);
  EXPECT_EQ(program.keeper.Fault(), "");
}

}  // namespace
}  // namespace veldra::testing
