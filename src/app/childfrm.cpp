#include "app/childfrm.h"
#include "ui/qstrings.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMenu>

namespace veldra {

CChildFrame::CChildFrame(CTarn2App& app, const std::shared_ptr<CTarnDoc>& document)
    : app_(app), document_(document), view_(new CTarnView(document)), path_(document->Path()) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName("childFrame");
  setWidget(view_);
  // Qt gives these keys of their own, which would clash with the commands of the main frame.
  for (QAction* action : systemMenu()->actions())
    action->setShortcut({});
  document_->AddObserver(this);
  UpdateTitle();
}

CChildFrame::~CChildFrame() {
  document_->RemoveObserver(this);
}

QString CChildFrame::Name() const {
  const QString title = NameToQString(document_->Title());
  return number_ == 0 ? title : QStringLiteral("%1:%2").arg(title).arg(number_);
}

void CChildFrame::SetViewNumber(int number) {
  number_ = number;
  UpdateTitle();
}

void CChildFrame::UpdateTitle() {
  setWindowTitle(Name() + (document_->IsReadOnly() ? tr(" (Read-Only)") : QString()) + "[*]");
  setWindowModified(document_->IsModified());
}

void CChildFrame::OnDocumentChanged(const CTarnDoc&, const SModelChange&) {
  emit DocumentChanged();
}

void CChildFrame::OnDocumentStateChanged(const CTarnDoc&) {
  UpdateTitle();
  emit DocumentChanged();
  if (path_ == document_->Path()) return;
  path_ = document_->Path();
  emit DocumentMoved();
}

bool CChildFrame::IsOnlyViewOfDocument() const {
  const auto windows = mdiArea() != nullptr ? mdiArea()->subWindowList() : QList<QMdiSubWindow*>();
  return std::none_of(windows.begin(), windows.end(), [this](const QMdiSubWindow* window) {
    const auto* other = qobject_cast<const CChildFrame*>(window);
    return other != nullptr && other != this && other->document_ == document_;
  });
}

void CChildFrame::closeEvent(QCloseEvent* event) {
  if (IsOnlyViewOfDocument() && !app_.MayClose(*document_)) {
    event->ignore();
    return;
  }
  if (IsOnlyViewOfDocument()) app_.LetGo(*document_);
  if (app_.Settings().save_child_state != 0) app_.Settings().child_window_max = isMaximized() ? 1 : 0;
  QMdiSubWindow::closeEvent(event);
}

}  // namespace veldra
