#include "platform/assert.h"

#include <cstdio>
#include <cstdlib>

namespace veldra {

namespace {

void PrintAndAbort(const char* condition, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, condition);
  std::fflush(stderr);
  std::abort();
}

AssertHandler current_handler = PrintAndAbort;

}  // namespace

AssertHandler SetAssertHandler(AssertHandler handler) {
  const AssertHandler earlier = current_handler;
  current_handler = handler != nullptr ? handler : PrintAndAbort;
  return earlier;
}

void AssertFailed(const char* condition, const char* file, int line) {
  current_handler(condition, file, line);
}

}  // namespace veldra
