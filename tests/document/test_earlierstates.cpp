#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "document/modelcopies.h"
#include "platform/paths.h"
#include "support/richmodel.h"

namespace veldra::testing {

namespace {

class EarlierStatesTest : public ::testing::Test {
 protected:
  std::string Directory() const { return folder_.File("earlier"); }
  CEarlierStates Make(const SEarlierStateLimits& limits = {}) const { return CEarlierStates(Directory(), limits); }

  /// Keeps a model of its own for each number from FIRST to LAST, named by it.
  void KeepNumbers(CEarlierStates& states, const std::string& key, int first, int last) {
    for (int number = first; number <= last; ++number) {
      CBinModel model;
      model.AddVertex({number, 0, 0});
      SError error;
      ASSERT_TRUE(KeepModel(states, key, std::to_string(number), model, &error)) << error.what;
    }
  }
  /// The commands, the oldest first.
  static std::string Commands(const CEarlierStates& states, const std::string& key) {
    std::string commands;
    for (const SEarlierState& state : states.List(key))
      commands.insert(0, (state.fault.empty() ? state.command : "?") + " ");
    return commands;
  }

  CTempFolder folder_;
  CTextureSet textures_;
};

TEST_F(EarlierStatesTest, BringsBackAStateExactlyInALaterSession) {
  CBinModel one;
  CBinModel two;
  CRichModelMaker(one, textures_, 1).Make(30, 40);
  CRichModelMaker(two, textures_, 2).Make(50, 60);
  SImage picture{3, 2, std::vector<uint8_t>(24, 0x80)};
  picture.rgba[5] = 1;
  {
    CEarlierStates states = Make();
    ASSERT_TRUE(KeepModel(states, "key", "Centre", one, nullptr, picture));
    ASSERT_TRUE(KeepModel(states, "key", "Merge \xC3\xA4", two));
  }
  const CEarlierStates states = Make();
  const auto list = states.List("key");
  ASSERT_EQ(list.size(), 2u);
  EXPECT_EQ(list[0].command, "Merge \xC3\xA4");
  EXPECT_EQ(list[1].picture.rgba, picture.rgba);
  EXPECT_EQ(list[1].vertices, 30);
  EXPECT_NEAR(static_cast<double>(list[1].time), static_cast<double>(PresentTime()), 3600);
  CBinModel model;
  SDiagnosis diagnosis;
  ASSERT_TRUE(LoadModel(states.Read("key", list[1].id), model, textures_.Finder(), &diagnosis));
  ExpectEqualModels(one, model);
  EXPECT_NE(states.Read("key", 12345).fault, "");
}

TEST_F(EarlierStatesTest, AStateThatIsTheNewestAlreadyIsNotKeptTwice) {
  CEarlierStates states = Make();
  KeepNumbers(states, "key", 1, 2);
  KeepNumbers(states, "key", 2, 2);
  EXPECT_EQ(Commands(states, "key"), "1 2 ");
  KeepNumbers(states, "key", 1, 1);
  EXPECT_EQ(Commands(states, "key"), "1 2 1 ");
}

TEST_F(EarlierStatesTest, BytesAreLimitedButTheNewestAlwaysStays) {
  CBinModel probe;
  probe.AddVertex({1, 0, 0});
  const size_t size = WriteModelCopy({.title = "1", .path = "", .states_key = ""}, probe).size();
  CEarlierStates states = Make({.bytes_a_document = size * 3 + size / 2});
  KeepNumbers(states, "key", 1, 6);
  EXPECT_EQ(Commands(states, "key"), "4 5 6 ");
  CEarlierStates tiny = Make({.bytes_a_document = 1});
  KeepNumbers(tiny, "key", 7, 7);
  EXPECT_EQ(Commands(tiny, "key"), "7 ");

  // In all: the documents changed longest ago go first, and never the one at hand.
  KeepNumbers(states, "second", 1, 1);
  KeepNumbers(states, "third", 1, 1);
  CEarlierStates later = Make({.bytes_in_all = size * 2 + size / 2});
  KeepNumbers(later, "fourth", 1, 1);
  EXPECT_EQ(Commands(later, "key") + Commands(later, "second"), "");
  EXPECT_EQ(Commands(later, "third") + Commands(later, "fourth"), "1 1 ");
  EXPECT_FALSE(IsDirectory(JoinPath(Directory(), "key")));
  CEarlierStates least = Make({.bytes_in_all = 1});
  KeepNumbers(least, "fourth", 2, 2);
  EXPECT_EQ(Commands(least, "fourth"), "1 2 ");
}

TEST_F(EarlierStatesTest, MovesBehindTheStatesThatAreThere) {
  CEarlierStates states = Make();
  const std::string untitled = states.KeyOfUntitled(1);
  KeepNumbers(states, untitled, 1, 3);
  EXPECT_TRUE(states.Move(untitled, "fresh"));
  EXPECT_EQ(Commands(states, "fresh"), "1 2 3 ");
  EXPECT_EQ(Commands(states, untitled), "");
  EXPECT_FALSE(IsDirectory(JoinPath(Directory(), untitled)));

  KeepNumbers(states, "a", 4, 33);
  EXPECT_TRUE(states.Move("fresh", "a"));
  EXPECT_EQ(states.List("a").size(), 30u);
  EXPECT_EQ(states.List("a").front().command, "3");
  EXPECT_EQ(states.List("a").back().command, "7");
  EXPECT_TRUE(states.Move("a", "a") && states.Move("nothing", "a"));
  EXPECT_EQ(states.List("a").size(), 30u);
}

TEST_F(EarlierStatesTest, KeysTellDocumentsApart) {
  const std::string path = folder_.Write("models/Truck One.bin", "x");
  const std::string key = CEarlierStates::KeyOfPath(path);
  EXPECT_EQ(CEarlierStates::KeyOfPath(folder_.File("models/../models/Truck One.bin")), key);
  EXPECT_NE(CEarlierStates::KeyOfPath(folder_.File("Truck One.bin")), key);
  const std::string odd = CEarlierStates::KeyOfPath(folder_.File("models/" + std::string(100, '\xE9') + "..:*"));
  EXPECT_EQ(odd.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"), std::string::npos) << odd;

  const CEarlierStates states = Make();
  EXPECT_NE(states.KeyOfUntitled(1), states.KeyOfUntitled(2));
  EXPECT_NE(states.KeyOfUntitled(1), Make().KeyOfUntitled(1));
}

TEST_F(EarlierStatesTest, AFailureLeavesWhatIsThere) {
  CEarlierStates states = Make();
  KeepNumbers(states, "key", 1, 30);
  const auto before = ListDirectory(JoinPath(Directory(), "key"));
  CBinModel model;
  for (const std::string failing : {"open", "write", "sync", "close", "rename"}) {
    SetFileFault([&](std::string_view operation, std::string_view) { return operation == failing ? ENOSPC : 0; });
    SError error;
    EXPECT_FALSE(KeepModel(states, "key", "31", model, &error)) << failing;
    EXPECT_NE(error.what, "");
    SetFileFault(nullptr);
    EXPECT_EQ(ListDirectory(JoinPath(Directory(), "key")), before) << failing;
  }
}

TEST_F(EarlierStatesTest, WaitsForAnotherProgramButNotForever) {
  CEarlierStates states = Make({.longest_wait = std::chrono::milliseconds(30)});
  KeepNumbers(states, "key", 1, 1);
  CFileLock other;
  ASSERT_EQ(other.TryLock(JoinPath(Directory(), "key/lock")), ELockResult::kTaken);
  CBinModel model;
  SError error;
  EXPECT_FALSE(KeepModel(states, "key", "2", model, &error));
  EXPECT_NE(error.what, "");
  EXPECT_FALSE(states.Move("key", "other"));
  EXPECT_EQ(Commands(states, "key"), "1 ") << "looking needs no lock";
}

TEST_F(EarlierStatesTest, DamagedAndForeignFilesStandInNobodysWay) {
  CEarlierStates states = Make();
  KeepNumbers(states, "key", 1, 3);
  const std::string folder = JoinPath(Directory(), "key");
  const auto damage = [&](const SEarlierState& state) {
    const std::string path = JoinPath(folder, Format("state-%016llx.copy", static_cast<unsigned long long>(state.id)));
    ASSERT_TRUE(ReplaceFile(path, std::string_view(ReadTestFile(path)).substr(0, 30)));
  };
  damage(states.List("key")[1]);
  for (const char* name : {"state-1.copy", "state-zzzzzzzzzzzzzzzz.copy", "letter.txt"})
    folder_.Write("earlier/key/" + std::string(name), "x");
  EXPECT_EQ(Commands(states, "key"), "1 ? 3 ");
  damage(states.List("key")[0]);
  KeepNumbers(states, "key", 3, 3);
  EXPECT_EQ(Commands(states, "key"), "1 ? ? 3 ");
}

}  // namespace

}  // namespace veldra::testing
