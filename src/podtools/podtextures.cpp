#include "podtools/podtextures.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr int kBlankWidth = 64;

std::optional<CFileBytes> ReadFile(const CPodDocument& archive, const std::string& name) {
  const auto entry = archive.FindFile(name);
  if (!entry) return std::nullopt;
  return archive.ReadEntry(*entry);
}

}  // namespace

std::unique_ptr<STextureImage> ReadPodTexture(const CPodDocument& archive, const std::string& raw_name,
                                              const ColorTable& default_colors) {
  const auto indices = ReadFile(archive, raw_name);
  if (!indices) return nullptr;
  auto image = std::make_unique<STextureImage>();
  image->name = raw_name;
  image->size = TextureSizeOfLength(indices->View().size());
  if (image->size == 0) return nullptr;
  ColorTable colors = default_colors;
  const auto table = ReadFile(archive, ChangeExtension(raw_name, "ACT"));
  if (table && table->View().size() >= colors.size()) std::copy_n(table->View().begin(), colors.size(), colors.begin());
  DecodeTexture(indices->View(), colors, *image);
  return image;
}

const STextureImage* CPodTextureFinder::Find(const std::string& name) {
  auto& image = images_[FoldName(name)];
  if (image == nullptr) image = ReadPodTexture(archive_, name, default_colors_);
  if (image != nullptr) return image.get();
  const STextureImage* const other = FindInFolder(name);
  return other != nullptr ? other : store_.GetBlankTexture("not in the archive", kBlankWidth);
}

const STextureImage* CPodTextureFinder::FindInFolder(const std::string& name) {
  const std::string path = IsBareName(name) ? FindAnyCase(JoinPath(art_directory_, name)) : "";
  return IsFile(path) ? store_.GetTexture(path) : nullptr;
}

}  // namespace veldra
