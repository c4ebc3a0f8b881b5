#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "platform/bytes.h"
#include "platform/numbers.h"

/// What writer and reader of snapshots have to agree on. A snapshot is
///
///   8 bytes kMagic, u32 kVersion, u64 length of the body, u32 checksum of the body, the body.
///
/// The body is the scale word (i32) and, each as a number of changing length, the counts of vertices, faces and
/// textures and the lengths of the sections, then the sections. What belongs together stands in a section of its own,
/// and numbers stand as the difference to the one before: neighbours in a model are alike, so most take one byte.
namespace veldra::snapshot {

inline constexpr std::string_view kMagic = "VELDSNAP";
inline constexpr uint32_t kVersion = 1;
inline constexpr size_t kHeaderSize = 8 + 4 + 8 + 4;

enum ESection { kTextures, kVertices, kFaces, kCorners, kCoords, kNormals, kGroups, kSectionCount };

/// What opens a face in its section.
enum EFaceFlag : uint8_t {
  kIsQuad = 1,
  kHasNewType = 2,     ///< its type follows; else that of the face before
  kHasNewTexture = 4,  ///< 1 + its texture's position follows, 0 for none; else as the face before
  kHasFourCoords = 8,  ///< else three
  kAllFaceFlags = 15,
};

/// Faces without a texture have their coordinates on this grid.
inline constexpr uint32_t kUsualWidth = 256;
inline constexpr uint32_t kLargestWidth = 1 << 20;

/// Seven bits a byte, the lowest first; all bytes but the last have the top bit set.
inline void WriteNumber(CByteWriter& out, uint64_t value) {
  for (; value >= 0x80; value >>= 7)
    out.WriteU8(static_cast<uint8_t>(value | 0x80));
  out.WriteU8(static_cast<uint8_t>(value));
}

inline uint64_t ReadNumber(CByteReader& in) {
  uint64_t value = 0;
  for (int shift = 0; shift < 64; shift += 7) {
    const uint8_t byte = in.ReadU8();
    value |= static_cast<uint64_t>(byte & 0x7F) << shift;
    if ((byte & 0x80) == 0) break;
  }
  return value;
}

/// VALUE as its difference to LAST, which becomes VALUE; small both ways is short.
inline void WriteStep(CByteWriter& out, int32_t value, int32_t& last) {
  const auto step = static_cast<uint32_t>(WrapSubtract(value, last));
  WriteNumber(out, (step << 1) ^ (0 - (step >> 31)));
  last = value;
}

inline int32_t ReadStep(CByteReader& in, int32_t& last) {
  const auto code = static_cast<uint32_t>(ReadNumber(in));
  last = WrapAdd(last, static_cast<int32_t>((code >> 1) ^ (0 - (code & 1))));
  return last;
}

inline void WriteDouble(CByteWriter& out, double value) {
  const auto bits = std::bit_cast<uint64_t>(value);
  out.WriteU32(static_cast<uint32_t>(bits));
  out.WriteU32(static_cast<uint32_t>(bits >> 32));
}

inline double ReadDouble(CByteReader& in) {
  const uint64_t low = in.ReadU32();
  return std::bit_cast<double>(low | uint64_t{in.ReadU32()} << 32);
}

/// Texture coordinates mostly lie on the grid of their texture's texels, as k / (WIDTH - 1), and stand as 1 + k then;
/// all others as 0 and their eight bytes.
inline void WriteCoord(CByteWriter& out, double value, uint32_t width) {
  const double factor = width - 1;
  const double texel = value >= 0.0 && value <= 1.0 ? static_cast<double>(Truncate(value * factor + 0.5)) : 0.0;
  const bool is_on_grid = std::bit_cast<uint64_t>(texel / factor) == std::bit_cast<uint64_t>(value);
  WriteNumber(out, is_on_grid ? static_cast<uint64_t>(texel) + 1 : 0);
  if (!is_on_grid) WriteDouble(out, value);
}

inline double ReadCoord(CByteReader& in, uint32_t width) {
  const uint64_t code = ReadNumber(in);
  return code == 0 ? ReadDouble(in) : static_cast<double>(code - 1) / (width - 1);
}

}  // namespace veldra::snapshot
