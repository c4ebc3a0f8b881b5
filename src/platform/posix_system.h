#pragma once

#include <sys/stat.h>

#include <cerrno>

#include "platform/files_system.h"

namespace veldra::disk {

inline int Result(bool well) {
  return well ? 0 : errno;
}

/// Calls CALL again as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR)
    result = call();
  return result;
}

inline constexpr mode_t kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

/// The open FILE gets the owner and the permissions that WANTED has, as far as it can.
int GivePermissions(const struct stat& wanted, int file);

/// What CreateNew does to the FILE that it made; closes it on failure.
int MarkNew(int file, Handle& handle);

}  // namespace veldra::disk
