#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/files_system.h"
#include "platform/inputfile.h"

/// Inside platform: what all that write files share.
namespace veldra {

/// Fail with what the system says of error NUMBER.
bool FailWith(SError* error, int number);

/// What SetFileFault's function says; 0 without one.
int InjectedFault(std::string_view operation, const std::string& path);

/// A name that no other program, and no other file of this one, is likely to have in mind.
std::string TemporaryName();
/// Names of temporary files that are tried before giving up.
inline constexpr int kNameAttempts = 100;

/// A file that is written, closed in the end.
class COpenFile {
 public:
  COpenFile() = default;
  ~COpenFile() { Close(); }
  COpenFile(const COpenFile&) = delete;
  COpenFile& operator=(const COpenFile&) = delete;

  int Close();

  disk::Handle handle = disk::kNoHandle;
};

bool WriteBytes(disk::Handle to, const std::string& path, std::span<const uint8_t> bytes, SError* error);

/// Appends LENGTH bytes from OFFSET of FROM to TO, which is called PATH, in pieces, through the kernel where it can.
/// STEP hears of each piece's size; when it returns false the copying fails, with an empty ERROR.
bool CopyBytes(const CInputFile& from, uint64_t offset, uint64_t length, disk::Handle to, const std::string& path,
               const std::function<bool(uint64_t)>& step, SError* error);

}  // namespace veldra
