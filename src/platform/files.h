#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#ifdef ReplaceFile
#undef ReplaceFile  // a macro of Windows' headers, which the toolkit's OpenGL headers include
#endif

/// The only place that touches the disk. Paths are UTF-8 with either separator. No exceptions; an operation that can
/// fail says so in its result and, where a reason helps the user, in SError ("disk full", "permission denied").
namespace veldra {

struct SError {
  std::string what;
};

/// What SError says when that is the reason.
inline constexpr const char* kNotEnoughMemory = "not enough memory";

/// Says WHAT where ERROR is wanted; false, so that a function can end with it.
inline bool Fail(SError* error, std::string what) {
  if (error != nullptr) error->what = std::move(what);
  return false;
}

/// A file's bytes, owned; not zeroed before they are read.
class CFileBytes {
 public:
  CFileBytes() = default;
  CFileBytes(std::unique_ptr<uint8_t[]> data, size_t size) : data_(std::move(data)), size_(size) {}
  std::span<const uint8_t> View() const { return {data_.get(), size_}; }
  std::string_view Text() const { return {reinterpret_cast<const char*>(data_.get()), size_}; }

 private:
  std::unique_ptr<uint8_t[]> data_;
  size_t size_ = 0;
};

inline constexpr size_t kLargestFile = size_t{0x7FFFFFFF};

/// Looks at the first bytes (at most 32) of a file of LENGTH bytes; "", or why the rest is not worth reading.
using FileStartCheck = std::string (*)(std::span<const uint8_t> start, uint64_t length);
/// Shorter files are read without a look at their start: whoever reads them says what is wrong with them.
inline constexpr uint64_t kCheckedLength = uint64_t{64} << 20;

/// Reads the whole of a regular file; refused when it is longer than LIMIT bytes, or long and CHECK, which may be null,
/// says so.
std::optional<CFileBytes> ReadWholeFile(std::string_view path, SError* error = nullptr, size_t limit = kLargestFile,
                                        FileStartCheck check = nullptr);

// The game's text files are some kilobytes long.
inline constexpr size_t kLargestTextFile = size_t{64} << 20;
inline constexpr size_t kMostTextLines = 200'000;
/// Reads a text file of the game, or one of the program's own; refused when it is longer than LIMIT bytes or
/// kMostTextLines lines.
std::optional<CFileBytes> ReadTextFile(std::string_view path, SError* error = nullptr, size_t limit = kLargestTextFile);

/// Replaces PATH by BYTES: a temporary file beside it is written, flushed to the disk and renamed over it, so that at
/// every moment either the whole old file or the whole new one is there. Links are followed and the old file's
/// permissions kept. On failure the old file is untouched and the temporary one removed.
bool ReplaceFile(std::string_view path, std::span<const uint8_t> bytes, SError* error = nullptr);
bool ReplaceFile(std::string_view path, std::string_view text, SError* error = nullptr);

class CInputFile;

/// ReplaceFile in steps. For several files that belong together there is fileset.h.
class CReplacement {
 public:
  /// TAG as in CTemporary.
  explicit CReplacement(std::string_view path, std::string_view tag = {});
  ~CReplacement();  ///< removes the temporary file when Commit was not reached
  CReplacement(const CReplacement&) = delete;
  CReplacement& operator=(const CReplacement&) = delete;

  bool Open(SError* error);
  bool Write(std::span<const uint8_t> bytes, SError* error);
  /// LENGTH bytes from OFFSET of FROM, in pieces, through the kernel where it can. STEP, which may be empty, hears of
  /// each piece's size; when it returns false the copying fails, with an empty ERROR.
  bool CopyFrom(const CInputFile& from, uint64_t offset, uint64_t length, const std::function<bool(uint64_t)>& step,
                SError* error);
  bool Finish(SError* error);  ///< flushed and closed: only the renaming is left
  bool Commit(SError* error);

  // For who does what Commit does, once the file is finished.
  const std::string& Target() const;     ///< the file to replace, links followed
  const std::string& Temporary() const;  ///< the one to rename
  void Leave();                          ///< the temporary file is somebody else's now

 private:
  struct SState;
  std::unique_ptr<SState> state_;
};

/// Takes away the temporary files of this program in FOLDER whose processes are gone, however those ended. Who writes
/// into a folder does so first.
void RemoveAbandonedTemporaries(const std::string& folder);

/// "Its attributes can be read": files and folders both exist.
bool FileExists(std::string_view path);
bool IsFile(std::string_view path);
bool IsDirectory(std::string_view path);
/// The name is that of a link, wherever it leads, and be it nowhere.
bool IsLink(std::string_view path);
std::optional<uint64_t> FileLength(std::string_view path);
/// Opens for reading and writing. A file whose permissions let nobody write is not writable, whoever asks.
bool IsWritable(std::string_view path);
bool RemoveFile(std::string_view path);
/// Makes the folder and those above it; true when it is there afterwards.
bool MakeDirectories(std::string_view path);

/// A folder that is made for files that may come to nothing: it goes away again unless it is kept, or holds something.
class CMadeFolder {
 public:
  CMadeFolder() = default;
  ~CMadeFolder();
  CMadeFolder(const CMadeFolder&) = delete;
  CMadeFolder& operator=(const CMadeFolder&) = delete;

  /// Makes PATH where only its last part is missing; true when it is there afterwards.
  bool Make(std::string_view path);
  void Keep() { made_.clear(); }

 private:
  std::string made_;
};
std::vector<std::string> ListDirectory(std::string_view path);  ///< names, sorted; without "." and ".."
std::string CurrentDirectory();
/// Absolute and without "." and ".." parts, links left alone.
std::string AbsolutePath(std::string_view path);
/// A and B name one file or folder, whatever links and letter case lead to it. Of what is not there yet: once it is.
/// Two empty paths name nothing.
bool IsSameFile(std::string_view a, std::string_view b);

/// The path under which the game file exists, whatever the case of its name on a case-sensitive disk: PATH itself when
/// it exists, else the entry that differs in letter case only (the first in byte order); "" when there is none. Folders
/// along the way are found the same way.
std::string FindAnyCase(std::string_view path);

/// Test seam: called before each call that changes the disk ("open", "write", "sync", "close", "rename") with the path
/// it is about; a result other than 0 makes that call fail as if the system had returned this error number.
using FileFault = std::function<int(std::string_view operation, std::string_view path)>;
void SetFileFault(FileFault fault);

}  // namespace veldra
