#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace veldra::testing {

/// This test program, started again for one of its tests alone, a disabled one: a process that can be killed.
class CChildTest {
 public:
  /// TEST as "Suite.DISABLED_Name"; VARIABLES are in its environment and, until this goes, in ours.
  CChildTest(const std::string& test, const std::map<std::string, std::string>& variables);
  ~CChildTest();
  CChildTest(const CChildTest&) = delete;
  CChildTest& operator=(const CChildTest&) = delete;

  void Kill();
  bool IsRunning();
  /// Waits for its end. 0 when the test passed, kKilled when it was killed.
  int Wait();

  static constexpr int kKilled = 137;

 private:
  intptr_t process_ = 0;
};

/// By which a program with windows is told to end; none on Windows.
std::vector<int> EndSignals();
void SendSignal(int64_t process, int signal);

/// As if from outside: nothing is flushed or tidied.
[[noreturn]] void KillThisProcess();

}  // namespace veldra::testing
