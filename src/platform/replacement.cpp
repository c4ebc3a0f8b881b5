#include <algorithm>
#include <mutex>
#include <set>

#include "platform/assert.h"
#include "platform/files.h"
#include "platform/files_system.h"
#include "platform/inputfile.h"
#include "platform/temporaries.h"

namespace veldra {

namespace {

/// One write call takes at most this much.
constexpr size_t kPiece = size_t{1} << 20;
/// A copy looks whether it is still wanted this often.
constexpr uint64_t kCopyPiece = uint64_t{8} << 20;
/// What a copy that goes through this program takes at once.
constexpr size_t kCopyBuffer = size_t{1} << 18;

/// The first time that this process writes into FOLDER. Extracting writes many files into few folders.
bool IsNewFolder(const std::string& folder) {
  static std::mutex mutex;
  static std::set<std::string> known;
  const std::lock_guard guard(mutex);
  return known.insert(folder).second;
}

}  // namespace

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

  std::string path;  ///< as given
  EReplacement kind = EReplacement::kDocument;
  std::string tag;
  std::string target;     ///< what is replaced
  bool replaces = false;  ///< the target was there before
  CTemporary temporary;
  disk::COpenFile file;
  std::vector<uint8_t> buffer;  ///< for CopyPiece
  uint64_t written = 0;         ///< by CopyFrom, and how much of it is on its way to the disk
  uint64_t sent = 0;
  EStep step = EStep::kClosed;

  bool FindTarget(SError* error);
  bool CreateTemporary(SError* error);
  bool KeepPermissions(SError* error);
  bool WritePiece(std::span<const uint8_t>& left, SError* error);
  bool WriteAll(std::span<const uint8_t> bytes, SError* error);
  /// Up to kCopyPiece bytes; COUNT says how many.
  bool CopyPiece(const CInputFile& from, uint64_t offset, uint64_t length, uint64_t& count, SError* error);
  int Fault(std::string_view operation) const { return disk::Fault(operation, temporary.Path()); }
  /// A long file that has to be on the disk in the end is sent there as it grows.
  void NoteWritten(uint64_t count);
  void Discard();
  /// Notes the step REACHED, or the failure when it did not go WELL; returns WELL.
  bool After(EStep reached, bool well);
};

bool CReplacement::SState::FindTarget(SError* error) {
  target = disk::SystemPath(path);
  if (kind == EReplacement::kCopy && disk::IsLink(target)) return true;
  const int number = kind == EReplacement::kDocument ? disk::FollowLinks(std::string(target), target) : 0;
  if (number != 0) return disk::FailWith(error, number);
  const disk::EKind there = disk::Status(target).kind;
  if (there == disk::EKind::kNothing) return true;
  replaces = true;
  if (there != disk::EKind::kFile) return Fail(error, disk::NotAFileText(there));
  const int refusal = disk::CheckReplaceable(target);
  return refusal == 0 || disk::FailWith(error, refusal);
}

bool CReplacement::SState::CreateTemporary(SError* error) {
  const std::string folder = disk::FolderAbove(target);
  if (kind == EReplacement::kDocument || IsNewFolder(folder)) RemoveAbandonedTemporaries(folder);
  const int number = temporary.Create(folder, tag, !replaces, file.handle);
  return number == 0 || disk::FailWith(error, number);
}

bool CReplacement::SState::KeepPermissions(SError* error) {
  const int number = replaces ? disk::CopyPermissions(target, file.handle) : 0;
  return number == 0 || disk::FailWith(error, number);
}

bool CReplacement::SState::WritePiece(std::span<const uint8_t>& left, SError* error) {
  size_t count = 0;
  const int number = disk::Write(file.handle, left.first(std::min(left.size(), kPiece)), count);
  if (number != 0) return disk::FailWith(error, number);
  if (count == 0) return Fail(error, "nothing more could be written");
  left = left.subspan(count);
  return true;
}

bool CReplacement::SState::WriteAll(std::span<const uint8_t> bytes, SError* error) {
  while (!bytes.empty()) {
    const int number = Fault("write");
    if (number != 0) return disk::FailWith(error, number);
    if (!WritePiece(bytes, error)) return false;
  }
  return true;
}

bool CReplacement::SState::CopyPiece(const CInputFile& from, uint64_t offset, uint64_t length, uint64_t& count,
                                     SError* error) {
  int number = Fault("write");
  if (number == 0) {
    number = disk::CopyRange(from.SystemHandle(), offset, file.handle, std::min(length, kCopyPiece), count);
  }
  if (number != 0) return disk::FailWith(error, number);
  if (count > 0) return true;
  if (buffer.empty()) buffer.resize(kCopyBuffer);
  const auto piece = std::span(buffer).first(static_cast<size_t>(std::min<uint64_t>(length, kCopyBuffer)));
  count = piece.size();
  if (!from.ReadAt(offset, piece, error)) return false;
  for (std::span<const uint8_t> left = piece; !left.empty();)
    if (!WritePiece(left, error)) return false;
  return true;
}

void CReplacement::SState::NoteWritten(uint64_t count) {
  written += count;
  if (kind != EReplacement::kDocument || written - sent < kCopyPiece) return;
  disk::StartSync(file.handle, sent, written - sent);
  sent = written;
}

void CReplacement::SState::Discard() {
  file.Close();
  temporary.Remove();
}

bool CReplacement::SState::After(EStep reached, bool well) {
  step = well ? reached : EStep::kFailed;
  if (!well) Discard();
  return well;
}

CReplacement::CReplacement(std::string_view path, EReplacement kind, std::string_view tag)
    : state_(std::make_unique<SState>()) {
  state_->path = path;
  state_->kind = kind;
  state_->tag = tag;
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
  return state.WriteAll(bytes, error) || state.After(SState::EStep::kFailed, false);
}

bool CReplacement::CopyFrom(const CInputFile& from, uint64_t offset, uint64_t length,
                            const std::function<bool(uint64_t)>& step, SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kOpen);
  while (length > 0) {
    uint64_t count = 0;
    if (!state.CopyPiece(from, offset, length, count, error)) return state.After(SState::EStep::kFailed, false);
    offset += count;
    length -= count;
    state.NoteWritten(count);
    if (step && !step(count)) return state.After(SState::EStep::kFailed, Fail(error, std::string()));
  }
  return true;
}

bool CReplacement::Finish(SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kOpen);
  int number = 0;
  if (state.kind == EReplacement::kDocument) {
    number = state.Fault("sync");
    if (number == 0) number = disk::Sync(state.file.handle);
  }
  if (number == 0) number = state.Fault("close");
  if (number == 0) state.temporary.KeepMarked(state.file.handle);
  if (number == 0) number = state.file.Close();
  return state.After(SState::EStep::kFinished, number == 0 || disk::FailWith(error, number));
}

bool CReplacement::Commit(SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kFinished);
  const std::string folder = disk::FolderAbove(state.target);
  int number = disk::Fault("rename", state.target);
  if (number == 0) number = disk::Rename(state.temporary.Path(), state.target);
  if (number != 0) return state.After(SState::EStep::kFailed, disk::FailWith(error, number));
  state.temporary.Forget();
  state.step = SState::EStep::kClosed;
  // From here on the new file is the file; a folder that cannot be flushed is no reason to call that a failure.
  if (state.kind == EReplacement::kDocument) disk::SyncDirectory(folder);
  return true;
}

const std::string& CReplacement::Target() const {
  return state_->target;
}

const std::string& CReplacement::Temporary() const {
  return state_->temporary.Path();
}

void CReplacement::Leave() {
  state_->temporary.Forget();
}

}  // namespace veldra
