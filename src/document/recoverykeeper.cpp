#include "document/recoverykeeper.h"

#include <utility>

#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

CRecoveryKeeper::CRecoveryKeeper(CRecoveryFolder& folder, std::function<Time()> clock)
    : folder_(folder), clock_(std::move(clock)) {}

CRecoveryKeeper::~CRecoveryKeeper() {
  for (const auto& [document, kept] : kept_)
    kept.document->RemoveObserver(this);
}

void CRecoveryKeeper::Watch(CTarnDoc& document) {
  const auto [at, is_new] = kept_.try_emplace(&document);
  if (!is_new) return;
  at->second.document = &document;
  at->second.id = ++last_id_;
  document.AddObserver(this);
  if (document.IsModified()) at->second.schedule.Changed(clock_());
}

void CRecoveryKeeper::Closed(const CTarnDoc& document) {
  const auto at = kept_.find(&document);
  if (at == kept_.end()) return;
  Forget(at->second);
  at->second.document->RemoveObserver(this);
  kept_.erase(at);
}

void CRecoveryKeeper::Tick(Time now) {
  for (auto& [document, kept] : kept_) {
    // A document that is read anew changes too.
    if (!document->IsModified()) kept.schedule.Saved();
    if (kept.schedule.IsDue(now) && !document->Model().IsBusy()) SaveCopy(kept, now);
  }
}

void CRecoveryKeeper::SaveAll() {
  for (auto& [document, kept] : kept_)
    if (document->IsModified() && kept.schedule.DueAt() && !document->Model().IsBusy()) SaveCopy(kept, clock_());
}

bool CRecoveryKeeper::TakeOver(const SLeftover& leftover, CTarnDoc& document) {
  const SDocumentCopy copy = {.title = leftover.document.title,
                              .path = leftover.document.path,
                              .states_key = leftover.document.states_key,
                              .modified = true};
  const auto read = [&](CBinModel& model, CTextureFinder& textures, SDiagnosis& diagnosis) {
    if (leftover.fault.empty()) return folder_.Load(leftover, model, textures, &diagnosis);
    diagnosis = {0, leftover.fault};
    return false;
  };
  if (!document.OpenCopy(copy, read)) return false;
  Watch(document);
  // At every moment a copy is there: the old one goes only when there is a new one.
  if (SaveCopy(kept_.at(&document), clock_()) && !folder_.Discard(leftover)) {
    Trace(">> CRecoveryKeeper::TakeOver(): %s stays\n", leftover.file.c_str());
  }
  return true;
}

void CRecoveryKeeper::OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) {
  const auto at = kept_.find(&document);
  if (change.Any() && at != kept_.end()) at->second.schedule.Changed(clock_());
}

void CRecoveryKeeper::OnDocumentStateChanged(const CTarnDoc& document) {
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

void CRecoveryKeeper::OnDocumentGone(const CTarnDoc& document) {
  const auto at = kept_.find(&document);
  if (at == kept_.end()) return;
  SKept& kept = at->second;
  if (document.IsModified() && kept.schedule.DueAt()) SaveCopy(kept, clock_());
  kept_.erase(at);
}

bool CRecoveryKeeper::SaveCopy(SKept& kept, Time now) {
  const CTarnDoc& document = *kept.document;
  // What the user waits is told by the wall's clock, whatever the schedule runs by.
  const auto begun = std::chrono::steady_clock::now();
  SError error;
  const bool is_saved =
      folder_.Save({kept.id, document.Title(), document.Path(), document.StatesKey()}, document.Model(), &error);
  is_saved ? kept.schedule.Copied(now, std::chrono::steady_clock::now() - begun) : kept.schedule.Failed(now);
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
