#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/files_system.h"

/// Temporary files, which lie beside what they are to become: their names, those that this process has, and those that
/// dead processes left.
namespace veldra {

/// One temporary file of this process. As long as it is held, a signal that ends the process removes the file.
class CTemporary {
 public:
  CTemporary() = default;
  ~CTemporary() { Remove(); }
  CTemporary(const CTemporary&) = delete;
  CTemporary& operator=(const CTemporary&) = delete;

  /// Makes a new file of a path, as disk::CreateNew does.
  using Creator = std::function<int(const std::string& path, disk::Handle& handle)>;
  /// Makes a new file in FOLDER, open for writing. TAG becomes part of its name ("" for none). Returns the system's
  /// error number.
  int Create(const std::string& folder, std::string_view tag, const Creator& create, disk::Handle& handle);
  /// Once its handle is closed the file would pass for one of a dead process. Call it before.
  void KeepMarked(disk::Handle handle);
  /// The file has another name by now, or is left to somebody else.
  void Forget();
  /// Takes the file away, when there is one.
  void Remove();

  const std::string& Path() const { return path_; }  ///< "" when there is none

 private:
  std::string path_;
  disk::Handle mark_ = disk::kNoHandle;
  int slot_ = -1;
};

/// The name of a file that CTemporary made with TAG.
bool IsTemporaryName(std::string_view name, std::string_view tag);
/// What tells files by one TAG apart from others while they are not to be tidied away: as long as a file of this name
/// is beside them, nobody takes them for leftovers.
std::string NoteName(std::string_view tag);

/// Removes the files of all CTemporary objects. For a process that is ending: safe in a signal handler.
void RemoveOpenTemporaries();

/// While one exists, a signal that ends the process waits: of several files that belong together some already have
/// their new names.
class CEndHold {
 public:
  CEndHold();
  ~CEndHold();
  CEndHold(const CEndHold&) = delete;
  CEndHold& operator=(const CEndHold&) = delete;
};

}  // namespace veldra
