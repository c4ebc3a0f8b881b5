#include "platform/filelock.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "platform/filelock_system.h"

namespace veldra {

namespace {

constexpr std::chrono::milliseconds kPause{10};

}  // namespace

CFileLock::CFileLock(CFileLock&& other) noexcept
    : handle_(std::exchange(other.handle_, kNone)), path_(std::move(other.path_)) {}

CFileLock& CFileLock::operator=(CFileLock&& other) noexcept {
  if (this == &other) return *this;
  Release();
  handle_ = std::exchange(other.handle_, kNone);
  path_ = std::move(other.path_);
  return *this;
}

ELockResult CFileLock::TryLock(const std::string& path, SError* error) {
  Release();
  path_ = disk::SystemPath(path);
  int number = 0;
  const ELockResult result = disk::OpenLocked(path_, handle_, number);
  if (result == ELockResult::kTaken || error == nullptr) return result;
  error->what = result == ELockResult::kBusy ? "another program has it open" : disk::ErrorText(number);
  return result;
}

ELockResult CFileLock::Lock(const std::string& path, std::chrono::milliseconds wait, SError* error) {
  const auto end = std::chrono::steady_clock::now() + wait;
  ELockResult result = TryLock(path, error);
  while (result == ELockResult::kBusy && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(kPause);
    result = TryLock(path, error);
  }
  return result;
}

void CFileLock::Release() {
  if (IsHeld()) disk::Close(std::exchange(handle_, kNone));
}

void CFileLock::ReleaseAndRemove() {
  if (!IsHeld()) return;
  // Gone before the lock is, where the system lets an open file go, so that nobody's new lock loses its file.
  const bool is_removed = disk::Remove(path_) == 0;
  Release();
  if (!is_removed) disk::Remove(path_);
}

std::vector<uint8_t> CFileLock::Content(size_t limit) const {
  disk::SStatus status;
  if (disk::StatusOf(handle_, status) != 0 || status.kind != disk::EKind::kFile) return {};
  std::vector<uint8_t> bytes(std::min(limit + 1, static_cast<size_t>(status.length)));
  size_t count = 0;
  if (disk::ReadAt(handle_, 0, bytes, count) != 0 || count != bytes.size() || count > limit) return {};
  return bytes;
}

bool CFileLock::SetContent(std::span<const uint8_t> bytes, SError* error) {
  size_t count = 0;
  int number = disk::Fault("write", path_);
  if (number == 0) number = disk::Write(handle_, bytes, count);
  if (number == 0) number = disk::Fault("sync", path_);
  if (number == 0) number = disk::Sync(handle_);
  if (number == 0 && count == bytes.size()) return true;
  if (error != nullptr) error->what = number != 0 ? disk::ErrorText(number) : "nothing more could be written";
  return false;
}

}  // namespace veldra
