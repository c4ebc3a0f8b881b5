#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archive/poddocument.h"
#include "archive/podwriter.h"
#include "packing/dependencies.h"

/// Inside FindDependencies: looking for one file after the other in the same places. Each archive's directory and each
/// folder is read once, when the first file is looked for in it.
namespace veldra {

class CPlaceSearch {
 public:
  explicit CPlaceSearch(const SSearchPlaces& places) : places_(places) {}

  std::optional<SPodSource> FindInArchives(const std::string& file_name);
  std::optional<SPodSource> FindInFolders(const std::string& file_name);
  /// In the places where the files of someone who makes NEEDED_BY, a file of its own, lie: its folder, and when that is
  /// named like the game's folder for such files, the folders beside it.
  std::optional<SPodSource> FindBeside(const std::string& needed_by, const std::string& file_name);

 private:
  using Listing = std::map<std::string, std::string>;  ///< names as they are on the disk, by upper-cased name

  const CPodDocument* Archive(size_t index);
  const Listing& ListingOf(const std::string& folder);
  /// In FOLDER and in the folder of the file's type below it.
  std::optional<SPodSource> FindInFolder(const std::string& folder, const std::string& file_name);

  const SSearchPlaces& places_;
  std::map<size_t, std::unique_ptr<CPodDocument>> archives_;  ///< null for one that cannot be read
  std::map<std::string, Listing> listings_;
};

}  // namespace veldra
