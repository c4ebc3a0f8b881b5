#include "app/mainfrm.h"

#include <QApplication>
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

#include "app/fileopeners.h"
#include "app/filewatch.h"
#include "app/windowplace.h"
#include "ui/commandicons.h"
#include "view/editcommands.h"
#include "view/keyboarddlg.h"

namespace veldra {

namespace {

constexpr int kMessageMs = 6000;
constexpr const char* kRecentFilesKey = "recentFiles";
constexpr const char* kToolBarsKey = "mainWindow/toolBars";

QStringList FilesToOpen(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile() && FindFileOpener(url.fileName().toStdString()) != nullptr) files.append(url.toLocalFile());
  return files;
}

/// Where windows keep what is theirs alone, apart from the settings file.
QSettings WindowSettings() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, "Veldra", "Veldra");
}

}  // namespace

CMainFrame::CMainFrame(CTarn2App& app)
    : app_(app), area_(new CDocumentArea), counts_(new QLabel), docks_(new CToolDocks(*this, app.Settings())) {
  setObjectName("mainFrame");
  setWindowTitle(tr("Veldra"));
  setAcceptDrops(true);
  setCentralWidget(area_);
  MakeReadyForOpenGL();
  MakeCommands();
  counts_->setObjectName("modelCounts");
  counts_->setContentsMargins(8, 0, 8, 0);
  statusBar()->addPermanentWidget(counts_);
  ReadWindowState();
  area_->setFocus();  // and not the first field of a tool window
  Refresh();
}

CMainFrame::~CMainFrame() {
  windows_->disconnect(this);
  docks_->disconnect(this);
  windows_.reset();
  app_.SetPictureMaker({});
}

/// A window that gets its first OpenGL view while it is shown is made anew by Qt, which flickers and loses the focus.
/// With a hidden one in it from the start, it is made right at once.
void CMainFrame::MakeReadyForOpenGL() {
  (new QOpenGLWidget(this))->hide();
}

void CMainFrame::MakeCommands() {
  auto* view_keys = new CViewKeys([this](const SCommandRow& row) { Run(row); },
                                  [this](const SCommandRow& row) { return IsEnabled(row, CommandState()); }, this);
  windows_ = std::make_unique<CDocumentWindows>(app_, *area_, view_keys);
  files_ = std::make_unique<CFileCommands>(*this);
  models_ = std::make_unique<CModelCommands>(*this);
  tools_ = std::make_unique<CToolCommands>(*this);
  actions_ = std::make_unique<CCommandActions>(*this, [this](const SCommandRow& row) { Run(row); });
  new CFileWatch(app_, *windows_, this);
  app_.SetPictureMaker([this](const CTarnDoc& document) { return windows_->Picture(document); });
  connect(windows_.get(), &CDocumentWindows::Changed, this, &CMainFrame::RefreshCommands);
  connect(docks_, &CToolDocks::Changed, this, &CMainFrame::RefreshCommands);
  QMenu* recent = actions_->ListMenu(ECommand::kFileRecent);
  connect(recent, &QMenu::aboutToShow, this, [this, recent] { files_->ListRecentIn(*recent); });
  QMenu* window_list = actions_->ListMenu(ECommand::kWindowList);
  connect(window_list, &QMenu::aboutToShow, this, [this, window_list] { windows_->ListIn(*window_list); });
}

// --- Commands ------------------------------------------------------------------------------------------------------

void CMainFrame::Run(const SCommandRow& row) {
  const auto& handler = row.handler;
  if (const auto* own = std::get_if<void (CMainFrame::*)()>(&handler)) {
    (this->**own)();
  } else if (const auto* file = std::get_if<void (CFileCommands::*)()>(&handler)) {
    (*files_.*(*file))();
  } else if (const auto* model = std::get_if<void (CModelCommands::*)()>(&handler)) {
    (*models_.*(*model))();
  } else if (const auto* window = std::get_if<void (CDocumentWindows::*)()>(&handler)) {
    (*windows_.*(*window))();
  } else if (const auto* dock = std::get_if<void (CToolDocks::*)()>(&handler)) {
    (docks_->**dock)();
  } else if (const auto* tool = std::get_if<void (CToolCommands::*)()>(&handler)) {
    (*tools_.*(*tool))();
  } else if (CTarnView* view = ActiveView()) {
    RunOn(*view, row);
  }
  RefreshCommands();
}

void CMainFrame::RunOn(CTarnView& view, const SCommandRow& row) {
  if (const auto* own = std::get_if<void (CTarnView::*)()>(&row.handler)) {
    (view.**own)();
  } else if (const auto* edit = std::get_if<void (CEditCommands::*)()>(&row.handler)) {
    (view.EditCommands().**edit)();
  } else if (const auto* document = std::get_if<void (CTarnDoc::*)()>(&row.handler)) {
    (view.Document().**document)();
  }
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

void CMainFrame::ShowKeyboard() {
  CKeyboardDialog(app_.Settings(), app_.Questions(), this).exec();
}

void CMainFrame::About() {
  QMessageBox box(this);
  box.setObjectName("about");
  box.setWindowTitle(tr("About Veldra"));
  box.setIconPixmap(QApplication::windowIcon().pixmap(64, 64));
  box.setText(QStringLiteral("<h3>Veldra %1</h3>").arg(VELDRA_VERSION));
  box.setInformativeText(tr("An editor for the 3D models of Monster Truck Madness 2.\n\nRuns on Qt %1.")
                             .arg(QString::fromUtf8(qVersion())));
  box.exec();
}

// --- State ---------------------------------------------------------------------------------------------------------

void CMainFrame::RefreshCommands() {
  if (refresh_is_due_) return;
  refresh_is_due_ = true;
  QMetaObject::invokeMethod(
      this, [this] { Refresh(); }, Qt::QueuedConnection);
}

SCommandState CMainFrame::CommandState() const {
  return {.document = ActiveDocument(),
          .view = ActiveView(),
          .has_recent_files = !app_.RecentFiles().Paths().empty(),
          .docks = docks_};
}

void CMainFrame::Refresh() {
  refresh_is_due_ = false;
  docks_->Follow(ActiveView());
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
  docks_->Restore(kept.value(kToolBarsKey).toByteArray());
  std::vector<std::string> paths;
  for (const QString& path : kept.value(kRecentFilesKey).toStringList())
    paths.push_back(path.toStdString());
  app_.RecentFiles().Set(std::move(paths));
}

void CMainFrame::WriteWindowState() {
  windows_->RememberState();
  RememberWindowPlace(*this, app_.Settings());
  QSettings kept = WindowSettings();
  kept.setValue(kToolBarsKey, docks_->Keep());
  QStringList paths;
  for (const std::string& path : app_.RecentFiles().Paths())
    paths.append(QString::fromStdString(path));
  kept.setValue(kRecentFilesKey, paths);
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  if (!MayCloseAll() || !tools_->CloseWindows()) {
    event->ignore();
    return;
  }
  for (CTarnDoc* document : windows_->Documents())
    app_.LetGo(*document);
  WriteWindowState();
  event->accept();
}

bool CMainFrame::MayCloseAll() {
  for (CTarnDoc* document : windows_->Documents()) {
    if (!document->IsModified()) continue;
    windows_->Activate(*document);
    if (!app_.MayClose(*document)) return false;
  }
  return true;
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event) {
  if (!FilesToOpen(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  const QStringList files = FilesToOpen(*event->mimeData());
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
