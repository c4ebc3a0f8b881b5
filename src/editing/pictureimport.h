#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "document/tarn2doc.h"
#include "textures/picturetexture.h"

/// A picture of another program made into a texture of the model.
namespace veldra {

/// A part of a picture, in pixels.
struct SPictureCrop {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const SPictureCrop&) const = default;
};

struct SPictureInput {
  enum class ETransparent {
    kPicture,  ///< what is transparent in the picture; dark pixels stay opaque
    kDark,     ///< that, and near-black pixels
    kNothing,
    kColor  ///< what the picture leaves transparent, and pixels of one colour
  };
  std::optional<SPictureCrop> crop = {};  ///< within the picture; nothing: all of it
  int size = 256;
  EScaling scaling = EScaling::kSmooth;
  std::optional<ColorTable> colors = {};  ///< nothing: made for the picture
  ETransparent transparent = ETransparent::kPicture;
  std::array<uint8_t, 3> key = {255, 0, 255};  ///< for kColor: red, green, blue
  int key_reach = 0;                           ///< each of them may be so much off
  int most_colors = 256;                       ///< of a table that is made
};

/// PICTURE, read from PATH ("": from nowhere), as INPUT wants it. Where all of it is wanted as it is, it is what the
/// command line makes of the file: a table of colours stays.
SIndexedTexture TextureFrom(const std::string& path, const SImage& picture, const SPictureInput& input);

/// Asks for a picture; nothing when the user cancelled or has been told that it cannot be read.
struct SOpenPicture {
  std::string path;  ///< "" for one that was pasted
  SImage image;
};
std::optional<SOpenPicture> AskPicture(CTarnDoc& document);
std::optional<SOpenPicture> OpenPicture(CTarnDoc& document, const std::string& path);

/// Asks where TEXTURE, made of the picture at PATH, goes, writes its RAW and ACT files and puts it among the model's
/// textures; where it is there already, it is shown with the new texels. False when that came to nothing, which the
/// user knows.
bool SaveTextureOfPicture(CTarnDoc& document, const std::string& path, const SIndexedTexture& texture);

}  // namespace veldra
