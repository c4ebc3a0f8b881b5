#pragma once

#include <deque>
#include <vector>

#include "model/binmodel.h"
#include "platform/png.h"
#include "render/modelpicture.h"

namespace veldra::testing {

inline constexpr SColor kRed = {255, 0, 0};
inline constexpr SColor kGreen = {0, 255, 0};
inline constexpr SColor kBlue = {0, 0, 255};
inline constexpr SColor kYellow = {255, 255, 0};
inline constexpr SColor kCyan = {0, 255, 255};
inline constexpr SColor kMagenta = {255, 0, 255};
inline constexpr SColor kBlack = {0, 0, 0};

/// A model to be drawn, with the texture images that its entries look at.
struct SScene {
  /// A texture of 64 × 64 texels: COLORS[0] COLORS[1] above COLORS[2] COLORS[3], or one colour all over.
  const STextureImage* Image(const std::vector<SColor>& colors);
  CBinTexture* Texture(const std::vector<SColor>& colors);
  CBinTexture* Animation(const std::vector<SColor>& frames, double rate);
  /// A quad whose first corner shows the lower left of the whole texture, the others following to the right.
  CBinFace& AddQuad(const std::vector<SPoint>& corners, CBinTexture* texture, uint32_t type = kFaceTextured);
  /// A square of 2 HALF a side about the origin, seen from the front.
  CBinFace& AddWall(CBinTexture* texture, uint32_t type = kFaceTextured, int32_t half = 100);
  /// Squares of STEP a side in COUNT rows of COUNT, about the origin.
  void AddTiles(int32_t count, int32_t step, CBinTexture* texture, uint32_t type);
  /// Sides in the order left, right, bottom, top, back, front; one colour each.
  void AddBox(const SPoint& low, const SPoint& high, const std::vector<SColor>& colors);

  std::deque<STextureImage> images;
  CBinModel model;
};

/// The wall covers the middle half of a square picture's sides.
SViewState WallState();
SViewState FittedState(const CBinModel& model);

/// Square; a failure fails the test and gives a picture that is all black.
SImage Picture(const SScene& scene, const SViewState& state, int side = 96, double seconds = 0.0);
/// Across and down in parts of the sides.
SColor At(const SImage& image, double across, double down);

/// What a lit face of a pure colour looks like, bright or dim: which channels are on, "none" for dark grey and black.
SColor Pure(const SColor& seen);

struct SCovered {
  int left, top, right, bottom;  ///< the last two outside; all 0 when nothing is
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool operator==(const SCovered&) const = default;
};
/// The pixels that are not BACKGROUND.
SCovered Covered(const SImage& image, const SColor& background);

}  // namespace veldra::testing

namespace veldra {
void PrintTo(const SColor& color, std::ostream* out);
}  // namespace veldra
