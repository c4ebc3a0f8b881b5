#include "support/testfiles.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/process.h"
#include "platform/text.h"

#ifdef _WIN32
#include "platform/windows_system.h"
#else
#include <cerrno>
#endif

namespace veldra::testing {

#ifdef _WIN32
const int kDiskFull = ERROR_DISK_FULL;
const int kReadOnlyDisk = ERROR_WRITE_PROTECT;
#else
const int kDiskFull = ENOSPC;
const int kReadOnlyDisk = EROFS;
#endif

CTempFolder::CTempFolder() {
  static std::atomic<int> counter{0};
  const auto ticks = static_cast<long long>(std::chrono::steady_clock::now().time_since_epoch().count());
  path_ = JoinPath(std::filesystem::temp_directory_path().string(), Format("veldra-test-%lld-%d", ticks, counter++));
  EXPECT_TRUE(MakeDirectories(path_));
}

CTempFolder::~CTempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(std::filesystem::path(path_), ignored);
}

std::string CTempFolder::File(std::string_view name) const {
  return JoinPath(path_, name);
}

std::string CTempFolder::Write(std::string_view name, std::string_view content) const {
  const std::string path = File(name);
  EXPECT_TRUE(MakeDirectories(DirectoryPart(path)));
  SError error;
  EXPECT_TRUE(ReplaceFile(path, content, &error)) << path << ": " << error.what;
  return path;
}

std::string CTempFolder::Write(std::string_view name, const std::vector<uint8_t>& content) const {
  return Write(name, std::string_view(reinterpret_cast<const char*>(content.data()), content.size()));
}

std::string CTempFolder::OtherPath(const std::string& name) const {
#ifdef _WIN32
  return File(UpperCase(name));
#else
  std::error_code is_there;
  std::filesystem::create_directory_symlink(path_, File("link"), is_there);
  return File("link/" + name);
#endif
}

namespace {

/// An empty value is as good as none to those who read these.
void SetVariable(const std::string& name, const std::string& value) {
#ifdef _WIN32
  _putenv_s(name.c_str(), value.c_str());
#else
  value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
#endif
}

}  // namespace

CVariable::CVariable(std::string name, const std::string& value)
    : name_(std::move(name)), old_(EnvironmentVariable(name_).value_or("")) {
  SetVariable(name_, value);
}

CVariable::~CVariable() {
  SetVariable(name_, old_);
}

std::string ReadTestFile(const std::string& path) {
  SError error;
  const auto bytes = ReadWholeFile(path, &error);
  if (!bytes) {
    ADD_FAILURE() << path << ": " << error.what;
    return "";
  }
  return std::string(bytes->Text());
}

}  // namespace veldra::testing
