#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/process.h"
#include "platform/temporaries.h"
#include "support/childtest.h"
#include "support/testfiles.h"

namespace veldra {

namespace {

using namespace std::chrono_literals;

using testing::CChildTest;
using testing::CTempFolder;
using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr const char* kFolder = "VELDRA_TEST_FOLDER";
constexpr const char* kChild = "TemporariesChild.DISABLED_BeginsAndWaits";

/// Begins to replace files, and then waits for its end.
TEST(TemporariesChild, DISABLED_BeginsAndWaits) {
  const std::string folder = EnvironmentVariable(kFolder).value_or("");
  CReplacement first(JoinPath(folder, "first"));
  CReplacement second(JoinPath(folder, "second"));
  ASSERT_TRUE(first.Open(nullptr) && second.Open(nullptr) && second.Finish(nullptr));
  for (;;)
    std::this_thread::sleep_for(1s);
}

void WaitForFiles(const CTempFolder& folder, size_t count) {
  for (int turn = 0; turn < 3000 && ListDirectory(folder.Path()).size() < count; ++turn)
    std::this_thread::sleep_for(10ms);
  ASSERT_THAT(ListDirectory(folder.Path()), SizeIs(count));
}

TEST(Temporaries, OfDeadProcessesGoWithTheNextWrite) {
  const CTempFolder folder;
  const char* const kUsers[] = {".veldra-notes.tmp", ".veldra-1-2-x.tmp", ".veldra-1.tmp", "veldra-1-2.tmp"};
  for (const char* name : kUsers)
    folder.Write(name, "the user's");
  CChildTest killed(kChild, {{kFolder, folder.Path()}});
  ASSERT_NO_FATAL_FAILURE(WaitForFiles(folder, 6));
  CChildTest living(kChild, {{kFolder, folder.Path()}});
  ASSERT_NO_FATAL_FAILURE(WaitForFiles(folder, 8));
  killed.Kill();
  EXPECT_EQ(killed.Wait(), CChildTest::kKilled);
  EXPECT_THAT(ListDirectory(folder.Path()), SizeIs(8));
  folder.Write(".veldra-0123456789abcdef.save", "");
  EXPECT_TRUE(ReplaceFile(folder.File("new"), "new"));
  EXPECT_THAT(ListDirectory(folder.Path()), SizeIs(7)) << "four of the user, one new, two of the living process";
  living.Kill();
  EXPECT_EQ(living.Wait(), CChildTest::kKilled);
  EXPECT_TRUE(ReplaceFile(folder.File("new"), "newer"));
  EXPECT_THAT(ListDirectory(folder.Path()),
              ElementsAre(".veldra-1-2-x.tmp", ".veldra-1.tmp", ".veldra-notes.tmp", "new", "veldra-1-2.tmp"));
}

}  // namespace

}  // namespace veldra
