#include "document/earlierstates.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <new>
#include <optional>
#include <random>
#include <utility>

#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "platform/userfolders.h"

namespace veldra {

namespace {

constexpr std::string_view kPrefix = "state-";
constexpr std::string_view kSuffix = ".copy";
constexpr size_t kIdDigits = 16;
constexpr const char* kLockName = "lock";
/// How often a folder that another program tidies away is made again.
constexpr int kEnterAttempts = 3;
constexpr size_t kLongestReadablePart = 40;

std::string StateName(uint64_t id) {
  return Format("state-%016llx.copy", static_cast<unsigned long long>(id));
}

std::optional<uint64_t> StateId(std::string_view name) {
  if (name.size() != kPrefix.size() + kIdDigits + kSuffix.size() || !name.starts_with(kPrefix) ||
      !name.ends_with(kSuffix))
    return std::nullopt;
  const char* const digits = name.data() + kPrefix.size();
  uint64_t id = 0;
  const auto [end, fault] = std::from_chars(digits, digits + kIdDigits, id, 16);
  const bool is_good = fault == std::errc() && end == digits + kIdDigits && name == StateName(id);
  return is_good ? std::optional<uint64_t>(id) : std::nullopt;
}

/// Ascending: the oldest first.
std::vector<uint64_t> StateIds(const std::string& folder) {
  std::vector<uint64_t> ids;
  for (const std::string& name : ListDirectory(folder)) {
    if (const auto id = StateId(name)) ids.push_back(*id);
  }
  std::ranges::sort(ids);
  return ids;
}

std::string StatePath(const std::string& folder, uint64_t id) {
  return JoinPath(folder, StateName(id));
}

/// Numbers follow the clock, so that they tell across folders what is older, but always grow within one.
uint64_t NextId(const std::vector<uint64_t>& ids) {
  using namespace std::chrono;
  const auto now = static_cast<uint64_t>(duration_cast<microseconds>(system_clock::now().time_since_epoch()).count());
  return ids.empty() ? now : std::max(now, ids.back() + 1);
}

uint64_t SizeOf(const std::string& folder, const std::vector<uint64_t>& ids) {
  uint64_t size = 0;
  for (const uint64_t id : ids)
    size += FileLength(StatePath(folder, id)).value_or(0);
  return size;
}

bool IsNewest(const std::string& folder, const std::vector<uint64_t>& ids, std::span<const uint8_t> file) {
  if (ids.empty()) return false;
  const auto newest = ReadWholeFile(StatePath(folder, ids.back()));
  return newest && IsSameContent(newest->View(), file);
}

SEarlierState Describe(const std::string& folder, uint64_t id) {
  SEarlierState state = {.id = id};
  const std::string path = StatePath(folder, id);
  state.size = FileLength(path).value_or(0);
  auto label = ReadLabelOf(path, state.fault);
  if (!label) return state;
  state.command = std::move(label->title);
  state.time = label->time;
  state.vertices = label->vertices;
  state.faces = label->faces;
  state.picture = std::move(label->picture);
  return state;
}

/// TEXT as every disk takes it in a file name.
std::string ReadablePart(std::string_view text) {
  std::string part(text.substr(0, kLongestReadablePart));
  std::ranges::replace_if(
      part, [](char c) { return !((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')); }, '-');
  return part;
}

}  // namespace

CEarlierStates::CEarlierStates() : CEarlierStates(JoinPath(UserDataDirectory(), "earlier")) {}

CEarlierStates::CEarlierStates(std::string directory, const SEarlierStateLimits& limits)
    : directory_(std::move(directory)), limits_(limits) {
  std::random_device random;
  session_ = Format("%08x%08x", random(), random());
}

std::string CEarlierStates::KeyOfPath(std::string_view path) {
  const std::string comparable = ComparablePath(path);
  return Format("%s-%016llx", ReadablePart(LowerCase(FileNamePart(comparable))).c_str(),
                static_cast<unsigned long long>(HashText(comparable)));
}

std::string CEarlierStates::KeyOfUntitled(int number) const {
  return Format("untitled-%d-%s", number, session_.c_str());
}

std::string CEarlierStates::Folder(const std::string& key) const {
  return JoinPath(directory_, key);
}

/// Makes KEY's folder and locks it.
bool CEarlierStates::Enter(const std::string& key, CFileLock& lock, SError* error) const {
  const std::string folder = Folder(key);
  for (int attempt = 0; attempt < kEnterAttempts; ++attempt) {
    if (!MakeDirectories(folder)) continue;
    const ELockResult result = lock.Lock(JoinPath(folder, kLockName), limits_.longest_wait, error);
    if (result == ELockResult::kTaken) return true;
    if (result == ELockResult::kBusy) return false;
  }
  if (error != nullptr && error->what.empty()) error->what = folder + ": the folder cannot be made";
  return false;
}

bool CEarlierStates::Keep(const std::string& key, std::span<const uint8_t> copy, SError* error) try {
  CFileLock lock;
  if (!Enter(key, lock, error)) return false;
  const std::string folder = Folder(key);
  const std::vector<uint64_t> ids = StateIds(folder);
  if (IsNewest(folder, ids, copy)) return true;
  if (!ReplaceFile(StatePath(folder, NextId(ids)), copy, error)) return false;
  DropOldest(folder);
  lock.Release();
  DropOldestDocuments(key);
  return true;
} catch (const std::bad_alloc&) {
  return Fail(error, kNotEnoughMemory);
}

void CEarlierStates::DropOldest(const std::string& folder) const {
  std::vector<uint64_t> ids = StateIds(folder);
  uint64_t size = SizeOf(folder, ids);
  for (size_t oldest = 0; oldest + 1 < ids.size(); ++oldest) {
    if (ids.size() - oldest <= limits_.states && size <= limits_.bytes_a_document) return;
    const std::string path = StatePath(folder, ids[oldest]);
    const uint64_t freed = FileLength(path).value_or(0);
    if (RemoveFile(path)) size -= std::min(size, freed);
  }
}

/// Takes whole documents away, those changed longest ago first, until all fit. Those that another program works on
/// stay.
void CEarlierStates::DropOldestDocuments(const std::string& kept_key) {
  if (std::exchange(has_looked_at_all_, true)) return;
  struct SDocument {
    uint64_t newest;
    uint64_t size;
    std::string key;
  };
  std::vector<SDocument> documents;
  uint64_t total = 0;
  for (const std::string& key : ListDirectory(directory_)) {
    const std::vector<uint64_t> ids = StateIds(Folder(key));
    if (!ids.empty()) documents.push_back({ids.back(), SizeOf(Folder(key), ids), key});
    if (!ids.empty()) total += documents.back().size;
  }
  std::ranges::sort(documents, {}, &SDocument::newest);
  for (const SDocument& document : documents) {
    if (total <= limits_.bytes_in_all) return;
    const std::string folder = Folder(document.key);
    CFileLock lock;
    if (document.key == kept_key || lock.TryLock(JoinPath(folder, kLockName)) != ELockResult::kTaken) continue;
    for (const uint64_t id : StateIds(folder))
      RemoveFile(StatePath(folder, id));
    RemoveAbandonedTemporaries(folder);
    lock.ReleaseAndRemove();
    RemoveEmptyFolder(folder);
    total -= document.size;
  }
}

std::vector<SEarlierState> CEarlierStates::List(const std::string& key) const try {
  const std::string folder = Folder(key);
  std::vector<SEarlierState> states;
  const std::vector<uint64_t> ids = StateIds(folder);
  for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
    SEarlierState state = Describe(folder, *id);
    // Another program may have dropped it meanwhile.
    if (state.fault.empty() || FileExists(StatePath(folder, *id))) states.push_back(std::move(state));
  }
  return states;
} catch (const std::bad_alloc&) {
  Trace(">> CEarlierStates::List(%s): not enough memory\n", key.c_str());
  return {};
}

SCopyFile CEarlierStates::Read(const std::string& key, uint64_t id) const {
  return ReadCopyFile(StatePath(Folder(key), id));
}

bool CEarlierStates::Move(const std::string& from, const std::string& to, SError* error) {
  const std::string source = Folder(from);
  if (from == to || !IsDirectory(source)) return true;
  // Everybody locks in the same order, so that two programs never wait for each other.
  CFileLock first;
  CFileLock second;
  if (!Enter(std::min(from, to), first, error) || !Enter(std::max(from, to), second, error)) return false;
  const std::string target = Folder(to);
  std::vector<uint64_t> ids = StateIds(target);
  for (const uint64_t id : StateIds(source)) {
    const uint64_t new_id = ids.empty() ? id : std::max(id, ids.back() + 1);
    if (!RenameFile(StatePath(source, id), StatePath(target, new_id), error)) return false;
    ids.push_back(new_id);
  }
  DropOldest(target);
  RemoveAbandonedTemporaries(source);
  (from < to ? first : second).ReleaseAndRemove();
  RemoveEmptyFolder(source);
  return true;
}

}  // namespace veldra
