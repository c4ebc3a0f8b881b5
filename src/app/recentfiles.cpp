#include "app/recentfiles.h"

#include <algorithm>

namespace veldra {

void CRecentFiles::Set(std::vector<std::string> paths) {
  paths_.clear();
  for (auto path = paths.rbegin(); path != paths.rend(); ++path)
    Add(*path);
}

void CRecentFiles::Add(const std::string& path) {
  if (path.empty()) return;
  Remove(path);
  paths_.insert(paths_.begin(), path);
  if (paths_.size() > kMost) paths_.resize(kMost);
}

void CRecentFiles::Remove(const std::string& path) {
  std::erase(paths_, path);
}

}  // namespace veldra
