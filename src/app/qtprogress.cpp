#include "app/qtprogress.h"

#include <QApplication>

#include "platform/shell.h"

namespace veldra {

namespace {

constexpr int kUpdateEveryMs = 40;
constexpr int kBarSteps = 1000;

/// On the button of the window that owns WIDGET's; dialogs have no button.
void ShowInTaskbar(const QWidget* widget, double part) {
  const QWidget* owner = nullptr;
  for (; widget != nullptr; widget = owner->parentWidget())
    owner = widget->window();
  if (owner != nullptr && owner->internalWinId() != 0) ShowTaskbarProgress(owner->internalWinId(), part);
}

}  // namespace

CNormalCursor::CNormalCursor() : was_waiting_(QApplication::overrideCursor() != nullptr) {
  if (was_waiting_) QApplication::setOverrideCursor(Qt::ArrowCursor);
}

CNormalCursor::~CNormalCursor() {
  if (was_waiting_) QApplication::restoreOverrideCursor();
}

CQtProgress::CQtProgress(const QString& title, bool cancellable, QWidget* parent)
    : title_(title), cancellable_(cancellable), parent_(parent) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  since_start_.start();
  since_update_.start();
}

CQtProgress::~CQtProgress() {
  if (dialog_ != nullptr) ShowInTaskbar(parent_, -1);
  dialog_.reset();
  QApplication::restoreOverrideCursor();
}

void CQtProgress::Show() {
  dialog_ = std::make_unique<QProgressDialog>(parent_);
  dialog_->setObjectName("progress");
  dialog_->setWindowTitle(QStringLiteral("Veldra"));
  dialog_->setLabelText(title_);
  if (!cancellable_) dialog_->setCancelButton(nullptr);
  dialog_->setRange(0, kBarSteps);
  dialog_->setMinimumDuration(0);
  dialog_->setAutoClose(false);
  dialog_->setAutoReset(false);
  dialog_->setMinimumWidth(360);
  // Nothing else takes input meanwhile: the operation works on what the other windows show.
  dialog_->setWindowModality(Qt::ApplicationModal);
  dialog_->show();
}

bool CQtProgress::Step(uint64_t done, uint64_t total) {
  if (since_start_.elapsed() < kShowAfterMs) return true;
  if (dialog_ == nullptr) {
    Show();
  } else if (since_update_.elapsed() < kUpdateEveryMs) {
    return !dialog_->wasCanceled();
  }
  since_update_.start();
  const double part = total == 0 ? 0.0 : static_cast<double>(done) / static_cast<double>(total);
  dialog_->setValue(static_cast<int>(part * kBarSteps));
  ShowInTaskbar(parent_, part);
  QApplication::processEvents();
  return !cancellable_ || !dialog_->wasCanceled();
}

}  // namespace veldra
