#pragma once

#include <cstdarg>
#include <cstddef>

/// What the two systems' halves offer to text.cpp.
namespace veldra::textsystem {

/// vsnprintf with "." as the decimal point, whatever locale the process is in.
int PrintInC(char* to, size_t size, const char* format, va_list arguments);

}  // namespace veldra::textsystem
