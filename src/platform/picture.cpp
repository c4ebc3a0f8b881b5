#include "platform/picture.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <numeric>

#include "platform/paths.h"
#include "platform/text.h"

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_JPEG
#define STBI_ONLY_BMP
#define STBI_ONLY_TGA
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_NO_HDR
#define STBI_MAX_DIMENSIONS 16384
#include <stb/stb_image.h>

namespace veldra {

namespace {

static_assert(STBI_MAX_DIMENSIONS == kLargestImageSide);

constexpr size_t kLargestPictureFile = size_t{512} << 20;
/// No byte of the three formats stands for more pixels, but in a picture made for that.
constexpr uint64_t kMostPixelsOfByte = 256;

bool BeginsWith(std::span<const uint8_t> bytes, std::string_view mark) {
  return bytes.size() >= mark.size() && std::memcmp(bytes.data(), mark.data(), mark.size()) == 0;
}

bool IsPng(std::span<const uint8_t> bytes) {
  return BeginsWith(bytes, "\x89PNG");
}

/// Walks through a JPEG file as its reader does, which trusts two things: that a Huffman table has no more codes than
/// there are values, which it would write behind it, and that a table is there when it is used.
class CJpegTables {
 public:
  explicit CJpegTables(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  bool AreSound() {
    while (const auto marker = NextMarker()) {
      if (*marker == kEndOfImage) break;
      is_progressive_ = is_progressive_ || *marker == kProgressive;
      if (*marker == kHuffmanTables) {
        if (!TakeTables()) return false;
        continue;
      }
      if (*marker == kScan && !HasTablesOfScan()) return false;
      at_ += Word();
    }
    return true;
  }

 private:
  static constexpr int kProgressive = 0xC2;
  static constexpr int kHuffmanTables = 0xC4;
  static constexpr int kScan = 0xDA;
  static constexpr int kFirstRestart = 0xD0;
  static constexpr int kStartOfImage = 0xD8;
  static constexpr int kEndOfImage = 0xD9;
  static constexpr size_t kLengths = 16;
  static constexpr size_t kValues = 256;

  /// The next one with a length behind it, or the end. What lies between segments, codes of pixels too, is passed over.
  std::optional<int> NextMarker() {
    while (at_ + 1 < bytes_.size()) {
      const int marker = bytes_[at_] == 0xFF ? bytes_[at_ + 1] : 0;
      ++at_;
      const bool is_alone = marker >= kFirstRestart && marker <= kStartOfImage;
      if (marker == 0 || marker == 0xFF || is_alone) continue;
      ++at_;
      return marker;
    }
    return std::nullopt;
  }
  size_t Word() const { return at_ + 1 < bytes_.size() ? size_t{bytes_[at_]} << 8 | bytes_[at_ + 1] : 0; }
  /// False where one has too many. In a file that is cut short what is missing counts as 0.
  bool TakeTables() {
    auto left = static_cast<int64_t>(Word()) - 2;
    at_ += 2;
    while (left > 0 && at_ + 1 < bytes_.size()) {
      const auto counts = bytes_.subspan(at_ + 1, std::min(kLengths, bytes_.size() - at_ - 1));
      const size_t values = std::accumulate(counts.begin(), counts.end(), size_t{0});
      if (values > kValues) return false;
      (bytes_[at_] < 16 ? has_dc_ : has_ac_)[bytes_[at_] % 16] = true;
      at_ += 1 + kLengths + values;
      left -= static_cast<int64_t>(1 + kLengths + values);
    }
    return true;
  }

  /// Of the scan whose length is next: the components with their tables, then which coefficients it holds.
  bool HasTablesOfScan() const {
    const auto byte = [this](size_t i) { return at_ + i < bytes_.size() ? bytes_[at_ + i] : uint8_t{0}; };
    const size_t components = byte(2);
    const uint8_t first = byte(3 + 2 * components);
    const bool is_refined = byte(5 + 2 * components) >= 16;
    const bool wants_dc = !is_progressive_ || (first == 0 && !is_refined);
    const bool wants_ac = !is_progressive_ || first != 0;
    for (size_t i = 0; i < components; ++i) {
      const uint8_t tables = byte(4 + 2 * i);
      if ((wants_dc && !has_dc_[tables / 16]) || (wants_ac && !has_ac_[tables % 16])) return false;
    }
    return true;
  }

  std::span<const uint8_t> bytes_;
  size_t at_ = 0;
  bool is_progressive_ = false;
  std::array<bool, 16> has_dc_ = {};
  std::array<bool, 16> has_ac_ = {};
};

/// The sides of a picture that is no PNG, once it is known that its pixels can be held.
std::optional<SImage> CheckedSize(std::span<const uint8_t> bytes, bool is_tga, SError* error) {
  if (!is_tga && !BeginsWith(bytes, "\xFF\xD8\xFF") && !BeginsWith(bytes, "BM")) {
    Fail(error, "is no PNG, JPEG, BMP or TGA picture");
    return std::nullopt;
  }
  // Whatever its name: the reader decides by the content.
  if (BeginsWith(bytes, "\xFF") && !CJpegTables(bytes).AreSound()) {
    Fail(error, "cannot be read: a Huffman table is missing or has too many codes");
    return std::nullopt;
  }
  SImage image;
  int channels = 0;
  if (stbi_info_from_memory(bytes.data(), static_cast<int>(bytes.size()), &image.width, &image.height, &channels) ==
          0 ||
      image.width <= 0 || image.height <= 0) {
    Fail(error, Format("cannot be read: %s", stbi_failure_reason()));
    return std::nullopt;
  }
  const uint64_t pixels = static_cast<uint64_t>(image.width) * static_cast<uint64_t>(image.height);
  const bool is_large = image.width > kLargestImageSide || image.height > kLargestImageSide || pixels > kLargestPicture;
  if (!is_large && pixels <= kMostPixelsOfByte * bytes.size()) return image;
  Fail(error,
       is_large ? Format("is too large: %d x %d pixels", image.width, image.height) : std::string("is cut short"));
  return std::nullopt;
}

void DropUnusedAlpha(std::vector<uint8_t>& rgba) {
  for (size_t i = 3; i < rgba.size(); i += 4)
    if (rgba[i] != 0) return;
  for (size_t i = 3; i < rgba.size(); i += 4)
    rgba[i] = 255;
}

std::optional<CFileBytes> ReadBytes(std::string_view path, SError* error) {
  return ReadWholeFile(path, error, kLargestPictureFile);
}

bool IsTga(std::string_view path) {
  return EqualNoCase(ExtensionPart(path), "tga");
}

}  // namespace

std::optional<SImage> DecodePicture(std::span<const uint8_t> bytes, bool is_tga, SError* error) try {
  if (IsPng(bytes)) return DecodePng(bytes, error);
  auto image = CheckedSize(bytes, is_tga, error);
  if (!image) return std::nullopt;
  struct SFree {
    void operator()(stbi_uc* pixels) const { stbi_image_free(pixels); }
  };
  int width = 0;
  int height = 0;
  int channels = 0;
  constexpr int kRgba = 4;
  const std::unique_ptr<stbi_uc, SFree> pixels(
      stbi_load_from_memory(bytes.data(), static_cast<int>(bytes.size()), &width, &height, &channels, kRgba));
  if (pixels == nullptr || width != image->width || height != image->height) {
    Fail(error, Format("cannot be read: %s", pixels == nullptr ? stbi_failure_reason() : "its sides differ"));
    return std::nullopt;
  }
  image->rgba.assign(pixels.get(),
                     pixels.get() + size_t{kRgba} * static_cast<size_t>(width) * static_cast<size_t>(height));
  if (channels == kRgba) DropUnusedAlpha(image->rgba);
  return image;
} catch (const std::bad_alloc&) {
  Fail(error, kNotEnoughMemory);
  return std::nullopt;
}

std::optional<SImage> ReadPicture(std::string_view path, SError* error) {
  // A PNG file can hold anything beside its picture; its reader takes only that.
  SError ignored;
  if (ReadPngSize(path, &ignored)) return ReadPng(path, error);
  const auto file = ReadBytes(path, error);
  return file ? DecodePicture(file->View(), IsTga(path), error) : std::nullopt;
}

std::optional<SImage> ReadPictureSize(std::string_view path, SError* error) {
  SError ignored;
  if (auto size = ReadPngSize(path, &ignored)) return size;
  const auto file = ReadBytes(path, error);
  if (!file) return std::nullopt;
  return DecodePictureSize(file->View(), IsTga(path), error);
}

std::optional<SImage> DecodePictureSize(std::span<const uint8_t> bytes, bool is_tga, SError* error) {
  return IsPng(bytes) ? DecodePngSize(bytes, error) : CheckedSize(bytes, is_tga, error);
}

bool IsPictureName(std::string_view path) {
  constexpr const char* kExtensions[] = {"PNG", "JPG", "JPEG", "BMP", "TGA"};
  return std::ranges::any_of(
      kExtensions, [extension = ExtensionPart(path)](const char* known) { return EqualNoCase(extension, known); });
}

}  // namespace veldra
