#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/process.h"

namespace veldra {

std::vector<std::string> CommandLineArguments(int argc, char** argv) {
  // A program can be started with no arguments at all, not even its name.
  return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

bool IsStandardErrorTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

void LimitProcessTime(int seconds) {
  const rlimit limit = {static_cast<rlim_t>(seconds), static_cast<rlim_t>(seconds)};
  setrlimit(RLIMIT_CPU, &limit);
}

void SetBinaryStandardOutput() {}

}  // namespace veldra
