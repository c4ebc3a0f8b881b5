#pragma once

#include <chrono>
#include <string>

#include "platform/files.h"

namespace veldra {

enum class ELockResult {
  kTaken,
  kBusy,    ///< another has it
  kFailed,  ///< the file cannot be made or opened, or its disk knows no locks
};

/// An exclusive lock on a file, among programs and within one, held until released. The system releases it when the
/// program dies, however it dies; so who gets the lock knows that the earlier holder is gone. The file is made when it
/// is not there, holds nothing unless SetContent is called, and stays behind. Binds only those who ask for it.
class CFileLock {
 public:
  CFileLock() = default;
  ~CFileLock() { Release(); }
  CFileLock(CFileLock&& other) noexcept;
  CFileLock& operator=(CFileLock&& other) noexcept;

  /// Never waits. The lock that this object held before is released first. ERROR is set unless the lock is taken.
  ELockResult TryLock(const std::string& path, SError* error = nullptr);
  /// While another has the lock, tries again for as long as WAIT.
  ELockResult Lock(const std::string& path, std::chrono::milliseconds wait, SError* error = nullptr);

  bool IsHeld() const { return handle_ != kNone; }
  void Release();
  /// Release that takes the file away. Who waits for it meanwhile gets a lock on the file that is there then.
  void ReleaseAndRemove();

  /// The locked file's bytes; none when there are more than LIMIT, or it cannot be read.
  std::vector<uint8_t> Content(size_t limit) const;
  /// Fills the locked file, which is empty, and has the bytes on the disk.
  bool SetContent(std::span<const uint8_t> bytes, SError* error);

 private:
  static constexpr intptr_t kNone = -1;
  intptr_t handle_ = kNone;
  std::string path_;
};

}  // namespace veldra
