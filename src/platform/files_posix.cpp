#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "platform/files.h"
#include "platform/files_system.h"
#include "platform/paths.h"
#include "platform/posix_system.h"
#include "platform/text.h"

namespace veldra {

namespace disk {

namespace {

/// As many as the kernel itself follows.
constexpr int kMostLinks = 40;
/// Not the bits that let a program run as its owner, who may have changed.
constexpr mode_t kPermissionBits = 0777;

int Descriptor(Handle handle) {
  return static_cast<int>(handle);
}

SStatus ToStatus(const struct stat& info) {
  constexpr int64_t kNanoseconds = 1'000'000'000;
  if (S_ISREG(info.st_mode)) {
    return {.kind = EKind::kFile,
            .length = static_cast<uint64_t>(info.st_size),
            .modified = info.st_mtime,
            .ticks = info.st_mtim.tv_sec * kNanoseconds + info.st_mtim.tv_nsec};
  }
  return {S_ISDIR(info.st_mode) ? EKind::kDirectory : EKind::kOther};
}

/// The text of the link PATH; "" when it is none.
std::string LinkText(const std::string& path) {
  char text[4096];
  const ssize_t length = readlink(path.c_str(), text, sizeof text);
  return length > 0 && static_cast<size_t>(length) < sizeof text ? std::string(text, static_cast<size_t>(length)) : "";
}

SIdentity IdentityIn(const struct stat& info) {
  return {static_cast<uint64_t>(info.st_dev), static_cast<uint64_t>(info.st_ino)};
}

}  // namespace

std::string ErrorText(int number) {
  switch (number) {
    case ENOSPC:
      return "disk full";
    case EDQUOT:
      return "disk quota used up";
    case EACCES:
    case EPERM:
      return "permission denied";
    case EROFS:
      return "the disk is read-only";
    case ENOENT:
      return "no such file or folder";
    case ENOTDIR:
      return "a part of the path is not a folder";
    case EISDIR:
      return "is a folder";
    case ENAMETOOLONG:
      return "the name is too long";
    case ELOOP:
      return "links lead in a circle";
    case EFBIG:
      return "too long for the disk";
    case EIO:
      return "the disk reports an error";
    default:
      return Format("%s (system error %d)", std::strerror(number), number);
  }
}

bool IsAlreadyThere(int number) {
  return number == EEXIST;
}

std::string SystemPath(std::string_view path) {
  if (path.find('\0') != std::string_view::npos) return {};
  std::string native(path);
  struct stat info;
  if (native.find('\\') == std::string::npos || lstat(native.c_str(), &info) == 0) return native;
  // Folders whose name really has a "\" keep it; only what lies below the last that is there is rewritten.
  size_t there = native.rfind('/');
  while (there != std::string::npos && there > 0 && lstat(native.substr(0, there).c_str(), &info) != 0)
    there = native.rfind('/', there - 1);
  if (there == std::string::npos) there = 0;
  return native.substr(0, there) + NativePath(std::string_view(native).substr(there));
}

std::string FolderAbove(const std::string& path) {
  const size_t separator = path.rfind('/');
  return separator == std::string::npos ? "" : path.substr(0, std::max(separator, size_t{1}));
}

SStatus Status(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0 ? ToStatus(info) : SStatus{};
}

std::optional<SIdentity> Identity(const std::string& path) {
  struct stat info;
  if (stat(path.c_str(), &info) != 0) return std::nullopt;
  return IdentityIn(info);
}

std::optional<SIdentity> Pin(const std::string& path, Handle& handle) {
#ifdef O_PATH
  constexpr int kAccess = O_PATH;  // also of files that may not be read
#else
  constexpr int kAccess = O_RDONLY | O_NONBLOCK;
#endif
  const int file = open(path.c_str(), kAccess | O_CLOEXEC);
  struct stat info;
  if (file < 0) return std::nullopt;
  handle = file;
  if (fstat(file, &info) != 0) return std::nullopt;
  return IdentityIn(info);
}

bool IsSameName(const std::string& a, const std::string& b) {
  return a == b;
}

bool IsLink(const std::string& path) {
  struct stat info;
  return lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

int FollowLinks(const std::string& path, std::string& target) {
  target = path;
  for (int links = 0; links < kMostLinks; ++links) {
    const std::string text = LinkText(target);
    if (text.empty()) return 0;
    target.resize(text[0] == '/' ? 0 : target.rfind('/') + 1);
    target += text;
  }
  return ELOOP;
}

int OpenToRead(const std::string& path, Handle& handle, SStatus& status) {
  const int file = Uninterrupted([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); });
  if (file < 0) return errno;
  handle = file;
  struct stat info;
  if (fstat(file, &info) != 0) return errno;
  status = ToStatus(info);
  return 0;
}

int MarkNew(int file, Handle& handle) {
  // The mark is a lock, which goes with the process however that ends, on whatever machine it runs. Somebody who
  // tidies may have been faster. A disk without locks is never tidied.
  struct stat info;
  const bool is_marked = flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
  if (!is_marked || (fstat(file, &info) == 0 && info.st_nlink == 0)) {
    close(file);
    return EEXIST;
  }
  handle = file;
  return 0;
}

int CreateNew(const std::string& path, bool for_all, Handle& handle) {
  const mode_t mode = for_all ? 0666 : 0600;
  const int file = Uninterrupted([&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });
  return file < 0 ? errno : MarkNew(file, handle);
}

Handle KeepMark(Handle handle) {
  const int file = fcntl(Descriptor(handle), F_DUPFD_CLOEXEC, 0);
  return file < 0 ? kNoHandle : file;
}

void RemoveAbandoned(const std::string& path, unsigned) {
  const int file = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY);
  if (file < 0) return;
  struct stat info;
  const bool is_file = fstat(file, &info) == 0 && S_ISREG(info.st_mode);
  if (is_file && flock(file, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
  close(file);
}

int Read(Handle handle, std::span<uint8_t> buffer, size_t& count) {
  const ssize_t result = Uninterrupted([&] { return read(Descriptor(handle), buffer.data(), buffer.size()); });
  if (result < 0) return errno;
  count = static_cast<size_t>(result);
  return 0;
}

int Write(Handle handle, std::span<const uint8_t> bytes, size_t& count) {
  const ssize_t result = Uninterrupted([&] { return write(Descriptor(handle), bytes.data(), bytes.size()); });
  if (result < 0) return errno;
  count = static_cast<size_t>(result);
  return 0;
}

int StatusOf(Handle handle, SStatus& status) {
  struct stat info;
  if (fstat(Descriptor(handle), &info) != 0) return errno;
  status = ToStatus(info);
  return 0;
}

int ReadAt(Handle handle, uint64_t offset, std::span<uint8_t> buffer, size_t& count) {
  const ssize_t result = Uninterrupted(
      [&] { return pread(Descriptor(handle), buffer.data(), buffer.size(), static_cast<off_t>(offset)); });
  if (result < 0) return errno;
  count = static_cast<size_t>(result);
  return 0;
}

int CopyRange([[maybe_unused]] Handle from, [[maybe_unused]] uint64_t offset, [[maybe_unused]] Handle to,
              [[maybe_unused]] uint64_t length, uint64_t& count) {
  count = 0;
#ifdef __linux__
  auto position = static_cast<off64_t>(offset);
  const ssize_t result = Uninterrupted([&] {
    return copy_file_range(Descriptor(from), &position, Descriptor(to), nullptr, static_cast<size_t>(length), 0);
  });
  if (result >= 0) {
    count = static_cast<uint64_t>(result);
  } else if (errno == ENOSPC || errno == EDQUOT || errno == EFBIG || errno == EIO) {
    return errno;
  }
#endif
  return 0;
}

void StartSync([[maybe_unused]] Handle handle, [[maybe_unused]] uint64_t offset, [[maybe_unused]] uint64_t length) {
#ifdef __linux__
  sync_file_range(Descriptor(handle), static_cast<off64_t>(offset), static_cast<off64_t>(length),
                  SYNC_FILE_RANGE_WRITE);
#endif
}

int Sync(Handle handle) {
  const int result = Uninterrupted([&] { return fsync(Descriptor(handle)); });
  // Some file systems cannot, and say so with EINVAL.
  return Result(result == 0 || errno == EINVAL);
}

int Close(Handle handle) {
  // Closed even when a signal interrupts the call, so never called twice.
  const int result = close(Descriptor(handle));
  return Result(result == 0 || errno == EINTR);
}

int CheckReplaceable(const std::string& path) {
  struct stat info;
  if (stat(path.c_str(), &info) != 0) return errno;
  if ((info.st_mode & kWriteBits) == 0) return EACCES;
  return Result(faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0);
}

int GivePermissions(const struct stat& wanted, int file) {
  struct stat made;
  if (fstat(file, &made) != 0) return errno;
  // Only root can give files away; a member of the group can at least keep that. Neither is worth failing for.
  [[maybe_unused]] const bool owner_kept = (wanted.st_uid == made.st_uid && wanted.st_gid == made.st_gid) ||
                                           fchown(file, wanted.st_uid, wanted.st_gid) == 0 ||
                                           fchown(file, static_cast<uid_t>(-1), wanted.st_gid) == 0;
  if (fchmod(file, wanted.st_mode & kPermissionBits) == 0) return 0;
  // Disks without permissions refuse, but there both files have the same.
  const int number = errno;
  return (wanted.st_mode & kPermissionBits) == (made.st_mode & kPermissionBits) ? 0 : number;
}

int CopyPermissions(const std::string& path, Handle handle) {
  struct stat wanted;
  return stat(path.c_str(), &wanted) == 0 ? GivePermissions(wanted, Descriptor(handle)) : errno;
}

int Rename(const std::string& from, const std::string& to) {
  return Result(rename(from.c_str(), to.c_str()) == 0);
}

void SyncDirectory(const std::string& directory) {
  const int folder = open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  Uninterrupted([&] { return fsync(folder); });
  close(folder);
}

int Remove(const std::string& path) {
  return Result(unlink(path.c_str()) == 0);
}

int MakeDirectory(const std::string& path) {
  return Result(mkdir(path.c_str(), 0777) == 0);
}

int RemoveEmptyDirectory(const std::string& path) {
  return Result(rmdir(path.c_str()) == 0);
}

unsigned ProcessNumber() {
  return static_cast<unsigned>(getpid());
}

}  // namespace disk

namespace {

/// One way to write a path that FindAnyCase goes along is kept for each folder that differs in case only; no more than
/// this many, so that a path full of them takes no endless time.
constexpr size_t kMostCandidates = 64;

/// The names in FOLDER that NAME can stand for: itself first, then by case only.
std::vector<std::string> MatchingNames(const std::string& folder, const std::string& name) {
  std::vector<std::string> names;
  if (FileExists(folder + name)) names.push_back(name);
  if (name == "." || name == "..") return names;
  for (std::string& entry : ListDirectory(folder.empty() ? "." : folder))
    if (entry != name && EqualNoCase(entry, name)) names.push_back(std::move(entry));
  return names;
}

/// FOLDERS, each ending in "/" or empty, with every entry that NAME can stand for.
std::vector<std::string> Descend(const std::vector<std::string>& folders, const std::string& name) {
  std::vector<std::string> found;
  for (const std::string& folder : folders)
    for (const std::string& entry : MatchingNames(folder, name))
      if (found.size() < kMostCandidates) found.push_back(folder + entry);
  return found;
}

}  // namespace

bool IsWritable(std::string_view path) {
  const std::string native = disk::SystemPath(path);
  struct stat info;
  if (stat(native.c_str(), &info) != 0 || !S_ISREG(info.st_mode) || (info.st_mode & disk::kWriteBits) == 0)
    return false;
  const int file = disk::Uninterrupted([&] { return open(native.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK); });
  if (file < 0) return false;
  close(file);
  return true;
}

std::vector<std::string> ListDirectory(std::string_view path) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(disk::SystemPath(path).c_str()), closedir);
  if (folder == nullptr) return names;
  while (const dirent* entry = readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string CurrentDirectory() {
  const std::unique_ptr<char, void (*)(void*)> folder(getcwd(nullptr, 0), std::free);
  return folder != nullptr ? folder.get() : "";
}

std::string AbsolutePath(std::string_view path) {
  const std::string native = disk::SystemPath(path);
  const std::string full = native.starts_with('/') ? native : CurrentDirectory() + '/' + native;
  std::vector<std::string_view> parts;
  for (size_t start = 0; start < full.size();) {
    const size_t end = std::min(full.find('/', start), full.size());
    const std::string_view part = std::string_view(full).substr(start, end - start);
    if (part == ".." && !parts.empty()) parts.pop_back();
    if (!part.empty() && part != "." && part != "..") parts.push_back(part);
    start = end + 1;
  }
  std::string absolute;
  for (const std::string_view part : parts)
    absolute.append("/").append(part);
  return absolute.empty() ? "/" : absolute;
}

std::string FindAnyCase(std::string_view path) {
  std::string native = disk::SystemPath(path);
  if (FileExists(native)) return native;
  std::vector<std::string> found = {""};
  for (size_t start = 0; start < native.size();) {
    const size_t end = std::min(native.find('/', start), native.size());
    if (end > start) found = Descend(found, native.substr(start, end - start));
    const size_t next = std::min(native.find_first_not_of('/', end), native.size());
    for (std::string& candidate : found)
      candidate.append(native, end, next - end);
    start = next;
  }
  const auto first = std::find_if(found.begin(), found.end(), [](const std::string& each) { return FileExists(each); });
  return first != found.end() ? *first : "";
}

}  // namespace veldra
