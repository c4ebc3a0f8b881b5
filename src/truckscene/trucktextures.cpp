#include "truckscene/trucktextures.h"

#include <algorithm>

#include "archive/filepart.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Large squares of two greys.
STextureImage CheckImage() {
  constexpr int kSide = kTextureSizes[0];
  ColorTable colors{};
  std::fill_n(colors.begin(), 3, uint8_t{96});
  std::fill_n(colors.begin() + 3, 3, uint8_t{144});
  std::vector<uint8_t> indices;
  indices.reserve(size_t{kSide} * kSide);
  for (int i = 0; i < kSide * kSide; ++i)
    indices.push_back(static_cast<uint8_t>((i % kSide / 16 + i / kSide / 16) % 2));
  STextureImage image;
  image.size = kSide;
  DecodeTexture(indices, colors, image);
  return image;
}

}  // namespace

CTruckTextures::CTruckTextures(CTruckFiles& files, const ColorTable& default_colors)
    : CTextureFinder(unused_store_, quiet_, ""),
      unused_store_(quiet_, default_colors),
      files_(files),
      default_colors_(default_colors),
      stand_in_(CheckImage()) {}

std::unique_ptr<STextureImage> CTruckTextures::Read(const std::string& name) {
  const STruckFile& file = files_.Find(name, kTypeRaw);
  if (file.place == SDependency::EPlace::kMissing) return nullptr;
  if (file.place == SDependency::EPlace::kFolder) SettleTextureFiles(file.source.bytes.path);
  const auto indices = ReadFilePart(file.source.bytes);
  const int size = indices ? TextureSizeOfLength(indices->View().size()) : 0;
  if (size == 0) return nullptr;
  ColorTable colors = default_colors_;
  const STruckFile& table = files_.Find(ChangeExtension(TruckFileName(name, kTypeRaw), "ACT"), kTypeAct);
  if (table.place != SDependency::EPlace::kMissing) {
    const auto bytes = ReadFilePart(table.source.bytes);
    if (bytes && bytes->View().size() >= colors.size())
      std::copy_n(bytes->View().begin(), colors.size(), colors.begin());
  }
  auto image = std::make_unique<STextureImage>();
  image->path = file.source.bytes.path;
  image->name = TruckFileName(name, kTypeRaw);
  image->size = size;
  DecodeTexture(indices->View(), colors, *image);
  return image;
}

const STextureImage* CTruckTextures::Known(const std::string& name) {
  const auto [row, is_new] = images_.try_emplace(FoldName(TruckFileName(name, kTypeRaw)));
  if (is_new) row->second = Read(name);
  return row->second.get();
}

const STextureImage* CTruckTextures::Find(const std::string& name) {
  const STextureImage* const image = Known(name);
  return image != nullptr ? image : &stand_in_;
}

std::optional<SColor> CTruckTextures::MeanColor(const std::string& name) {
  const STextureImage* const image = name.empty() ? nullptr : Known(name);
  if (image == nullptr) return std::nullopt;
  uint64_t sums[3] = {};
  uint64_t count = 0;
  for (size_t i = 0; i + 3 < image->rgba.size(); i += 4) {
    if (image->rgba[i + 3] == 0) continue;
    ++count;
    for (size_t k = 0; k < 3; ++k)
      sums[k] += image->rgba[i + k];
  }
  if (count == 0) return SColor{};
  return SColor{static_cast<uint8_t>(sums[0] / count), static_cast<uint8_t>(sums[1] / count),
                static_cast<uint8_t>(sums[2] / count)};
}

void CTruckTextures::Forget() {
  images_.clear();
}

}  // namespace veldra
