#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "archive/filetypes.h"

/// Which files every installation of the game has, so that a new archive can do without them.
namespace veldra {

/// Upper-case base names without extension, a list a type.
using StockNames = std::array<std::vector<std::string>, kFileTypeCount>;

/// The shipped list: the resource "IDR_PODZIPFILES" of type "STRINGLIST". 36 counts (32 bits, little-endian), then the
/// names type by type, each followed by a zero byte.
std::span<const uint8_t> PodZipFilesResource();
/// The name of the list, in the folder of the settings file, that takes the shipped one's place.
inline constexpr const char* kStockFileName = "Veldra.stock";
/// How many names of each type the game has, by the count of its publisher's own archives.
inline constexpr std::array<uint32_t, kFileTypeCount> kExpectedStockCounts = {
    20, 350, 3812, 3663, 566, 210, 31, 2,  1,  1, 15, 15, 15, 15, 15, 17, 15, 15,
    15, 15,  15,   15,   15,  15,  17, 15, 15, 1, 32, 1,  1,  3,  60, 1,  1,  1};

/// What they come to, and how many the shipped list has of them.
inline constexpr const char* kShippedListNote =
    "The built-in list knows only 123 of the 9,016 files that the game has.";

/// Nothing when RESOURCE is not of the layout above.
std::optional<StockNames> ReadStringList(std::span<const uint8_t> resource);
std::vector<uint8_t> WriteStringList(const StockNames& names);

/// The stock-file lookup. Its tables are built on first use, once; building them a second time is a programming error.
class CStockFiles {
 public:
  /// SETTINGS_FOLDER: where Veldra.stock is looked for; the shipped list serves when there is none, or it is broken
  /// (with a trace line). "" for the shipped list only.
  explicit CStockFiles(std::string settings_folder = {}) : settings_folder_(std::move(settings_folder)) {}

  /// Whether the bare FILE_NAME (no folder, any letter case) names a file that every installation has.
  bool IsStockFile(std::string_view file_name) const;
  /// How many names the list in use has.
  size_t Count() const;
  /// What the user of a window should know of that list; "" when it is his own.
  std::string Note() const;

 private:
  void BuildTables() const;

  std::string settings_folder_;
  mutable std::array<std::unordered_set<std::string>, kFileTypeCount> names_;
  mutable bool built_ = false;
  mutable bool is_shipped_ = false;
};

}  // namespace veldra
