#pragma once

#include <optional>
#include <string>

#include "platform/bytes.h"
#include "platform/files.h"

namespace veldra {

/// Where something is that is no file of its own: the archive, and the name of its entry.
struct SArchivePlace {
  std::string archive = {};
  std::string entry = {};

  bool IsSame(const SArchivePlace& other) const;
  /// "SKY.RAW (MEGA.POD)"
  std::string Title() const;
};

/// What the entry holds now. Of several of one name the last, which is the one that the game finds.
std::optional<CFileBytes> ReadPlace(const SArchivePlace& place, SError* error);

}  // namespace veldra
