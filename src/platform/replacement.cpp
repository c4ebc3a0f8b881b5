#include <utility>

#include "platform/assert.h"
#include "platform/files.h"
#include "platform/files_system.h"
#include "platform/filewriting.h"
#include "platform/inputfile.h"
#include "platform/temporaries.h"

namespace veldra {

namespace {

/// A long file that has to be on the disk in the end is sent there as often as so much has been written.
constexpr uint64_t kSyncPiece = uint64_t{8} << 20;

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
  std::string tag;
  std::string target;     ///< what is replaced
  bool replaces = false;  ///< the target was there before
  CTemporary temporary;
  disk::COpenFile file;
  uint64_t written = 0;  ///< by CopyFrom, and how much of it is on its way to the disk
  uint64_t sent = 0;
  EStep step = EStep::kClosed;

  bool FindTarget(SError* error);
  bool CreateTemporary(SError* error);
  bool KeepPermissions(SError* error);
  int Fault(std::string_view operation) const { return disk::Fault(operation, temporary.Path()); }
  void NoteWritten(uint64_t count);
  void Discard();
  /// Notes the step REACHED, or the failure when it did not go WELL; returns WELL.
  bool After(EStep reached, bool well);
};

bool CReplacement::SState::FindTarget(SError* error) {
  target = disk::SystemPath(path);
  const int number = disk::FollowLinks(std::string(target), target);
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
  RemoveAbandonedTemporaries(folder);
  const auto create = [&](const std::string& path_of_new, disk::Handle& handle) {
    return disk::CreateNew(path_of_new, !replaces, handle);
  };
  const int number = temporary.Create(folder, tag, create, file.handle);
  return number == 0 || disk::FailWith(error, number);
}

bool CReplacement::SState::KeepPermissions(SError* error) {
  const int number = replaces ? disk::CopyPermissions(target, file.handle) : 0;
  return number == 0 || disk::FailWith(error, number);
}

void CReplacement::SState::NoteWritten(uint64_t count) {
  written += count;
  if (written - sent < kSyncPiece) return;
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

CReplacement::CReplacement(std::string_view path, std::string_view tag) : state_(std::make_unique<SState>()) {
  state_->path = path;
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
  return disk::WriteBytes(state.file.handle, state.temporary.Path(), bytes, error) ||
         state.After(SState::EStep::kFailed, false);
}

bool CReplacement::CopyFrom(const CInputFile& from, uint64_t offset, uint64_t length,
                            const std::function<bool(uint64_t)>& step, SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kOpen);
  const auto note = [&](uint64_t count) {
    state.NoteWritten(count);
    return !step || step(count);
  };
  return disk::CopyBytes(from, offset, length, state.file.handle, state.temporary.Path(), note, error) ||
         state.After(SState::EStep::kFailed, false);
}

bool CReplacement::Finish(SError* error) {
  SState& state = *state_;
  VELDRA_ASSERT(state.step == SState::EStep::kOpen);
  int number = state.Fault("sync");
  if (number == 0) number = disk::Sync(state.file.handle);
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
  disk::SyncDirectory(folder);
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
