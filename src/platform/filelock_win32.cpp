#include "platform/filelock_system.h"
#include "platform/windows_system.h"

namespace veldra::disk {

ELockResult OpenLocked(const std::string& path, Handle& handle, int& number) {
  // Not shared for deletion: the file stays as long as somebody has it open.
  const HANDLE file =
      CreateFileW(ToWide(path).c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    number = static_cast<int>(GetLastError());
    // Programs that look into every new file have it for moments.
    return number == ERROR_SHARING_VIOLATION ? ELockResult::kBusy : ELockResult::kFailed;
  }
  // Beyond what the file holds, which anybody may read.
  OVERLAPPED place = {};
  place.OffsetHigh = 0x40000000;
  constexpr DWORD kFlags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
  if (LockFileEx(file, kFlags, 0, 1, 0, &place) != 0) {
    handle = reinterpret_cast<Handle>(file);
    return ELockResult::kTaken;
  }
  number = static_cast<int>(GetLastError());
  CloseHandle(file);
  const bool is_busy = number == ERROR_LOCK_VIOLATION || number == ERROR_IO_PENDING;
  return is_busy ? ELockResult::kBusy : ELockResult::kFailed;
}

}  // namespace veldra::disk
