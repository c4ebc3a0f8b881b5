#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/filelock_system.h"

namespace veldra::disk {

namespace {

/// How often the file may be taken away between opening and locking it.
constexpr int kMostAttempts = 100;

int LockNow(int file) {
  int result = flock(file, LOCK_EX | LOCK_NB);
  while (result != 0 && errno == EINTR)
    result = flock(file, LOCK_EX | LOCK_NB);
  return result == 0 ? 0 : errno;
}

/// Whether PATH still leads to the open FILE: a holder may have removed it meanwhile, and a lock on what has no name
/// keeps nobody out.
bool IsStillThere(int file, const std::string& path) {
  struct stat open_file;
  struct stat named_file;
  return fstat(file, &open_file) == 0 && stat(path.c_str(), &named_file) == 0 &&
         open_file.st_dev == named_file.st_dev && open_file.st_ino == named_file.st_ino;
}

}  // namespace

ELockResult OpenLocked(const std::string& path, Handle& handle, int& number) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (file < 0 && errno == EINTR) continue;
    if (file < 0) {
      number = errno;
      return ELockResult::kFailed;
    }
    number = LockNow(file);
    if (number == 0 && IsStillThere(file, path)) {
      handle = file;
      return ELockResult::kTaken;
    }
    close(file);
    if (number != 0) return number == EWOULDBLOCK ? ELockResult::kBusy : ELockResult::kFailed;
  }
  return ELockResult::kBusy;
}

}  // namespace veldra::disk
