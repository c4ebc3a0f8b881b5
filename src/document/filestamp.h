#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

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
  /// It was there, and is not any more.
  bool IsGone() const;
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
  std::optional<uint64_t> length_;    ///< nothing: it was not there
  std::optional<int64_t> time_;       ///< as FileWriteTime
  std::optional<uint32_t> checksum_;  ///< of files that are read in no time
};

/// What has become of a document's file since it was last read or written here.
enum class EFileNews { kNone, kChanged, kGone };

/// The stamps of all the files of one document.
class CDocumentStamp {
 public:
  CDocumentStamp() = default;
  /// Of FILES as they are now, the document's own first.
  explicit CDocumentStamp(std::vector<std::string> files);

  /// One holds something else.
  bool IsChanged();
  /// The path of the one that is gone, or "".
  std::string Gone() const;
  /// What is new, each piece of news once.
  EFileNews TakeNews();

 private:
  std::vector<CFileStamp> files_;
  std::optional<int64_t> told_change_;  ///< when the file was written that was news
  std::string told_gone_;
};

}  // namespace veldra
