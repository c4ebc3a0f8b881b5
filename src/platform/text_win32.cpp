#include <cstdio>

#include "platform/text_system.h"

namespace veldra::textsystem {

/// A process stays in the "C" locale until it asks for another, which nothing does here.
int PrintInC(char* to, size_t size, const char* format, va_list arguments) {
  return std::vsnprintf(to, size, format, arguments);
}

}  // namespace veldra::textsystem
