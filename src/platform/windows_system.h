#pragma once

// Before <windows.h>, whose macro of that name would rename our ReplaceFile.
#include "platform/files.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#undef ReplaceFile

#include <string>
#include <string_view>

namespace veldra {

/// UTF-8 to UTF-16; bytes that are no UTF-8 are taken as the game's code page.
std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);

/// The file of the program that runs.
std::wstring ProgramPath();

namespace disk {

/// PATH, which SystemPath made absolute, for a system call.
std::wstring CallPath(const std::string& path);

}  // namespace disk

}  // namespace veldra
