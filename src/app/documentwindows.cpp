#include "app/documentwindows.h"

#include <QMdiSubWindow>
#include <cstddef>
#include <iterator>
#include <map>
#include <vector>

#include "app/commands/commandtable.h"

namespace veldra {

CDocumentWindows::CDocumentWindows(CTarn2App& app, CDocumentArea& area, QObject* view_filter)
    : app_(app), area_(area), view_filter_(view_filter) {
  connect(&area_, &QMdiArea::subWindowActivated, this, &CDocumentWindows::Changed);
}

CDocumentWindows::~CDocumentWindows() {
  // The windows must not report to one that is half gone.
  area_.disconnect(this);
  for (CChildFrame* child : Children()) {
    child->disconnect(this);
    delete child;
  }
}

CChildFrame& CDocumentWindows::AddView(const std::shared_ptr<CTarnDoc>& document, bool in_background) {
  QMdiSubWindow* earlier = area_.currentSubWindow();
  const bool maximized = earlier != nullptr ? earlier->isMaximized() : app_.Settings().child_window_max != 0;
  auto* child = new CChildFrame(app_, document);
  area_.addSubWindow(child);
  Connect(*child);
  child->resize(area_.viewport()->size() * 2 / 3);
  if (maximized) {
    child->showMaximized();
  } else {
    child->show();
  }
  if (earlier != nullptr && in_background && app_.Settings().open_inactive != 0) area_.setActiveSubWindow(earlier);
  NumberViews();
  emit DocumentsChanged();
  return *child;
}

void CDocumentWindows::Connect(CChildFrame& child) {
  if (view_filter_ != nullptr) child.View().installEventFilter(view_filter_);
  connect(&child, &CChildFrame::DocumentChanged, this, &CDocumentWindows::Changed);
  connect(&child, &CChildFrame::DocumentMoved, this, &CDocumentWindows::DocumentsChanged);
  connect(&child.View(), &CTarnView::StateChanged, this, &CDocumentWindows::Changed);
  connect(&child.View(), &CTarnView::CursorChanged, this, &CDocumentWindows::Changed);
  connect(&child.View(), &CTarnView::MenuWanted, this, &CDocumentWindows::MenuWanted);
  child.View().SetGizmoPivot(gizmo_pivot_);
  connect(&child.View(), &CTarnView::PivotPicked, this,
          [this](const SPoint& at) { SetGizmoPivot({.kind = SPivotInput::EKind::kPoint, .point = ToVector(at)}); });
  connect(&child, &QObject::destroyed, this, [this] {
    NumberViews();
    emit DocumentsChanged();
    emit Changed();
  });
}

QList<CChildFrame*> CDocumentWindows::Children() const {
  QList<CChildFrame*> children;
  for (QMdiSubWindow* window : area_.subWindowList())
    if (auto* child = qobject_cast<CChildFrame*>(window)) children.append(child);
  return children;
}

CChildFrame* CDocumentWindows::Active() const {
  // Not activeSubWindow(), which is none while a dialog or another program is in front.
  return qobject_cast<CChildFrame*>(area_.currentSubWindow());
}

CTarnView* CDocumentWindows::ActiveView() const {
  const CChildFrame* child = Active();
  return child != nullptr ? &child->View() : nullptr;
}

CTarnDoc* CDocumentWindows::ActiveDocument() const {
  const CChildFrame* child = Active();
  return child != nullptr ? &child->Document() : nullptr;
}

void CDocumentWindows::Activate(const CFileDocument& document) {
  const CChildFrame* active = Active();
  if (active != nullptr && &active->Document() == &document) return;
  for (CChildFrame* child : Children()) {
    if (&child->Document() != &document) continue;
    area_.setActiveSubWindow(child);
    return;
  }
}

QList<CTarnDoc*> CDocumentWindows::Documents() const {
  QList<CTarnDoc*> documents;
  for (const CChildFrame* child : Children())
    if (!documents.contains(&child->Document())) documents.append(&child->Document());
  return documents;
}

SImage CDocumentWindows::Picture(const CTarnDoc& document) const {
  for (CChildFrame* child : Children())
    if (&child->Document() == &document && child->View().HasDrawn()) return child->View().SmallPicture();
  return {};
}

void CDocumentWindows::SetGizmoPivot(const SPivotInput& pivot) {
  gizmo_pivot_ = pivot;
  for (const CChildFrame* child : Children())
    child->View().SetGizmoPivot(pivot);
  emit Changed();
}

void CDocumentWindows::NewWindow() {
  if (const CTarnView* view = ActiveView()) AddView(view->SharedDocument(), false);
}

void CDocumentWindows::FourViews() {
  CChildFrame* const active = Active();
  if (active == nullptr) return;
  active->showNormal();
  const std::shared_ptr<CTarnDoc> document = active->View().SharedDocument();
  std::vector<CTarnView*> sides;
  for (CChildFrame* child : Children())
    if (child != active && &child->Document() == document.get()) sides.push_back(&child->View());
  constexpr void (CTarnView::*kLooks[])() = {&CTarnView::ViewTop, &CTarnView::ViewFront, &CTarnView::ViewRight};
  while (sides.size() < std::size(kLooks))
    sides.push_back(&AddView(document, false).View());
  Tile();
  auto next = sides.begin();
  for (const auto look : kLooks) {
    CTarnView& side = **next++;
    if (!side.State().orthographic) side.ToggleOrthographic();
    (side.*look)();
    side.ZoomToFit();
  }
  area_.setActiveSubWindow(active);
}

void CDocumentWindows::CloseActive() {
  if (CChildFrame* child = Active()) child->close();
}

/// Several windows of one document are told apart by numbers.
void CDocumentWindows::NumberViews() {
  std::map<const CTarnDoc*, int> counts;
  for (const CChildFrame* child : Children())
    ++counts[&child->Document()];
  std::map<const CTarnDoc*, int> numbers;
  for (CChildFrame* child : Children()) {
    const CTarnDoc* document = &child->Document();
    child->SetViewNumber(counts[document] > 1 ? ++numbers[document] : 0);
  }
}

void CDocumentWindows::ListIn(QMenu& menu) {
  qDeleteAll(listed_);
  listed_.clear();
  int number = 0;
  for (CChildFrame* child : Children()) {
    const QString title = child->Name().replace('&', "&&");
    QAction* action = menu.addAction(QStringLiteral("&%1 %2").arg(++number).arg(title));
    action->setCheckable(true);
    action->setChecked(child == Active());
    action->setStatusTip(StatusText(CommandRow(ECommand::kWindowList)));
    connect(action, &QAction::triggered, child, [this, child] { area_.setActiveSubWindow(child); });
    listed_.append(action);
  }
}

void CDocumentWindows::RememberState() {
  const CChildFrame* active = Active();
  if (active != nullptr && app_.Settings().save_child_state != 0)
    app_.Settings().child_window_max = active->isMaximized() ? 1 : 0;
}

}  // namespace veldra
