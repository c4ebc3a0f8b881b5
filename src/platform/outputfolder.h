#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/inputfile.h"

namespace veldra {

/// A folder that files are put into, and the folders below it. Each is held open while files are put into it, and none
/// is entered through a link: a link that somebody plants meanwhile leads nowhere.
class COutputFolder {
 public:
  COutputFolder();
  ~COutputFolder();
  COutputFolder(const COutputFolder&) = delete;
  COutputFolder& operator=(const COutputFolder&) = delete;

  /// PATH is there, and may itself be a link or lie behind one.
  bool Open(std::string_view path, SError* error = nullptr);
  /// From now on files go into the folder RELATIVE (parts without "." and ".."; "" for the one that was opened). What
  /// is missing on the way is made; a link or a file in its place is refused.
  bool Enter(std::string_view relative, SError* error = nullptr);
  /// What the user may still write on its disk, in bytes; nothing where that cannot be told.
  std::optional<uint64_t> FreeSpace() const;

 private:
  friend class COutputFile;
  struct SState;
  std::unique_ptr<SState> state_;
};

/// A file of the folder that COutputFolder is in: under another name until it is whole, then renamed. A link of its
/// name is replaced and not followed; the permissions of a file that is replaced are kept. Nothing waits for the disk,
/// which for many files would take longer than the writing: it is for copies of what still is elsewhere.
class COutputFile {
 public:
  /// FOLDER stays where it is until this one is gone.
  COutputFile(const COutputFolder& folder, std::string name);
  ~COutputFile();  ///< removes what Commit has not made a file
  COutputFile(const COutputFile&) = delete;
  COutputFile& operator=(const COutputFile&) = delete;

  bool Open(SError* error);
  /// As CReplacement::CopyFrom.
  bool CopyFrom(const CInputFile& from, uint64_t offset, uint64_t length, const std::function<bool(uint64_t)>& step,
                SError* error);
  bool Commit(SError* error);

 private:
  struct SState;
  std::unique_ptr<SState> state_;
};

}  // namespace veldra
