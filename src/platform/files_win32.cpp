#include <algorithm>

#include "platform/files.h"
#include "platform/files_system.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/windows_system.h"

namespace veldra {

namespace disk {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
/// Longer paths need a prefix, and folders are refused a little earlier than files.
constexpr size_t kLongPath = 240;
constexpr std::wstring_view kLongPrefix = L"\\\\?\\";
constexpr std::wstring_view kNetworkPrefix = L"\\\\";
/// One call moves no more; far below the limit of the parameter.
constexpr size_t kLargestTransfer = size_t{1} << 30;

int Result(bool well) {
  return well ? 0 : static_cast<int>(GetLastError());
}

HANDLE SystemHandle(Handle handle) {
  return reinterpret_cast<HANDLE>(handle);
}

DWORD TransferSize(size_t size) {
  return static_cast<DWORD>(std::min(size, kLargestTransfer));
}

/// What CALL(buffer, size) writes, a call that returns the length it has or needs.
template <typename Call>
std::wstring GrowingText(Call call) {
  std::wstring text(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = call(text.data(), static_cast<DWORD>(text.size()));
    const bool fits = length < text.size();
    text.resize(fits ? length : size_t{length} + 1);
    if (fits) return text;
  }
}

int OpenExisting(const std::string& path, DWORD access, DWORD share, DWORD flags, Handle& handle) {
  const HANDLE file = CreateFileW(CallPath(path).c_str(), access, share, nullptr, OPEN_EXISTING, flags, nullptr);
  if (file == INVALID_HANDLE_VALUE) return static_cast<int>(GetLastError());
  handle = reinterpret_cast<Handle>(file);
  return 0;
}

/// Windows counts tenths of a microsecond since 1601.
SStatus FileStatus(uint64_t length, const FILETIME& modified) {
  constexpr int64_t kTicksPerSecond = 10'000'000;
  constexpr int64_t kSecondsFrom1601To1970 = 11'644'473'600;
  const auto ticks = static_cast<int64_t>(uint64_t{modified.dwHighDateTime} << 32 | modified.dwLowDateTime);
  return {.kind = EKind::kFile,
          .length = length,
          .modified = ticks / kTicksPerSecond - kSecondsFrom1601To1970,
          .ticks = ticks};
}

bool IsDeviceName(const std::string& path) {
  return path.starts_with("\\\\.\\");
}

}  // namespace

std::wstring CallPath(const std::string& path) {
  std::wstring wide = ToWide(path);
  if (wide.size() < kLongPath || wide.starts_with(kLongPrefix)) return wide;
  if (wide.starts_with(kNetworkPrefix)) return std::wstring(kLongPrefix) + L"UNC\\" + wide.substr(2);
  return std::wstring(kLongPrefix) + wide;
}

std::string ErrorText(int number) {
  switch (number) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return "disk full";
    case ERROR_ACCESS_DENIED:
      return "permission denied";
    case ERROR_WRITE_PROTECT:
      return "the disk is read-only";
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return "another program has it open";
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return "no such file or folder";
    case ERROR_INVALID_NAME:
      return "no file can have this name";
    case ERROR_FILENAME_EXCED_RANGE:
      return "the name is too long";
    default:
      break;
  }
  const std::wstring text = GrowingText([&](wchar_t* buffer, DWORD size) {
    constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    return FormatMessageW(kFlags, nullptr, static_cast<DWORD>(number), 0, buffer, size, nullptr);
  });
  const std::string utf8 = FromWide(text);
  return Format("%s (system error %d)", std::string(Trim(utf8)).c_str(), number);
}

bool IsAlreadyThere(int number) {
  return number == ERROR_FILE_EXISTS || number == ERROR_ALREADY_EXISTS;
}

std::string SystemPath(std::string_view path) {
  if (path.empty() || path.find('\0') != std::string_view::npos) return {};
  const std::wstring wide = ToWide(path);
  return FromWide(
      GrowingText([&](wchar_t* buffer, DWORD size) { return GetFullPathNameW(wide.c_str(), size, buffer, nullptr); }));
}

std::string FolderAbove(const std::string& path) {
  return DirectoryPart(path);
}

SStatus Status(const std::string& path) {
  if (path.empty()) return {};
  if (IsDeviceName(path)) return {EKind::kOther};
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (GetFileAttributesExW(CallPath(path).c_str(), GetFileExInfoStandard, &data) == 0) return {};
  if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {EKind::kDirectory};
  return FileStatus(uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow, data.ftLastWriteTime);
}

std::optional<SIdentity> Identity(const std::string& path) {
  Handle handle = kNoHandle;
  if (path.empty() || OpenExisting(path, 0, kShareAll, FILE_FLAG_BACKUP_SEMANTICS, handle) != 0) return std::nullopt;
  BY_HANDLE_FILE_INFORMATION info = {};
  const bool is_known = GetFileInformationByHandle(SystemHandle(handle), &info) != 0;
  CloseHandle(SystemHandle(handle));
  const uint64_t file = uint64_t{info.nFileIndexHigh} << 32 | info.nFileIndexLow;
  // Some file systems number nothing.
  if (!is_known || file == 0) return std::nullopt;
  return SIdentity{info.dwVolumeSerialNumber, file};
}

std::optional<SIdentity> Pin(const std::string& path, Handle&) {
  return Identity(path);  // numbers are not given again for a long time
}

bool IsSameName(const std::string& a, const std::string& b) {
  return CompareStringOrdinal(ToWide(a).c_str(), -1, ToWide(b).c_str(), -1, TRUE) == CSTR_EQUAL;
}

bool IsLink(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(CallPath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

int FollowLinks(const std::string& path, std::string& target) {
  target = path;
  const DWORD attributes = GetFileAttributesW(CallPath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return 0;
  Handle handle = kNoHandle;
  const int number = OpenExisting(path, 0, kShareAll, FILE_FLAG_BACKUP_SEMANTICS, handle);
  if (number != 0) return number;
  const std::wstring followed = GrowingText([&](wchar_t* buffer, DWORD size) {
    return GetFinalPathNameByHandleW(SystemHandle(handle), buffer, size, FILE_NAME_NORMALIZED);
  });
  CloseHandle(SystemHandle(handle));
  if (!followed.empty()) target = FromWide(followed);
  return 0;
}

int OpenToRead(const std::string& path, Handle& handle, SStatus& status) {
  status = Status(path);
  // Windows would only say that access is denied.
  if (status.kind == EKind::kDirectory || status.kind == EKind::kOther) return 0;
  const int number = OpenExisting(path, GENERIC_READ, kShareAll, FILE_FLAG_SEQUENTIAL_SCAN, handle);
  if (number != 0) return number;
  return StatusOf(handle, status);
}

int StatusOf(Handle handle, SStatus& status) {
  status = {EKind::kOther};
  if (GetFileType(SystemHandle(handle)) != FILE_TYPE_DISK) return 0;
  LARGE_INTEGER length;
  FILETIME modified;
  if (GetFileSizeEx(SystemHandle(handle), &length) == 0 ||
      GetFileTime(SystemHandle(handle), nullptr, nullptr, &modified) == 0)
    return static_cast<int>(GetLastError());
  status = FileStatus(static_cast<uint64_t>(length.QuadPart), modified);
  return 0;
}

int CreateNew(const std::string& path, bool, Handle& handle) {
  // Shared for deletion, so that a process that is ending can take it away without closing it.
  const HANDLE file = CreateFileW(CallPath(path).c_str(), GENERIC_WRITE | WRITE_DAC, FILE_SHARE_DELETE, nullptr,
                                  CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return static_cast<int>(GetLastError());
  handle = reinterpret_cast<Handle>(file);
  return 0;
}

Handle KeepMark(Handle) {
  return kNoHandle;
}

void RemoveAbandoned(const std::string& path, unsigned process) {
  const HANDLE owner = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
  DWORD code = 0;
  const bool may_live = owner == nullptr ? GetLastError() != ERROR_INVALID_PARAMETER
                                         : GetExitCodeProcess(owner, &code) == 0 || code == STILL_ACTIVE;
  if (owner != nullptr) CloseHandle(owner);
  if (may_live || Status(path).kind != EKind::kFile || IsLink(path)) return;
  // Not shared: a process of that number on another machine may have it open.
  Handle handle = kNoHandle;
  if (OpenExisting(path, DELETE, 0, FILE_FLAG_DELETE_ON_CLOSE, handle) == 0) Close(handle);
}

int Read(Handle handle, std::span<uint8_t> buffer, size_t& count) {
  DWORD moved = 0;
  if (ReadFile(SystemHandle(handle), buffer.data(), TransferSize(buffer.size()), &moved, nullptr) == 0)
    return static_cast<int>(GetLastError());
  count = moved;
  return 0;
}

int Write(Handle handle, std::span<const uint8_t> bytes, size_t& count) {
  DWORD moved = 0;
  if (WriteFile(SystemHandle(handle), bytes.data(), TransferSize(bytes.size()), &moved, nullptr) == 0)
    return static_cast<int>(GetLastError());
  count = moved;
  return 0;
}

int ReadAt(Handle handle, uint64_t offset, std::span<uint8_t> buffer, size_t& count) {
  OVERLAPPED place = {};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  DWORD moved = 0;
  if (ReadFile(SystemHandle(handle), buffer.data(), TransferSize(buffer.size()), &moved, &place) == 0 &&
      GetLastError() != ERROR_HANDLE_EOF)
    return static_cast<int>(GetLastError());
  count = moved;
  return 0;
}

// Windows copies whole files only.
int CopyRange(Handle, uint64_t, Handle, uint64_t, uint64_t& count) {
  count = 0;
  return 0;
}

void StartSync(Handle, uint64_t, uint64_t) {}

int Sync(Handle handle) {
  return Result(FlushFileBuffers(SystemHandle(handle)) != 0);
}

int Close(Handle handle) {
  return Result(CloseHandle(SystemHandle(handle)) != 0);
}

int CheckReplaceable(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(CallPath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return static_cast<int>(GetLastError());
  return (attributes & FILE_ATTRIBUTE_READONLY) != 0 ? ERROR_ACCESS_DENIED : 0;
}

int CopyPermissions(const std::string& path, Handle handle) {
  const std::wstring wide = CallPath(path);
  DWORD size = 0;
  GetFileSecurityW(wide.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> permissions(size);
  // Disks without permissions have none to keep.
  if (GetFileSecurityW(wide.c_str(), DACL_SECURITY_INFORMATION, permissions.data(), size, &size) != 0)
    SetKernelObjectSecurity(SystemHandle(handle), DACL_SECURITY_INFORMATION, permissions.data());
  FILE_BASIC_INFO info = {};  // times of zero stay as they are
  info.FileAttributes = GetFileAttributesW(wide.c_str());
  return Result(SetFileInformationByHandle(SystemHandle(handle), FileBasicInfo, &info, sizeof info) != 0);
}

namespace {

/// True while a program has PATH open, of which the system only says that access is denied.
bool IsHeld(const std::string& path) {
  Handle handle = kNoHandle;
  const int number = OpenExisting(path, DELETE, 0, 0, handle);
  if (number == 0) Close(handle);
  return number == ERROR_SHARING_VIOLATION;
}

}  // namespace

// Not ReplaceFileW, which can fail after the old file is gone. Neither name may be open anywhere, and those who read
// the files or look into every new one have them for moments.
int Rename(const std::string& from, const std::string& to) {
  constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  constexpr int kTries = 50;
  constexpr DWORD kPauseMs = 10;
  for (int left = kTries;; --left) {
    const int number = Result(MoveFileExW(CallPath(from).c_str(), CallPath(to).c_str(), kFlags) != 0);
    const bool is_refused = number == ERROR_ACCESS_DENIED || number == ERROR_SHARING_VIOLATION;
    if (!is_refused || Status(to).kind == EKind::kDirectory) return number;
    if (left == 0) return IsHeld(to) || IsHeld(from) ? ERROR_SHARING_VIOLATION : number;
    Sleep(kPauseMs);
  }
}

// Renaming writes through.
void SyncDirectory(const std::string&) {}

int Remove(const std::string& path) {
  return Result(DeleteFileW(CallPath(path).c_str()) != 0);
}

int MakeDirectory(const std::string& path) {
  return Result(CreateDirectoryW(CallPath(path).c_str(), nullptr) != 0);
}

int RemoveEmptyDirectory(const std::string& path) {
  return Result(RemoveDirectoryW(CallPath(path).c_str()) != 0);
}

unsigned ProcessNumber() {
  return static_cast<unsigned>(GetCurrentProcessId());
}

}  // namespace disk

bool IsWritable(std::string_view path) {
  const std::string native = disk::SystemPath(path);
  // The attribute is asked for by itself: not every system under these calls heeds it for its administrator.
  if (disk::Status(native).kind != disk::EKind::kFile || disk::CheckReplaceable(native) != 0) return false;
  disk::Handle handle = disk::kNoHandle;
  // Others may read it meanwhile, but not write.
  if (disk::OpenExisting(native, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, FILE_ATTRIBUTE_NORMAL, handle) != 0)
    return false;
  disk::Close(handle);
  return true;
}

std::vector<std::string> ListDirectory(std::string_view path) {
  std::vector<std::string> names;
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirstFileW(disk::CallPath(JoinPath(disk::SystemPath(path), "*")).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return names;
  do {
    const std::wstring_view name = entry.cFileName;
    if (name != L"." && name != L"..") names.push_back(FromWide(name));
  } while (FindNextFileW(search, &entry) != 0);
  FindClose(search);
  std::sort(names.begin(), names.end());
  return names;
}

std::string CurrentDirectory() {
  return FromWide(disk::GrowingText([](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); }));
}

std::string AbsolutePath(std::string_view path) {
  return path.empty() ? CurrentDirectory() : disk::SystemPath(path);
}

std::string FindAnyCase(std::string_view path) {
  return FileExists(path) ? std::string(path) : "";
}

}  // namespace veldra
