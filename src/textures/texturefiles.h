#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/fileset.h"

/// A texture on the disk: a RAW file with its texels and the ACT file beside it with its colours, which are one save.
namespace veldra {

/// A colour table: 256 entries of red, green, blue, as an ACT file holds them.
using ColorTable = std::array<uint8_t, 768>;

struct SIndexedTexture {
  std::vector<uint8_t> indices;  ///< size × size, first row first
  ColorTable colors;
};

/// Edge lengths of the square textures that can be told by their files' lengths.
inline constexpr std::array<int, 4> kTextureSizes = {64, 128, 256, 512};
/// The game itself takes two of them.
constexpr bool IsGameTextureSize(int size) {
  return size == 64 || size == 256;
}

/// The edge length of a RAW file of LENGTH bytes, or 0 when no texture has that length.
int TextureSizeOfLength(uint64_t length);

/// What the user is told of an ACT file that is there and could not be read, with the reason as details.
inline constexpr const char* kUnreadColorsText = "The colour table \"%s\" cannot be read. The default one is taken.";

struct STextureFiles {
  std::optional<uint64_t> length;    ///< of the RAW file, when there is one
  std::optional<CFileBytes> texels;  ///< when they are a texture's
  std::optional<ColorTable> colors;  ///< when the ACT file is there and can be read
  SError error;                      ///< what the system says when the texels could not be read
  SError colors_error;               ///< what the system says when the ACT file could not be read

  /// Why there are no texels, to go behind the file's name: "is 5 bytes long; a texture has 4096, ...".
  std::string Fault() const;
};

/// RAW is found under its very name, the ACT file in any letter case.
STextureFiles ReadTextureFiles(const std::string& raw);

/// Finishes or takes back an interrupted WriteTextureFiles, for who reads the files by other means.
void SettleTextureFiles(const std::string& raw);

/// Replaces both files together. ERROR as in ReplaceFiles.
bool WriteTextureFiles(const std::string& raw, std::span<const uint8_t> texels, const ColorTable& colors,
                       SError* error);

/// The two files of a texture, for ReplaceFiles. TEXTURE must outlive them.
std::vector<SNewFile> TextureFileSet(const std::string& raw, const SIndexedTexture& texture);

/// The colour table's file beside RAW: the one that is there, whatever the case of its name, or a new one.
std::string ColorTablePath(const std::string& raw);

/// The first 768 bytes of an ACT file; nothing when it cannot be read, which ERROR says, is shorter or not there. The
/// file is found in any letter case.
std::optional<ColorTable> ReadColorTable(std::string_view path, SError* error = nullptr);
/// Entry k is (k, k, k): stands in where no colour table can be read at all.
ColorTable GreyRamp();

}  // namespace veldra
