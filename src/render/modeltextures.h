#pragma once

#include <cstdint>
#include <unordered_map>

#include "model/binmodel.h"
#include "platform/glcontext.h"

namespace veldra {

/// The frame that an animated entry shows SECONDS after the start: its rate times SECONDS, rounded down, over and over.
/// 0 for a plain entry and for a rate that is not a finite number above 0.
const STextureImage& FrameAt(const CBinTexture& entry, double seconds);

/// What a face without a texture is drawn with where all faces have one.
const STextureImage& PlainWhite();

/// Texture images in one OpenGL context, each handed over once. The context must be current when the object goes, or
/// Forget called.
class CModelTextures {
 public:
  CModelTextures() = default;
  CModelTextures(const CModelTextures&) = delete;
  CModelTextures& operator=(const CModelTextures&) = delete;
  ~CModelTextures() { Release(); }

  /// Binds IMAGE for drawing, filtered or with its nearest texel; a checkerboard for one that could not be loaded.
  void Bind(const STextureImage& image, bool filtered);
  /// Frees the images that MODEL does not use.
  void Prune(const CBinModel& model);
  void Release();
  /// The context is gone, and the textures with it.
  void Forget() { textures_.clear(); }

 private:
  struct STexture {
    GLuint id = 0;
    bool has_mipmaps = false;
  };
  static void Upload(const STextureImage& image, bool with_mipmaps);

  std::unordered_map<uint64_t, STexture> textures_;  ///< by the number of the image
};

}  // namespace veldra
