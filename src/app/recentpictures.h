#pragma once

#include <string>
#include <vector>

#include "platform/png.h"

namespace veldra {

/// What the models looked like when they were closed, for the list of recent files.
class CRecentPictures {
 public:
  /// FOLDER need not be there; the usual one lies in the UserDataDirectory.
  CRecentPictures();
  explicit CRecentPictures(std::string folder) : folder_(std::move(folder)) {}

  /// PICTURE is from now on that of PATH, unless it has no pixels. Those of files that are not RECENT go.
  void Keep(const std::string& path, const SImage& picture, const std::vector<std::string>& recent);
  /// The file of the picture, be it there or not.
  std::string FileOf(const std::string& path) const;

 private:
  std::string folder_;
};

}  // namespace veldra
