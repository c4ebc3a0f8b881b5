#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <random>
#include <thread>

#include "document/modelcopies.h"
#include "support/richmodel.h"

namespace veldra::testing {

namespace {

constexpr uint32_t kDocuments = 3;

/// A model that tells its version, and is exactly what it was when that is right.
void MakeVersion(CBinModel& model, int32_t version) {
  for (int32_t i = 0; i < 2000 + version % 50; ++i)
    model.AddVertex({version, i * i, i ^ version});
  model.SetScaleWord(version);
}

/// Copies its documents again and again, from VERSION on, and says so to REPORT after each, until it is killed.
[[noreturn]] void CopyForever(const std::string& recovery, const std::string& states, int32_t version, int report) {
  CRecoveryFolder folder(recovery);
  CEarlierStates earlier(states);
  for (;; ++version) {
    CBinModel model;
    MakeVersion(model, version);
    for (uint32_t id = 0; id < kDocuments; ++id) {
      if (!SaveModel(folder, id, std::to_string(id), model)) _exit(1);
      if (id == 0 && !KeepModel(earlier, "key", std::to_string(version), model)) _exit(2);
      const std::array<int32_t, 2> copied = {static_cast<int32_t>(id), version};
      if (write(report, copied.data(), sizeof copied) != static_cast<ssize_t>(sizeof copied)) _exit(3);
    }
  }
}

class KilledProgramTest : public ::testing::Test {
 protected:
  /// Starts a program that copies, with VERSION first, and kills it WAIT after its first copy of everything. LAST
  /// becomes the newest version that it reported of each document.
  void RunAndKill(int32_t version, std::chrono::microseconds wait, std::array<int32_t, kDocuments>& last) {
    int report[2];
    ASSERT_EQ(pipe(report), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) CopyForever(folder_.File("recovery"), folder_.File("states"), version, report[1]);
    close(report[1]);
    std::array<int32_t, 2> copied;
    const auto take = [&] {
      if (read(report[0], copied.data(), sizeof copied) != static_cast<ssize_t>(sizeof copied)) return false;
      last[static_cast<size_t>(copied[0])] = copied[1];
      return true;
    };
    for (uint32_t i = 0; i < kDocuments; ++i)
      ASSERT_TRUE(take());
    std::this_thread::sleep_for(wait);
    kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status)) << status;
    while (take()) {
    }
    close(report[0]);
  }

  CTempFolder folder_;
  CTextureSet textures_;
};

TEST_F(KilledProgramTest, EveryDocumentIsFoundAgainAsItWasLastCopied) {
  std::mt19937 random(5);
  for (int round = 0; round < 60; ++round) {
    std::array<int32_t, kDocuments> last = {};
    ASSERT_NO_FATAL_FAILURE(RunAndKill(1 + round * 1000, std::chrono::microseconds(random() % 20000), last));
    CRecoveryFolder folder(folder_.File("recovery"));
    const auto leftovers = folder.Leftovers();
    ASSERT_EQ(leftovers.size(), kDocuments);
    for (const SLeftover& leftover : leftovers) {
      CBinModel model;
      SDiagnosis diagnosis;
      ASSERT_TRUE(LoadModel(folder.Read(leftover), model, textures_.Finder(), &diagnosis)) << diagnosis.Text();
      EXPECT_GE(model.ScaleWord(), last[static_cast<size_t>(std::stoi(leftover.label.title))]);
      CBinModel expected;
      MakeVersion(expected, model.ScaleWord());
      ExpectEqualModels(expected, model);
      EXPECT_TRUE(folder.Discard(leftover));
    }
    EXPECT_TRUE(ListDirectory(folder_.File("recovery")).empty());

    CEarlierStates earlier(folder_.File("states"));
    const auto states = earlier.List("key");
    ASSERT_FALSE(states.empty());
    for (const SEarlierState& state : states)
      EXPECT_EQ(state.fault, "");
    CBinModel newest;
    SDiagnosis diagnosis;
    ASSERT_TRUE(LoadModel(earlier.Read("key", states[0].id), newest, textures_.Finder(), &diagnosis));
    EXPECT_GE(newest.ScaleWord(), last[0]);
  }
  // What was half written is tidied away by the next who keeps a state.
  CBinModel model;
  CEarlierStates next(folder_.File("states"));
  ASSERT_TRUE(KeepModel(next, "key", "last", model));
  EXPECT_EQ(ListDirectory(folder_.File("states/key")).size(), 31u) << "thirty states and the lock";
}

TEST_F(KilledProgramTest, TwoProgramsKeepStatesOfOneDocument) {
  std::array<pid_t, 3> children;
  for (size_t program = 0; program < children.size(); ++program) {
    children[program] = fork();
    ASSERT_GE(children[program], 0);
    if (children[program] > 0) continue;
    CEarlierStates states(folder_.File("states"), {.longest_wait = std::chrono::minutes(1)});
    for (int32_t turn = 0; turn < 9; ++turn) {
      CBinModel model;
      model.SetScaleWord(static_cast<int32_t>(program) * 100 + turn);
      if (!KeepModel(states, "key", "turn", model)) _exit(1);
    }
    _exit(0);
  }
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(CEarlierStates(folder_.File("states")).List("key").size(), 27u);
}

}  // namespace

}  // namespace veldra::testing
