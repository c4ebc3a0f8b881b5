#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/copyfile.h"
#include "platform/filelock.h"
#include "platform/files.h"
#include "platform/png.h"

namespace veldra {

/// One state that a document had.
struct SEarlierState {
  uint64_t id = 0;           ///< later states have larger ones
  std::string command = {};  ///< what led to it, in the user's words
  int64_t time = 0;          ///< seconds since 1970, UTC
  uint64_t size = 0;         ///< on disk, in bytes
  int32_t vertices = 0;      ///< of a model
  int32_t faces = 0;
  SImage picture = {};     ///< without pixels when there is none
  std::string fault = {};  ///< "" or what is wrong with it; only the id and the size are known then
};

/// What may lie on the disk, and how long one program waits for another. The newest state of the document at hand is
/// kept whatever its size.
struct SEarlierStateLimits {
  size_t states = 30;  ///< of one document
  uint64_t bytes_a_document = uint64_t{256} << 20;
  uint64_t bytes_in_all = uint64_t{1} << 30;  ///< beyond it the documents go that were changed longest ago
  std::chrono::milliseconds longest_wait{2000};
};

/// The last states of the documents, kept on disk across sessions. Each document's lie in a folder named by its key;
/// programs that keep states of the same document at once take turns. Nothing here throws or asks, and what one waits
/// for another takes seconds at most.
class CEarlierStates {
 public:
  /// DIRECTORY need not be there; the usual one lies in the UserDataDirectory.
  CEarlierStates();
  explicit CEarlierStates(std::string directory, const SEarlierStateLimits& limits = {});

  /// The key of the document whose file is PATH. Readable, and one for all spellings of the path.
  static std::string KeyOfPath(std::string_view path);
  /// A key for the never-saved document NUMBER of this program; no other program has it.
  std::string KeyOfUntitled(int number) const;

  /// Keeps COPY, labelled with the command, as the newest state, unless its content is exactly that of the newest one
  /// already. Drops the oldest beyond the limits. On failure the states that are there stay.
  bool Keep(const std::string& key, std::span<const uint8_t> copy, SError* error = nullptr);
  /// The newest first.
  std::vector<SEarlierState> List(const std::string& key) const;
  SCopyFile Read(const std::string& key, uint64_t id) const;
  /// FROM's states come behind those of TO: for a document that got its first path.
  bool Move(const std::string& from, const std::string& to, SError* error = nullptr);

 private:
  bool Enter(const std::string& key, CFileLock& lock, SError* error) const;
  void DropOldest(const std::string& folder) const;
  void DropOldestDocuments(const std::string& kept_key);
  std::string Folder(const std::string& key) const;

  std::string directory_;
  SEarlierStateLimits limits_;
  std::string session_;             ///< differs from any other program's
  bool has_looked_at_all_ = false;  ///< the limit on all documents is looked at once a program
};

}  // namespace veldra
