#include "document/texturewatch.h"

#include "platform/files.h"
#include "platform/paths.h"

namespace veldra {

std::vector<std::string> CTextureWatch::Files() {
  std::vector<std::string> files;
  for (const std::string& path : store_.Files()) {
    const std::string table = ColorTablePath(path);
    if (!stamps_.contains(path)) stamps_.emplace(path, CDocumentStamp({path, table}));
    files.push_back(path);
    if (IsFile(table)) files.push_back(table);
  }
  return files;
}

std::vector<std::string> CTextureWatch::TakeNews() {
  std::vector<std::string> changed;
  for (auto& [path, stamp] : stamps_) {
    if (stamp.TakeNews() != EFileNews::kChanged) continue;
    // Half a file, which another program is still writing, is news again when it is whole.
    stamp = CDocumentStamp({path, ColorTablePath(path)});
    if (store_.Reload(path)) changed.push_back(FileNamePart(path));
  }
  return changed;
}

}  // namespace veldra
