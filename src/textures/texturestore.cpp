#include "textures/texturestore.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstring>

#include "platform/assert.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "textures/nearblack.h"

namespace veldra {

namespace {

// Texels are put together as numbers whose low byte comes first in memory: every machine that Veldra is built for.
static_assert(std::endian::native == std::endian::little);

/// The 256 colours, first byte lowest. The 3-byte ones have nothing in their fourth byte.
struct STexelTables {
  std::array<uint32_t, 256> rgba;
  std::array<uint32_t, 256> rgb;
  std::array<uint32_t, 256> bgr;
};

STexelTables MakeTables(const ColorTable& colors) {
  STexelTables tables;
  for (size_t i = 0; i < 256; ++i) {
    const uint32_t red = colors[i * 3];
    const uint32_t green = colors[i * 3 + 1];
    const uint32_t blue = colors[i * 3 + 2];
    const uint32_t alpha = IsNearBlack(red, green, blue) ? 0 : 255;
    tables.rgb[i] = red | green << 8 | blue << 16;
    tables.bgr[i] = blue | green << 8 | red << 16;
    tables.rgba[i] = tables.rgb[i] | alpha << 24;
  }
  return tables;
}

/// Where a row of texels goes in the three layouts.
struct SDestination {
  uint8_t* rgba;
  uint8_t* rgb;
  uint8_t* bgr;
};

/// One row, two texels at a time (a texture's width is even). A pair of 3-byte texels is stored as eight bytes, which
/// is one instruction; the next pair overwrites the last two. Only the image's last pair has no room for them.
void DecodeRow(std::span<const uint8_t> row, const STexelTables& tables, bool is_last, SDestination to) {
  const auto write_pair = [&](size_t i, size_t width) {
    const uint8_t left = row[i];
    const uint8_t right = row[i + 1];
    const uint64_t rgb = tables.rgb[left] | uint64_t{tables.rgb[right]} << 24;
    const uint64_t bgr = tables.bgr[left] | uint64_t{tables.bgr[right]} << 24;
    std::memcpy(to.rgba + i * 4, &tables.rgba[left], 4);
    std::memcpy(to.rgba + i * 4 + 4, &tables.rgba[right], 4);
    std::memcpy(to.rgb + i * 3, &rgb, width);
    std::memcpy(to.bgr + i * 3, &bgr, width);
  };
  const size_t last_pair = row.size() - 2;
  for (size_t i = 0; i < last_pair; i += 2)
    write_pair(i, 8);
  write_pair(last_pair, is_last ? 6 : 8);
}

/// Tells the user why FILES, those of the texture PATH, are none.
void TellFault(const std::string& path, const STextureFiles& files, CQuestions& questions) {
  const bool is_read = files.error.what.empty();
  questions.Fail(is_read ? "Error: Unsupported texture size." : "Error: Texture cannot be read.",
                 path + (is_read ? " " : ": ") + files.Fault());
}

}  // namespace

void DecodeTexture(const STextureFiles& files, const ColorTable& default_colors, STextureImage& image) {
  image.size = TextureSizeOfLength(files.texels->View().size());
  image.has_own_colors = files.colors.has_value();
  DecodeTexture(files.texels->View(), files.colors.value_or(default_colors), image);
}

STextureFiles FilesOf(const STextureImage& image) {
  return image.read ? image.read() : ReadTextureFiles(image.path);
}

CTextureStore::CTextureStore(CQuestions& questions, const ColorTable& default_colors)
    : questions_(questions), default_colors_(default_colors) {}

void CTextureStore::SetDefaultColors(const ColorTable& colors) {
  default_colors_ = colors;
  for (const auto& [path, image] : images_) {
    if (image->has_own_colors) continue;
    STextureFiles files = FilesOf(*image);
    files.colors.reset();
    if (files.texels && TextureSizeOfLength(files.texels->View().size()) == image->size)
      DecodeTexture(files, default_colors_, *image);
  }
}

const STextureImage* CTextureStore::Stored(const std::string& path) const {
  const auto stored = images_.find(path);
  if (stored != images_.end()) return stored->second.get();
  const auto stand_in = stand_ins_.find(path);
  return stand_in != stand_ins_.end() ? stand_in->second : nullptr;
}

const STextureImage* CTextureStore::GetTexture(const std::string& path) {
  const STextureImage* const stored = Stored(path);
  return stored != nullptr ? stored : LoadTexture(path);
}

const STextureImage* CTextureStore::GetTexture(const std::string& path, std::function<STextureFiles()> read) {
  const STextureImage* const stored = Stored(path);
  return stored != nullptr ? stored : Load(path, std::move(read));
}

const STextureImage* CTextureStore::LoadTexture(const std::string& path) {
  VELDRA_ASSERT(!images_.contains(path) && !stand_ins_.contains(path));
  return FileExists(path) ? Load(path, {}) : nullptr;
}

const STextureImage* CTextureStore::Load(const std::string& path, std::function<STextureFiles()> read) {
  auto image = std::make_unique<STextureImage>();
  image->path = path;
  image->name = FileNamePart(path);
  image->read = std::move(read);
  const STextureFiles files = FilesOf(*image);
  if (!files.texels) {
    TellFault(path, files, questions_);
    return nullptr;
  }
  DecodeTexture(files, default_colors_, *image);
  if (!files.colors_error.what.empty())
    questions_.Message({.text = Format(kUnreadColorsText, ColorTablePath(path).c_str()),
                        .icon = EIcon::kWarning,
                        .details = files.colors_error.what});
  return images_.try_emplace(path, std::move(image)).first->second.get();
}

/// The image of that file, under whichever of its names; null when it is not stored.
STextureImage* CTextureStore::OfFile(const std::string& path) {
  if (const auto found = images_.find(path); found != images_.end()) return found->second.get();
  for (const auto& [key, image] : images_)
    if (image->read == nullptr && IsSameFile(key, path)) return image.get();
  return nullptr;
}

const STextureImage* CTextureStore::AddTexture(const std::string& path, const SIndexedTexture& texels) {
  STextureImage* image = OfFile(path);
  if (image == nullptr) {
    image = images_.try_emplace(path, std::make_unique<STextureImage>()).first->second.get();
    image->path = path;
    image->name = FileNamePart(path);
  }
  image->read = {};
  image->size = TextureSizeOfLength(texels.indices.size());
  image->has_own_colors = true;
  DecodeTexture(texels.indices, texels.colors, *image);
  if (on_changed_) on_changed_();
  return image;
}

std::vector<std::string> CTextureStore::Files() const {
  std::vector<std::string> files;
  for (const auto& [path, image] : images_)
    if (image->read == nullptr) files.push_back(path);
  return files;
}

bool CTextureStore::Reload(const std::string& path) {
  const auto stored = images_.find(path);
  if (stored == images_.end()) return false;
  const STextureFiles files = FilesOf(*stored->second);
  if (!files.texels) return false;
  STextureImage& image = *stored->second;
  const std::vector<uint8_t> before = image.rgba;
  DecodeTexture(files, default_colors_, image);
  const bool is_other = before != image.rgba;
  if (is_other && on_changed_) on_changed_();
  return is_other;
}

SImage CTextureStore::Picture(const std::string& path) const {
  const STextureFiles files = ReadTextureFiles(path);
  if (!files.texels) return {};
  STextureImage image;
  DecodeTexture(files, default_colors_, image);
  for (size_t alpha = 3; alpha < image.rgba.size(); alpha += 4)
    image.rgba[alpha] = 255;
  return {.width = image.size, .height = image.size, .rgba = std::move(image.rgba)};
}

const STextureImage* CTextureStore::GetBlankTexture(const std::string& path, int width) {
  VELDRA_ASSERT(std::ranges::find(kTextureSizes, width) != kTextureSizes.end());
  const auto stored = images_.find(path);
  return stored != images_.end() ? stored->second.get() : stand_ins_.try_emplace(path, Blank(width)).first->second;
}

const STextureImage* CTextureStore::Blank(int width) {
  std::unique_ptr<STextureImage>& blank = blanks_[width];
  if (blank != nullptr) return blank.get();
  auto image = std::make_unique<STextureImage>();
  image->size = width;
  image->is_stand_in = true;
  const auto texels = static_cast<size_t>(width) * static_cast<size_t>(width);
  image->rgba.resize(texels * 4);
  image->rgb.resize(texels * 3);
  image->bgr.resize(texels * 3);
  blank = std::move(image);
  return blank.get();
}

CImageId::CImageId() {
  // Archives are looked through on other threads.
  static std::atomic<uint64_t> last = 0;
  number_ = ++last;
}

CImageId& CImageId::operator=(const CImageId& other) {
  if (&other != this) number_ = CImageId().number_;
  return *this;
}

void DecodeTexture(std::span<const uint8_t> indices, const ColorTable& colors, STextureImage& image) {
  const auto size = static_cast<size_t>(image.size);
  VELDRA_ASSERT(size > 0 && size % 2 == 0 && indices.size() == size * size);
  image.id = CImageId();
  const STexelTables tables = MakeTables(colors);
  image.rgba.resize(indices.size() * 4);
  image.rgb.resize(indices.size() * 3);
  image.bgr.resize(indices.size() * 3);
  // The rows of rgb and bgr in ascending order, so that a row's overhanging bytes fall where the next one begins.
  for (size_t row = 0; row < size; ++row) {
    const size_t file_row = size - row - 1;
    const SDestination to = {image.rgba.data() + file_row * size * 4, image.rgb.data() + row * size * 3,
                             image.bgr.data() + row * size * 3};
    DecodeRow(indices.subspan(file_row * size, size), tables, row + 1 == size, to);
  }
}

}  // namespace veldra
