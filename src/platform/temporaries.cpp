#include "platform/temporaries.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <optional>
#include <utility>

#include "platform/endsignals_system.h"
#include "platform/filelock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Names that are tried before giving up.
constexpr int kTemporaryAttempts = 100;
/// More open files at once are still tidied away, by the next who writes into their folder.
constexpr size_t kSlots = 32;
constexpr std::string_view kTemporaryPrefix = ".veldra-";
constexpr std::string_view kTemporarySuffix = ".tmp";
constexpr std::string_view kNoteSuffix = ".save";

/// A path that a signal handler can read: it is complete before IS_LIVE is set and stays until that is cleared.
struct SSlot {
  std::atomic<bool> is_taken = false;
  std::atomic<bool> is_live = false;
  std::string path;
};

/// Never destroyed, as a signal can come at any time.
std::array<SSlot, kSlots>& Slots() {
  static auto& slots = *new std::array<SSlot, kSlots>;
  return slots;
}

/// The slots as the signal handler sees them: null before there was the first file.
std::atomic<std::array<SSlot, kSlots>*> g_slots = nullptr;
std::atomic<int> g_holds = 0;

int TakeSlot(const std::string& path) {
  auto& slots = Slots();
  for (size_t i = 0; i < slots.size(); ++i) {
    if (slots[i].is_taken.exchange(true)) continue;
    slots[i].path = path;
    slots[i].is_live = true;
    g_slots = &slots;
    return static_cast<int>(i);
  }
  return -1;
}

void GiveSlot(int index) {
  if (index < 0) return;
  SSlot& slot = Slots()[static_cast<size_t>(index)];
  slot.is_live = false;
  slot.is_taken = false;
}

struct SNameParts {
  unsigned process = 0;
  std::string_view tag;  ///< "" for none
};

bool TakeHex(std::string_view& text, uint64_t& number) {
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  if (fault != std::errc()) return false;
  text.remove_prefix(static_cast<size_t>(end - text.data()));
  return true;
}

/// ".veldra-PROCESS-TIME.tmp" or ".veldra-PROCESS-TIME-TAG.tmp", nothing else: other files are the user's.
std::optional<SNameParts> SplitName(std::string_view name) {
  if (!name.starts_with(kTemporaryPrefix) || !name.ends_with(kTemporarySuffix)) return std::nullopt;
  name = name.substr(kTemporaryPrefix.size(), name.size() - kTemporaryPrefix.size() - kTemporarySuffix.size());
  uint64_t process = 0;
  uint64_t time = 0;
  if (!TakeHex(name, process) || !name.starts_with('-')) return std::nullopt;
  name.remove_prefix(1);
  if (!TakeHex(name, time)) return std::nullopt;
  SNameParts parts = {.process = static_cast<unsigned>(process), .tag = {}};
  if (name.empty()) return parts;
  const bool is_tag = name.size() > 1 && name[0] == '-' && std::ranges::all_of(name.substr(1), [](char c) {
                        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
                      });
  if (!is_tag) return std::nullopt;
  parts.tag = name.substr(1);
  return parts;
}

/// A name that no other program, and no other file of this one, is likely to have in mind.
std::string NewName(std::string_view tag) {
  const auto ticks = static_cast<unsigned long long>(std::chrono::steady_clock::now().time_since_epoch().count());
  const std::string ending = tag.empty() ? "" : "-" + std::string(tag);
  return Format(".veldra-%x-%llx%s.tmp", disk::ProcessNumber(), ticks, ending.c_str());
}

bool IsNoteName(std::string_view name) {
  return name.starts_with(kTemporaryPrefix) && name.ends_with(kNoteSuffix);
}

/// Takes away the note PATH of a process that was gone before it said anything in it.
void RemoveEmptyNote(const std::string& path) {
  CFileLock lock;
  if (FileLength(path) != 0U || disk::IsLink(path) || lock.TryLock(path) != ELockResult::kTaken) return;
  if (FileLength(path) == 0U) lock.ReleaseAndRemove();
}

}  // namespace

int CTemporary::Create(const std::string& folder, std::string_view tag, const Creator& create, disk::Handle& handle) {
  int number = 0;
  for (int attempt = 0; attempt < kTemporaryAttempts; ++attempt) {
    const std::string candidate = JoinPath(folder, NewName(tag));
    number = disk::Fault("open", candidate);
    // First, so that the file never is without: what is not there yet can be removed as well.
    if (number == 0) slot_ = TakeSlot(candidate);
    if (number == 0) number = create(candidate, handle);
    if (number == 0) {
      path_ = candidate;
      return 0;
    }
    GiveSlot(std::exchange(slot_, -1));
    if (!disk::IsAlreadyThere(number)) break;
  }
  return number;
}

void CTemporary::KeepMarked(disk::Handle handle) {
  mark_ = disk::KeepMark(handle);
}

void CTemporary::Forget() {
  path_.clear();
  if (mark_ != disk::kNoHandle) disk::Close(std::exchange(mark_, disk::kNoHandle));
  GiveSlot(std::exchange(slot_, -1));
}

void CTemporary::Remove() {
  if (!path_.empty()) disk::Remove(path_);
  Forget();
}

bool IsTemporaryName(std::string_view name, std::string_view tag) {
  const auto parts = SplitName(name);
  return parts && parts->tag == tag;
}

std::string NoteName(std::string_view tag) {
  return std::string(kTemporaryPrefix).append(tag).append(kNoteSuffix);
}

void RemoveAbandonedTemporaries(const std::string& folder) {
  for (const std::string& name : ListDirectory(folder.empty() ? "." : folder)) {
    const std::string path = JoinPath(folder, name);
    const auto parts = SplitName(name);
    const bool is_noted = parts && !parts->tag.empty() && FileExists(JoinPath(folder, NoteName(parts->tag)));
    if (parts && !is_noted) disk::RemoveAbandoned(path, parts->process);
    if (IsNoteName(name)) RemoveEmptyNote(path);
  }
}

void RemoveOpenTemporaries() {
  std::array<SSlot, kSlots>* const slots = g_slots;
  if (slots == nullptr) return;
  for (SSlot& slot : *slots)
    if (slot.is_live.exchange(false)) disk::Remove(slot.path);
}

CEndHold::CEndHold() {
  ++g_holds;
}

CEndHold::~CEndHold() {
  if (--g_holds == 0) disk::EndIfAsked();
}

bool disk::IsEndHeld() {
  return g_holds > 0;
}

}  // namespace veldra
