#include "app/mainfrm.h"

#include <QCloseEvent>
#include <QColorDialog>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QOpenGLWidget>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>
#include <algorithm>

#include "app/commandicons.h"
#include "app/windowplace.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr int kMessageMs = 6000;
constexpr const char* kRecentFilesKey = "recentFiles";
constexpr const char* kToolBarsKey = "mainWindow/toolBars";

QStringList ModelFiles(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile() && url.fileName().endsWith(".bin", Qt::CaseInsensitive)) files.append(url.toLocalFile());
  return files;
}

QString Counted(int32_t count, const char* one, const char* many) {
  return QStringLiteral("%L1 %2").arg(count).arg(count == 1 ? one : many);
}

/// Where windows keep what is theirs alone, apart from the settings file.
QSettings WindowSettings() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, "Veldra", "Veldra");
}

}  // namespace

CMainFrame::CMainFrame(CTarn2App& app) : app_(app), area_(new CDocumentArea), counts_(new QLabel) {
  setObjectName("mainFrame");
  setWindowTitle(tr("Veldra"));
  setWindowIcon(ProgramIcon());
  setAcceptDrops(true);
  setCentralWidget(area_);
  MakeReadyForOpenGL();
  actions_ = std::make_unique<CCommandActions>(*this, [this](const SCommandRow& row) { Run(row); });
  counts_->setObjectName("modelCounts");
  counts_->setContentsMargins(8, 0, 8, 0);
  statusBar()->addPermanentWidget(counts_);
  connect(area_, &QMdiArea::subWindowActivated, this, [this] { RefreshCommands(); });
  connect(actions_->ListMenu(ECommand::kFileRecent), &QMenu::aboutToShow, this, [this] { FillRecentFiles(); });
  connect(actions_->ListMenu(ECommand::kWindowList), &QMenu::aboutToShow, this, [this] { FillWindowList(); });
  ReadWindowState();
  Refresh();
}

CMainFrame::~CMainFrame() {
  // The child windows must not report to a frame that is half gone.
  area_->disconnect(this);
  for (CChildFrame* child : Children())
    delete child;
}

/// A window that gets its first OpenGL view while it is shown is made anew by Qt, which flickers and loses the focus.
/// With a hidden one in it from the start, it is made right at once.
void CMainFrame::MakeReadyForOpenGL() {
  (new QOpenGLWidget(this))->hide();
}

// --- Documents -----------------------------------------------------------------------------------------------------

bool CMainFrame::OpenFile(const std::string& path) {
  const auto open = app_.FindDocument(path);
  if (open != nullptr) {
    for (CChildFrame* child : Children())
      if (&child->Document() == open.get()) area_->setActiveSubWindow(child);
    return true;
  }
  const auto document = app_.OpenDocument(path);
  RefreshCommands();
  if (document == nullptr) {
    if (!FileExists(path)) app_.RecentFiles().Remove(AbsolutePath(path));
    return false;
  }
  AddView(document);
  Say(tr("Opened %1").arg(QString::fromStdString(document->Title())));
  return true;
}

CChildFrame& CMainFrame::AddView(const std::shared_ptr<CTarnDoc>& document) {
  QMdiSubWindow* earlier = area_->currentSubWindow();
  const bool maximized = earlier != nullptr ? earlier->isMaximized() : app_.Settings().child_window_max != 0;
  auto* child = new CChildFrame(app_, document);
  area_->addSubWindow(child);
  connect(child, &CChildFrame::DocumentChanged, this, [this] { RefreshCommands(); });
  connect(child, &QObject::destroyed, this, [this] { RefreshCommands(); });
  connect(&child->View(), &CTarnView::StateChanged, this, [this] { RefreshCommands(); });
  child->resize(area_->viewport()->size() * 2 / 3);
  if (maximized) {
    child->showMaximized();
  } else {
    child->show();
  }
  if (earlier != nullptr && app_.Settings().open_inactive != 0) area_->setActiveSubWindow(earlier);
  return *child;
}

CChildFrame* CMainFrame::ActiveChild() const {
  // Not activeSubWindow(), which is none while a dialog or another program is in front.
  return qobject_cast<CChildFrame*>(area_->currentSubWindow());
}

CTarnView* CMainFrame::ActiveView() const {
  const CChildFrame* child = ActiveChild();
  return child != nullptr ? &child->View() : nullptr;
}

CTarnDoc* CMainFrame::ActiveDocument() const {
  const CChildFrame* child = ActiveChild();
  return child != nullptr ? &child->Document() : nullptr;
}

QList<CChildFrame*> CMainFrame::Children() const {
  QList<CChildFrame*> children;
  for (QMdiSubWindow* window : area_->subWindowList())
    if (auto* child = qobject_cast<CChildFrame*>(window)) children.append(child);
  return children;
}

// --- Commands ------------------------------------------------------------------------------------------------------

void CMainFrame::Run(const SCommandRow& row) {
  if (const auto* own = std::get_if<void (CMainFrame::*)()>(&row.handler)) {
    (this->**own)();
  } else if (const auto* view = std::get_if<void (CTarnView::*)()>(&row.handler)) {
    if (ActiveView() != nullptr) (ActiveView()->**view)();
  } else if (const auto* document = std::get_if<void (CTarnDoc::*)()>(&row.handler)) {
    if (ActiveDocument() != nullptr) (ActiveDocument()->**document)();
  }
  RefreshCommands();
}

void CMainFrame::AskAndOpen() {
  const auto path = app_.Questions().AskOpenFile(
      {.title = "Open",
       .filters = {{.label = "MTM Model *.bin", .pattern = "*.bin"}, {.label = "All Files *.*", .pattern = "*.*"}},
       .directory = app_.ModelDirectory(),
       .name = {},
       .default_extension = "bin"});
  if (path) OpenFile(*path);
}

void CMainFrame::CloseActive() {
  if (CChildFrame* child = ActiveChild()) child->close();
}

void CMainFrame::SaveActive() {
  ReportSaved(ActiveDocument()->Save());
}

void CMainFrame::SaveActiveAs() {
  ReportSaved(ActiveDocument()->SaveAs());
}

void CMainFrame::ReportSaved(bool saved) {
  if (!saved) return;
  app_.RecentFiles().Add(ActiveDocument()->Path());
  Say(tr("Saved %1").arg(QString::fromStdString(ActiveDocument()->Path())));
}

void CMainFrame::DeleteUnused() {
  const int32_t deleted = ActiveDocument()->DeleteAllUnused();
  Say(deleted == 0 ? tr("No unused vertices") : tr("Deleted %1").arg(Counted(deleted, "vertex", "vertices")));
}

void CMainFrame::AskBackground() {
  auto& colors = app_.Settings().custom_colors;
  for (size_t i = 0; i < colors.size(); ++i)
    QColorDialog::setCustomColor(static_cast<int>(i), QColor(colors[i].red, colors[i].green, colors[i].blue));
  const SColor& now = ActiveView()->State().background;
  QColorDialog dialog(QColor(now.red, now.green, now.blue), this);
  dialog.setObjectName("backgroundColor");
  dialog.setWindowTitle(tr("Background Color"));
  const auto to_color = [](const QColor& color) {
    return SColor{static_cast<uint8_t>(color.red()), static_cast<uint8_t>(color.green()),
                  static_cast<uint8_t>(color.blue())};
  };
  if (dialog.exec() == QDialog::Accepted) ActiveView()->SetBackground(to_color(dialog.selectedColor()));
  for (size_t i = 0; i < colors.size(); ++i)
    colors[i] = to_color(QColorDialog::customColor(static_cast<int>(i)));
}

void CMainFrame::About() {
  QMessageBox box(this);
  box.setObjectName("about");
  box.setWindowTitle(tr("About Veldra"));
  box.setIconPixmap(windowIcon().pixmap(64, 64));
  box.setText(QStringLiteral("<h3>Veldra %1</h3>").arg(VELDRA_VERSION));
  box.setInformativeText(tr("An editor for the 3D models of Monster Truck Madness 2.\n\nRuns on Qt %1.")
                             .arg(QString::fromUtf8(qVersion())));
  box.exec();
}

void CMainFrame::FillRecentFiles() {
  QMenu* menu = actions_->ListMenu(ECommand::kFileRecent);
  menu->clear();
  int number = 0;
  for (const std::string& path : app_.RecentFiles().Paths()) {
    const QString text = QString::fromStdString(path).replace('&', "&&");
    QAction* action = menu->addAction(QStringLiteral("&%1 %2").arg(++number).arg(text));
    action->setStatusTip(tr("Open this document"));
    connect(action, &QAction::triggered, this, [this, path] { OpenFile(path); });
  }
}

void CMainFrame::FillWindowList() {
  QMenu* menu = actions_->ListMenu(ECommand::kWindowList);
  qDeleteAll(window_actions_);
  window_actions_.clear();
  int number = 0;
  for (CChildFrame* child : Children()) {
    const QString title = QString::fromStdString(child->Document().Title()).replace('&', "&&");
    QAction* action = menu->addAction(QStringLiteral("&%1 %2").arg(++number).arg(title));
    action->setCheckable(true);
    action->setChecked(child == ActiveChild());
    action->setStatusTip(StatusText(CommandRow(ECommand::kWindowList)));
    connect(action, &QAction::triggered, child, [this, child] { area_->setActiveSubWindow(child); });
    window_actions_.append(action);
  }
}

// --- State ---------------------------------------------------------------------------------------------------------

void CMainFrame::RefreshCommands() {
  if (refresh_is_due_) return;
  refresh_is_due_ = true;
  QMetaObject::invokeMethod(
      this, [this] { Refresh(); }, Qt::QueuedConnection);
}

SCommandState CMainFrame::CommandState() const {
  return {.document = ActiveDocument(), .view = ActiveView(), .has_recent_files = !app_.RecentFiles().Paths().empty()};
}

void CMainFrame::Refresh() {
  refresh_is_due_ = false;
  actions_->Refresh(CommandState());
  RefreshStatus();
}

void CMainFrame::RefreshStatus() {
  const CTarnDoc* document = ActiveDocument();
  if (document == nullptr) {
    counts_->clear();
    return;
  }
  const CBinModel& model = document->Model();
  counts_->setText(Counted(model.VertexCount(), "vertex", "vertices") + ", " +
                   Counted(model.FaceCount(), "face", "faces") + ", " +
                   Counted(model.TextureCount(), "texture", "textures"));
}

void CMainFrame::Say(const QString& text) {
  statusBar()->showMessage(text, kMessageMs);
}

void CMainFrame::ReadWindowState() {
  RestoreWindowPlace(*this, app_.Settings());
  const QSettings kept = WindowSettings();
  restoreState(kept.value(kToolBarsKey).toByteArray());
  std::vector<std::string> paths;
  for (const QString& path : kept.value(kRecentFilesKey).toStringList())
    paths.push_back(path.toStdString());
  app_.RecentFiles().Set(std::move(paths));
}

void CMainFrame::WriteWindowState() {
  RememberWindowPlace(*this, app_.Settings());
  QSettings kept = WindowSettings();
  kept.setValue(kToolBarsKey, saveState());
  QStringList paths;
  for (const std::string& path : app_.RecentFiles().Paths())
    paths.append(QString::fromStdString(path));
  kept.setValue(kRecentFilesKey, paths);
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  QList<const CTarnDoc*> asked;
  for (CChildFrame* child : Children()) {
    if (asked.contains(&child->Document())) continue;
    asked.append(&child->Document());
    if (!app_.MayClose(child->Document())) {
      event->ignore();
      return;
    }
  }
  const CChildFrame* active = ActiveChild();
  if (active != nullptr && app_.Settings().save_child_state != 0)
    app_.Settings().child_window_max = active->isMaximized() ? 1 : 0;
  WriteWindowState();
  event->accept();
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event) {
  if (!ModelFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  const QStringList files = ModelFiles(*event->mimeData());
  // Opening may ask; the program that the files came from must not wait for the answers.
  QMetaObject::invokeMethod(
      this,
      [this, files] {
        for (const QString& file : files)
          OpenFile(file.toStdString());
      },
      Qt::QueuedConnection);
}

}  // namespace veldra
