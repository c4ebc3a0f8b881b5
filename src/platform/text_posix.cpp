#include <locale.h>

#include <cstdio>

#include "platform/text_system.h"

namespace veldra::textsystem {

/// Qt puts the process into the user's locale.
int PrintInC(char* to, size_t size, const char* format, va_list arguments) {
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  const locale_t before = uselocale(plain);
  const int length = std::vsnprintf(to, size, format, arguments);
  uselocale(before);
  return length;
}

}  // namespace veldra::textsystem
