#include "tools/toolwidget.h"

#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/scrolled.h"

namespace veldra {

CToolWidget::CToolWidget(const char* name) {
  setObjectName(name);
}

CToolWidget::~CToolWidget() {
  if (document_ != nullptr) document_->RemoveObserver(this);
}

void CToolWidget::SetView(CTarnView* view) {
  if (view == view_) return;
  if (view_ != nullptr) view_->disconnect(this);
  Follow(view);
}

void CToolWidget::Follow(CTarnView* view) {
  if (document_ != nullptr) document_->RemoveObserver(this);
  view_ = view;
  document_ = view == nullptr ? nullptr : &view->Document();
  if (view != nullptr) {
    document_->AddObserver(this);
    connect(view, &CTarnView::CursorChanged, this, [this] {
      news_.cursor = true;
      Post();
    });
    connect(view, &QObject::destroyed, this, [this] { Follow(nullptr); });
  }
  news_.view = true;
  Post();
}

QLabel* CToolWidget::LayOut(QWidget* content, int stretch) {
  auto* title = new QLabel;
  title->setObjectName("title");
  title->setWordWrap(true);
  auto* scrolled = new QWidget;
  auto* inner = new QVBoxLayout(scrolled);
  inner->addWidget(title);
  inner->addWidget(content, stretch);
  inner->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new CScrolled(scrolled));
  return title;
}

QString CToolWidget::WhyNothing(const QString& otherwise) const {
  if (document_ == nullptr) return tr("No model is open.");
  const bool is_empty = document_->Model().VertexCount() == 0;
  return is_empty ? tr("The model is empty. Model > Insert puts a shape or another model into it.") : otherwise;
}

/// One on each side of the views leaves them more than half of the screen.
QSize CToolWidget::sizeHint() const {
  constexpr int kSmallest = 170;
  constexpr int kLargest = 270;
  constexpr int kShare = 6;
  return {std::clamp(screen()->availableSize().width() / kShare, kSmallest, kLargest), 400};
}

void CToolWidget::SetInFront(bool in_front) {
  is_in_front_ = in_front;
  Post();
}

void CToolWidget::ForgetPictures() {
  news_.view = true;
  Post();
}

void CToolWidget::OnDocumentChanged(const CTarnDoc&, const SModelChange& change) {
  news_.model.Add(change);
  Post();
}

void CToolWidget::OnDocumentStateChanged(const CTarnDoc&) {
  news_.state = true;
  Post();
}

/// Its last view is on its way out as well.
void CToolWidget::OnDocumentGone(const CTarnDoc&) {
  SetView(nullptr);
}

void CToolWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  Post();
}

void CToolWidget::RefreshSoon() {
  is_wanted_ = true;
  Post();
}

void CToolWidget::Post() {
  if (is_posted_ || !CanBeSeen() || !(is_wanted_ || news_.Any())) return;
  is_posted_ = true;
  QMetaObject::invokeMethod(this, &CToolWidget::RefreshNow, Qt::QueuedConnection);
}

void CToolWidget::RefreshNow() {
  is_posted_ = false;
  if (!CanBeSeen() || !(is_wanted_ || news_.Any())) return;
  // Half a model is not shown. Its change is reported when it is whole again.
  if (document_ != nullptr && document_->Model().IsBusy()) return;
  is_wanted_ = false;
  ++refresh_count_;
  Refresh(std::exchange(news_, {}));
}

}  // namespace veldra
