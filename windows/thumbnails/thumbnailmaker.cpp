#include "thumbnails/thumbnailmaker.h"

#include "platform/windows_system.h"
// Needs the one above.
#include <objbase.h>

#include <algorithm>
#include <array>

#include "platform/paths.h"

namespace veldra {

namespace {

constexpr DWORD kMostMilliseconds = 20'000;
constexpr size_t kMostMemory = size_t{2} << 30;

/// Closed when this goes.
class CHandle {
 public:
  explicit CHandle(HANDLE handle) : handle_(handle) {}
  ~CHandle() {
    if (handle_ != nullptr) CloseHandle(handle_);
  }
  CHandle(const CHandle&) = delete;
  CHandle& operator=(const CHandle&) = delete;
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

/// A folder of nobody else's that goes with what is in it.
class CWorkFolder {
 public:
  CWorkFolder() {
    std::array<wchar_t, MAX_PATH + 1> place = {};
    std::array<wchar_t, 40> unique = {};
    GUID id = {};
    if (GetTempPathW(MAX_PATH, place.data()) == 0 || FAILED(CoCreateGuid(&id))) return;
    StringFromGUID2(id, unique.data(), static_cast<int>(unique.size()));
    const std::wstring path = std::wstring(place.data()) + L"veldra-" + unique.data();
    if (CreateDirectoryW(path.c_str(), nullptr) != FALSE) path_ = path;
  }
  ~CWorkFolder() {
    if (path_.empty()) return;
    for (const std::string& name : ListDirectory(FromWide(path_)))
      RemoveFile(JoinPath(FromWide(path_), name));
    RemoveDirectoryW(path_.c_str());
  }
  CWorkFolder(const CWorkFolder&) = delete;
  CWorkFolder& operator=(const CWorkFolder&) = delete;

  bool IsThere() const { return !path_.empty(); }
  std::wstring File(const std::wstring& name) const { return path_ + L"\\" + name; }

 private:
  std::wstring path_;
};

bool SetLimits(HANDLE job) {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
  limits.BasicLimitInformation.LimitFlags =
      JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_PROCESS_MEMORY | JOB_OBJECT_LIMIT_ACTIVE_PROCESS;
  limits.BasicLimitInformation.ActiveProcessLimit = 1;
  limits.ProcessMemoryLimit = kMostMemory;
  return SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits)) != FALSE;
}

/// COMMAND, whose program is PROGRAM, to its end; true when that is a good one.
bool Run(const std::wstring& program, std::wstring command) {
  const CHandle job(CreateJobObjectW(nullptr, nullptr));
  if (job.Get() == nullptr || !SetLimits(job.Get())) return false;
  STARTUPINFOW start = {};
  start.cb = sizeof(start);
  PROCESS_INFORMATION made = {};
  constexpr DWORD kFlags = CREATE_NO_WINDOW | CREATE_SUSPENDED | BELOW_NORMAL_PRIORITY_CLASS;
  if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, kFlags, nullptr, nullptr, &start,
                     &made) == FALSE)
    return false;
  const CHandle process(made.hProcess);
  const CHandle thread(made.hThread);
  DWORD exit_code = EXIT_FAILURE;
  if (AssignProcessToJobObject(job.Get(), process.Get()) == FALSE) {
    TerminateProcess(process.Get(), EXIT_FAILURE);
    return false;
  }
  ResumeThread(thread.Get());
  return WaitForSingleObject(process.Get(), kMostMilliseconds) == WAIT_OBJECT_0 &&
         GetExitCodeProcess(process.Get(), &exit_code) != FALSE && exit_code == EXIT_SUCCESS;
}

/// What says which kind of file it is, and nothing that a command line could trip over.
std::wstring Extension(const std::wstring& name) {
  const size_t dot = name.rfind(L'.');
  if (dot == std::wstring::npos) return {};
  const std::wstring extension = name.substr(dot);
  const bool is_plain = extension.size() <= 5 && extension.find_first_of(L"\\/\"<>|*? ") == std::wstring::npos;
  return is_plain ? extension : std::wstring();
}

}  // namespace

std::optional<SImage> MakeThumbnail(const std::wstring& program, const std::wstring& name,
                                    std::span<const uint8_t> bytes, unsigned side) {
  const CWorkFolder folder;
  if (!folder.IsThere()) return std::nullopt;
  const std::wstring file = folder.File(L"file" + Extension(name));
  const std::wstring picture = folder.File(L"picture.png");
  if (!ReplaceFile(FromWide(file), bytes)) return std::nullopt;
  const std::wstring command = L"\"" + program + L"\" thumbnail --size " +
                               std::to_wstring(std::clamp(side, 16U, 1024U)) + L" \"" + file + L"\" \"" + picture +
                               L"\"";
  if (!Run(program, command)) return std::nullopt;
  return ReadPng(FromWide(picture));
}

}  // namespace veldra
