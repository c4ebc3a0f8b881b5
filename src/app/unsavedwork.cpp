#include "app/unsavedwork.h"

#include <QApplication>
#include <QProgressDialog>
#include <QSocketNotifier>

#include "app/mainfrm.h"
#include "platform/endsignals.h"
#include "platform/shell.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kTickMs = 1000;

}  // namespace

CUnsavedWork::CUnsavedWork(CMainFrame& frame) : frame_(frame) {
  connect(&timer_, &QTimer::timeout, this, &CUnsavedWork::Tick);
  timer_.start(kTickMs);
  connect(qApp, &QGuiApplication::commitDataRequest, this, &CUnsavedWork::OnCommitData, Qt::DirectConnection);
  FollowSignals();
}

void CUnsavedWork::Tick() {
  CRecoveryKeeper& keeper = frame_.App().Recovery();
  keeper.Tick();
  if (!keeper.Fault().empty()) frame_.Say(tr("No recovery copy could be written: %1").arg(ToQString(keeper.Fault())));
}

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
  // Where it may ask, too: who does not want to wait for the answer can end the program meanwhile.
  app.Recovery().SaveAll();
  if (can_ask) {
    ExplainDelay(frame_.winId(), "There are unsaved changes.");
    const bool may_end = frame_.MayCloseAll();
    ExplainDelay(frame_.winId(), "");
    if (!may_end) return false;
    // The session may go on after all: another program can object to its end.
    for (CFileDocument* document : frame_.Documents())
      app.LetGo(*document, true);
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
    // What is under way is given up.
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* progress = qobject_cast<QProgressDialog*>(window)) progress->cancel();
    QApplication::exit(0);
  });
}

}  // namespace veldra
