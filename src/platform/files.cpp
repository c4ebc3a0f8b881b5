#include "platform/files.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "platform/assert.h"
#include "platform/files_system.h"
#include "platform/filewriting.h"
#include "platform/inputfile.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// A long file that has to be on the disk in the end is sent there as often as so much has been written.
constexpr uint64_t kSyncPiece = uint64_t{8} << 20;
/// A read that finds more than the file's length said goes on with this much.
constexpr size_t kFirstGrowth = 4096;

FileFault& CurrentFault() {
  static FileFault fault;
  return fault;
}

const char* NotAFileText(disk::EKind kind) {
  return kind == disk::EKind::kDirectory ? "is a folder" : "is not a file";
}

/// Bytes that grow without being zeroed first.
struct SBuffer {
  std::unique_ptr<uint8_t[]> data;
  size_t size = 0;
  size_t capacity = 0;

  std::span<uint8_t> Free() { return {data.get() + size, capacity - size}; }
  void Grow(size_t new_capacity) {
    auto grown = std::make_unique_for_overwrite<uint8_t[]>(new_capacity);
    std::copy_n(data.get(), size, grown.get());
    data = std::move(grown);
    capacity = new_capacity;
  }
};

/// Reads until the end, whatever the length was when the file was opened: it may be written meanwhile.
bool ReadToEnd(disk::Handle handle, SBuffer& buffer, size_t limit, SError* error) {
  for (;;) {
    uint8_t beyond = 0;
    const bool full = buffer.size == buffer.capacity;
    size_t count = 0;
    const int number = disk::Read(handle, full ? std::span<uint8_t>(&beyond, 1) : buffer.Free(), count);
    if (number != 0) return FailWith(error, number);
    if (count == 0) return true;
    if (!full) {
      buffer.size += count;
      continue;
    }
    if (buffer.size >= limit) return Fail(error, Format("is longer than %zu bytes", limit));
    buffer.Grow(std::min(limit, buffer.capacity + std::max(buffer.capacity, kFirstGrowth)));
    buffer.data[buffer.size++] = beyond;
  }
}

/// What stands at the beginning of an open file of LENGTH bytes, for CHECK.
bool CheckStart(disk::Handle handle, uint64_t length, FileStartCheck check, SError* error) {
  if (check == nullptr || length <= kCheckedLength) return true;
  std::array<uint8_t, 32> start = {};
  size_t count = 0;
  const int number = disk::ReadAt(handle, 0, start, count);
  if (number != 0) return FailWith(error, number);
  std::string fault = check(std::span(start).first(count), length);
  return fault.empty() || Fail(error, std::move(fault));
}

bool ReadInto(SBuffer& buffer, const std::string& path, size_t limit, FileStartCheck check, SError* error) {
  COpenFile file;
  disk::SStatus status;
  const int number = disk::OpenToRead(path, file.handle, status);
  if (number != 0) return FailWith(error, number);
  if (status.kind != disk::EKind::kFile) return Fail(error, NotAFileText(status.kind));
  if (status.length > limit) return Fail(error, Format("is longer than %zu bytes", limit));
  if (!CheckStart(file.handle, status.length, check, error)) return false;
  buffer.Grow(static_cast<size_t>(status.length));
  return ReadToEnd(file.handle, buffer, limit, error);
}

}  // namespace

void SetFileFault(FileFault fault) {
  CurrentFault() = std::move(fault);
}

int InjectedFault(std::string_view operation, const std::string& path) {
  return CurrentFault() ? CurrentFault()(operation, path) : 0;
}

std::optional<CFileBytes> ReadWholeFile(std::string_view path, SError* error, size_t limit, FileStartCheck check) try {
  SBuffer buffer;
  if (!ReadInto(buffer, disk::SystemPath(path), limit, check, error)) return std::nullopt;
  return CFileBytes(std::move(buffer.data), buffer.size);
} catch (const std::bad_alloc&) {
  Fail(error, "not enough memory");
  return std::nullopt;
}

std::optional<CFileBytes> ReadTextFile(std::string_view path, SError* error, size_t limit) {
  auto file = ReadWholeFile(path, error, limit);
  if (!file) return file;
  const std::string_view text = file->Text();
  // Any of the ways to end a line; "\r\n" is two of them, and no file with so many lines is right anyway.
  const auto ends = std::count(text.begin(), text.end(), '\n') + std::count(text.begin(), text.end(), '\r');
  if (ends <= ptrdiff_t{2 * kMostTextLines}) return file;
  Fail(error, Format("has more than %zu lines", kMostTextLines));
  return std::nullopt;
}

bool ReplaceFile(std::string_view path, std::span<const uint8_t> bytes, SError* error) {
  CReplacement replacement(path);
  return replacement.Open(error) && replacement.Write(bytes, error) && replacement.Finish(error) &&
         replacement.Commit(error);
}

bool ReplaceFile(std::string_view path, std::string_view text, SError* error) {
  return ReplaceFile(path, {reinterpret_cast<const uint8_t*>(text.data()), text.size()}, error);
}

struct CReplacement::SState {
  enum class EStep { kClosed, kOpen, kFinished, kFailed };

  std::string path;       ///< as given
  std::string target;     ///< what is replaced
  std::string temporary;  ///< "" when there is none
  bool replaces = false;  ///< the target was there before
  COpenFile file;
  uint64_t written = 0;  ///< by CopyFrom, and how much of it is on its way to the disk
  uint64_t sent = 0;
  EStep step = EStep::kClosed;

  bool FindTarget(SError* error);
  bool CreateTemporary(SError* error);
  bool KeepPermissions(SError* error);
  void NoteWritten(uint64_t count);
  void Discard();
  /// Notes the step REACHED, or the failure when it did not go WELL; returns WELL.
  bool After(EStep reached, bool well);
};

bool CReplacement::SState::FindTarget(SError* error) {
  target = disk::SystemPath(path);
  const int number = disk::FollowLinks(std::string(target), target);
  if (number != 0) return FailWith(error, number);
  const disk::EKind there = disk::Status(target).kind;
  if (there == disk::EKind::kNothing) return true;
  replaces = true;
  if (there != disk::EKind::kFile) return Fail(error, NotAFileText(there));
  const int refusal = disk::CheckReplaceable(target);
  return refusal == 0 || FailWith(error, refusal);
}

bool CReplacement::SState::CreateTemporary(SError* error) {
  int number = 0;
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    const std::string candidate = JoinPath(disk::FolderAbove(target), TemporaryName());
    number = InjectedFault("open", candidate);
    if (number == 0) number = disk::CreateNew(candidate, !replaces, file.handle);
    if (number == 0) {
      temporary = candidate;
      return true;
    }
    if (!disk::IsAlreadyThere(number)) break;
  }
  return FailWith(error, number);
}

bool CReplacement::SState::KeepPermissions(SError* error) {
  const int number = replaces ? disk::CopyPermissions(target, file.handle) : 0;
  return number == 0 || FailWith(error, number);
}

void CReplacement::SState::NoteWritten(uint64_t count) {
  written += count;
  if (written - sent < kSyncPiece) return;
  disk::StartSync(file.handle, sent, written - sent);
  sent = written;
}

void CReplacement::SState::Discard() {
  file.Close();
  if (!temporary.empty()) disk::Remove(std::exchange(temporary, {}));
}

bool CReplacement::SState::After(EStep reached, bool well) {
  step = well ? reached : EStep::kFailed;
  if (!well) Discard();
  return well;
}

CReplacement::CReplacement(std::string_view path) : state_(std::make_unique<SState>()) {
  state_->path = path;
}

CReplacement::~CReplacement() {
  state_->Discard();
}

bool CReplacement::Open(SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kClosed);
  return state.After(SState::EStep::kOpen,
                     state.FindTarget(error) && state.CreateTemporary(error) && state.KeepPermissions(error));
}

bool CReplacement::Write(std::span<const uint8_t> bytes, SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kOpen);
  return WriteBytes(state.file.handle, state.temporary, bytes, error) || state.After(SState::EStep::kFailed, false);
}

bool CReplacement::CopyFrom(const CInputFile& from, uint64_t offset, uint64_t length,
                            const std::function<bool(uint64_t)>& step, SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kOpen);
  const auto note = [&](uint64_t count) {
    state.NoteWritten(count);
    return !step || step(count);
  };
  return CopyBytes(from, offset, length, state.file.handle, state.temporary, note, error) ||
         state.After(SState::EStep::kFailed, false);
}

bool CReplacement::Finish(SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kOpen);
  int number = InjectedFault("sync", state.temporary);
  if (number == 0) number = disk::Sync(state.file.handle);
  if (number == 0) number = InjectedFault("close", state.temporary);
  if (number == 0) number = state.file.Close();
  return state.After(SState::EStep::kFinished, number == 0 || FailWith(error, number));
}

bool CReplacement::Commit(SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kFinished);
  int number = InjectedFault("rename", state.target);
  if (number == 0) number = disk::Rename(state.temporary, state.target);
  if (number != 0) return state.After(SState::EStep::kFailed, FailWith(error, number));
  state.temporary.clear();
  state.step = SState::EStep::kClosed;
  // From here on the new file is the file; a folder that cannot be flushed is no reason to call that a failure.
  disk::SyncDirectory(disk::FolderAbove(state.target));
  return true;
}

bool IsSameFile(std::string_view a, std::string_view b) {
  if (a.empty() || b.empty()) return false;
  const auto followed = [](std::string_view path) {
    const std::string absolute = disk::SystemPath(AbsolutePath(path));
    std::string target;
    return disk::FollowLinks(absolute, target) == 0 ? target : absolute;
  };
  const std::string first = followed(a);
  const std::string second = followed(b);
  const auto identity = disk::Identity(first);
  const auto other = disk::Identity(second);
  if (identity || other) return identity == other;
  if (!disk::IsSameName(FileNamePart(first), FileNamePart(second))) return false;
  // A root that is not there, as of a drive without a disk, has no folder above.
  const std::string folder = DirectoryPart(first);
  return folder == first ? second == first : IsSameFile(folder, DirectoryPart(second));
}

bool FileExists(std::string_view path) {
  return disk::Status(disk::SystemPath(path)).kind != disk::EKind::kNothing;
}

bool IsFile(std::string_view path) {
  return disk::Status(disk::SystemPath(path)).kind == disk::EKind::kFile;
}

bool IsLink(std::string_view path) {
  return disk::IsLink(disk::SystemPath(path));
}

bool IsDirectory(std::string_view path) {
  return disk::Status(disk::SystemPath(path)).kind == disk::EKind::kDirectory;
}

std::optional<uint64_t> FileLength(std::string_view path) {
  const disk::SStatus status = disk::Status(disk::SystemPath(path));
  return status.kind == disk::EKind::kFile ? std::optional<uint64_t>(status.length) : std::nullopt;
}

bool RemoveFile(std::string_view path) {
  return disk::Remove(disk::SystemPath(path)) == 0;
}

bool MakeDirectories(std::string_view path) {
  // Upwards to the first folder that is there, then down again.
  std::vector<std::string> missing;
  std::string folder = disk::SystemPath(path);
  while (!folder.empty() && disk::Status(folder).kind == disk::EKind::kNothing) {
    missing.push_back(folder);
    std::string above = disk::FolderAbove(folder);
    if (above.size() >= folder.size()) return false;
    folder = std::move(above);
  }
  for (auto each = missing.rbegin(); each != missing.rend(); ++each) {
    // A name that ends in a separator was made with the one before.
    const int number = disk::MakeDirectory(*each);
    if (number != 0 && !disk::IsAlreadyThere(number)) return false;
  }
  return IsDirectory(path);
}

}  // namespace veldra
