#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/endsignals.h"

namespace veldra {

namespace {

std::array<int, 2> g_pipe = {-1, -1};

void Report(int) {
  const char byte = 0;
  // Nothing can be done about a failure here; the next signal ends the program.
  [[maybe_unused]] const auto written = write(g_pipe[1], &byte, 1);
}

}  // namespace

std::optional<intptr_t> WatchEndSignals() {
  if (g_pipe[0] < 0 && pipe2(g_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return std::nullopt;
  struct sigaction action = {};
  action.sa_handler = Report;
  action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (const int signal : {SIGTERM, SIGHUP, SIGINT})
    sigaction(signal, &action, nullptr);
  return g_pipe[0];
}

}  // namespace veldra
