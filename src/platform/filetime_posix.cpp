#include "platform/filetime.h"

#include <filesystem>
#include <string>
#include <system_error>

#include "platform/paths.h"

namespace veldra {

std::optional<int64_t> FileWriteTime(std::string_view path) {
  const std::string native = NativePath(path);
  const std::u8string name(native.begin(), native.end());
  std::error_code error;
  const auto time = std::filesystem::last_write_time(std::filesystem::path(name), error);
  if (error) return std::nullopt;
  return static_cast<int64_t>(time.time_since_epoch().count());
}

}  // namespace veldra
