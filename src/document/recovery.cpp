#include "document/recovery.h"

#include <algorithm>
#include <new>
#include <random>
#include <utility>

#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "platform/userfolders.h"

namespace veldra {

namespace {

constexpr std::string_view kSessionPrefix = "session-";
constexpr std::string_view kCopyPrefix = "document-";
constexpr std::string_view kCopySuffix = ".copy";
constexpr const char* kSessionLockName = "lock";
/// Names of sessions that are tried before giving up.
constexpr int kNameAttempts = 3;

std::string CopyName(uint32_t id) {
  return Format("document-%u.copy", id);
}

bool IsCopyName(std::string_view name) {
  return name.starts_with(kCopyPrefix) && name.ends_with(kCopySuffix);
}

bool HoldsCopies(const std::string& folder) {
  return std::ranges::any_of(ListDirectory(folder), IsCopyName);
}

/// Takes FOLDER away unless it holds copies or what is not ours.
void RemoveSession(const std::string& folder, CFileLock& lock) {
  if (HoldsCopies(folder)) {
    lock.Release();
    return;
  }
  RemoveAbandonedTemporaries(folder);
  lock.ReleaseAndRemove();
  if (!RemoveEmptyFolder(folder)) Trace(">> CRecoveryFolder: %s stays\n", folder.c_str());
}

SLeftover Describe(const std::string& folder, const std::string& session, const std::string& file) {
  SLeftover leftover = {.session = session, .file = file, .label = {.title = file}};
  const std::string path = JoinPath(folder, file);
  leftover.size = FileLength(path).value_or(0);
  if (auto label = ReadLabelOf(path, leftover.fault)) leftover.label = std::move(*label);
  leftover.label.picture = {};
  return leftover;
}

bool IsShownBefore(const SLeftover& a, const SLeftover& b) {
  if (a.fault.empty() != b.fault.empty()) return a.fault.empty();
  return a.label.time > b.label.time;
}

}  // namespace

CRecoveryFolder::CRecoveryFolder() : CRecoveryFolder(JoinPath(UserDataDirectory(), "recovery")) {}

CRecoveryFolder::CRecoveryFolder(std::string directory) : directory_(std::move(directory)) {}

CRecoveryFolder::~CRecoveryFolder() {
  if (lock_.IsHeld()) RemoveSession(SessionPath(session_), lock_);
}

std::string CRecoveryFolder::SessionPath(const std::string& session) const {
  return JoinPath(directory_, session);
}

/// Makes the session when there is none, or when somebody tidied it away.
bool CRecoveryFolder::Begin(SError* error) {
  if (lock_.IsHeld() && IsDirectory(SessionPath(session_))) return true;
  std::random_device random;
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    const auto time = static_cast<unsigned long long>(PresentTime());
    session_ = Format("%s%llx-%08x", std::string(kSessionPrefix).c_str(), time, random());
    // Another program that tidies may take the empty folder for a dead one's before it is locked.
    if (!MakeDirectories(SessionPath(session_))) continue;
    if (lock_.TryLock(JoinPath(SessionPath(session_), kSessionLockName), error) == ELockResult::kTaken) return true;
  }
  if (error != nullptr && error->what.empty()) error->what = directory_ + ": no folder can be made";
  return false;
}

bool CRecoveryFolder::Save(uint32_t id, std::span<const uint8_t> copy, SError* error) {
  return Begin(error) && ReplaceFile(JoinPath(SessionPath(session_), CopyName(id)), copy, error);
}

bool CRecoveryFolder::Remove(uint32_t id) {
  if (session_.empty()) return true;
  const std::string path = JoinPath(SessionPath(session_), CopyName(id));
  return RemoveFile(path) || !FileExists(path);
}

/// Takes SESSION over when its program is dead.
void CRecoveryFolder::Adopt(const std::string& session) {
  const std::string folder = SessionPath(session);
  CFileLock lock;
  SError error;
  const ELockResult result = lock.TryLock(JoinPath(folder, kSessionLockName), &error);
  if (result == ELockResult::kFailed) Trace(">> CRecoveryFolder: %s: %s\n", folder.c_str(), error.what.c_str());
  if (result != ELockResult::kTaken) return;
  if (HoldsCopies(folder)) {
    adopted_.emplace(session, std::move(lock));
  } else {
    RemoveSession(folder, lock);
  }
}

std::vector<SLeftover> CRecoveryFolder::Leftovers() try {
  for (const std::string& name : ListDirectory(directory_)) {
    const bool is_other = name.starts_with(kSessionPrefix) && name != session_ && !adopted_.contains(name);
    if (is_other && IsDirectory(SessionPath(name))) Adopt(name);
  }
  std::vector<SLeftover> leftovers;
  for (const auto& [session, lock] : adopted_) {
    const std::string folder = SessionPath(session);
    for (const std::string& name : ListDirectory(folder)) {
      if (IsCopyName(name)) leftovers.push_back(Describe(folder, session, name));
    }
  }
  std::ranges::stable_sort(leftovers, IsShownBefore);
  return leftovers;
} catch (const std::bad_alloc&) {
  Trace(">> CRecoveryFolder::Leftovers(): not enough memory\n");
  return {};
}

SCopyFile CRecoveryFolder::Read(const SLeftover& leftover) const {
  return ReadCopyFile(JoinPath(SessionPath(leftover.session), leftover.file));
}

bool CRecoveryFolder::Discard(const SLeftover& leftover) {
  const auto session = adopted_.find(leftover.session);
  if (session == adopted_.end() || !IsCopyName(leftover.file)) return false;
  const std::string folder = SessionPath(leftover.session);
  const std::string path = JoinPath(folder, leftover.file);
  if (!RemoveFile(path) && FileExists(path)) return false;
  if (!HoldsCopies(folder)) {
    RemoveSession(folder, session->second);
    adopted_.erase(session);
  }
  return true;
}

void CRecoverySchedule::Changed(Time now) {
  if (!first_change_) first_change_ = now;
  last_change_ = now;
}

void CRecoverySchedule::Copied(Time now, Clock::duration took) {
  first_change_.reset();
  not_before_ = now + kRest * took;
}

std::optional<CRecoverySchedule::Time> CRecoverySchedule::DueAt() const {
  if (!first_change_) return std::nullopt;
  return std::max(std::min(*first_change_ + kLongest, last_change_ + kPause), not_before_);
}

}  // namespace veldra
