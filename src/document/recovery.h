#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "document/copyfile.h"
#include "platform/filelock.h"
#include "platform/files.h"

/// Copies of the documents with unsaved changes, so that nothing is lost when the program dies.
namespace veldra {

/// A copy that a program left that is no longer there.
struct SLeftover {
  std::string session;     ///< the folder, within the recovery folder,
  std::string file;        ///< and the file's name in it
  SCopyLabel label;        ///< without the picture
  uint64_t size = 0;       ///< of the copy, in bytes
  std::string fault = {};  ///< "" or what is wrong with the copy; all but the names and the size is unknown then
};

/// The copies of one running program, in a folder of its own ("session") that carries a lock as long as the program
/// lives, and those of programs that died. Nothing here throws, asks or waits; what goes wrong is returned or traced.
///
/// To take a leftover over: Read it, Save the document's own copy, then Discard the leftover, so that at every moment
/// a copy is there.
class CRecoveryFolder {
 public:
  /// DIRECTORY holds the sessions of all programs; the usual one lies in the UserDataDirectory. It need not be there.
  CRecoveryFolder();
  explicit CRecoveryFolder(std::string directory);
  /// Takes the session's folder away unless copies are still in it; those are a later program's leftovers.
  ~CRecoveryFolder();
  CRecoveryFolder(const CRecoveryFolder&) = delete;
  CRecoveryFolder& operator=(const CRecoveryFolder&) = delete;

  /// Replaces the copy of the document ID, a number that tells the open documents of one program apart, by COPY, whole
  /// or not at all: on failure the older copy is untouched.
  bool Save(uint32_t id, std::span<const uint8_t> copy, SError* error = nullptr);
  /// The document was saved or closed. True when no copy is there afterwards.
  bool Remove(uint32_t id);

  /// The copies of dead programs, the newest first, damaged ones last. From here on, and while this program lives, no
  /// other is offered them.
  std::vector<SLeftover> Leftovers();
  SCopyFile Read(const SLeftover& leftover) const;
  /// Deletes the copy, and the dead program's folder with its last one.
  bool Discard(const SLeftover& leftover);

 private:
  bool Begin(SError* error);
  void Adopt(const std::string& session);
  std::string SessionPath(const std::string& session) const;

  std::string directory_;
  std::string session_;  ///< "" until there was something to save
  CFileLock lock_;
  std::map<std::string, CFileLock> adopted_;  ///< the dead programs' sessions, by name
};

/// When a document's next copy is due: once the user pauses, at the latest some seconds after the first change that no
/// copy has. A model that takes long to copy is copied so seldom that the user, who waits meanwhile, hardly notices.
/// The clock is passed in.
class CRecoverySchedule {
 public:
  using Clock = std::chrono::steady_clock;
  using Time = Clock::time_point;
  static constexpr std::chrono::seconds kPause{3};     ///< without a change
  static constexpr std::chrono::seconds kLongest{10};  ///< after the first change
  static constexpr std::chrono::seconds kRetry{10};    ///< after a copy that could not be made
  static constexpr int kRest = 10;                     ///< times as long as a copy takes none is made

  void Changed(Time now);
  /// A copy was made, which took TOOK.
  void Copied(Time now, Clock::duration took);
  void Failed(Time now) { not_before_ = now + kRetry; }
  /// The document was saved: nothing is to be copied.
  void Saved() { first_change_.reset(); }

  /// Nothing: no copy is needed.
  std::optional<Time> DueAt() const;
  bool IsDue(Time now) const { return DueAt() && *DueAt() <= now; }

 private:
  std::optional<Time> first_change_;  ///< that is in no copy
  Time last_change_;
  Time not_before_ = Time::min();
};

}  // namespace veldra
