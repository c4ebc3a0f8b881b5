#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/standardinput.h"
#include "platform/text.h"

namespace veldra {

namespace {

bool Fail(SError* error) {
  if (error != nullptr) error->what = std::strerror(errno);
  return false;
}

bool WriteAll(int file, const char* bytes, size_t count) {
  while (count > 0) {
    const ssize_t written = write(file, bytes, count);
    if (written < 0 && errno != EINTR) return false;
    if (written <= 0) continue;
    bytes += written;
    count -= static_cast<size_t>(written);
  }
  return true;
}

bool CopyInput(int file, SError* error) {
  std::array<char, 65536> block;
  for (;;) {
    const ssize_t count = read(STDIN_FILENO, block.data(), block.size());
    if (count == 0) return true;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || !WriteAll(file, block.data(), static_cast<size_t>(count))) return Fail(error);
  }
}

/// A file in memory, which goes with the process however that ends.
std::string Keep(SError* error) {
  const int file = memfd_create("standard input", MFD_CLOEXEC);
  if (file < 0) {
    Fail(error);
    return "";
  }
  if (CopyInput(file, error)) return Format("/proc/self/fd/%d", file);
  close(file);
  return "";
}

std::string& KeptPath() {
  static std::string path;
  return path;
}

}  // namespace

std::string StandardInputFile(SError* error) {
  std::string& path = KeptPath();
  if (path.empty()) path = Keep(error);
  return path;
}

bool IsStandardInput(std::string_view path) {
  return !path.empty() && path == KeptPath();
}

}  // namespace veldra
