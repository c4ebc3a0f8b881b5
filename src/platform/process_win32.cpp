#include "platform/process.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <memory>

#include "platform/text.h"
#include "platform/windows_system.h"
// Needs the one above.
#include <shellapi.h>

namespace veldra {

std::wstring ToWide(std::string_view text) {
  const std::string utf8 = ToUtf8(text);
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string FromWide(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(), length, nullptr, nullptr);
  return utf8;
}

std::wstring ProgramPath() {
  std::wstring path(32768, L'\0');  // no path is longer
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::vector<std::string> CommandLineArguments(int, char**) {
  int count = 0;
  const std::unique_ptr<wchar_t*, HLOCAL (*)(HLOCAL)> arguments(CommandLineToArgvW(GetCommandLineW(), &count),
                                                                [](HLOCAL memory) { return LocalFree(memory); });
  std::vector<std::string> result;
  for (int i = 1; arguments != nullptr && i < count; ++i)
    result.push_back(FromWide(arguments.get()[i]));
  return result;
}

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const std::wstring wide_name = ToWide(name);
  const DWORD size = GetEnvironmentVariableW(wide_name.c_str(), nullptr, 0);
  if (size == 0) return std::nullopt;
  std::wstring value(size, L'\0');
  value.resize(GetEnvironmentVariableW(wide_name.c_str(), value.data(), size));
  return FromWide(value);
}

bool IsStandardErrorTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

void LimitProcessTime(int) {}

void SetBinaryStandardOutput() {
  _setmode(_fileno(stdout), _O_BINARY);
}

}  // namespace veldra
