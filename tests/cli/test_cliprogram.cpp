#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "cli/clifixture.h"
#include "platform/files.h"

/// The program itself, as a process that can be ended or runs out of what it needs.
namespace veldra::testing {
namespace {

using namespace std::chrono_literals;

class CCliProgramTest : public CCliTest {
 protected:
  /// Starts "veldra-cli --cfg ... LINE", LINE as for Run, with at most MEMORY bytes of address space (0: any number).
  pid_t Start(const std::string& line, rlim_t memory = 0) const {
    std::vector<std::string> words = {VELDRA_CLI, "--cfg", folder.File("Veldra.cfg")};
    for (std::string& word : SplitText(line, ' ')) {
      if (word.starts_with('$')) word.replace(0, 1, folder.Path());
      words.push_back(word);
    }
    std::vector<char*> arguments;
    for (std::string& word : words)
      arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child != 0) return child;
    std::signal(SIGINT, SIG_DFL);  // a shell's background jobs have it ignored, and so would the program
    const rlimit limit = {memory, memory};
    if (memory != 0) setrlimit(RLIMIT_AS, &limit);
    const int said = open(folder.File("said").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (dup2(said, STDERR_FILENO) < 0 || dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO) < 0) _exit(126);
    execv(VELDRA_CLI, arguments.data());
    _exit(127);
  }
  static int StatusOf(pid_t child) {
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status;
  }
  /// In the folder that archives are written to.
  std::vector<std::string> Written() const { return ListDirectory(folder.File("out")); }
};

TEST_F(CCliProgramTest, AnInterruptedArchiveLeavesNothing) {
  folder.Write("large.raw", "");
  ASSERT_EQ(truncate(folder.File("large.raw").c_str(), off_t{512} << 20), 0);
  folder.Write("out/kept.pod", "kept");
  for (const int signal : {SIGINT, SIGKILL}) {
    const pid_t child = Start("pod create $/out/kept.pod $/large.raw");
    while (Written().size() == 1 && waitpid(child, nullptr, WNOHANG) == 0)
      std::this_thread::sleep_for(1ms);
    kill(child, signal);
    const int status = StatusOf(child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "it was too fast: " << status;
    EXPECT_EQ(WTERMSIG(status), signal);
    EXPECT_EQ(ReadTestFile(folder.File("out/kept.pod")), "kept");
    EXPECT_EQ(Written().size(), signal == SIGKILL ? 2u : 1u);
  }
  folder.Write("small.raw", "small");
  EXPECT_EQ(StatusOf(Start("pod create $/out/other.pod $/small.raw")), 0);
  EXPECT_EQ(Written(), (std::vector<std::string>{"kept.pod", "other.pod"}));
}

TEST_F(CCliProgramTest, TooLittleMemoryIsSaid) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer takes all addresses for itself";
#endif
  SModelParts parts;
  for (int32_t i = 0; i < 60000; ++i)
    parts.points.push_back({i, i % 100, -i});
  for (int32_t i = 0; i < 60000; ++i)
    parts.faces.push_back({i, i + 1, i + 2});
  WriteModel("large.bin", parts);
  folder.Write("out/old.bin", "old");
  int told = 0;
  bool is_enough = false;
  for (rlim_t megabytes = 16; !is_enough && megabytes < 2000; megabytes += 8) {
    const int status = StatusOf(Start("edit $/large.bin $/out/old.bin --center", megabytes << 20));
    const std::string said = ReadTestFile(folder.File("said"));
    is_enough = status == 0;
    if (is_enough || said.find("error while loading shared libraries") != std::string::npos) continue;
    ASSERT_TRUE(WIFEXITED(status)) << megabytes << " MB: " << status << said;
    EXPECT_EQ(WEXITSTATUS(status), 1) << megabytes << " MB: " << said;
    EXPECT_NE(said.find("not enough memory"), std::string::npos) << megabytes << " MB: " << said;
    EXPECT_EQ(ReadTestFile(folder.File("out/old.bin")), "old");
    EXPECT_EQ(Written().size(), 1u);
    ++told;
  }
  EXPECT_TRUE(is_enough);
  EXPECT_GT(told, 1);
}

}  // namespace
}  // namespace veldra::testing
