#include "document/archiveplace.h"

#include "archive/poddocument.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

bool SArchivePlace::IsSame(const SArchivePlace& other) const {
  return FoldName(entry) == FoldName(other.entry) && IsSameFile(archive, other.archive);
}

std::string SArchivePlace::Title() const {
  return DisplayFileName(entry) + " (" + FileNamePart(archive) + ")";
}

std::optional<CFileBytes> ReadPlace(const SArchivePlace& place, SError* error) {
  CPodDocument archive;
  if (!archive.Load(place.archive, error)) return std::nullopt;
  const std::vector<size_t> found = archive.FindAll(place.entry);
  if (!found.empty()) return archive.ReadEntry(found.back(), error);
  Fail(error, "it is not in the archive");
  return std::nullopt;
}

}  // namespace veldra
