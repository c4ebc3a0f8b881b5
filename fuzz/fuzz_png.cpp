#include <unistd.h>

#include <cstdio>
#include <string>

#include "platform/assert.h"
#include "platform/png.h"

/// A picture to be made a texture: read from a file, as far as its end mark, and from bytes.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace veldra;
  static const std::string path = "/dev/shm/veldra-fuzz-" + std::to_string(getpid()) + ".png";
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  VELDRA_ASSERT(file != nullptr);
  std::fwrite(data, 1, size, file);
  std::fclose(file);
  const auto sides = ReadPngSize(path);
  if (!sides || sides->width > 1024 || sides->height > 1024) return 0;
  SError error;
  const auto picture = ReadPng(path, &error);
  VELDRA_ASSERT(picture.has_value() == error.what.empty());
  const auto whole = DecodePng({data, size});
  // Parts that are no picture may be damaged, and colours told of elsewhere; its sides are one.
  if (picture && whole) VELDRA_ASSERT(picture->rgba.size() == whole->rgba.size());
  return 0;
}
