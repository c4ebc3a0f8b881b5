#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/files.h"

/// Files that are one save: a model and its sidecar, a texture and its colour table. Who reads them gets all of them as
/// the same save left them, whatever became of the program that saved; who saves them has them alone meanwhile. The
/// first file of a set is the one that it is known by, and the others follow from its name.
///
/// How: all new files are written under other names, and copies of the old ones, but the first, too. A note beside the
/// first file, which is also the lock, says which those are. Then they take their names, the first file last: with
/// that the save is done. Whoever finds a note without its program takes the save back, or tidies up what is done.
namespace veldra {

struct SNewFile {
  std::string path;
  std::span<const uint8_t> bytes;
};

/// Replaces the files of a set: true when all are new, false when all are as they were. ERROR says why; it begins with
/// the path when that is not the first file's. Links are followed and permissions kept, as ReplaceFile does.
bool ReplaceFiles(std::span<const SNewFile> files, SError* error);

/// Replaces several sets, each of which is read on its own: true when all are new, false when all are as they were. The
/// first set takes its names last. A kill in between leaves each set whole, but maybe not all new. ERROR begins with
/// the path unless that is the first file of the first set.
bool ReplaceFileSets(std::span<const std::vector<SNewFile>> sets, SError* error);

/// Hears where the files of a set are to be read from, in their order: usually their own paths; "" is no file.
using FileSetReader = std::function<void(std::span<const std::string> paths)>;

/// Calls READ for the set PATHS, after an interrupted save has been finished or taken back, or around it where nothing
/// may be written. READ is called again when a save came in between, so it must forget what it read before.
void ReadFiles(std::span<const std::string> paths, const FileSetReader& read);

/// Finishes or takes back an interrupted save of the set PATHS, where that can be.
void SettleFiles(std::span<const std::string> paths);

}  // namespace veldra
