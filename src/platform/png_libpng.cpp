#include <png.h>

#include <algorithm>

#include "platform/png_codec.h"
#include "platform/text.h"

namespace veldra::png_codec {

namespace {

/// libpng's simplified interface, which keeps its long jumps to itself.
class CPngImage {
 public:
  CPngImage() { image_.version = PNG_IMAGE_VERSION; }
  ~CPngImage() { png_image_free(&image_); }
  CPngImage(const CPngImage&) = delete;
  CPngImage& operator=(const CPngImage&) = delete;

  png_image* operator->() { return &image_; }
  png_image* Get() { return &image_; }
  bool Fail(SError* error) const {
    if (error != nullptr) error->what = Format("the PNG library refuses: %s", image_.message);
    return false;
  }

 private:
  png_image image_ = {};
};

}  // namespace

bool Decode(std::span<const uint8_t> png, SImage& image, SError* error) {
  CPngImage reader;
  if (png_image_begin_read_from_memory(reader.Get(), png.data(), png.size()) == 0) return reader.Fail(error);
  reader->format = PNG_FORMAT_RGBA;
  // Else 16-bit samples would be taken for linear light and come out brighter than the same picture with 8 bits.
  reader->flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
  if (PNG_IMAGE_SIZE(*reader.Get()) != image.rgba.size()) return reader.Fail(error);
  return png_image_finish_read(reader.Get(), nullptr, image.rgba.data(), 0, nullptr) != 0 || reader.Fail(error);
}

bool Encode(const SImage& image, std::vector<uint8_t>& png, SError* error) {
  CPngImage writer;
  writer->width = static_cast<png_uint_32>(image.width);
  writer->height = static_cast<png_uint_32>(image.height);
  writer->format = PNG_FORMAT_RGBA;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(*writer.Get());
  png.resize(size);
  if (png_image_write_to_memory(writer.Get(), png.data(), &size, 0, image.rgba.data(), 0, nullptr) == 0)
    return writer.Fail(error);
  png.resize(size);
  return true;
}

bool Decode(std::span<const uint8_t> png, SIndexedImage& image, SError* error) {
  CPngImage reader;
  if (png_image_begin_read_from_memory(reader.Get(), png.data(), png.size()) == 0) return reader.Fail(error);
  // A PNG's own table is taken in its order; only without one the library would make another.
  reader->format = PNG_FORMAT_RGBA_COLORMAP;
  if (PNG_IMAGE_SIZE(*reader.Get()) != image.indices.size()) return reader.Fail(error);
  const bool is_read = png_image_finish_read(reader.Get(), nullptr, image.indices.data(), 0, image.table.data()) != 0;
  if (!is_read) return reader.Fail(error);
  for (size_t entry = reader->colormap_entries; entry < image.table.size() / 4; ++entry) {
    std::fill_n(image.table.begin() + static_cast<std::ptrdiff_t>(entry * 4), 3, uint8_t{0});
    image.table[entry * 4 + 3] = 255;
  }
  return true;
}

bool Encode(const SIndexedImage& image, std::vector<uint8_t>& png, SError* error) {
  CPngImage writer;
  writer->width = static_cast<png_uint_32>(image.width);
  writer->height = static_cast<png_uint_32>(image.height);
  writer->format = PNG_FORMAT_RGBA_COLORMAP;
  writer->colormap_entries = static_cast<png_uint_32>(image.table.size() / 4);
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(*writer.Get());
  png.resize(size);
  if (png_image_write_to_memory(writer.Get(), png.data(), &size, 0, image.indices.data(), 0, image.table.data()) == 0)
    return writer.Fail(error);
  png.resize(size);
  return true;
}

}  // namespace veldra::png_codec
