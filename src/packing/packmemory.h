#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

/// How a truck was packed the last time, kept in a file beside the truck (MUDKING.TRK.pack), so that packing it again
/// asks nothing.
namespace veldra {

struct SPackMemory {
  std::string archive;                  ///< that was written
  bool leaves_out_stock = true;         ///< files that every installation has stay out
  std::vector<std::string> more_files;  ///< that the truck does not need and the user wants in the archive
};

/// A text of lines "KEY VALUE". Paths are kept relative to the truck's folder where they lie in it or below, so that
/// the folder can be moved as a whole. Nothing when there is none, or it names no archive.
std::optional<SPackMemory> ReadPackMemory(const std::string& truck_path);
bool WritePackMemory(const std::string& truck_path, const SPackMemory& memory, SError* error = nullptr);

}  // namespace veldra
