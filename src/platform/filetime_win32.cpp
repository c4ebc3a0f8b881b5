#include "platform/files_system.h"
#include "platform/filetime.h"
#include "platform/windows_system.h"

namespace veldra {

/// In tenths of a microsecond; the library's own clock for files counts seconds here.
std::optional<int64_t> FileWriteTime(std::string_view path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  const std::string native = disk::SystemPath(path);
  if (native.empty() || GetFileAttributesExW(disk::CallPath(native).c_str(), GetFileExInfoStandard, &data) == 0)
    return std::nullopt;
  return static_cast<int64_t>(uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 | data.ftLastWriteTime.dwLowDateTime);
}

}  // namespace veldra
