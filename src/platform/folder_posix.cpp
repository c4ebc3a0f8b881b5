#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <limits>
#include <utility>

#include "platform/folder_system.h"
#include "platform/posix_system.h"

namespace veldra::disk {

namespace {

#ifdef O_PATH
// Also for folders whose names may not be listed.
constexpr int kOpenFolder = O_PATH | O_DIRECTORY | O_CLOEXEC;
#else
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

int Descriptor(const SFolder& folder) {
  return static_cast<int>(folder.handle);
}

int OpenIn(const SFolder& folder, const std::string& name, int flags, mode_t mode, Handle& handle) {
  const int file = Uninterrupted([&] { return openat(Descriptor(folder), name.c_str(), flags, mode); });
  if (file < 0) return errno;
  handle = file;
  return 0;
}

bool StatusIn(const SFolder& folder, const std::string& name, struct stat& info) {
  return fstatat(Descriptor(folder), name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0;
}

}  // namespace

int OpenFolder(const std::string& path, SFolder& folder) {
  folder.path = path;
  return OpenIn({AT_FDCWD, {}}, path, kOpenFolder, 0, folder.handle);
}

int EnterFolder(const SFolder& above, const std::string& name, SFolder& folder) {
  folder.path = above.path + '/' + name;
  const auto open = [&] { return OpenIn(above, name, kOpenFolder | O_NOFOLLOW, 0, folder.handle); };
  const int number = open();
  if (number != ENOENT) return number;
  if (mkdirat(Descriptor(above), name.c_str(), 0777) != 0 && errno != EEXIST) return errno;
  return open();
}

void CloseFolder(SFolder& folder) {
  if (folder.handle != kNoHandle) close(static_cast<int>(std::exchange(folder.handle, kNoHandle)));
}

uint64_t FreeSpace(const SFolder& folder) {
  struct statvfs info;
  if (statvfs(folder.path.c_str(), &info) != 0) return std::numeric_limits<uint64_t>::max();
  return uint64_t{info.f_bavail} * info.f_frsize;
}

EEntry EntryIn(const SFolder& folder, const std::string& name) {
  struct stat info;
  if (!StatusIn(folder, name, info)) return EEntry::kNothing;
  if (S_ISREG(info.st_mode)) return EEntry::kFile;
  return S_ISLNK(info.st_mode) ? EEntry::kLink : EEntry::kOther;
}

int CreateNewIn(const SFolder& folder, const std::string& name, bool for_all, Handle& handle) {
  Handle made = kNoHandle;
  const int number =
      OpenIn(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, for_all ? 0666 : 0600, made);
  return number != 0 ? number : MarkNew(static_cast<int>(made), handle);
}

int CheckReplaceableIn(const SFolder& folder, const std::string& name) {
  struct stat info;
  if (!StatusIn(folder, name, info)) return errno;
  if ((info.st_mode & kWriteBits) == 0) return EACCES;
  return Result(faccessat(Descriptor(folder), name.c_str(), W_OK, AT_EACCESS) == 0);
}

int CopyPermissionsIn(const SFolder& folder, const std::string& name, Handle handle) {
  struct stat wanted;
  if (!StatusIn(folder, name, wanted)) return errno;
  return S_ISREG(wanted.st_mode) ? GivePermissions(wanted, static_cast<int>(handle)) : 0;
}

int RenameIn(const SFolder& folder, const std::string& from, const std::string& to) {
  return Result(renameat(Descriptor(folder), from.c_str(), Descriptor(folder), to.c_str()) == 0);
}

int RemoveIn(const SFolder& folder, const std::string& name) {
  return Result(unlinkat(Descriptor(folder), name.c_str(), 0) == 0);
}

}  // namespace veldra::disk
