#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "textures/texturefiles.h"

namespace veldra {

/// A colour table while it is changed, with the texels that have its colours. Each change can be taken back; the last
/// kMostSteps are kept.
class CColorTableEdit {
 public:
  static constexpr size_t kMostSteps = 60;
  using Color = std::array<uint8_t, 3>;

  /// TEXTURE may have no texels.
  explicit CColorTableEdit(SIndexedTexture texture);

  const SIndexedTexture& Texture() const { return texture_; }
  Color ColorOf(int entry) const;
  /// The game lets it through.
  bool IsTransparent(int entry) const;
  int UseCount(int entry) const { return uses_[static_cast<size_t>(entry)]; }
  bool IsChanged() const { return !back_.empty(); }

  void SetColor(int entry, const Color& color);
  /// Black, or back to the darkest colour that the game draws.
  void SetTransparent(int entry, bool is_transparent);
  /// With KEEPS_PICTURE the texels change with the entries, so that the picture stays.
  void Exchange(int a, int b, bool keeps_picture);
  void SetTable(const ColorTable& colors);

  bool CanStepBack() const { return !back_.empty(); }
  bool CanStepForward() const { return !forward_.empty(); }
  void StepBack() { Step(back_, forward_); }
  void StepForward() { Step(forward_, back_); }

 private:
  using States = std::vector<SIndexedTexture>;
  void Begin();
  void Step(States& from, States& to);
  void Count();

  SIndexedTexture texture_;
  std::array<int, 256> uses_ = {};
  States back_;
  States forward_;
};

}  // namespace veldra
