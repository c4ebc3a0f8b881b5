#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>

#include "platform/endsignals.h"
#include "platform/endsignals_system.h"
#include "platform/temporaries.h"

namespace veldra {

namespace {

constexpr std::array kEndSignals = {SIGTERM, SIGHUP, SIGINT, SIGQUIT, SIGPIPE};

std::array<int, 2> g_pipe = {-1, -1};
std::atomic<int> g_reported = 0;
std::atomic<int> g_pending = 0;

/// Ends the process by SIGNAL as if nobody had caught it.
void EndBy(int signal) {
  RemoveOpenTemporaries();
  std::signal(signal, SIG_DFL);
  sigset_t only;
  sigemptyset(&only);
  sigaddset(&only, signal);
  raise(signal);
  // In the handler it is held back until here.
  pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
}

void OnEndSignal(int signal) {
  if (signal != SIGPIPE && g_pipe[1] >= 0 && g_reported.exchange(signal) == 0) {
    const char byte = 0;
    // Nothing can be done about a failure here; the next signal ends the program.
    [[maybe_unused]] const auto written = write(g_pipe[1], &byte, 1);
  } else if (disk::IsEndHeld()) {
    g_pending = signal;
  } else {
    EndBy(signal);
  }
}

void Catch(int signal) {
  struct sigaction action = {};
  action.sa_handler = OnEndSignal;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(signal, &action, nullptr);
}

bool IsIgnored(int signal) {
  struct sigaction now = {};
  return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

}  // namespace

void disk::EndIfAsked() {
  if (const int signal = g_pending.exchange(0); signal != 0) EndBy(signal);
}

void TidyOnEndSignals() {
  // nohup and its like want the program to go on.
  for (const int signal : kEndSignals)
    if (!IsIgnored(signal)) Catch(signal);
  std::signal(SIGXFSZ, SIG_IGN);
}

std::optional<intptr_t> WatchEndSignals() {
  if (g_pipe[0] < 0 && pipe2(g_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return std::nullopt;
  for (const int signal : kEndSignals)
    Catch(signal);
  std::signal(SIGXFSZ, SIG_IGN);
  return g_pipe[0];
}

void EndByReportedSignal() {
  if (const int signal = g_reported; signal != 0) EndBy(signal);
}

}  // namespace veldra
