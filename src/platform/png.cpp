#include "platform/png.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <new>

#include "platform/assert.h"
#include "platform/bytes.h"
#include "platform/inputfile.h"
#include "platform/png_codec.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr std::array<uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr size_t kChecksumWidth = 4;
constexpr uint8_t kTableColourType = 3;
constexpr size_t kHeaderStart = 16;
/// The signature and the first chunk.
constexpr size_t kStartSize = 29 + kChecksumWidth;
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

bool CheckHeader(std::span<const uint8_t> png, SHeader& header, SError* error) {
  CByteReader reader(png);
  const auto signature = reader.ReadBytes(kSignature.size());
  if (!std::equal(signature.begin(), signature.end(), kSignature.begin(), kSignature.end()))
    return Refuse(error, "is not a PNG file");
  reader.Seek(kHeaderStart);
  header = ReadHeader(reader);
  reader.Seek(kStartSize);
  if (reader.Failed() || header.width == 0 || header.height == 0) return RefuseDamaged(error);
  if (header.width > kLargestImageSide || header.height > kLargestImageSide)
    return Refuse(error, Format("the picture is larger than %d pixels", kLargestImageSide));
  return true;
}

/// The sides of the PNG, after its chunks proved whole and its packed pixels enough for these sides: what the header
/// says decides how much memory is taken.
bool CheckStructure(std::span<const uint8_t> png, SHeader& header, SError* error) {
  if (!CheckHeader(png, header, error)) return false;
  CByteReader reader(png);
  reader.Seek(kStartSize);
  uint64_t packed = 0;
  if (!CountPixelData(reader, packed)) return Refuse(error, "the PNG file is cut short");
  return (header.row_bytes + 1) * header.height <= packed * kLargestRatio || RefuseDamaged(error);
}

/// Those of a picture of PIXELS pixels.
bool AreSides(int width, int height, size_t pixels) {
  return width > 0 && height > 0 && width <= kLargestImageSide && height <= kLargestImageSide &&
         pixels == static_cast<size_t>(width) * static_cast<size_t>(height);
}

/// Takes out of a file what its picture is made of, and reads nothing else: a file can hold anything beside and behind
/// it.
class CPngCollector {
 public:
  std::span<const uint8_t> Bytes() const { return bytes_; }
  /// The signature and the header.
  bool Start(std::string_view path, SError* error);
  /// All up to the end mark, or as far as the file goes.
  bool Collect(std::string_view path, SError* error);

 private:
  enum class EChunk { kTaken, kSkipped, kLast, kRefused };

  EChunk Next(SError* error);
  EChunk Judge(std::string_view type, uint32_t length, SError* error);
  bool Append(uint64_t offset, uint64_t size, SError* error);

  CInputFile file_;
  std::vector<uint8_t> bytes_;
  uint64_t position_ = kStartSize;
  uint64_t packed_ = 0;
  uint64_t most_packed_ = 0;
};

bool CPngCollector::Append(uint64_t offset, uint64_t size, SError* error) {
  const auto there = static_cast<size_t>(std::min(size, file_.Length() - std::min(offset, file_.Length())));
  bytes_.resize(bytes_.size() + there);
  return file_.ReadAt(offset, std::span(bytes_).last(there), error);
}

bool CPngCollector::Start(std::string_view path, SError* error) {
  return file_.Open(path, error) && Append(0, kStartSize, error);
}

bool CPngCollector::Collect(std::string_view path, SError* error) {
  SHeader header;
  if (!Start(path, error) || !CheckHeader(bytes_, header, error)) return false;
  // Even pixels that are not packed at all, in small pieces, take no more.
  most_packed_ = 2 * (header.row_bytes + 1) * header.height + (uint64_t{1} << 20);
  constexpr int kMostChunks = 1 << 20;
  for (int chunk = 0; chunk < kMostChunks && position_ < file_.Length(); ++chunk) {
    const EChunk next = Next(error);
    if (next == EChunk::kRefused) return false;
    if (next == EChunk::kLast) return true;
  }
  return true;
}

CPngCollector::EChunk CPngCollector::Next(SError* error) {
  constexpr size_t kChunkStart = 8;
  std::array<uint8_t, kChunkStart> start = {};
  const auto there = std::min<uint64_t>(kChunkStart, file_.Length() - position_);
  if (!file_.ReadAt(position_, std::span(start).first(static_cast<size_t>(there)), error)) return EChunk::kRefused;
  CByteReader reader(start);
  const uint32_t length = ReadBigEndian32(reader);
  const EChunk judged = Judge({reinterpret_cast<const char*>(start.data()) + 4, 4}, length, error);
  const uint64_t size = kChunkStart + uint64_t{length} + kChecksumWidth;
  const bool is_wanted = judged == EChunk::kTaken || judged == EChunk::kLast;
  if (is_wanted && !Append(position_, size, error)) return EChunk::kRefused;
  position_ += size;
  return judged;
}

CPngCollector::EChunk CPngCollector::Judge(std::string_view type, uint32_t length, SError* error) {
  constexpr std::string_view kTaken[] = {"PLTE", "tRNS", "gAMA", "cHRM", "sRGB"};
  constexpr uint32_t kLargestColors = 768;
  if (type == "IEND") return EChunk::kLast;
  const bool is_color = std::find(std::begin(kTaken), std::end(kTaken), type) != std::end(kTaken);
  if (is_color) return length <= kLargestColors ? EChunk::kTaken : EChunk::kSkipped;
  if (type == "IDAT") {
    packed_ += length;
    if (packed_ <= most_packed_) return EChunk::kTaken;
    Refuse(error, "the PNG file holds far more than its picture");
    return EChunk::kRefused;
  }
  // Small letters first: what a picture can be shown without.
  if (type[0] >= 'a' && type[0] <= 'z') return EChunk::kSkipped;
  RefuseDamaged(error);
  return EChunk::kRefused;
}

bool IsValid(const SImage& image) {
  return image.rgba.size() % 4 == 0 && AreSides(image.width, image.height, image.rgba.size() / 4);
}

bool EncodeTo(std::string_view path, const SImage& image, SError* error) try {
  std::vector<uint8_t> png;
  return png_codec::Encode(image, png, error) && ReplaceFile(path, png, error);
} catch (const std::bad_alloc&) {
  return Refuse(error, kNotEnoughMemory);
}

}  // namespace

std::optional<SImage> ReadPng(std::string_view path, SError* error) try {
  CPngCollector collector;
  if (!collector.Collect(path, error)) return std::nullopt;
  return DecodePng(collector.Bytes(), error);
} catch (const std::bad_alloc&) {
  Refuse(error, kNotEnoughMemory);
  return std::nullopt;
}

std::optional<SImage> ReadPngSize(std::string_view path, SError* error) {
  CPngCollector collector;
  SHeader header;
  if (!collector.Start(path, error) || !CheckHeader(collector.Bytes(), header, error)) return std::nullopt;
  return SImage{static_cast<int>(header.width), static_cast<int>(header.height), {}};
}

std::optional<SImage> DecodePngSize(std::span<const uint8_t> png, SError* error) {
  SHeader header;
  if (!CheckHeader(png, header, error)) return std::nullopt;
  return SImage{static_cast<int>(header.width), static_cast<int>(header.height), {}};
}

std::optional<SImage> DecodePng(std::span<const uint8_t> png, SError* error) try {
  SHeader header;
  if (!CheckStructure(png, header, error)) return std::nullopt;
  SImage image;
  image.width = static_cast<int>(header.width);
  image.height = static_cast<int>(header.height);
  image.rgba.resize(size_t{4} * header.width * header.height);
  if (!png_codec::Decode(png, image, error)) return std::nullopt;
  return image;
} catch (const std::bad_alloc&) {
  Refuse(error, kNotEnoughMemory);
  return std::nullopt;
}

std::optional<SIndexedImage> ReadIndexedPng(std::string_view path, SError* error) {
  const auto file = ReadWholeFile(path, error);
  return file ? DecodeIndexedPng(file->View(), error) : std::nullopt;
}

std::optional<SIndexedImage> DecodeIndexedPng(std::span<const uint8_t> png, SError* error) try {
  SHeader header;
  if (!CheckStructure(png, header, error)) return std::nullopt;
  SIndexedImage image;
  image.width = static_cast<int>(header.width);
  image.height = static_cast<int>(header.height);
  if (!header.has_table) {
    if (error != nullptr) error->what.clear();
    return std::nullopt;
  }
  image.indices.resize(size_t{header.width} * header.height);
  if (!png_codec::Decode(png, image, error)) return std::nullopt;
  return image;
} catch (const std::bad_alloc&) {
  Refuse(error, kNotEnoughMemory);
  return std::nullopt;
}

bool WritePng(std::string_view path, const SImage& image, SError* error) {
  VELDRA_ASSERT(IsValid(image));
  return IsValid(image) && EncodeTo(path, image, error);
}

bool EncodeIndexedPng(const SIndexedImage& image, std::vector<uint8_t>& png, SError* error) try {
  const bool is_valid = AreSides(image.width, image.height, image.indices.size());
  VELDRA_ASSERT(is_valid);
  return is_valid && png_codec::Encode(image, png, error);
} catch (const std::bad_alloc&) {
  return Refuse(error, kNotEnoughMemory);
}

bool WriteIndexedPng(std::string_view path, const SIndexedImage& image, SError* error) {
  std::vector<uint8_t> png;
  return EncodeIndexedPng(image, png, error) && ReplaceFile(path, png, error);
}

}  // namespace veldra
