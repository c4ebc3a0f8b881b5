#include <execinfo.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/crashreport_system.h"

namespace veldra {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kHasSanitizer = true;
#elif defined(__has_feature)
constexpr bool kHasSanitizer = __has_feature(address_sanitizer);
#else
constexpr bool kHasSanitizer = false;
#endif

constexpr std::array kCrashSignals = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL};

int g_report = -1;

void WriteText(std::string_view text) {
  // Nothing can be done about a failure here.
  [[maybe_unused]] const auto written = write(g_report, text.data(), text.size());
}

std::string_view ReasonOf(int signal) {
  switch (signal) {
    case SIGSEGV:
      return "SIGSEGV, memory that is not there";
    case SIGABRT:
      return "SIGABRT, the program gave up";
    case SIGBUS:
      return "SIGBUS, memory that cannot be read";
    case SIGFPE:
      return "SIGFPE, a division that is not possible";
    default:
      return "SIGILL, no instruction";
  }
}

/// Calls only what a handler may call. The signal, its handler gone, comes again when this returns.
void OnCrash(int signal) {
  mkdir(crash::ReportFolder(), S_IRWXU);
  g_report = open(crash::ReportPath(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (g_report >= 0) {
    crash::WriteReport(WriteText, ReasonOf(signal));
    std::array<void*, 64> frames = {};
    backtrace_symbols_fd(frames.data(), backtrace(frames.data(), frames.size()), g_report);
    close(g_report);
  }
  raise(signal);
}

}  // namespace

void crash::Watch() {
  if (kHasSanitizer) return;  // which says more
  // The first call may load a library, for which a crash is no time.
  std::array<void*, 1> frame = {};
  backtrace(frame.data(), frame.size());
  // A stack that has run over is no place for a handler.
  static std::array<char, 65536> stack;
  const stack_t own = {.ss_sp = stack.data(), .ss_flags = 0, .ss_size = stack.size()};
  sigaltstack(&own, nullptr);
  for (const int signal : kCrashSignals) {
    struct sigaction action = {};
    action.sa_handler = OnCrash;
    action.sa_flags = static_cast<int>(SA_ONSTACK | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
  }
}

}  // namespace veldra
