#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "archive/poddocument.h"
#include "archive/podwriter.h"
#include "archive/stockfiles.h"
#include "settings/settings.h"

/// Which files a truck, a model or a texture needs, and where they are.
namespace veldra {

/// A file that another one needs.
struct SDependency {
  enum class EPlace {
    kOwn,      ///< among the files that the search began with
    kArchive,  ///< in another archive
    kFolder,   ///< a file of its own
    kMissing
  };

  std::string name;       ///< bare file name, upper case: "SKY.RAW"
  std::string needed_by;  ///< the bare file name of the first that needs it
  EPlace place = EPlace::kMissing;
  size_t own = 0;         ///< for kOwn: position among those files
  SPodSource source;      ///< for the others that are not missing: ready to be put into an archive
  bool is_stock = false;  ///< every installation has it, so that it need not be found
};

/// Where files are looked for, besides those that the search begins with.
struct SSearchPlaces {
  std::vector<std::string> archives;  ///< other archives, in this order
  std::vector<std::string> folders;   ///< then these folders, each also with the folder of the file's type below it
};

/// All archives in the folder of ARCHIVE but itself, in name order; then the folders that SETTINGS name and the game's
/// own at GAME_FOLDER ("" for none).
SSearchPlaces PlacesBeside(const std::string& archive, const CSettings& settings, const std::string& game_folder);

/// Whether what stock files need is looked for as well. A stock file that is left out of an archive needs nothing.
enum class EStockNeeds { kFollowed, kNothing };

/// What the files START (positions in OWN) need, and what that needs in turn: TRK its models, textures, colour tables
/// and sounds; BIN its textures, those of its animations too; RAW its ACT. Each once, in the order in which they are
/// met; files in START are left out. What cannot be read or understood needs nothing, and adds a line to COMPLAINTS.
/// Asks nothing, loads no textures.
std::vector<SDependency> FindDependencies(const std::vector<SPodSource>& own, const std::vector<size_t>& start,
                                          const SSearchPlaces& places, const CStockFiles& stock,
                                          std::vector<std::string>* complaints = nullptr,
                                          EStockNeeds stock_needs = EStockNeeds::kFollowed);

/// The entries of ARCHIVE, as FindDependencies and CreatePod take them. A faulty one has no path, and is found by
/// nobody.
std::vector<SPodSource> SourcesOf(const CPodDocument& archive);

/// For SExtractRequest::add_dependencies: adds those that lie in ARCHIVE itself. What is elsewhere or missing, stock
/// files apart, comes back as text lines for the user.
std::vector<std::string> AddOwnDependencies(const CPodDocument& archive, const SSearchPlaces& places,
                                            const CStockFiles& stock, std::vector<size_t>& entries);

}  // namespace veldra
