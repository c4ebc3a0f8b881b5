#include "app/tooldocks.h"

#include <QApplication>
#include <QSignalBlocker>
#include <algorithm>

#include "tools/currentfacewidget.h"
#include "tools/modelinfowidget.h"
#include "tools/modeltreewidget.h"
#include "tools/texturelistwidget.h"
#include "tools/vertexstatuswidget.h"
#include "ui/screenplace.h"

namespace veldra {

namespace {

/// A state of other docks than these would only bring them into disorder.
constexpr int kStateVersion = 1;

}  // namespace

CToolDocks::CToolDocks(QMainWindow& window, CSettings& settings)
    : QObject(&window), window_(window), settings_(settings) {
  window.setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowNestedDocks | QMainWindow::AllowTabbedDocks);
  window.setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
  Add(EToolDock::kModelTree, "modelTreeDock", tr("Model"), new CModelTreeWidget, Qt::LeftDockWidgetArea);
  Add(EToolDock::kTextureList, "textureListDock", tr("Textures"), new CTextureListWidget, Qt::LeftDockWidgetArea);
  Add(EToolDock::kCurrentFace, "currentFaceDock", tr("Face"), new CCurrentFaceWidget, Qt::RightDockWidgetArea);
  Add(EToolDock::kVertexStatus, "vertexStatusDock", tr("Vertex"), new CVertexStatusWidget, Qt::RightDockWidgetArea);
  Add(EToolDock::kModelInfo, "modelInfoDock", tr("Information"), new CModelInfoWidget, Qt::RightDockWidgetArea);
  PutTogether();
}

void CToolDocks::Add(EToolDock dock, const char* name, const QString& title, CToolWidget* tool,
                     Qt::DockWidgetArea area) {
  auto* widget = new QDockWidget(title, &window_);
  widget->setObjectName(name);
  widget->setWidget(tool);
  window_.addDockWidget(area, widget);
  docks_[static_cast<size_t>(dock)] = widget;
  tools_[static_cast<size_t>(dock)] = tool;
  // One that is behind another is not hidden for Qt, only this tells.
  connect(widget, &QDockWidget::visibilityChanged, tool, &CToolWidget::SetInFront);
  connect(widget->toggleViewAction(), &QAction::toggled, this, &CToolDocks::Changed);
  connect(tool, &CToolWidget::CommandWanted, this, &CToolDocks::CommandWanted);
  connect(tool, &CToolWidget::MenuWanted, this, &CToolDocks::MenuWanted);
}

void CToolDocks::PutTogether() {
  window_.tabifyDockWidget(&Dock(EToolDock::kModelTree), &Dock(EToolDock::kTextureList));
  window_.tabifyDockWidget(&Dock(EToolDock::kCurrentFace), &Dock(EToolDock::kVertexStatus));
  window_.tabifyDockWidget(&Dock(EToolDock::kVertexStatus), &Dock(EToolDock::kModelInfo));
  Dock(EToolDock::kModelTree).raise();
  Dock(EToolDock::kCurrentFace).raise();
}

bool CToolDocks::HasFocus() const {
  const QWidget* focus = QApplication::focusWidget();
  return std::ranges::any_of(docks_, [focus](const QDockWidget* dock) { return dock->isAncestorOf(focus); });
}

void CToolDocks::InstallKeys(QObject* filter) {
  for (CToolWidget* tool : tools_)
    for (QWidget* child : tool->findChildren<QWidget*>())
      child->installEventFilter(filter);
}

void CToolDocks::Follow(CTarnView* view) {
  for (CToolWidget* tool : tools_)
    tool->SetView(view);
  const bool is_alone = view != nullptr && view->State().only_3d;
  if (is_alone == are_away_) return;
  is_alone ? SendAway() : BringBack();
}

void CToolDocks::ForgetPictures() {
  for (CToolWidget* tool : tools_)
    tool->ForgetPictures();
}

// --- Away and back -------------------------------------------------------------------------------------------------

void CToolDocks::SendAway() {
  state_before_ = window_.saveState(kStateVersion);
  is_vertex_status_open_ = IsOpen(EToolDock::kVertexStatus);
  are_away_ = true;
  for (QDockWidget* dock : docks_) {
    if (dock->isHidden()) continue;
    away_.push_back(dock);
    dock->hide();
  }
  emit Changed();
}

void CToolDocks::BringBack() {
  are_away_ = false;
  for (QDockWidget* dock : std::exchange(away_, {}))
    dock->show();
  // Which one of those in one place is in front, and how wide they are.
  window_.restoreState(state_before_, kStateVersion);
  emit Changed();
}

void CToolDocks::Toggle(EToolDock dock) {
  QDockWidget& widget = Dock(dock);
  widget.setVisible(widget.isHidden());
  if (!widget.isHidden()) widget.raise();
}

// --- From run to run -----------------------------------------------------------------------------------------------

void CToolDocks::Restore(const QByteArray& state) {
  window_.restoreState(state, kStateVersion);
  PlaceVertexStatus();
}

void CToolDocks::PlaceVertexStatus() {
  QDockWidget& dock = Dock(EToolDock::kVertexStatus);
  dock.setVisible(settings_.vertex_status_visible != 0);
  if (!dock.isFloating()) return;
  PutAt(dock, {QPoint(settings_.vertex_status_x, settings_.vertex_status_y), dock.size()});
}

QByteArray CToolDocks::Keep() {
  const QDockWidget& dock = Dock(EToolDock::kVertexStatus);
  const bool is_open = are_away_ ? is_vertex_status_open_ : IsOpen(EToolDock::kVertexStatus);
  settings_.vertex_status_visible = is_open ? 1 : 0;
  if (dock.isFloating()) {
    const QPoint corner = PlaceOf(dock).topLeft();
    settings_.vertex_status_x = corner.x();
    settings_.vertex_status_y = corner.y();
  }
  return are_away_ ? state_before_ : window_.saveState(kStateVersion);
}

}  // namespace veldra
