#include "textures/texturefiles.h"

#include <vector>

#include "platform/fileset.h"
#include "platform/inputfile.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr uint64_t kLargestRaw = uint64_t{512} * 512;

STextureFiles ReadFrom(const std::string& raw, const std::string& act) {
  STextureFiles files;
  // Asked before anything is read: a file of any length can bear a texture's name.
  files.length = FileLength(raw);
  if (files.length && TextureSizeOfLength(*files.length) == 0) return files;
  files.texels = ReadWholeFile(raw, &files.error, kLargestRaw);
  if (files.texels && TextureSizeOfLength(files.texels->View().size()) == 0) {
    files.texels.reset();
    files.error.what = "its length changed meanwhile";
  }
  if (!act.empty()) files.colors = ReadColorTable(act, &files.colors_error);
  return files;
}

}  // namespace

int TextureSizeOfLength(uint64_t length) {
  for (const int size : kTextureSizes) {
    if (length == static_cast<uint64_t>(size) * static_cast<uint64_t>(size)) return size;
  }
  return 0;
}

std::string STextureFiles::Fault() const {
  if (!length) return "is not there";
  if (!error.what.empty()) return error.what;
  return Format("is %llu bytes long; a texture has 4096, 16384, 65536 or 262144",
                static_cast<unsigned long long>(*length));
}

STextureFiles ReadTextureFiles(const std::string& raw) {
  STextureFiles files;
  const std::string paths[] = {raw, ColorTablePath(raw)};
  ReadFiles(paths, [&](std::span<const std::string> places) { files = ReadFrom(places[0], places[1]); });
  return files;
}

void SettleTextureFiles(const std::string& raw) {
  SettleFiles(std::vector{raw, ColorTablePath(raw)});
}

bool WriteTextureFiles(const std::string& raw, std::span<const uint8_t> texels, const ColorTable& colors,
                       SError* error) {
  const SNewFile files[] = {{raw, texels}, {ColorTablePath(raw), colors}};
  return ReplaceFiles(files, error);
}

std::vector<SNewFile> TextureFileSet(const std::string& raw, const SIndexedTexture& texture) {
  return {{raw, texture.indices}, {ColorTablePath(raw), texture.colors}};
}

std::string ColorTablePath(const std::string& raw) {
  const std::string path = ChangeExtension(raw, "ACT");
  const std::string existing = FindAnyCase(path);
  return existing.empty() ? path : existing;
}

std::optional<ColorTable> ReadColorTable(std::string_view path, SError* error) {
  const std::string found = FindAnyCase(path);
  if (found.empty()) return std::nullopt;
  CInputFile file;
  ColorTable colors;
  if (!file.Open(found, error) || file.Length() < colors.size() || !file.ReadAt(0, colors, error)) return std::nullopt;
  return colors;
}

ColorTable GreyRamp() {
  ColorTable colors;
  for (size_t i = 0; i < colors.size(); ++i)
    colors[i] = static_cast<uint8_t>(i / 3);
  return colors;
}

}  // namespace veldra
