#include "platform/endsignals.h"
#include "platform/endsignals_system.h"
#include "platform/temporaries.h"
#include "platform/windows_system.h"

namespace veldra {

namespace {

constexpr DWORD kPauseMs = 10;

/// Windows calls it on a thread of its own, and ends the process afterwards.
BOOL WINAPI OnConsoleEvent(DWORD) {
  while (disk::IsEndHeld())
    Sleep(kPauseMs);
  RemoveOpenTemporaries();
  return FALSE;
}

}  // namespace

void disk::EndIfAsked() {}

void TidyOnEndSignals() {
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

std::optional<intptr_t> WatchEndSignals() {
  TidyOnEndSignals();
  return std::nullopt;  // windows are told by messages
}

void EndByReportedSignal() {}

}  // namespace veldra
