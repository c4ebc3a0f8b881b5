#include "app/unsavedwork.h"

#include <QApplication>
#include <QSocketNotifier>

#include "app/mainfrm.h"
#include "app/recoverydlg.h"
#include "platform/endsignals.h"
#include "platform/text.h"

namespace veldra {

CUnsavedWork::CUnsavedWork(CMainFrame& frame) : frame_(frame) {
  connect(&timer_, &QTimer::timeout, this, &CUnsavedWork::Tick);
  timer_.start(frame_.App().RecoveryTickMs());
  connect(qApp, &QGuiApplication::commitDataRequest, this, &CUnsavedWork::OnCommitData, Qt::DirectConnection);
  FollowSignals();
}

void CUnsavedWork::Tick() {
  CRecoveryKeeper& keeper = frame_.App().Recovery();
  keeper.Tick();
  if (!keeper.Fault().empty())
    frame_.Say(tr("No recovery copy could be written: %1").arg(QString::fromStdString(keeper.Fault())));
}

// --- What was left -------------------------------------------------------------------------------------------------

void CUnsavedWork::OfferLeftovers() {
  for (;;) {
    const std::vector<SLeftover> leftovers = frame_.App().Recovery().Leftovers();
    if (leftovers.empty()) return;
    CRecoveryDialog dialog(leftovers, &frame_);
    dialog.exec();
    if (dialog.Choice() == CRecoveryDialog::EChoice::kRecover) Recover(leftovers, dialog.Chosen());
    // What was not ticked is offered once more, so that it can be looked at on its own.
    if (dialog.Choice() != CRecoveryDialog::EChoice::kDiscard || !Discard(leftovers, dialog.Chosen())) return;
  }
}

void CUnsavedWork::Recover(const std::vector<SLeftover>& leftovers, const std::vector<size_t>& chosen) {
  for (const size_t i : chosen)
    if (const auto document = frame_.App().OpenLeftover(leftovers[i])) frame_.Windows().AddView(document, false);
}

bool CUnsavedWork::Discard(const std::vector<SLeftover>& leftovers, const std::vector<size_t>& chosen) {
  const std::string text =
      Format("Discard %zu unsaved document%s for good?", chosen.size(), chosen.size() == 1 ? "" : "s");
  const SMessage question = {.text = text, .icon = EIcon::kWarning};
  if (frame_.App().Questions().AskYesNo(question) != EAnswer::kYes) return true;
  bool all_gone = true;
  for (const size_t i : chosen)
    all_gone = frame_.App().Recovery().Discard(leftovers[i]) && all_gone;
  return all_gone;
}

// --- The end -------------------------------------------------------------------------------------------------------

void CUnsavedWork::OnCommitData(QSessionManager& manager) {
  const bool can_ask = manager.allowsInteraction();
  const bool may_end = PrepareForSessionEnd(can_ask);
  if (!can_ask) return;
  if (may_end) {
    manager.release();
  } else {
    manager.cancel();
  }
}

bool CUnsavedWork::PrepareForSessionEnd(bool can_ask) {
  CTarn2App& app = frame_.App();
  if (can_ask) {
    if (!frame_.MayCloseAll()) return false;
    // The session may go on after all: another program can object to its end.
    for (CTarnDoc* document : frame_.Windows().Documents())
      app.LetGo(*document, true);
  } else {
    app.Recovery().SaveAll();
  }
  frame_.WriteWindowState();
  app.SaveSettings();
  return true;
}

/// Being told to quit is no moment for questions: what is unsaved is copied and offered at the next start.
void CUnsavedWork::FollowSignals() {
  const auto descriptor = WatchEndSignals();
  if (!descriptor) return;
  auto* notifier = new QSocketNotifier(*descriptor, QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
    notifier->setEnabled(false);
    frame_.App().Recovery().SaveAll();
    frame_.WriteWindowState();
    QApplication::exit(0);
  });
}

}  // namespace veldra
