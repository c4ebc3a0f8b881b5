#pragma once

#include <string>

#include "platform/filelock.h"
#include "platform/files_system.h"

namespace veldra::disk {

/// Opens the file PATH (as SystemPath returned it), makes it when it is not there, and locks it without waiting. The
/// lock goes with HANDLE when that is closed. NUMBER is the system's error number for kFailed.
ELockResult OpenLocked(const std::string& path, Handle& handle, int& number);

}  // namespace veldra::disk
