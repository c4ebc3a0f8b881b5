#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "archive/podwriter.h"
#include "settings/settings.h"
#include "textures/texturefiles.h"

/// All textures that a model could use: what would be found under each name.
namespace veldra {

struct SCatalogTexture {
  SPodSource raw;                    ///< its name as it is in its folder or archive
  std::optional<SPodSource> colors;  ///< its own ones
  std::string place;                 ///< the folder or the archive
  int size = 0;                      ///< texels a side; 0: no texture has that length
};

/// What the game does not take about a texture of that file name and size, a line each; "" for nothing.
std::string GameFault(const std::string& name, int size);

/// Looks through folders and archives a little at a time, so that a window need not wait for thousands of files. A name
/// that several places have is listed where a model would find it: in the first of them.
class CTextureCatalog {
 public:
  CTextureCatalog() = default;
  /// PLACES: folders, and archives, in the order in which a texture is looked for.
  explicit CTextureCatalog(std::vector<std::string> places) : places_(std::move(places)) {}

  /// Opens one place, or looks at some files of it. False when there is nothing left to do.
  bool Step();
  const std::vector<SCatalogTexture>& Textures() const { return textures_; }

 private:
  void OpenFolder(const std::string& folder);
  void OpenArchive(const std::string& path);
  void LookAtFiles();
  void Add(SCatalogTexture texture);

  std::vector<std::string> places_;
  size_t next_place_ = 0;
  std::string folder_;                         ///< that is being looked through
  std::vector<std::string> names_;             ///< of its files
  size_t next_name_ = 0;                       ///< among them
  std::map<std::string, std::string> tables_;  ///< colour tables among them, by upper-cased name
  std::set<std::string> known_;                ///< upper-cased names
  std::vector<SCatalogTexture> textures_;
};

}  // namespace veldra
