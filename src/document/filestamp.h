#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace veldra {

/// How a file was when this program last read or wrote it, to notice that another program has changed it since.
class CFileStamp {
 public:
  CFileStamp() = default;
  /// Of the file at PATH as it is now; it need not be there.
  explicit CFileStamp(std::string path);

  /// The file is there and holds something else. One that was only written anew, with the same bytes, has not changed;
  /// nor has one that is gone, as nobody can lose what it held.
  bool IsChanged();

 private:
  std::string path_;
  std::optional<uint64_t> length_;    ///< nothing: it was not there
  std::optional<int64_t> time_;       ///< as FileWriteTime
  std::optional<uint32_t> checksum_;  ///< of files that are read in no time
};

}  // namespace veldra
