#include "app/tooldocks.h"

#include <QApplication>
#include <QSignalBlocker>
#include <algorithm>

#include "app/help/helpwindow.h"
#include "mapping/mappingtoolswidget.h"
#include "mapping/mappingwidget.h"
#include "tools/currentfacewidget.h"
#include "tools/modelinfowidget.h"
#include "tools/modeltreewidget.h"
#include "tools/problemswidget.h"
#include "tools/texturebrowserwidget.h"
#include "tools/texturelistwidget.h"
#include "tools/vertexstatuswidget.h"
#include "ui/screenplace.h"

namespace veldra {

namespace {

constexpr const char* kStateKey = "mainWindow/toolBars";
/// A state of other docks than these would only bring them into disorder.
constexpr int kStateVersion = 1;
/// For a title bar, and a little of what is behind.
constexpr int kRoomAbout = 32;

/// Its keys mean what they mean in it, and it keeps them.
bool HasOwnKeys(EToolDock dock) {
  return dock == EToolDock::kMapping || dock == EToolDock::kMappingTools || dock == EToolDock::kTextureBrowser;
}

/// Of what stands in it, in what is kept from run to run; null when that keeps nothing.
const char* StateKey(EToolDock dock) {
  if (dock == EToolDock::kMapping) return "mapping/guides";
  return dock == EToolDock::kProblems ? "problems/columns" : nullptr;
}

constexpr size_t Index(EToolDock dock) {
  return static_cast<size_t>(dock);
}

}  // namespace

CToolDocks::CToolDocks(QMainWindow& window, CSettings& settings)
    : QObject(&window), window_(window), settings_(settings) {
  window.setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowNestedDocks | QMainWindow::AllowTabbedDocks);
  window.setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
  Add(EToolDock::kModelTree, "modelTreeDock", tr("Model"), Qt::LeftDockWidgetArea);
  Add(EToolDock::kTextureList, "textureListDock", tr("Textures"), Qt::LeftDockWidgetArea);
  Add(EToolDock::kCurrentFace, "currentFaceDock", tr("Face"), Qt::RightDockWidgetArea);
  Add(EToolDock::kVertexStatus, "vertexStatusDock", tr("Vertex"), Qt::RightDockWidgetArea);
  Add(EToolDock::kModelInfo, "modelInfoDock", tr("Information"), Qt::RightDockWidgetArea);
  Add(EToolDock::kMapping, "mappingDock", tr("Texture Mapping"), Qt::RightDockWidgetArea);
  Add(EToolDock::kMappingTools, "mappingToolsDock", tr("Mapping Tools"), Qt::RightDockWidgetArea);
  Add(EToolDock::kTextureBrowser, "textureBrowserDock", tr("Texture Browser"), Qt::RightDockWidgetArea);
  Add(EToolDock::kProblems, "problemsDock", tr("Problems"), Qt::BottomDockWidgetArea);
  PutTogether();
}

void CToolDocks::Add(EToolDock dock, const char* name, const QString& title, Qt::DockWidgetArea area) {
  auto* widget = new QDockWidget(title, &window_);
  widget->setObjectName(name);
  window_.addDockWidget(area, widget);
  docks_[Index(dock)] = widget;
  // One that is behind another is not hidden for Qt, only this tells.
  connect(widget, &QDockWidget::visibilityChanged, this, [this, dock](bool is_in_front) { Show(dock, is_in_front); });
  connect(widget->toggleViewAction(), &QAction::toggled, this, &CToolDocks::Changed);
}

void CToolDocks::PutTogether() {
  window_.tabifyDockWidget(&Dock(EToolDock::kModelTree), &Dock(EToolDock::kTextureList));
  window_.tabifyDockWidget(&Dock(EToolDock::kCurrentFace), &Dock(EToolDock::kVertexStatus));
  window_.tabifyDockWidget(&Dock(EToolDock::kVertexStatus), &Dock(EToolDock::kModelInfo));
  // One behind the other they take less room where they will be put into the window.
  window_.tabifyDockWidget(&Dock(EToolDock::kMapping), &Dock(EToolDock::kMappingTools));
  window_.tabifyDockWidget(&Dock(EToolDock::kMappingTools), &Dock(EToolDock::kTextureBrowser));
  for (const EToolDock dock : {EToolDock::kMapping, EToolDock::kMappingTools, EToolDock::kTextureBrowser}) {
    Dock(dock).hide();  // first, or it would get a window of the system at once
    Dock(dock).setFloating(true);
  }
  Dock(EToolDock::kProblems).hide();  // who wants to know opens it
  Dock(EToolDock::kModelTree).raise();
  Dock(EToolDock::kCurrentFace).raise();
}

// --- What stands in them -------------------------------------------------------------------------------------------

CToolWidget& CToolDocks::Tool(EToolDock dock) {
  CToolWidget*& tool = tools_[Index(dock)];
  if (tool != nullptr) return *tool;
  tool = Make(dock);
  connect(tool, &CToolWidget::CommandWanted, this, &CToolDocks::CommandWanted);
  connect(tool, &CToolWidget::MenuWanted, this, &CToolDocks::MenuWanted);
  tool->SetInFront(false);
  if (states_[Index(dock)].isValid()) tool->RestoreState(states_[Index(dock)]);
  Dock(dock).setWidget(tool);
  tool->show();
  InstallKeysIn(dock);
  tool->SetView(view_);
  return *tool;
}

CToolWidget* CToolDocks::Make(EToolDock dock) {
  switch (dock) {
    case EToolDock::kModelTree:
      return new CModelTreeWidget;
    case EToolDock::kCurrentFace:
      return new CCurrentFaceWidget;
    case EToolDock::kVertexStatus:
      return new CVertexStatusWidget;
    case EToolDock::kTextureList:
      return new CTextureListWidget;
    case EToolDock::kModelInfo:
      return new CModelInfoWidget;
    case EToolDock::kMapping:
      return MakeMapping();
    case EToolDock::kMappingTools:
      return new CMappingToolsWidget(Mapping());
    case EToolDock::kTextureBrowser:
      return MakeBrowser();
    case EToolDock::kProblems:
      return MakeProblems();
  }
  return nullptr;
}

CToolWidget* CToolDocks::MakeMapping() {
  auto* mapping = new CMappingWidget(settings_);
  connect(mapping, &CMappingWidget::ToolsWanted, this, &CToolDocks::ToggleMappingTools);
  return mapping;
}

CToolWidget* CToolDocks::MakeBrowser() {
  auto* browser = new CTextureBrowserWidget;
  connect(browser, &CTextureBrowserWidget::MappingWanted, this, [this](const CBinTexture* texture) {
    ShowMapping();
    Mapping().ShowTexture(*texture);
  });
  connect(browser, &CTextureBrowserWidget::ChosenChanged, this, &CToolDocks::Changed);
  return browser;
}

/// The title, or the tab, tells how many there are.
CToolWidget* CToolDocks::MakeProblems() {
  auto* problems = new CProblemsWidget;
  connect(problems, &CProblemsWidget::CountChanged, this, [this, problems] {
    const size_t count = problems->Count();
    Dock(EToolDock::kProblems).setWindowTitle(count == 0 ? tr("Problems") : tr("Problems (%L1)").arg(count));
  });
  connect(problems, &CProblemsWidget::HelpWanted, this,
          [this] { CHelpWindow::Open(HelpFor("problemsTool"), window_); });
  return problems;
}

CMappingWidget& CToolDocks::Mapping() {
  return static_cast<CMappingWidget&>(Tool(EToolDock::kMapping));
}

CTextureBrowserWidget& CToolDocks::Browser() {
  return static_cast<CTextureBrowserWidget&>(Tool(EToolDock::kTextureBrowser));
}

CProblemsWidget& CToolDocks::Problems() {
  return static_cast<CProblemsWidget&>(Tool(EToolDock::kProblems));
}

void CToolDocks::Show(EToolDock dock, bool is_in_front) {
  if (is_in_front || tools_[Index(dock)] != nullptr) Tool(dock).SetInFront(is_in_front);
}

bool CToolDocks::HasFocus() const {
  const QWidget* focus = QApplication::focusWidget();
  for (size_t i = 0; i < docks_.size(); ++i)
    if (!HasOwnKeys(static_cast<EToolDock>(i)) && docks_[i]->isAncestorOf(focus)) return true;
  return false;
}

void CToolDocks::InstallKeys(QObject* filter) {
  keys_ = filter;
  for (size_t i = 0; i < tools_.size(); ++i)
    if (tools_[i] != nullptr) InstallKeysIn(static_cast<EToolDock>(i));
}

void CToolDocks::InstallKeysIn(EToolDock dock) {
  if (keys_ == nullptr || HasOwnKeys(dock)) return;
  for (QWidget* child : Tool(dock).findChildren<QWidget*>())
    child->installEventFilter(keys_);
}

void CToolDocks::Follow(CTarnView* view) {
  view_ = view;
  for (CToolWidget* tool : tools_)
    if (tool != nullptr) tool->SetView(view);
  const bool is_alone = view != nullptr && view->State().only_3d;
  if (is_alone == are_away_) return;
  is_alone ? SendAway() : BringBack();
}

void CToolDocks::ForgetPictures() {
  for (CToolWidget* tool : tools_)
    if (tool != nullptr) tool->ForgetPictures();
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
  if (HasOwnKeys(dock) && !widget.isHidden()) dock == EToolDock::kTextureBrowser ? PlaceBrowser() : PlaceMapping();
  if (!widget.isHidden()) widget.raise();
}

/// With the editor, unless they would cover the model.
void CToolDocks::OpenMappingTools() {
  constexpr int kRoomForBoth = 960;
  QDockWidget& tools = Dock(EToolDock::kMappingTools);
  if (!tools.isFloating() || RoomFor(window_).height() >= kRoomForBoth) tools.show();
}

void CToolDocks::ShowMapping() {
  QDockWidget& dock = Dock(EToolDock::kMapping);
  if (dock.isHidden()) OpenMappingTools();
  dock.show();
  PlaceMapping();
  dock.raise();
  if (dock.isFloating()) dock.activateWindow();
  Mapping().TakeFocus();
}

void CToolDocks::ShowBrowser() {
  QDockWidget& dock = Dock(EToolDock::kTextureBrowser);
  dock.show();
  PlaceBrowser();
  dock.raise();
  if (dock.isFloating()) dock.activateWindow();
  Browser().TakeFocus();
}

// --- From run to run -----------------------------------------------------------------------------------------------

void CToolDocks::Restore(const QSettings& kept) {
  for (size_t i = 0; i < states_.size(); ++i)
    if (const char* key = StateKey(static_cast<EToolDock>(i))) states_[i] = kept.value(key);
  window_.restoreState(kept.value(kStateKey).toByteArray(), kStateVersion);
  if (IsOpen(EToolDock::kProblems)) Problems();  // its tab tells of them also while it is covered
  PlaceVertexStatus();
  for (const EToolDock dock : {EToolDock::kMapping, EToolDock::kMappingTools, EToolDock::kTextureBrowser})
    if (IsOpen(dock)) placed_.insert(dock);
}

void CToolDocks::PlaceVertexStatus() {
  QDockWidget& dock = Dock(EToolDock::kVertexStatus);
  dock.setVisible(settings_.vertex_status_visible != 0);
  if (!dock.isFloating()) return;
  PutAt(dock, {QPoint(settings_.vertex_status_x, settings_.vertex_status_y), dock.size()});
}

/// When it is opened first: a floating dock gets its size only then.
void CToolDocks::PlaceFloating(EToolDock dock, const QPoint& first, int32_t x, int32_t y) {
  QDockWidget& widget = Dock(dock);
  if (!widget.isFloating() || placed_.contains(dock)) return;
  placed_.insert(dock);
  const QSize size = Tool(dock).sizeHint();
  PutAt(widget, {x == 0 && y == 0 ? first : QPoint(x, y), size});
}

/// At first over the right side of the main window, so that the model can be seen, the tools below or to the left.
void CToolDocks::PlaceMapping() {
  constexpr int kApart = 32;  // room for a title bar
  const QRect room = RoomFor(window_);
  const QSize size = Mapping().sizeHint();
  const QSize tools = Tool(EToolDock::kMappingTools).sizeHint();
  const QRect first(QPoint(room.right() - size.width() - kApart / 2, room.top() + kApart), size);
  const bool fits_below = first.bottom() + kApart + tools.height() <= room.bottom();
  const QPoint beside = fits_below ? QPoint(first.right() - tools.width(), first.bottom() + kApart)
                                   : QPoint(std::max(0, first.left() - tools.width() - kApart), first.top());
  PlaceFloating(EToolDock::kMapping, first.topLeft(), settings_.tex_dlg_offset_x, settings_.tex_dlg_offset_y);
  PlaceFloating(EToolDock::kMappingTools, beside, settings_.tools_offset_x, settings_.tools_offset_y);
}

/// At first over the lower left of the main window; later where the main window's state has it.
void CToolDocks::PlaceBrowser() {
  const QRect room = RoomFor(window_);
  const QSize size = Browser().sizeHint();
  const QPoint first(room.left() + kRoomAbout, std::max(room.top(), room.bottom() - size.height() - kRoomAbout));
  PlaceFloating(EToolDock::kTextureBrowser, first, 0, 0);
}

void CToolDocks::KeepPlace(EToolDock dock, int32_t& x, int32_t& y) const {
  if (!Dock(dock).isFloating() || !placed_.contains(dock)) return;
  const QPoint corner = PlaceOf(Dock(dock)).topLeft();
  x = corner.x();
  y = corner.y();
}

void CToolDocks::Keep(QSettings& kept) {
  const bool is_open = are_away_ ? is_vertex_status_open_ : IsOpen(EToolDock::kVertexStatus);
  settings_.vertex_status_visible = is_open ? 1 : 0;
  placed_.insert(EToolDock::kVertexStatus);
  KeepPlace(EToolDock::kVertexStatus, settings_.vertex_status_x, settings_.vertex_status_y);
  KeepPlace(EToolDock::kMapping, settings_.tex_dlg_offset_x, settings_.tex_dlg_offset_y);
  KeepPlace(EToolDock::kMappingTools, settings_.tools_offset_x, settings_.tools_offset_y);
  kept.setValue(kStateKey, are_away_ ? state_before_ : window_.saveState(kStateVersion));
  for (size_t i = 0; i < tools_.size(); ++i)
    if (const char* key = StateKey(static_cast<EToolDock>(i)); key != nullptr && tools_[i] != nullptr)
      kept.setValue(key, tools_[i]->KeepState());
}

}  // namespace veldra
