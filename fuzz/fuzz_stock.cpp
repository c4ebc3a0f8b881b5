#include <algorithm>

#include "archive/stockfiles.h"
#include "platform/assert.h"

/// A list of stock files: what can be read at all is written as it was.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace veldra;
  const auto names = ReadStringList({data, size});
  if (names) VELDRA_ASSERT(std::ranges::equal(WriteStringList(*names), std::span(data, size)));
  return 0;
}
