#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace veldra {

/// A path under which all that standard input holds can be read, any part of it and as often as wanted, for as long as
/// the program runs; nothing is left behind afterwards. Read at the first call. "" with ERROR when that fails.
std::string StandardInputFile(SError* error = nullptr);
/// Whether StandardInputFile gave PATH.
bool IsStandardInput(std::string_view path);

}  // namespace veldra
