// Preloaded into a program, makes one of its calls of the system fail: the one of number FAILCALLS_AT (from 1), with
// the error number FAILCALLS_ERRNO. FAILCALLS_KIND says which calls count: "write" (those that change the disk), "read"
// (opening and reading files below FAILCALLS_BELOW) or "memory". When the program ends, how many calls there were is
// written to the file FAILCALLS_COUNT. With FAILCALLS_WHILE all those that change the disk fail, as long as that file
// is there.
//
// Memory that libraries take before main() does not count, since nobody could answer for it.
//
// Calls are made directly, not through the functions that are replaced here, so that nothing has to be looked up first.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" void* __libc_malloc(size_t size);

namespace {

enum class EKind { kNone, kWrite, kRead, kMemory };

std::atomic<long> counted{0};
std::atomic<bool> is_in_main{false};
long fail_at = 0;
int fail_with = 0;
EKind kind = EKind::kNone;
const char* below = "";
const char* fail_while = nullptr;

bool FailsNow() {
  return fail_while != nullptr && is_in_main && syscall(SYS_access, fail_while, F_OK) == 0;
}

/// Whether the call that is about to be made is the one that fails.
bool Fails(EKind of) {
  if (of == EKind::kWrite && FailsNow()) {
    errno = fail_with;
    return true;
  }
  if (kind != of || !is_in_main || ++counted != fail_at) return false;
  errno = fail_with;
  return true;
}

bool IsBelow(const char* path) {
  return std::strncmp(path, below, std::strlen(below)) == 0;
}

/// Whether DESCRIPTOR is of a file that the program reads for its user, and not a library or a table of the system.
bool ReadsBelow(int descriptor) {
  char link[64];
  char path[4096];
  std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
  const ssize_t length = readlink(link, path, sizeof path - 1);
  if (length < 0) return false;
  path[length] = '\0';
  return IsBelow(path);
}

bool IsRegular(int descriptor) {
  struct stat status {};
  return syscall(SYS_fstat, descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

long Value(const char* name) {
  const char* text = std::getenv(name);
  return text == nullptr ? 0 : std::atol(text);
}

__attribute__((constructor)) void Begin() {
  const char* text = std::getenv("FAILCALLS_KIND");
  if (const char* folder = std::getenv("FAILCALLS_BELOW"); folder != nullptr) below = folder;
  fail_while = std::getenv("FAILCALLS_WHILE");
  fail_at = Value("FAILCALLS_AT");
  fail_with = static_cast<int>(Value("FAILCALLS_ERRNO"));
  if (text == nullptr) return;
  kind = *text == 'w' ? EKind::kWrite : *text == 'r' ? EKind::kRead : EKind::kMemory;
}

__attribute__((destructor)) void End() {
  const char* path = std::getenv("FAILCALLS_COUNT");
  kind = EKind::kNone;
  if (path == nullptr) return;
  char text[32];
  const int length = std::snprintf(text, sizeof text, "%ld\n", counted.load());
  const long file = syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (file < 0) return;
  syscall(SYS_write, file, text, static_cast<size_t>(length));
  syscall(SYS_close, file);
}

int Open(int folder, const char* path, int flags, mode_t mode) {
  const bool writes = (flags & O_ACCMODE) != O_RDONLY || (flags & O_CREAT) != 0;
  if (writes ? Fails(EKind::kWrite) : IsBelow(path) && Fails(EKind::kRead)) return -1;
  return static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}

mode_t ModeOf(int flags, va_list arguments) {
  return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
}

using Main = int (*)(int, char**, char**);
Main real_main = nullptr;

int CountedMain(int count, char** arguments, char** environment) {
  is_in_main = true;
  return real_main(count, arguments, environment);
}

}  // namespace

extern "C" {

int __libc_start_main(Main program, int count, char** arguments, void (*init)(), void (*fini)(), void (*loader)(),
                      void* stack) {
  using Start = int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);
  real_main = program;
  const auto start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
  return start(CountedMain, count, arguments, init, fini, loader, stack);
}

#define FAILCALLS_OPEN(NAME)                      \
  int NAME(const char* path, int flags, ...) {    \
    va_list arguments;                            \
    va_start(arguments, flags);                   \
    const mode_t mode = ModeOf(flags, arguments); \
    va_end(arguments);                            \
    return Open(AT_FDCWD, path, flags, mode);     \
  }
#define FAILCALLS_OPENAT(NAME)                             \
  int NAME(int folder, const char* path, int flags, ...) { \
    va_list arguments;                                     \
    va_start(arguments, flags);                            \
    const mode_t mode = ModeOf(flags, arguments);          \
    va_end(arguments);                                     \
    return Open(folder, path, flags, mode);                \
  }
FAILCALLS_OPEN(open)
FAILCALLS_OPEN(open64)
FAILCALLS_OPENAT(openat)
FAILCALLS_OPENAT(openat64)

ssize_t write(int file, const void* bytes, size_t size) {
  if (IsRegular(file) && Fails(EKind::kWrite)) return -1;
  return syscall(SYS_write, file, bytes, size);
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset) {
  if (Fails(EKind::kWrite)) return -1;
  return syscall(SYS_pwrite64, file, bytes, size, offset);
}

ssize_t copy_file_range(int from, off64_t* from_offset, int to, off64_t* to_offset, size_t size, unsigned flags) {
  if (Fails(EKind::kWrite)) return -1;
  return syscall(SYS_copy_file_range, from, from_offset, to, to_offset, size, flags);
}

ssize_t read(int file, void* bytes, size_t size) {
  if (ReadsBelow(file) && Fails(EKind::kRead)) return -1;
  return syscall(SYS_read, file, bytes, size);
}

ssize_t pread64(int file, void* bytes, size_t size, off64_t offset) {
  if (ReadsBelow(file) && Fails(EKind::kRead)) return -1;
  return syscall(SYS_pread64, file, bytes, size, offset);
}

int fsync(int file) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_fsync, file));
}

int fdatasync(int file) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_fdatasync, file));
}

int ftruncate64(int file, off64_t size) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_ftruncate, file, size));
}

int posix_fallocate64(int file, off64_t offset, off64_t size) {
  if (Fails(EKind::kWrite)) return fail_with;
  return syscall(SYS_fallocate, file, 0, offset, size) == 0 ? 0 : errno;
}

int close(int file) {
  const bool fails = kind == EKind::kWrite && IsRegular(file) && (fcntl(file, F_GETFL) & O_ACCMODE) != O_RDONLY &&
                     Fails(EKind::kWrite);
  const int result = static_cast<int>(syscall(SYS_close, file));
  if (!fails) return result;
  errno = fail_with;
  return -1;
}

int rename(const char* from, const char* to) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_rename, from, to));
}

int renameat(int from_folder, const char* from, int to_folder, const char* to) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_renameat, from_folder, from, to_folder, to));
}

int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) {
  if (Fails(EKind::kWrite)) return -1;
  return static_cast<int>(syscall(SYS_renameat2, from_folder, from, to_folder, to, flags));
}

int link(const char* from, const char* to) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_link, from, to));
}

int linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_linkat, from_folder, from, to_folder, to, flags));
}

int mkdir(const char* path, mode_t mode) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_mkdir, path, mode));
}

int mkdirat(int folder, const char* path, mode_t mode) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_mkdirat, folder, path, mode));
}

int fchmod(int file, mode_t mode) {
  return Fails(EKind::kWrite) ? -1 : static_cast<int>(syscall(SYS_fchmod, file, mode));
}

void* malloc(size_t size) noexcept {
  return Fails(EKind::kMemory) ? nullptr : __libc_malloc(size);
}

}  // extern "C"
