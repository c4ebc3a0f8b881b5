#include "platform/fileset.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <memory>
#include <new>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "platform/bytes.h"
#include "platform/compress.h"
#include "platform/filelock.h"
#include "platform/files_system.h"
#include "platform/filetime.h"
#include "platform/paths.h"
#include "platform/temporaries.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// How long another program may take to give its new files their names.
constexpr std::chrono::seconds kLongestSave{10};
/// Who only reads can read around the save.
constexpr std::chrono::seconds kReadersWait{2};
constexpr std::chrono::milliseconds kSaversPause{5};
/// Who is disturbed that often keeps savers away for the time of a read.
constexpr int kFreeReads = 8;

// The note: kNoteMagic, u32 number of files, for each the names of its new file and of the copy of its old one ("" when
// there was none), each after its length as u32, u32 checksum of all before.
constexpr std::string_view kNoteMagic = "VELDSAVE";
constexpr size_t kLongestNote = size_t{1} << 20;

struct SSet {
  std::vector<std::string> targets;  ///< links followed
  std::string tag;                   ///< in the names of what belongs to this set and no other
  std::string note;                  ///< its path
};

SSet SetOf(std::span<const std::string> paths) {
  SSet set;
  std::string names;
  for (const std::string& path : paths) {
    const std::string native = disk::SystemPath(path);
    std::string& target = set.targets.emplace_back();
    if (disk::FollowLinks(native, target) != 0) target = native;
    names += LowerCase(FileNamePart(target)) + '/';
  }
  set.tag = Format("%016llx", static_cast<unsigned long long>(HashText(names)));
  set.note = JoinPath(disk::FolderAbove(set.targets.front()), NoteName(set.tag));
  return set;
}

/// Where one file of a set is on the way to its name.
struct SMember {
  std::string target;
  std::string fresh;  ///< the new file; once it has its name, nothing is here
  std::string old;    ///< a copy of the old one; "" when there was none, and for the set's first file
  std::string folder;
};

using Members = std::vector<SMember>;

void WriteName(CByteWriter& out, const std::string& path) {
  const std::string name = FileNamePart(path);
  out.WriteU32(static_cast<uint32_t>(name.size()));
  out.WriteText(name);
}

CByteWriter NoteOf(const Members& members) {
  CByteWriter out;
  out.WriteText(kNoteMagic);
  out.WriteU32(static_cast<uint32_t>(members.size()));
  for (const SMember& member : members) {
    WriteName(out, member.fresh);
    WriteName(out, member.old);
  }
  out.WriteU32(Checksum(out.Bytes()));
  return out;
}

/// The path of what a note names beside TARGET; nothing unless it is a temporary file of this very set, whoever wrote
/// the note.
std::optional<std::string> ReadName(CByteReader& in, const SSet& set, const std::string& target, bool may_be_empty) {
  const auto bytes = in.ReadBytes(in.ReadU32());
  std::string name(bytes.begin(), bytes.end());
  if (name.empty() && may_be_empty) return name;
  if (!IsTemporaryName(name, set.tag)) return std::nullopt;
  return JoinPath(disk::FolderAbove(target), name);
}

std::optional<Members> ParseNote(const SSet& set, std::span<const uint8_t> note) {
  if (note.size() < kNoteMagic.size() + 8) return std::nullopt;
  const auto body = note.first(note.size() - 4);
  if (CByteReader(note.last(4)).ReadU32() != Checksum(body)) return std::nullopt;
  CByteReader in(body);
  const auto magic = in.ReadBytes(kNoteMagic.size());
  if (std::string(magic.begin(), magic.end()) != kNoteMagic || in.ReadU32() != set.targets.size()) return std::nullopt;
  Members members;
  for (const std::string& target : set.targets) {
    auto fresh = ReadName(in, set, target, false);
    auto old = ReadName(in, set, target, true);
    if (!fresh || !old || in.Failed()) return std::nullopt;
    members.push_back({target, std::move(*fresh), std::move(*old), disk::FolderAbove(target)});
  }
  return in.AtEnd() ? std::optional(std::move(members)) : std::nullopt;
}

bool IsPlainFile(const std::string& path) {
  return disk::Status(path).kind == disk::EKind::kFile && !disk::IsLink(path);
}

/// The first file takes its name last.
bool IsDone(const Members& members) {
  return !IsPlainFile(members.front().fresh);
}

int Move(const std::string& from, const std::string& to) {
  const int number = disk::Fault("rename", to);
  return number != 0 ? number : disk::Rename(from, to);
}

int TakeAway(const std::string& path) {
  const int number = disk::Fault("remove", path);
  return number != 0 ? number : disk::Remove(path);
}

/// MEMBER has got its new file, in the place of which the old one may be again.
bool IsReplaced(const SMember& member) {
  return !IsPlainFile(member.fresh);
}

bool TakeBack(const SMember& member) {
  if (!IsReplaced(member)) return true;
  if (IsPlainFile(member.old)) return Move(member.old, member.target) == 0;
  return !member.old.empty() || !FileExists(member.target) || TakeAway(member.target) == 0;
}

/// Takes an interrupted save back, or takes away what is left of one that is done. False when that is not to be done
/// now; nothing that is needed for it later is gone then. Needs no memory, which may have run out.
bool Settle(const Members& members) {
  if (!IsDone(members)) {
    for (const SMember& member : std::span(members).subspan(1))
      if (!TakeBack(member)) return false;
    disk::SyncDirectory(members.front().folder);
  }
  for (const SMember& member : members) {
    disk::Remove(member.fresh);
    if (!member.old.empty()) disk::Remove(member.old);
  }
  return true;
}

/// With the lock, which is the note, held: sets right what it tells of and gives it up.
bool SettleNoted(const SSet& set, CFileLock& lock) {
  const CEndHold hold;
  const auto members = ParseNote(set, lock.Content(kLongestNote));
  if (members && !Settle(*members)) {
    lock.Release();
    return false;
  }
  // Without members nothing had taken its name yet.
  lock.ReleaseAndRemove();
  RemoveAbandonedTemporaries(disk::FolderAbove(set.note));
  return true;
}

/// Where each of PATHS holds what it held before the save that the note tells of.
std::vector<std::string> PlacesBefore(const SSet& set, std::span<const std::string> paths) {
  std::vector<std::string> places(paths.begin(), paths.end());
  const auto note = disk::IsLink(set.note) ? std::nullopt : ReadWholeFile(set.note, nullptr, kLongestNote);
  const auto members = note ? ParseNote(set, note->View()) : std::nullopt;
  if (!members || IsDone(*members)) return places;
  for (size_t i = 1; i < places.size(); ++i) {
    const SMember& member = (*members)[i];
    if (IsReplaced(member) && (member.old.empty() || IsPlainFile(member.old))) places[i] = member.old;
  }
  return places;
}

std::vector<std::string> PlacesToRead(const SSet& set, std::span<const std::string> paths) {
  if (FileExists(set.note)) {
    CFileLock lock;
    const bool is_ours = !disk::IsLink(set.note) && lock.Lock(set.note, kReadersWait) == ELockResult::kTaken;
    if (!is_ours || !SettleNoted(set, lock)) return PlacesBefore(set, paths);
  }
  return {paths.begin(), paths.end()};
}

/// What the files of a set are. Differs from a later one when a save has begun or came in between, since each save
/// makes new files. As long as it lives, none of them is given the number of one of these.
class CMoment {
 public:
  explicit CMoment(const SSet& set) : is_noted_(FileExists(set.note)), written_(FileWriteTime(set.targets.front())) {
    for (const std::string& target : set.targets)
      files_.push_back(disk::Pin(target, pins_.emplace_back().handle));
  }
  bool operator==(const CMoment& other) const {
    return is_noted_ == other.is_noted_ && written_ == other.written_ && files_ == other.files_;
  }

 private:
  bool is_noted_;
  std::optional<int64_t> written_;  ///< of the first, for disks that number nothing
  std::deque<disk::COpenFile> pins_;
  std::vector<std::optional<disk::SIdentity>> files_;
};

/// Reads while nobody can save; false when that cannot be had.
bool ReadAlone(const SSet& set, std::span<const std::string> paths, const FileSetReader& read) {
  for (int attempt = 0; attempt < 2; ++attempt) {
    CFileLock lock;
    if (disk::IsLink(set.note) || lock.Lock(set.note, kLongestSave) != ELockResult::kTaken) return false;
    if (FileLength(set.note) == 0U) {
      read(paths);
      lock.ReleaseAndRemove();
      return true;
    }
    if (!SettleNoted(set, lock)) return false;
  }
  return false;
}

/// One saving of a set.
class CSetReplacement {
 public:
  explicit CSetReplacement(std::span<const SNewFile> files) : files_(files) {
    for (const SNewFile& file : files)
      paths_.push_back(file.path);
    set_ = SetOf(paths_);
  }
  /// Nothing has got its name yet when the lock is still held.
  ~CSetReplacement() { lock_.ReleaseAndRemove(); }
  CSetReplacement(const CSetReplacement&) = delete;
  CSetReplacement& operator=(const CSetReplacement&) = delete;

  bool Write(SError* error);
  /// Up to where only names are left to be given.
  bool Prepare(SError* error) { return Enter(error) && KeepOld(error) && WriteNote(error); }
  bool Commit(SError* error);

  // Commit in steps, for several sets. The first file can be taken back as long as KeepFirst's copy is there.
  bool KeepFirst(SError* error);
  bool TakeOtherNames(SError* error);
  bool TakeFirstName(SError* error);
  void TakeFirstBack();
  void Finish(bool is_done);

 private:
  bool WriteFile(CReplacement& file, std::span<const uint8_t> bytes, SError* error);
  bool Enter(SError* error);
  bool KeepOld(SError* error);
  bool WriteNote(SError* error);
  void Leave();
  bool FailAt(size_t file, SError* error, int number = 0) const;

  std::span<const SNewFile> files_;
  std::vector<std::string> paths_;
  SSet set_;
  std::vector<std::unique_ptr<CReplacement>> fresh_;
  std::vector<std::unique_ptr<CReplacement>> old_;
  Members members_;
  std::unique_ptr<CReplacement> old_first_;
  CFileLock lock_;
  std::unique_ptr<CEndHold> hold_;
};

/// Says which file it is about, unless it is the first.
bool CSetReplacement::FailAt(size_t file, SError* error, int number) const {
  if (error == nullptr) return false;
  if (number != 0) error->what = disk::ErrorText(number);
  if (file > 0) error->what = paths_[file] + ": " + error->what;
  return false;
}

bool CSetReplacement::WriteFile(CReplacement& file, std::span<const uint8_t> bytes, SError* error) {
  return file.Open(error) && file.Write(bytes, error) && file.Finish(error);
}

bool CSetReplacement::Write(SError* error) {
  for (size_t i = 0; i < files_.size(); ++i) {
    fresh_.push_back(std::make_unique<CReplacement>(paths_[i], set_.tag));
    if (!WriteFile(*fresh_[i], files_[i].bytes, error)) return FailAt(i, error);
    const std::string& target = fresh_[i]->Target();
    members_.push_back({target, fresh_[i]->Temporary(), "", disk::FolderAbove(target)});
  }
  return true;
}

/// Takes the lock with an empty note. Where the disk has no locks, nor a place for the note, the save goes without.
bool CSetReplacement::Enter(SError* error) {
  const auto end = std::chrono::steady_clock::now() + kLongestSave;
  for (;;) {
    hold_ = std::make_unique<CEndHold>();
    const bool may_lock = disk::Fault("lock", set_.note) == 0 && !disk::IsLink(set_.note);
    const ELockResult result = may_lock ? lock_.TryLock(set_.note) : ELockResult::kFailed;
    if (result == ELockResult::kFailed || (result == ELockResult::kTaken && FileLength(set_.note) == 0U)) return true;
    if (result == ELockResult::kTaken && !SettleNoted(set_, lock_)) {
      return Fail(error, "an interrupted save of it could not be taken back");
    }
    hold_.reset();
    if (std::chrono::steady_clock::now() > end) return Fail(error, "another program is saving it");
    std::this_thread::sleep_for(kSaversPause);
  }
}

bool CSetReplacement::KeepOld(SError* error) {
  for (size_t i = 1; i < files_.size(); ++i) {
    if (!IsFile(members_[i].target)) continue;
    const auto bytes = ReadWholeFile(members_[i].target, error);
    old_.push_back(std::make_unique<CReplacement>(paths_[i], set_.tag));
    if (!bytes || !WriteFile(*old_.back(), bytes->View(), error)) return FailAt(i, error);
    members_[i].old = old_.back()->Temporary();
  }
  return true;
}

bool CSetReplacement::WriteNote(SError* error) {
  if (!lock_.IsHeld()) return true;
  if (!lock_.SetContent(NoteOf(members_).Bytes(), error)) return false;
  disk::SyncDirectory(disk::FolderAbove(set_.note));
  return true;
}

bool CSetReplacement::KeepFirst(SError* error) {
  if (!IsFile(members_[0].target)) return true;
  const auto bytes = ReadWholeFile(members_[0].target, error);
  old_first_ = std::make_unique<CReplacement>(paths_[0], set_.tag);
  return bytes && WriteFile(*old_first_, bytes->View(), error);
}

bool CSetReplacement::TakeOtherNames(SError* error) {
  for (size_t i = members_.size(); i-- > 1;)
    if (const int number = Move(members_[i].fresh, members_[i].target); number != 0) return FailAt(i, error, number);
  return true;
}

bool CSetReplacement::TakeFirstName(SError* error) {
  const int number = Move(members_[0].fresh, members_[0].target);
  return number == 0 || FailAt(0, error, number);
}

/// The new file takes its temporary name again, with which the save is not done any more.
void CSetReplacement::TakeFirstBack() {
  if (!IsDone(members_) || Move(members_[0].target, members_[0].fresh) != 0) return;
  if (old_first_ != nullptr) Move(old_first_->Temporary(), members_[0].target);
}

/// IS_DONE: all files have their names, and what they replaced is not needed any more.
void CSetReplacement::Finish(bool is_done) {
  for (size_t i = 0; is_done && i < members_.size(); ++i)
    if (i == 0 || members_[i].folder != members_[0].folder) disk::SyncDirectory(members_[i].folder);
  if (Settle(members_)) lock_.ReleaseAndRemove();
  Leave();
}

/// What could not be set right now is what the note is for.
void CSetReplacement::Leave() {
  for (auto* files : {&fresh_, &old_})
    for (const auto& file : *files)
      file->Leave();
  lock_.Release();
}

bool CSetReplacement::Commit(SError* error) {
  if (!Prepare(error)) return false;
  try {
    const bool is_done = TakeOtherNames(error) && TakeFirstName(error);
    Finish(is_done);
    return is_done;
  } catch (const std::bad_alloc&) {
    Leave();
    throw;
  }
}

bool TakeAllNames(std::deque<CSetReplacement>& sets, SError* error, size_t& at) {
  for (at = sets.size(); at-- > 0;)
    if (!sets[at].TakeOtherNames(error)) return false;
  for (at = sets.size(); at-- > 0;)
    if (!sets[at].TakeFirstName(error)) return false;
  return true;
}

/// Says which set ERROR is about, unless it is the first or the error says it; false.
bool NameSet(std::span<const std::vector<SNewFile>> files, size_t set, SError* error) {
  const std::string path = set == 0 ? "" : files[set].front().path;
  const bool is_said = error == nullptr || std::ranges::any_of(files[set], [error](const SNewFile& file) {
                         return error->what.starts_with(file.path + ": ");
                       });
  if (!path.empty() && !is_said) error->what = path + ": " + error->what;
  return false;
}

/// True when STEP is for all of SETS; ERROR names the file where it is not one that the caller knows.
template <typename Step>
bool ForEach(std::deque<CSetReplacement>& sets, std::span<const std::vector<SNewFile>> files, SError* error,
             const Step& step) {
  for (size_t i = 0; i < sets.size(); ++i)
    if (!step(sets[i])) return NameSet(files, i, error);
  return true;
}

}  // namespace

bool ReplaceFiles(std::span<const SNewFile> files, SError* error) {
  CSetReplacement replacement(files);
  return replacement.Write(error) && replacement.Commit(error);
}

bool ReplaceFileSets(std::span<const std::vector<SNewFile>> files, SError* error) {
  std::deque<CSetReplacement> sets;
  for (const std::vector<SNewFile>& set : files)
    sets.emplace_back(set);
  const bool is_ready =
      ForEach(sets, files, error, [error](CSetReplacement& set) { return set.Write(error); }) &&
      ForEach(sets, files, error, [error](CSetReplacement& set) { return set.Prepare(error) && set.KeepFirst(error); });
  if (!is_ready) return false;
  size_t at = 0;
  const bool is_done = TakeAllNames(sets, error, at);
  if (!is_done) NameSet(files, at, error);
  for (CSetReplacement& set : sets) {
    if (!is_done) set.TakeFirstBack();
    set.Finish(is_done);
  }
  return is_done;
}

void ReadFiles(std::span<const std::string> paths, const FileSetReader& read) {
  const SSet set = SetOf(paths);
  for (int attempt = 0; attempt < kFreeReads; ++attempt) {
    // Before it is known where to read, or a save that begins after that would not be seen.
    const CMoment before(set);
    read(PlacesToRead(set, paths));
    if (CMoment(set) == before) return;
  }
  if (!ReadAlone(set, paths, read)) read(PlacesToRead(set, paths));
}

void SettleFiles(std::span<const std::string> paths) {
  PlacesToRead(SetOf(paths), paths);
}

}  // namespace veldra
