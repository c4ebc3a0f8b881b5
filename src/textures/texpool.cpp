#include "textures/texpool.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/fileset.h"
#include "platform/inputfile.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr const char* kTraceText = "CMTMTexPool::ReadTexACT(%s,%d,%d,%s) - Texture Name: %s\n";
constexpr const char* kNoTextureText = "Texture Pool Error:\nTexture \"%s\"\nnot found.";
constexpr const char* kNoTableText = "Texture Pool Error:\nColor Table \"%s\"\nnot found.";
constexpr const char* kOpenErrorText = "Texture Pool Error:\nCould not open \"%s\".";
constexpr const char* kTooSmallText = "Texture Pool Error:\nFile \"%s\"\ntoo small for %d x %d texture.";
constexpr size_t kTableSize = 768;
constexpr size_t kBytesPerPixel = 3;
constexpr size_t kFirstMapSize = 10;

/// Width × height, or nothing when no file could ever be large enough: the result would not fit.
std::optional<int32_t> PixelCount(int32_t width, int32_t height) {
  const int64_t count = int64_t{width} * height;
  if (width < 0 || height < 0 || count > std::numeric_limits<int32_t>::max()) return std::nullopt;
  return static_cast<int32_t>(count);
}

/// The table's bytes, zeros where the file has none: that it is there was all that was asked.
std::array<uint8_t, kTableSize> ReadTable(const std::string& act) {
  std::array<uint8_t, kTableSize> table = {};
  CInputFile file;
  if (file.Open(act)) {
    const auto size = static_cast<size_t>(std::min<uint64_t>(file.Length(), kTableSize));
    file.ReadAt(0, std::span(table).first(size));
  }
  return table;
}

void Convert(std::span<const uint8_t> indices, const std::array<uint8_t, kTableSize>& table, uint8_t* pixels) {
  for (const uint8_t index : indices) {
    const uint8_t* const color = table.data() + size_t{index} * kBytesPerPixel;
    *pixels++ = color[2];
    *pixels++ = color[1];
    *pixels++ = color[0];
  }
}

}  // namespace

CMTMTexPool::CMTMTexPool(CQuestions& questions)
    : questions_(questions), textures_(kFirstMapSize), others_(kFirstMapSize) {}

CMTMTexPool::~CMTMTexPool() = default;

std::string CMTMTexPool::KeyOf(const std::string& raw) {
  return UpperCase(FileNamePart(raw));
}

int32_t CMTMTexPool::Fail(std::string text) {
  questions_.Message({.text = std::move(text), .caption = kErrorCaption, .icon = EIcon::kError});
  return -1;
}

int32_t CMTMTexPool::ReadTexACT(const std::string& raw, int32_t width, int32_t height, const std::string& act) {
  const std::string key = KeyOf(raw);
  Trace(kTraceText, raw.c_str(), width, height, act.c_str(), key.c_str());
  if (textures_.contains(key)) return 0;
  SettleFiles(std::vector{raw, act});  // one save
  if (!FileExists(raw)) return Fail(Format(kNoTextureText, raw.c_str()));
  // On purpose the texture's path: the message names the texture whose table is missing.
  if (!FileExists(act)) return Fail(Format(kNoTableText, raw.c_str()));
  CInputFile file;
  if (!file.Open(raw)) return Fail(Format(kOpenErrorText, raw.c_str()));
  const auto count = PixelCount(width, height);
  if (!count || file.Length() < static_cast<uint64_t>(*count)) {
    return Fail(Format(kTooSmallText, raw.c_str(), width, height));
  }
  std::vector<uint8_t> indices(static_cast<size_t>(*count));
  if (!file.ReadAt(0, indices)) return Fail(Format(kOpenErrorText, raw.c_str()));
  file.Close();
  // At least a byte, so that null means that there was no memory.
  auto* const pixels = static_cast<uint8_t*>(std::malloc(std::max(indices.size() * kBytesPerPixel, size_t{1})));
  if (pixels == nullptr) return Fail(Format(kOpenErrorText, raw.c_str()));
  Convert(indices, ReadTable(act), pixels);
  textures_[key] = std::make_unique<TexPoolEntry>(TexPoolEntry{key, act, width, height, pixels}).release();
  return *count;
}

}  // namespace veldra
