#include "support/childtest.h"

#include <gtest/gtest.h>

#include <list>

#include "support/testfiles.h"

#ifdef _WIN32
#include "platform/windows_system.h"
#else
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

namespace veldra::testing {

#ifdef _WIN32

namespace {

intptr_t StartAgain(const std::string& filter) {
  const std::wstring program = ProgramPath();
  std::wstring line = L"\"" + program + L"\" " + ToWide(filter) + L" --gtest_also_run_disabled_tests --gtest_brief=1";
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  EXPECT_NE(
      CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process),
      0);
  CloseHandle(process.hThread);
  return reinterpret_cast<intptr_t>(process.hProcess);
}

HANDLE System(intptr_t process) {
  return reinterpret_cast<HANDLE>(process);
}

}  // namespace

void CChildTest::Kill() {
  TerminateProcess(System(process_), kKilled);
}

bool CChildTest::IsRunning() {
  return WaitForSingleObject(System(process_), 0) == WAIT_TIMEOUT;
}

int CChildTest::Wait() {
  DWORD status = 0;
  EXPECT_EQ(WaitForSingleObject(System(process_), INFINITE), WAIT_OBJECT_0);
  EXPECT_NE(GetExitCodeProcess(System(process_), &status), 0);
  return static_cast<int>(status);
}

CChildTest::~CChildTest() {
  Kill();
  CloseHandle(System(process_));
}

std::vector<int> EndSignals() {
  return {};
}

void SendSignal(int64_t, int) {}

void KillThisProcess() {
  TerminateProcess(GetCurrentProcess(), CChildTest::kKilled);
  for (;;)
    Sleep(INFINITE);
}

#else

namespace {

intptr_t StartAgain(std::string filter) {
  std::string arguments[] = {"test", std::move(filter), "--gtest_also_run_disabled_tests", "--gtest_brief=1"};
  char* pointers[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(), arguments[3].data(), nullptr};
  pid_t process = 0;
  EXPECT_EQ(posix_spawn(&process, "/proc/self/exe", nullptr, nullptr, pointers, environ), 0);
  return process;
}

}  // namespace

void CChildTest::Kill() {
  if (process_ != 0) kill(static_cast<pid_t>(process_), SIGKILL);
}

bool CChildTest::IsRunning() {
  siginfo_t info = {};
  return waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == 0;
}

int CChildTest::Wait() {
  int status = 0;
  EXPECT_EQ(waitpid(static_cast<pid_t>(process_), &status, 0), static_cast<pid_t>(process_));
  process_ = 0;
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

CChildTest::~CChildTest() {
  if (process_ == 0) return;
  Kill();
  Wait();
}

std::vector<int> EndSignals() {
  return {SIGTERM, SIGHUP};
}

void SendSignal(int64_t process, int signal) {
  kill(static_cast<pid_t>(process), signal);
}

void KillThisProcess() {
  for (;;)
    raise(SIGKILL);
}

#endif

CChildTest::CChildTest(const std::string& test, const std::map<std::string, std::string>& variables) {
  std::list<CVariable> set;
  for (const auto& [name, value] : variables)
    set.emplace_back(name, value);
  process_ = StartAgain("--gtest_filter=" + test);
}

}  // namespace veldra::testing
