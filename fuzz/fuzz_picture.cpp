#include "platform/assert.h"
#include "platform/picture.h"

/// A JPEG, BMP or TGA picture to be made a texture. The first byte says whether its name is that of a TGA.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace veldra;
  if (size == 0) return 0;
  SError error;
  const auto picture = DecodePicture({data + 1, size - 1}, data[0] % 2 == 1, &error);
  VELDRA_ASSERT(picture.has_value() == error.what.empty());
  if (picture)
    VELDRA_ASSERT(picture->rgba.size() ==
                  size_t{4} * static_cast<size_t>(picture->width) * static_cast<size_t>(picture->height));
  return 0;
}
