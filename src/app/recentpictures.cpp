#include "app/recentpictures.h"

#include <algorithm>

#include "document/earlierstates.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/userfolders.h"

namespace veldra {

CRecentPictures::CRecentPictures() : CRecentPictures(JoinPath(UserDataDirectory(), "thumbnails")) {}

std::string CRecentPictures::FileOf(const std::string& path) const {
  return JoinPath(folder_, CEarlierStates::KeyOfPath(path) + ".png");
}

void CRecentPictures::Keep(const std::string& path, const SImage& picture, const std::vector<std::string>& recent) {
  if (picture.width == 0 || !MakeDirectories(folder_)) return;
  std::vector<std::string> wanted = {FileOf(path)};
  for (const std::string& file : recent)
    wanted.push_back(FileOf(file));
  for (const std::string& name : ListDirectory(folder_)) {
    const std::string file = JoinPath(folder_, name);
    if (std::ranges::find(wanted, file) == wanted.end()) RemoveFile(file);
  }
  WritePng(wanted.front(), picture);
}

}  // namespace veldra
