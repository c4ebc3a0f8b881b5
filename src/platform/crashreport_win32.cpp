#include <array>
#include <csignal>
#include <cstdio>

#include "platform/crashreport_system.h"
#include "platform/windows_system.h"

namespace veldra {

namespace {

std::wstring g_folder;
std::wstring g_path;
HANDLE g_report = INVALID_HANDLE_VALUE;

void WriteText(std::string_view text) {
  DWORD written = 0;
  WriteFile(g_report, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void WriteStack() {
  std::array<void*, 62> frames = {};
  const USHORT count = CaptureStackBackTrace(0, static_cast<DWORD>(frames.size()), frames.data(), nullptr);
  const auto base = reinterpret_cast<uintptr_t>(GetModuleHandleW(nullptr));
  for (USHORT i = 0; i < count; ++i) {
    std::array<char, 64> line = {};
    const auto address = reinterpret_cast<uintptr_t>(frames[i]);
    std::snprintf(line.data(), line.size(), "program + 0x%llx\n", static_cast<unsigned long long>(address - base));
    WriteText(line.data());
  }
}

void Write(std::string_view reason) {
  CreateDirectoryW(g_folder.c_str(), nullptr);
  g_report = CreateFileW(g_path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (g_report == INVALID_HANDLE_VALUE) return;
  crash::WriteReport(WriteText, reason);
  WriteStack();
  CloseHandle(g_report);
}

LONG WINAPI OnException(EXCEPTION_POINTERS* fault) {
  std::array<char, 32> reason = {};
  std::snprintf(reason.data(), reason.size(), "exception 0x%08lx", fault->ExceptionRecord->ExceptionCode);
  Write(reason.data());
  return EXCEPTION_CONTINUE_SEARCH;
}

void OnAbort(int) {
  Write("the program gave up");
}

}  // namespace

void crash::Watch() {
  g_folder = ToWide(ReportFolder());
  g_path = ToWide(ReportPath());
  SetUnhandledExceptionFilter(OnException);
  std::signal(SIGABRT, OnAbort);
}

}  // namespace veldra
