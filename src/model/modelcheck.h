#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/modelrecords.h"

/// What a modder should know about a model file.
namespace veldra {

enum class EFinding {
  kMissingTexture,
  kTextureSize,  ///< one that the game does not take
  kLongName,
  kNoArea,
  kBentQuad,
  kDoubleFace,
  kRepeatedCorner,
  kSamePlace,
  kUnusedVertex,
  kOffTexture,
  kTooLarge
};
inline constexpr size_t kFindingCount = 11;

/// "missing-texture"
const char* FindingName(EFinding kind);

struct SFinding {
  EFinding kind = EFinding::kMissingTexture;
  std::string text;  ///< one line, UTF-8
  std::vector<int32_t> faces = {};
  std::vector<int32_t> vertices = {};
  std::string texture = {};  ///< "" where it is about none
};

/// The width of the texture of that file name in texels; nothing when it is not found, 0 when it is no texture.
using FindTextureWidth = std::function<std::optional<int>(const std::string& file_name)>;

/// In the order of EFinding, within a kind in that of the file. TEXTURE_WIDTH is asked once a texture.
std::vector<SFinding> CheckModel(const SModelRecords& model, const FindTextureWidth& texture_width);

/// A quad is bent when a corner lies farther than this from the plane of the other three, in model units; of the four
/// ways to take three the largest triangle counts, or a thin one would tell of bends that nobody sees.
inline constexpr double kLargestBend = 1.0;
/// Distances above it, squared, leave 32 bits.
inline constexpr int64_t kLargestExtent = 46340;

}  // namespace veldra
