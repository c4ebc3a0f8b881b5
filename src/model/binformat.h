#pragma once

#include <cstddef>
#include <cstdint>

/// The numbers of the model file's layout, which reading and writing share. docs/file-formats.md describes it.
namespace veldra {

// Header: type, scale word, two reserved words, vertex count.
inline constexpr uint32_t kModelType = 0x14;
inline constexpr uint32_t kAnimationControlType = 0x20;
inline constexpr size_t kWordSize = 4;
inline constexpr size_t kVertexCountOffset = 16;
inline constexpr size_t kHeaderSize = 20;
inline constexpr size_t kVertexSize = 12;

/// What opens a record that is no face; a face's record is opened by its type.
enum EBinTag : uint32_t {
  kTagVertexNormals = 0x03,  ///< 0, count, count × (x, y, z)
  kTagUntextured = 0x0A,     ///< 0
  kTagTexture = 0x0D,        ///< 0, name[16]
  kTagIgnoredPair = 0x17,    ///< two words
  kTagAnimation = 0x1D,      ///< 0, frame count, 0, frame period, 0, 0, count × name[32]
};

inline constexpr size_t kTextureFieldSize = 16;
inline constexpr size_t kTextureNameLength = 12;  ///< what is read of the field
inline constexpr size_t kFrameFieldSize = 32;
inline constexpr size_t kLongestFrameName = 15;
/// A frame period of one second.
inline constexpr double kPeriodOfOneSecond = 65536.0;

// Face record, behind its tag: corner count, normal, magic, then the corners.
inline constexpr size_t kFaceSize = 20;
inline constexpr size_t kCornerSize = 12;  ///< vertex index, u, v
inline constexpr size_t kUntexturedCornerSize = 4;
inline constexpr size_t kSmallestFaceSize = kWordSize + kFaceSize + 3 * kUntexturedCornerSize;
inline constexpr int32_t kMostCorners = 4;
/// The texture coordinate 1.0.
inline constexpr double kTexCoordOne = 16777215.0;

}  // namespace veldra
