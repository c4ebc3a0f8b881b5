#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "document/modelcopies.h"
#include "platform/paths.h"
#include "platform/userfolders.h"
#include "support/richmodel.h"

namespace veldra::testing {

namespace {

using namespace std::chrono_literals;

class RecoveryTest : public ::testing::Test {
 protected:
  RecoveryTest() {
    CRichModelMaker(one_, textures_, 1).Make(30, 40);
    CRichModelMaker(two_, textures_, 2).Make(50, 60);
  }

  std::string Directory() const { return folder_.File("recovery"); }
  struct SDead {
    uint32_t id;
    SCopyLabel label;
    const CBinModel* model;
  };
  /// Copies whose program is no longer there: it ended without removing them.
  void LeaveBehind(const std::vector<SDead>& copies) {
    CRecoveryFolder dead(Directory());
    for (const auto& [id, label, model] : copies)
      ASSERT_TRUE(dead.Save(id, WriteModelCopy(label, *model)));
  }
  void ExpectLoads(CRecoveryFolder& folder, const SLeftover& leftover, const CBinModel& expected) {
    CBinModel model;
    SDiagnosis diagnosis;
    ASSERT_TRUE(LoadModel(folder.Read(leftover), model, textures_.Finder(), &diagnosis)) << diagnosis.Text();
    ExpectEqualModels(expected, model);
  }
  CTempFolder folder_;
  CTextureSet textures_;
  CBinModel one_;
  CBinModel two_;
};

TEST_F(RecoveryTest, CopiesOfADeadProgramAreFoundLoadedAndDiscarded) {
  LeaveBehind({{7, {"truck.bin", "C:\\models\\truck.bin", "key", PresentTime()}, &two_},
               {8, {"Untitled1", "", "", PresentTime()}, &one_}});
  CRecoveryFolder folder(Directory());
  auto leftovers = folder.Leftovers();
  ASSERT_EQ(leftovers.size(), 2u);
  if (leftovers[0].label.title == "Untitled1") std::swap(leftovers[0], leftovers[1]);
  EXPECT_EQ(leftovers[0].label.title, "truck.bin");
  EXPECT_EQ(leftovers[0].label.path, "C:\\models\\truck.bin");
  EXPECT_EQ(leftovers[0].label.states_key, "key");
  EXPECT_EQ(leftovers[0].label.faces, 60);
  EXPECT_NEAR(static_cast<double>(leftovers[0].label.time), static_cast<double>(PresentTime()), 3600);
  ExpectLoads(folder, leftovers[0], two_);
  ExpectLoads(folder, leftovers[1], one_);

  EXPECT_TRUE(folder.Discard(leftovers[0]));
  EXPECT_EQ(folder.Leftovers().size(), 1u);
  EXPECT_TRUE(folder.Discard(leftovers[1]));
  EXPECT_EQ(ListDirectory(Directory()), std::vector<std::string>());
}

TEST_F(RecoveryTest, NothingOfALivingProgramIsTouched) {
  auto living = std::make_unique<CRecoveryFolder>(Directory());
  ASSERT_TRUE(SaveModel(*living, 1, "one", one_));
  CRecoveryFolder other(Directory());
  EXPECT_TRUE(other.Leftovers().empty());
  EXPECT_TRUE(living->Leftovers().empty());

  living.reset();
  ASSERT_EQ(other.Leftovers().size(), 1u);
  // Who was offered them first keeps them, until it ends itself.
  auto third = std::make_unique<CRecoveryFolder>(Directory());
  EXPECT_TRUE(third->Leftovers().empty());
  EXPECT_EQ(other.Leftovers().size(), 1u);
  EXPECT_FALSE(third->Discard(other.Leftovers()[0]));
}

TEST_F(RecoveryTest, DamagedAndForeignFilesStandInNobodysWay) {
  LeaveBehind({{1, {"good"}, &one_}, {2, {"cut"}, &one_}, {3, {"changed"}, &two_}, {4, {"emptied"}, &two_}});
  const std::string session = JoinPath(Directory(), ListDirectory(Directory()).at(0));
  std::string cut = ReadTestFile(JoinPath(session, "document-2.copy"));
  ASSERT_TRUE(ReplaceFile(JoinPath(session, "document-2.copy"), std::string_view(cut).substr(0, cut.size() / 2)));
  std::string changed = ReadTestFile(JoinPath(session, "document-3.copy"));
  changed[changed.size() / 2] = static_cast<char>(changed[changed.size() / 2] ^ 1);
  ASSERT_TRUE(ReplaceFile(JoinPath(session, "document-3.copy"), changed));
  ASSERT_TRUE(ReplaceFile(JoinPath(session, "document-4.copy"), std::string_view()));
  ASSERT_TRUE(MakeDirectories(JoinPath(session, "document-5.copy")));
  ASSERT_TRUE(ReplaceFile(JoinPath(session, "letter.txt"), std::string_view("x")));
  ASSERT_TRUE(ReplaceFile(JoinPath(session, ".veldra-1-2.tmp"), std::string_view("half")));
  folder_.Write("recovery/session-file", "x");
  folder_.Write("recovery/other/document-1.copy", "x");
  ASSERT_TRUE(MakeDirectories(folder_.File("recovery/session-x/lock")));

  CRecoveryFolder folder(Directory());
  const auto leftovers = folder.Leftovers();
  ASSERT_EQ(leftovers.size(), 5u);
  EXPECT_EQ(leftovers[0].label.title, "good");
  ExpectLoads(folder, leftovers[0], one_);
  for (size_t i = 1; i < leftovers.size(); ++i) {
    EXPECT_NE(leftovers[i].fault, "") << leftovers[i].file;
    CBinModel model;
    SDiagnosis diagnosis;
    EXPECT_FALSE(LoadModel(folder.Read(leftovers[i]), model, textures_.Finder(), &diagnosis));
    EXPECT_NE(diagnosis.what, "");
  }
}

TEST_F(RecoveryTest, EveryDamageToACopyIsNoticed) {
  const std::vector<uint8_t> good = WriteModelCopy({.title = "t", .path = "p", .states_key = "", .time = 1}, one_);
  CBinModel same;
  ASSERT_TRUE(ReadModelCopy(good, same, textures_.Finder()));
  const auto expect_refused = [&](std::span<const uint8_t> bytes) {
    const auto block = std::make_unique<uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    SDiagnosis diagnosis;
    CBinModel model;
    EXPECT_FALSE(ReadCopyLabel({block.get(), bytes.size()}, &diagnosis));
    EXPECT_FALSE(ReadModelCopy({block.get(), bytes.size()}, model, textures_.Finder(), &diagnosis));
    EXPECT_NE(diagnosis.what, "");
    EXPECT_EQ(model.VertexCount(), 0);
  };
  for (size_t length = 0; length < good.size(); ++length)
    expect_refused(std::span(good).first(length));
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    std::vector<uint8_t> bytes = good;
    bytes[random() % bytes.size()] ^= static_cast<uint8_t>(1 + random() % 255);
    expect_refused(bytes);
  }
}

TEST_F(RecoveryTest, AFailedCopyKeepsTheOlderOne) {
  for (const std::string failing : {"open", "write", "sync", "close", "rename"}) {
    SCOPED_TRACE(failing);
    {
      CRecoveryFolder dead(Directory());
      ASSERT_TRUE(SaveModel(dead, 1, "old", one_));
      SetFileFault([&](std::string_view operation, std::string_view) { return operation == failing ? ENOSPC : 0; });
      SError error;
      EXPECT_FALSE(SaveModel(dead, 1, "new", two_, &error));
      EXPECT_NE(error.what, "");
      SetFileFault(nullptr);
    }
    CRecoveryFolder folder(Directory());
    const auto leftovers = folder.Leftovers();
    ASSERT_EQ(leftovers.size(), 1u);
    EXPECT_EQ(leftovers[0].label.title, "old");
    ExpectLoads(folder, leftovers[0], one_);
    EXPECT_TRUE(folder.Discard(leftovers[0]));
  }
}

TEST_F(RecoveryTest, AFolderThatCannotBeIsRefused) {
  SError error;
  CRecoveryFolder nowhere(folder_.Write("file", "x"));
  EXPECT_FALSE(SaveModel(nowhere, 1, "one", one_, &error));
  EXPECT_NE(error.what, "");
  EXPECT_TRUE(nowhere.Leftovers().empty());
}

TEST_F(RecoveryTest, GoesOnWhenItsFolderIsTidiedAway) {
  CRecoveryFolder folder(Directory());
  ASSERT_TRUE(SaveModel(folder, 1, "one", one_));
  const std::string session = JoinPath(Directory(), ListDirectory(Directory()).at(0));
  ASSERT_TRUE(RemoveFile(JoinPath(session, "document-1.copy")));
  if (!RemoveFile(JoinPath(session, "lock"))) GTEST_SKIP() << "this system keeps files that are open";
  ASSERT_TRUE(RemoveEmptyFolder(session));
  EXPECT_TRUE(SaveModel(folder, 1, "one", one_));
  EXPECT_EQ(ListDirectory(Directory()).size(), 1u);
}

TEST(RecoverySchedule, ACopyThatTakesLongIsMadeSeldom) {
  const CRecoverySchedule::Time start{1000s};
  CRecoverySchedule schedule;
  schedule.Copied(start + 10s, 2s);
  EXPECT_FALSE(schedule.DueAt());
  schedule.Changed(start + 11s);
  EXPECT_EQ(schedule.DueAt(), start + 30s);
}

}  // namespace

}  // namespace veldra::testing
