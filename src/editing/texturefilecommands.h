#pragma once

#include <functional>
#include <optional>
#include <string>

#include "document/tarn2doc.h"
#include "packing/texturecatalog.h"
#include "textures/rawtexture.h"

/// What is done to the files of a texture, whichever model uses it.
namespace veldra {

/// A texture as it is stored, of a model or not.
struct STextureSource {
  std::string name;                          ///< upper case, with its extension
  std::string path;                          ///< of its RAW file; "" for one in an archive
  std::function<STextureFiles()> read = {};  ///< now
};
/// IMAGE is no stand-in.
STextureSource SourceOf(const STextureImage& image);
STextureSource SourceOf(const SCatalogTexture& texture);

/// Nothing when it cannot be read, which the user has been told.
std::optional<SRawTexture> OpenTexture(CTarnDoc& document, const STextureSource& source);

/// Asks where to, and writes the texture as a PNG picture, with its colour table in its order or in true colour.
bool ExportTexture(CTarnDoc& document, const STextureSource& source);

/// Asks where to, offering SOURCE's own file, and writes TEXTURE there. Where it is loaded it is shown so from then on.
/// The path; nothing when that came to nothing, which the user knows.
std::optional<std::string> SaveTexture(CTarnDoc& document, const STextureSource& source,
                                       const SIndexedTexture& texture);

struct STextureChange {
  int size = 0;
  EScaling scaling = EScaling::kSmooth;
  std::optional<ColorTable> colors = {};  ///< nothing: they stay
};
/// TEXTURE with another width, then in the nearest ones of other colours.
SIndexedTexture Changed(const SRawTexture& texture, const STextureChange& change);

}  // namespace veldra
