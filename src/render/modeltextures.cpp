#include "render/modeltextures.h"

#include <array>
#include <cmath>
#include <unordered_set>

namespace veldra {

namespace {

/// How a texture goes on beyond its edge. Not in 1.1, where the clamping blends with a border colour that is not
/// wanted.
GLint EdgeMode() {
  constexpr GLint kClampToEdge = 0x812F;
  const auto* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  const bool is_1_1 = version == nullptr || (version[0] == '1' && version[1] == '.' && version[2] <= '1');
  return is_1_1 ? GL_REPEAT : kClampToEdge;
}

bool HasTexels(const STextureImage& image) {
  const auto side = static_cast<size_t>(image.size > 0 ? image.size : 0);
  return side > 0 && image.rgba.size() == side * side * 4 && !image.is_stand_in;
}

/// Stands out in a model, for who sees no colours too.
const STextureImage& Checkerboard() {
  static const STextureImage checkerboard = [] {
    constexpr int kSide = 64;
    constexpr int kSquare = 8;
    STextureImage image;
    image.size = kSide;
    for (int k = 0; k < kSide * kSide; ++k) {
      const bool is_light = (k % kSide / kSquare + k / kSide / kSquare) % 2 == 0;
      const std::array<uint8_t, 4> texel =
          is_light ? std::array<uint8_t, 4>{250, 150, 250, 255} : std::array<uint8_t, 4>{70, 20, 80, 255};
      image.rgba.insert(image.rgba.end(), texel.begin(), texel.end());
    }
    return image;
  }();
  return checkerboard;
}

}  // namespace

const STextureImage& FrameAt(const CBinTexture& entry, double seconds) {
  const auto& frames = entry.Frames();
  const double passed = std::floor(entry.Rate() * seconds);
  const bool is_running = entry.Rate() > 0.0 && std::isfinite(entry.Rate()) && std::isfinite(passed) && passed > 0.0;
  if (!is_running) return *frames.front().image;
  return *frames[static_cast<size_t>(std::fmod(passed, static_cast<double>(frames.size())))].image;
}

const STextureImage& PlainWhite() {
  static const STextureImage white = [] {
    STextureImage image;
    image.size = 2;
    image.rgba.assign(size_t{2} * 2 * 4, 255);
    return image;
  }();
  return white;
}

void CModelTextures::Bind(const STextureImage& asked, bool filtered) {
  const STextureImage& image = HasTexels(asked) ? asked : Checkerboard();
  STexture& texture = textures_[image.id.Number()];
  const bool is_new = texture.id == 0;
  if (is_new) glGenTextures(1, &texture.id);
  glBindTexture(GL_TEXTURE_2D, texture.id);
  if (is_new || (filtered && !texture.has_mipmaps)) Upload(image, filtered || texture.has_mipmaps);
  texture.has_mipmaps = texture.has_mipmaps || filtered;
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filtered ? GL_LINEAR : GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filtered ? GL_LINEAR_MIPMAP_LINEAR : GL_NEAREST);
}

void CModelTextures::Upload(const STextureImage& image, bool with_mipmaps) {
  const GLint edge = EdgeMode();
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, edge);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, edge);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  if (with_mipmaps) {
    gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, image.size, image.size, GL_RGBA, GL_UNSIGNED_BYTE, image.rgba.data());
  } else {
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image.size, image.size, 0, GL_RGBA, GL_UNSIGNED_BYTE, image.rgba.data());
  }
}

void CModelTextures::Prune(const CBinModel& model) {
  std::unordered_set<uint64_t> used = {Checkerboard().id.Number(), PlainWhite().id.Number()};
  for (int32_t k = 0; k < model.TextureCount(); ++k) {
    for (const CBinTexture::SFrame& frame : model.Texture(k).Frames())
      used.insert(frame.image->id.Number());
  }
  std::erase_if(textures_, [&](const auto& entry) {
    if (used.contains(entry.first)) return false;
    glDeleteTextures(1, &entry.second.id);
    return true;
  });
}

void CModelTextures::Release() {
  for (const auto& [image, texture] : textures_)
    glDeleteTextures(1, &texture.id);
  textures_.clear();
}

}  // namespace veldra
