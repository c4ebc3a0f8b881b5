#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "platform/filelock.h"
#include "support/testfiles.h"

namespace veldra {

namespace {

using namespace std::chrono_literals;
using testing::CTempFolder;

TEST(FileLock, OneHolderAtATime) {
  const CTempFolder folder;
  const std::string path = folder.File("lock");
  CFileLock first;
  CFileLock second;
  SError error;
  EXPECT_EQ(first.TryLock(path), ELockResult::kTaken);
  EXPECT_EQ(second.TryLock(path, &error), ELockResult::kBusy);
  EXPECT_NE(error.what, "");
  EXPECT_FALSE(second.IsHeld());
  EXPECT_EQ(second.Lock(path, 30ms), ELockResult::kBusy);
  EXPECT_EQ(second.TryLock(folder.File("other")), ELockResult::kTaken);
  second.Release();

  CFileLock moved(std::move(first));
  EXPECT_EQ(second.TryLock(path), ELockResult::kBusy);
  moved.Release();
  EXPECT_EQ(second.TryLock(path), ELockResult::kTaken);
  second = CFileLock();
  EXPECT_EQ(moved.TryLock(path), ELockResult::kTaken);
}

TEST(FileLock, RemovedFilesLetNobodyPast) {
  const CTempFolder folder;
  const std::string path = folder.File("lock");
  CFileLock lock;
  ASSERT_EQ(lock.TryLock(path), ELockResult::kTaken);
  lock.ReleaseAndRemove();
  EXPECT_FALSE(lock.IsHeld());
  EXPECT_FALSE(FileExists(path));

  // Holders that take the file away while others wait for it.
  constexpr int kThreads = 4;
  constexpr int kTurns = 500;
  std::atomic<int> holders = 0;
  std::atomic<int> turns = 0;
  const auto work = [&](int number) {
    for (int turn = 0; turn < kTurns; ++turn) {
      CFileLock own;
      while (own.TryLock(path) == ELockResult::kBusy)
        std::this_thread::yield();
      if (!own.IsHeld()) return;
      EXPECT_EQ(++holders, 1);
      std::this_thread::sleep_for(50us);
      ++turns;
      --holders;
      if ((turn + number) % 4 != 0) own.ReleaseAndRemove();
    }
  };
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number)
    threads.emplace_back(work, number);
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(turns, kThreads * kTurns);
}

TEST(FileLock, FailsWithAReasonWhereNoFileCanBe) {
  const CTempFolder folder;
  folder.Write("file", "");
  for (const char* name : {"missing/lock", "file/lock", ""}) {
    CFileLock lock;
    SError error;
    EXPECT_EQ(lock.Lock(*name == '\0' ? "" : folder.File(name), 10s, &error), ELockResult::kFailed) << name;
    EXPECT_NE(error.what, "") << name;
  }
}

}  // namespace

}  // namespace veldra
