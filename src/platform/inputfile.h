#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/files.h"

namespace veldra {

/// What another version of a file differs in.
struct SFileVersion {
  uint64_t length = 0;  ///< in bytes
  int64_t ticks = 0;    ///< when it was last written, in a unit of the system's
  bool operator==(const SFileVersion&) const = default;
};

/// A regular file open for reading, any part of it, for what is too long to be read whole.
class CInputFile {
 public:
  CInputFile() = default;
  ~CInputFile();
  CInputFile(CInputFile&& other) noexcept;
  CInputFile& operator=(CInputFile&& other) noexcept;

  bool Open(std::string_view path, SError* error = nullptr);
  void Close();
  bool IsOpen() const { return handle_ != kClosed; }

  // As they were when it was opened.
  uint64_t Length() const { return version_.length; }     ///< in bytes
  int64_t ModificationTime() const { return modified_; }  ///< in seconds since 1970
  const SFileVersion& Version() const { return version_; }

  /// The length that it has now; nothing when that cannot be told.
  std::optional<uint64_t> LengthNow() const;

  /// Fills BUFFER with the bytes from OFFSET on; false when they are not all there.
  bool ReadAt(uint64_t offset, std::span<uint8_t> buffer, SError* error = nullptr) const;

  /// For the functions of files_system.h.
  intptr_t SystemHandle() const { return handle_; }

 private:
  static constexpr intptr_t kClosed = -1;

  intptr_t handle_ = kClosed;
  SFileVersion version_;
  int64_t modified_ = 0;
};

}  // namespace veldra
