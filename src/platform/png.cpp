#include "platform/png.h"

#include <algorithm>
#include <array>
#include <new>

#include "platform/assert.h"
#include "platform/bytes.h"
#include "platform/png_codec.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr std::array<uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr size_t kChecksumWidth = 4;
constexpr uint8_t kTableColourType = 3;
/// No deflated byte can stand for more bytes than this.
constexpr uint64_t kLargestRatio = 1032;

struct SHeader {
  uint32_t width = 0;
  uint32_t height = 0;
  uint64_t row_bytes = 0;  ///< of the pixels as the file has them
  bool has_table = false;
};

bool Refuse(SError* error, std::string what) {
  if (error != nullptr) error->what = std::move(what);
  return false;
}

bool RefuseDamaged(SError* error) {
  return Refuse(error, "the PNG file is damaged");
}

uint32_t ReadBigEndian32(CByteReader& reader) {
  const uint32_t value = reader.ReadU32();
  return value >> 24 | (value >> 8 & 0xFF00) | (value << 8 & 0xFF0000) | value << 24;
}

/// Samples a pixel of the colour type has; 0 for types that do not exist.
uint64_t Channels(uint8_t colour_type) {
  switch (colour_type) {
    case 0:
    case 3:
      return 1;
    case 2:
      return 3;
    case 4:
      return 2;
    case 6:
      return 4;
    default:
      return 0;
  }
}

SHeader ReadHeader(CByteReader& reader) {
  SHeader header;
  header.width = ReadBigEndian32(reader);
  header.height = ReadBigEndian32(reader);
  const uint64_t depth = reader.ReadU8();
  const uint8_t colour_type = reader.ReadU8();
  header.row_bytes = (uint64_t{header.width} * depth * Channels(colour_type) + 7) / 8;
  header.has_table = colour_type == kTableColourType;
  return header;
}

/// Walks the chunks behind the header up to the end mark and adds up the packed pixels. False when the file is cut.
bool CountPixelData(CByteReader& reader, uint64_t& size) {
  while (!reader.AtEnd()) {
    const uint32_t length = ReadBigEndian32(reader);
    const std::span<const uint8_t> name = reader.ReadBytes(4);
    reader.Skip(length);
    reader.Skip(kChecksumWidth);
    if (reader.Failed()) return false;
    const std::string_view type(reinterpret_cast<const char*>(name.data()), name.size());
    if (type == "IDAT") size += length;
    if (type == "IEND") return true;
  }
  return false;
}

/// The sides of the PNG, after its chunks proved whole and its packed pixels enough for these sides: what the header
/// says decides how much memory is taken.
bool CheckStructure(std::span<const uint8_t> png, SHeader& header, SError* error) {
  constexpr size_t kHeaderStart = 16;
  constexpr size_t kHeaderEnd = 29;
  CByteReader reader(png);
  const auto signature = reader.ReadBytes(kSignature.size());
  if (!std::equal(signature.begin(), signature.end(), kSignature.begin(), kSignature.end()))
    return Refuse(error, "is not a PNG file");
  reader.Seek(kHeaderStart);
  header = ReadHeader(reader);
  reader.Seek(kHeaderEnd + kChecksumWidth);
  if (reader.Failed() || header.width == 0 || header.height == 0) return RefuseDamaged(error);
  if (header.width > kLargestImageSide || header.height > kLargestImageSide)
    return Refuse(error, Format("the picture is larger than %d pixels", kLargestImageSide));
  uint64_t packed = 0;
  if (!CountPixelData(reader, packed)) return Refuse(error, "the PNG file is cut short");
  return (header.row_bytes + 1) * header.height <= packed * kLargestRatio || RefuseDamaged(error);
}

/// Those of a picture of PIXELS pixels.
bool AreSides(int width, int height, size_t pixels) {
  return width > 0 && height > 0 && width <= kLargestImageSide && height <= kLargestImageSide &&
         pixels == static_cast<size_t>(width) * static_cast<size_t>(height);
}

bool IsValid(const SImage& image) {
  return image.rgba.size() % 4 == 0 && AreSides(image.width, image.height, image.rgba.size() / 4);
}

template <typename Image>
bool EncodeTo(std::string_view path, const Image& image, SError* error) try {
  std::vector<uint8_t> png;
  return png_codec::Encode(image, png, error) && ReplaceFile(path, png, error);
} catch (const std::bad_alloc&) {
  return Refuse(error, "not enough memory");
}

}  // namespace

std::optional<SImage> ReadPng(std::string_view path, SError* error) try {
  const auto file = ReadWholeFile(path, error);
  SHeader header;
  if (!file || !CheckStructure(file->View(), header, error)) return std::nullopt;
  SImage image;
  image.width = static_cast<int>(header.width);
  image.height = static_cast<int>(header.height);
  image.rgba.resize(size_t{4} * header.width * header.height);
  if (!png_codec::Decode(file->View(), image, error)) return std::nullopt;
  return image;
} catch (const std::bad_alloc&) {
  Refuse(error, "not enough memory");
  return std::nullopt;
}

std::optional<SIndexedImage> ReadIndexedPng(std::string_view path, SError* error) try {
  const auto file = ReadWholeFile(path, error);
  SHeader header;
  if (!file || !CheckStructure(file->View(), header, error)) return std::nullopt;
  SIndexedImage image;
  image.width = static_cast<int>(header.width);
  image.height = static_cast<int>(header.height);
  if (!header.has_table) {
    if (error != nullptr) error->what.clear();
    return std::nullopt;
  }
  image.indices.resize(size_t{header.width} * header.height);
  if (!png_codec::Decode(file->View(), image, error)) return std::nullopt;
  return image;
} catch (const std::bad_alloc&) {
  Refuse(error, "not enough memory");
  return std::nullopt;
}

bool WritePng(std::string_view path, const SImage& image, SError* error) {
  VELDRA_ASSERT(IsValid(image));
  return IsValid(image) && EncodeTo(path, image, error);
}

bool WriteIndexedPng(std::string_view path, const SIndexedImage& image, SError* error) {
  const bool is_valid = AreSides(image.width, image.height, image.indices.size());
  VELDRA_ASSERT(is_valid);
  return is_valid && EncodeTo(path, image, error);
}

}  // namespace veldra
