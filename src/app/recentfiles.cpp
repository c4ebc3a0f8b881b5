#include "app/recentfiles.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Names are compared first: a file of a disk that does not answer may take its time.
bool IsSame(const std::string& a, const std::string& b) {
  return a == b || (EqualNoCase(FileNamePart(a), FileNamePart(b)) && IsSameFile(a, b));
}

}  // namespace

void CRecentFiles::Set(std::vector<std::string> paths) {
  std::vector<std::string> kept;
  for (std::string& path : paths) {
    const bool is_new = !path.empty() && std::find(kept.begin(), kept.end(), path) == kept.end();
    if (is_new && kept.size() < kMost) kept.push_back(std::move(path));
  }
  Change(std::move(kept));
}

void CRecentFiles::Add(const std::string& path) {
  if (path.empty()) return;
  std::vector<std::string> paths = {path};
  for (const std::string& other : paths_)
    if (!IsSame(other, path) && paths.size() < kMost) paths.push_back(other);
  Change(std::move(paths));
}

void CRecentFiles::Remove(const std::string& path) {
  std::vector<std::string> paths = paths_;
  std::erase(paths, path);
  Change(std::move(paths));
}

void CRecentFiles::Change(std::vector<std::string> paths) {
  if (paths == paths_) return;
  paths_ = std::move(paths);
  if (on_change_) on_change_();
}

}  // namespace veldra
