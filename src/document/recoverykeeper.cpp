#include "document/recoverykeeper.h"

#include <utility>

#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

CRecoveryKeeper::CRecoveryKeeper(CRecoveryFolder& folder, ClockReader clock)
    : folder_(folder), clock_(std::move(clock)) {}

CRecoveryKeeper::~CRecoveryKeeper() {
  for (const auto& [document, kept] : kept_)
    kept.document->RemoveKeeper(this);
}

void CRecoveryKeeper::Watch(CFileDocument& document) {
  const auto [at, is_new] = kept_.try_emplace(&document);
  if (!is_new) return;
  at->second.document = &document;
  at->second.id = ++last_id_;
  document.AddKeeper(this);
  if (document.IsModified()) at->second.schedule.Changed(clock_());
}

void CRecoveryKeeper::Closed(const CFileDocument& document) {
  const auto at = kept_.find(&document);
  if (at == kept_.end()) return;
  Forget(at->second);
  at->second.document->RemoveKeeper(this);
  kept_.erase(at);
}

void CRecoveryKeeper::Tick(Time now) {
  for (auto& [document, kept] : kept_) {
    // A document that is read anew changes too.
    if (!document->IsModified()) kept.schedule.Saved();
    if (kept.schedule.IsDue(now) && !document->IsBusy()) SaveCopy(kept, now);
  }
}

void CRecoveryKeeper::SaveAll() {
  for (auto& [document, kept] : kept_)
    if (document->IsModified() && kept.schedule.DueAt() && !document->IsBusy()) SaveCopy(kept, clock_());
}

bool CRecoveryKeeper::TakeOver(const SLeftover& leftover, CFileDocument& document) {
  const SDocumentCopy copy = {.title = leftover.label.title,
                              .path = leftover.label.path,
                              .states_key = leftover.label.states_key,
                              .modified = true};
  const SCopyFile file = leftover.fault.empty() ? folder_.Read(leftover) : SCopyFile{.fault = leftover.fault};
  if (!document.OpenCopy(copy, file)) return false;
  Watch(document);
  // At every moment a copy is there: the old one goes only when there is a new one.
  if (SaveCopy(kept_.at(&document), clock_()) && !folder_.Discard(leftover)) {
    Trace(">> CRecoveryKeeper::TakeOver(): %s stays\n", leftover.file.c_str());
  }
  return true;
}

void CRecoveryKeeper::OnContentChanged(const CFileDocument& document) {
  const auto at = kept_.find(&document);
  if (at != kept_.end()) at->second.schedule.Changed(clock_());
}

void CRecoveryKeeper::OnStateChanged(const CFileDocument& document) {
  const auto at = kept_.find(&document);
  if (at == kept_.end()) return;
  SKept& kept = at->second;
  if (!document.IsModified()) {
    Forget(kept);
  } else if (!kept.schedule.DueAt()) {
    // Its path may be another one than the copy says.
    kept.schedule.Changed(clock_());
  }
}

void CRecoveryKeeper::OnGone(const CFileDocument& document) {
  const auto at = kept_.find(&document);
  if (at == kept_.end()) return;
  SKept& kept = at->second;
  if (document.IsModified() && kept.schedule.DueAt()) SaveCopy(kept, clock_());
  kept_.erase(at);
}

bool CRecoveryKeeper::SaveCopy(SKept& kept, Time now) {
  const CFileDocument& document = *kept.document;
  const auto begun = clock_();
  SError error;
  const SCopyLabel label = {
      .title = document.Title(), .path = document.Path(), .states_key = document.StatesKey(), .time = PresentTime()};
  const auto copy = document.Pack(label, &error);
  const bool is_saved = !copy.empty() && folder_.Save(kept.id, copy, &error);
  is_saved ? kept.schedule.Copied(now, clock_() - begun) : kept.schedule.Failed(now);
  fault_ = error.what;
  if (!is_saved) Trace(">> CRecoveryKeeper::SaveCopy(%s): %s\n", document.Title().c_str(), error.what.c_str());
  return is_saved;
}

/// Nothing is to be copied, and the copy that is there is no longer needed.
void CRecoveryKeeper::Forget(SKept& kept) {
  kept.schedule.Saved();
  if (!folder_.Remove(kept.id)) Trace(">> CRecoveryKeeper: copy %u stays\n", kept.id);
}

}  // namespace veldra
