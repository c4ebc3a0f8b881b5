#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "platform/endsignals.h"
#include "platform/files.h"
#include "platform/temporaries.h"
#include "support/testfiles.h"

namespace veldra {

namespace {

using testing::CTempFolder;
using ::testing::ElementsAre;
using ::testing::SizeIs;

/// A process that begins to replace files in FOLDER, and then waits for its end.
class CWriter {
 public:
  explicit CWriter(const CTempFolder& folder) {
    int ready[2];
    EXPECT_EQ(pipe(ready), 0);
    process_ = fork();
    if (process_ == 0) {
      for (const int ignored : {SIGINT, SIGQUIT})  // in a shell's background jobs, such as these tests may be
        std::signal(ignored, SIG_DFL);
      TidyOnEndSignals();
      CReplacement first(folder.File("first"));
      CReplacement second(folder.File("second"));
      const bool is_open = first.Open(nullptr) && second.Open(nullptr) && second.Finish(nullptr);
      if (is_open && write(ready[1], "", 1) == 1)
        for (;;)
          pause();
      _exit(1);
    }
    char byte = 0;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);
    close(ready[1]);
  }
  /// The signal that ended it.
  int End(int signal) {
    int status = 0;
    kill(process_, signal);
    EXPECT_EQ(waitpid(process_, &status, 0), process_);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

 private:
  pid_t process_;
};

TEST(Temporaries, GoWithASignalThatEndsTheProcess) {
  const CTempFolder folder;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) {
    CWriter writer(folder);
    EXPECT_THAT(ListDirectory(folder.Path()), SizeIs(2)) << signal;
    EXPECT_EQ(writer.End(signal), signal);
    EXPECT_THAT(ListDirectory(folder.Path()), SizeIs(0)) << signal;
  }
}

TEST(Temporaries, AnEndIsPutOffWhileFilesTakeTheirNames) {
  const CTempFolder folder;
  const pid_t child = fork();
  if (child == 0) {
    TidyOnEndSignals();
    CReplacement file(folder.File("file"));
    {
      const CEndHold hold;
      raise(SIGTERM);
      if (!file.Open(nullptr) || !ReplaceFile(folder.File("done"), "done")) _exit(1);
    }
    _exit(2);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << status;
  EXPECT_THAT(ListDirectory(folder.Path()), ElementsAre("done"));
}

}  // namespace

}  // namespace veldra
