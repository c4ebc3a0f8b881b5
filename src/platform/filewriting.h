#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "platform/files_system.h"
#include "platform/inputfile.h"

/// Inside platform: what all that write files share.
namespace veldra::disk {

/// Appends BYTES to the open file TO, which is called PATH.
bool WriteBytes(Handle to, const std::string& path, std::span<const uint8_t> bytes, SError* error);

/// Appends LENGTH bytes from OFFSET of FROM to TO, which is called PATH, in pieces, through the kernel where it can.
/// STEP hears of each piece's size; when it returns false the copying fails, with an empty ERROR.
bool CopyBytes(const CInputFile& from, uint64_t offset, uint64_t length, Handle to, const std::string& path,
               const std::function<bool(uint64_t)>& step, SError* error);

}  // namespace veldra::disk
