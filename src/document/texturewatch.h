#pragma once

#include <map>
#include <string>
#include <vector>

#include "document/filestamp.h"
#include "textures/texturestore.h"

namespace veldra {

/// Notices that files of loaded textures have changed on the disk, and shows what they hold now. Nobody is asked: no
/// work of the user's is in a loaded texture.
class CTextureWatch {
 public:
  explicit CTextureWatch(CTextureStore& store) : store_(store) {}

  /// RAW files and colour tables of what is loaded.
  std::vector<std::string> Files();
  /// The names of the textures that are others now.
  std::vector<std::string> TakeNews();

 private:
  CTextureStore& store_;
  std::map<std::string, CDocumentStamp> stamps_;  ///< by the texture's path
};

}  // namespace veldra
