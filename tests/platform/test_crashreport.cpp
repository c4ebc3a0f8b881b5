#include "platform/crashreport.h"

#include <gtest/gtest.h>

#include <csignal>

#include "platform/files.h"
#include "support/testfiles.h"

namespace veldra {

using testing::CTempFolder;
using testing::ReadTestFile;

#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__)

TEST(CrashReport, TellsWhatWasOpenAndDoneAndIsNewOnce) {
  const CTempFolder folder;
  const std::string reports = folder.File("reports");
  const auto crash = [&](int signal) {
    ReportCrashes(reports, "Veldra 1.2.3");
    NoteOpenForCrash({"/models/a.bin", "/models/b.bin (changed)"});
    for (int i = 0; i < 30; ++i)
      NoteForCrash("command" + std::to_string(i));
    NoteReasonForCrash("a.cpp:7: assertion failed: false");
    raise(signal);
  };
  EXPECT_EXIT(crash(SIGSEGV), ::testing::KilledBySignal(SIGSEGV), "");
  const std::vector<std::string> fresh = TakeNewCrashReports(reports);
  ASSERT_EQ(fresh.size(), 1u);
  const std::string text = ReadTestFile(fresh[0]);
  for (const char* part : {"Veldra 1.2.3\n", "SIGSEGV", "a.cpp:7", "/models/b.bin (changed)\n", "\ncommand10\n",
                           "command29\n\nStack:\n", "test_platform"})
    EXPECT_NE(text.find(part), std::string::npos) << part;
  EXPECT_EQ(text.find("command9\n"), std::string::npos);
  EXPECT_TRUE(TakeNewCrashReports(reports).empty());
  for (int i = 0; i < 12; ++i)
    folder.Write("reports/crash-" + std::to_string(10 + i) + ".new", "x");
  EXPECT_EQ(TakeNewCrashReports(reports).size(), 12u);
  EXPECT_EQ(ListDirectory(reports).size(), 10u);
}

#endif

}  // namespace veldra
