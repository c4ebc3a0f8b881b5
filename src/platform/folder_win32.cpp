#include <limits>
#include <utility>

#include "platform/folder_system.h"
#include "platform/paths.h"
#include "platform/windows_system.h"

/// Names are looked up by their whole path here. Every folder on the way down is held open without sharing its
/// deletion: such a folder, and each one above it, can neither be renamed nor removed, so nothing else can take its
/// name.
namespace veldra::disk {

namespace {

/// Attributes alone would not keep others from renaming it.
constexpr DWORD kHold = FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE;

std::string PathIn(const SFolder& folder, const std::string& name) {
  return JoinPath(folder.path, name);
}

/// What the open FOLDER is now: an empty one could have been made a link while it was held.
bool LeadsElsewhere(const SFolder& folder) {
  FILE_ATTRIBUTE_TAG_INFO info = {};
  if (GetFileInformationByHandleEx(reinterpret_cast<HANDLE>(folder.handle), FileAttributeTagInfo, &info, sizeof info) ==
      0)
    return false;  // a file system without links
  // Other tags are those of files that are packed, or kept in the net.
  return (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && IsReparseTagNameSurrogate(info.ReparseTag);
}

int Open(const std::string& path, DWORD flags, SFolder& folder) {
  folder.path = path;
  const HANDLE handle = CreateFileW(CallPath(path).c_str(), kHold, kShare, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return static_cast<int>(GetLastError());
  folder.handle = reinterpret_cast<Handle>(handle);
  return 0;
}

}  // namespace

int OpenFolder(const std::string& path, SFolder& folder) {
  return Open(path, 0, folder);
}

int EnterFolder(const SFolder& above, const std::string& name, SFolder& folder) {
  const std::string path = PathIn(above, name);
  const int made = MakeDirectory(path);
  if (made != 0 && !IsAlreadyThere(made)) return made;
  if (Status(path).kind != EKind::kDirectory) return ERROR_DIRECTORY;
  const int number = Open(path, FILE_FLAG_OPEN_REPARSE_POINT, folder);
  if (number != 0 || !LeadsElsewhere(folder)) return number;
  CloseFolder(folder);
  return ERROR_CANT_ACCESS_FILE;
}

void CloseFolder(SFolder& folder) {
  if (folder.handle != kNoHandle) Close(std::exchange(folder.handle, kNoHandle));
}

uint64_t FreeSpace(const SFolder& folder) {
  ULARGE_INTEGER available;
  if (GetDiskFreeSpaceExW(CallPath(folder.path).c_str(), &available, nullptr, nullptr) == 0)
    return std::numeric_limits<uint64_t>::max();
  return available.QuadPart;
}

EEntry EntryIn(const SFolder& folder, const std::string& name) {
  const std::string path = PathIn(folder, name);
  if (IsLink(path)) return EEntry::kLink;
  const EKind kind = Status(path).kind;
  if (kind == EKind::kNothing) return EEntry::kNothing;
  return kind == EKind::kFile ? EEntry::kFile : EEntry::kOther;
}

int CreateNewIn(const SFolder& folder, const std::string& name, bool for_all, Handle& handle) {
  const int number = CreateNew(PathIn(folder, name), for_all, handle);
  if (number != 0 || !LeadsElsewhere(folder)) return number;
  // A folder that holds a file cannot become a link any more, so the file does not lie in this one.
  Close(std::exchange(handle, kNoHandle));
  Remove(PathIn(folder, name));
  return ERROR_CANT_ACCESS_FILE;
}

int CheckReplaceableIn(const SFolder& folder, const std::string& name) {
  return CheckReplaceable(PathIn(folder, name));
}

int CopyPermissionsIn(const SFolder& folder, const std::string& name, Handle handle) {
  return CopyPermissions(PathIn(folder, name), handle);
}

int RenameIn(const SFolder& folder, const std::string& from, const std::string& to) {
  return Rename(PathIn(folder, from), PathIn(folder, to));
}

int RemoveIn(const SFolder& folder, const std::string& name) {
  return Remove(PathIn(folder, name));
}

}  // namespace veldra::disk
