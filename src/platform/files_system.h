#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/files.h"

/// What the two systems' halves offer to files.cpp. Unless said otherwise a function returns the system's error number,
/// 0 for success. Paths are those that SystemPath returned.
namespace veldra::disk {

using Handle = intptr_t;
inline constexpr Handle kNoHandle = -1;

enum class EKind { kNothing, kFile, kDirectory, kOther };

struct SStatus {
  EKind kind = EKind::kNothing;
  uint64_t length = 0;   ///< in bytes, for kFile
  int64_t modified = 0;  ///< in seconds since 1970, for kFile
  int64_t ticks = 0;     ///< the same moment as finely as the disk keeps it, in a unit of the system's
};

struct SIdentity {
  uint64_t disk = 0;
  uint64_t file = 0;
  bool operator==(const SIdentity&) const = default;
};

/// The reason as the user reads it.
std::string ErrorText(int number);
bool IsAlreadyThere(int number);
/// Fail with the system's reason.
bool FailWith(SError* error, int number);
const char* NotAFileText(EKind kind);

/// PATH as the other functions take it; "", which exists nowhere, when no file can have this name.
std::string SystemPath(std::string_view path);
/// The folder that PATH lies in, as SystemPath would return it; "" for the current one, and a root for itself.
std::string FolderAbove(const std::string& path);
/// Follows links.
SStatus Status(const std::string& path);
/// What tells a file from all others while it is there, whatever it is called. Follows links. Nothing where there is
/// none.
std::optional<SIdentity> Identity(const std::string& path);
/// Identity of PATH, which no other file gets as long as HANDLE, kNoHandle where none is needed, is open.
std::optional<SIdentity> Pin(const std::string& path, Handle& handle);
/// Whether two names in one folder are one, as the system has it.
bool IsSameName(const std::string& a, const std::string& b);
/// The name is that of a link, wherever it leads.
bool IsLink(const std::string& path);
/// Where a file of this name really lies: PATH with the links it names followed, even to a file that is not there yet.
int FollowLinks(const std::string& path, std::string& target);

/// Never waits for the other end of a pipe.
int OpenToRead(const std::string& path, Handle& handle, SStatus& status);
/// A file that is not there yet; what is there is never opened. FOR_ALL: with the permissions of any new file, else
/// closed to others until CopyPermissions says more. As long as it is open, or KeepMark's handle is, RemoveAbandoned
/// leaves it alone.
int CreateNew(const std::string& path, bool for_all, Handle& handle);
/// COUNT is 0 at the end of the file, and may be smaller than asked for before it.
int Read(Handle handle, std::span<uint8_t> buffer, size_t& count);
int Write(Handle handle, std::span<const uint8_t> bytes, size_t& count);
/// Of a file that is open.
int StatusOf(Handle handle, SStatus& status);
/// As Read, from OFFSET on.
int ReadAt(Handle handle, uint64_t offset, std::span<uint8_t> buffer, size_t& count);
/// Appends up to LENGTH bytes from OFFSET of FROM to TO without taking them through this program. COUNT is 0 where the
/// system cannot do that, and at the end of FROM.
int CopyRange(Handle from, uint64_t offset, Handle to, uint64_t length, uint64_t& count);
/// Asks for LENGTH bytes from OFFSET to be on their way to the disk while more is written, where the system can.
void StartSync(Handle handle, uint64_t offset, uint64_t length);
int Sync(Handle handle);
int Close(Handle handle);

/// Closes what it holds.
class COpenFile {
 public:
  COpenFile() = default;
  ~COpenFile() { Close(); }
  COpenFile(const COpenFile&) = delete;
  COpenFile& operator=(const COpenFile&) = delete;

  int Close() {
    const Handle open = std::exchange(handle, kNoHandle);
    return open == kNoHandle ? 0 : disk::Close(open);
  }

  Handle handle = kNoHandle;
};

/// Whether an existing file may be replaced, by its own permissions rather than its folder's.
int CheckReplaceable(const std::string& path);
/// Gives the file that is open the owner and permissions of the file PATH.
int CopyPermissions(const std::string& path, Handle handle);
/// FROM takes the place of TO, in one step.
int Rename(const std::string& from, const std::string& to);
/// A second handle, which keeps the mark that CreateNew set when HANDLE is closed; kNoHandle where none is needed.
Handle KeepMark(Handle handle);
/// Removes the file PATH, which the process of that number made with CreateNew, unless that process may still be there.
void RemoveAbandoned(const std::string& path, unsigned process);
/// Makes renames in DIRECTORY last, as far as the system can.
void SyncDirectory(const std::string& directory);
int Remove(const std::string& path);
int MakeDirectory(const std::string& path);
int RemoveEmptyDirectory(const std::string& path);

/// Tells this process's temporary files from those of others.
unsigned ProcessNumber();

/// The error number that the test seam wants for OPERATION on PATH (see SetFileFault).
int Fault(std::string_view operation, const std::string& path);

}  // namespace veldra::disk
