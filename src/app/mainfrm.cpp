#include "app/mainfrm.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QOpenGLWidget>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>
#include <new>
#include <optional>
#include <utility>

#include "app/droppedpictures.h"
#include "app/fileopeners.h"
#include "app/filewatch.h"
#include "app/help/helpwindow.h"
#include "app/help/welcomepage.h"
#include "app/windowplace.h"
#include "editing/texturecommands.h"
#include "platform/crashreport.h"
#include "platform/paths.h"
#include "platform/shell.h"
#include "platform/text.h"
#include "platform/userfolders.h"
#include "settings/windowkeys.h"
#include "ui/commandicons.h"
#include "ui/qstrings.h"
#include "view/glcanvas.h"

namespace veldra {

namespace {

constexpr int kMessageMs = 6000;
constexpr const char* kRecentFilesKey = "recentFiles";

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
    : app_(app),
      area_(new CDocumentArea),
      keys_(app.Settings().keys),
      counts_(new QLabel),
      selected_(new QLabel),
      hidden_(new QPushButton),
      docks_(new CToolDocks(*this, app.Settings())),
      textures_(app.Textures()),
      edits_(app.Textures(), app.Questions(), JoinPath(UserDataDirectory(), "pictures")),
      dialogs_(app.Settings()) {
  setObjectName("mainFrame");
  TraceKeyFaults(app.Settings().keys);
  setWindowTitle(tr("Veldra"));
  setAcceptDrops(true);
  setCentralWidget(area_);
  MakeReadyForOpenGL();
  MakeCommands();
  MakeStatusBar();
  ReadWindowState();
  CHelpWindow::InstallKey(*this);
  area_->setFocus();  // and not the first field of a tool window
  Refresh();
}

CMainFrame::~CMainFrame() {
  windows_->disconnect(this);
  docks_->disconnect(this);
  windows_.reset();
  app_.SetPictureMaker({});
  app_.SetSay({});
  app_.Textures().SetOnChanged({});
}

/// A window that gets its first OpenGL view while it is shown is made anew by Qt, which flickers and loses the focus.
/// With a hidden one in it from the start, it is made right at once.
void CMainFrame::MakeReadyForOpenGL() {
  if (!CGlCanvas::DrawsInMemory()) (new QOpenGLWidget(this))->hide();
}

void CMainFrame::MakeCommands() {
  auto* view_keys = new CViewKeys(
      keys_, [this](const SCommandRow& row) { RunKey(row); }, this);
  windows_ = std::make_unique<CDocumentWindows>(app_, *area_, view_keys);
  tools_ = std::make_unique<CToolCommands>(app_, *windows_, *this);
  files_ = std::make_unique<CFileCommands>(app_, *windows_, *tools_, *docks_, *this, [this] { TakeKeys(); });
  actions_ = std::make_unique<CCommandActions>(*this, keys_, [this](const SCommandRow& row) { Run(row); });
  WatchFiles();
  app_.SetPictureMaker([this](const CTarnDoc& document) { return windows_->Picture(document); });
  connect(windows_.get(), &CDocumentWindows::Changed, this, &CMainFrame::RefreshCommands);
  app_.SetSay([this](const std::string& text) { Say(NameToQString(text)); });
  connect(docks_, &CToolDocks::Changed, this, &CMainFrame::RefreshCommands);
  docks_->InstallKeys(view_keys);
  connect(docks_, &CToolDocks::CommandWanted, this, [this](const char* name) { Run(*FindCommand(name)); });
  const auto pop_up = [this](EGroupKind kind, const QPoint& at) {
    Refresh();  // what is current may have become so just now
    actions_->PopUp(ItemMenu(kind), at);
  };
  connect(docks_, &CToolDocks::MenuWanted, this, pop_up);
  connect(windows_.get(), &CDocumentWindows::MenuWanted, this, pop_up);
  QMenu* recent = actions_->ListMenu(ECommand::kFileRecent);
  connect(recent, &QMenu::aboutToShow, this, [this, recent] { files_->ListRecentIn(*recent); });
  QMenu* window_list = actions_->ListMenu(ECommand::kWindowList);
  connect(window_list, &QMenu::aboutToShow, this, [this, window_list] { windows_->ListIn(*window_list); });
}

void CMainFrame::WatchFiles() {
  const auto show = [this](const CFileDocument& document) {
    windows_->Activate(document);
    tools_->Activate(document);
  };
  const auto others = [this] {
    std::vector<std::string> files = textures_.Files();
    const std::vector<std::string> pictures = edits_.Files();
    files.insert(files.end(), pictures.begin(), pictures.end());
    return files;
  };
  watch_ = new CFileWatch({.documents = [this] { return Documents(); },
                           .show = show,
                           .others = others,
                           .look_at_others = [this] { ShowChangedFiles(); }},
                          this);
  connect(windows_.get(), &CDocumentWindows::DocumentsChanged, watch_, &CFileWatch::Follow);
  connect(tools_.get(), &CToolCommands::FilesChanged, watch_, &CFileWatch::Follow);
  connect(tools_.get(), &CToolCommands::FindingWanted, this,
          [this](const SPodSource& file, const SFinding& finding) { files_->ShowFinding(file, finding); });
  app_.Textures().SetOnChanged([this] { files_->ShowTexturesAnew(); });
}

/// What a picture program has saved, then what other programs have done to textures.
void CMainFrame::ShowChangedFiles() {
  std::vector<std::string> changed = edits_.TakeNews();
  const std::vector<std::string> others = textures_.TakeNews();
  changed.insert(changed.end(), others.begin(), others.end());
  QStringList names;
  for (const std::string& name : changed)
    names += NameToQString(name);
  names.removeDuplicates();
  if (!names.isEmpty()) Say(tr("Changed on the disk, and shown anew: %1").arg(names.join(", ")));
}

void CMainFrame::MakeStatusBar() {
  const SCommandRow& show_all = CommandRow(ECommand::kSelectShowAll);
  hidden_->setObjectName("hiddenFaces");
  hidden_->setFocusPolicy(Qt::NoFocus);
  hidden_->hide();
  connect(hidden_, &QPushButton::clicked, this, [this, &show_all] { Run(show_all); });
  statusBar()->addPermanentWidget(hidden_);
  counts_->setObjectName("modelCounts");
  selected_->setObjectName("selectedCounts");
  for (QLabel* label : {selected_, counts_}) {
    label->setContentsMargins(8, 0, 8, 0);
    statusBar()->addPermanentWidget(label);
  }
}

QList<CFileDocument*> CMainFrame::Documents() const {
  QList<CFileDocument*> documents = tools_->Documents();
  for (CTarnDoc* document : windows_->Documents())
    documents.append(document);
  return documents;
}

// --- Commands ------------------------------------------------------------------------------------------------------

SCommandTarget CMainFrame::CommandTarget() {
  return {.app = app_,
          .window = *this,
          .windows = *windows_,
          .files = *files_,
          .tools = *tools_,
          .docks = *docks_,
          .dialogs = dialogs_,
          .edits = edits_,
          .watch = *watch_,
          .view = ActiveView(),
          .document = ActiveDocument()};
}

/// Whatever it comes from: a menu, the tool bar, a key, a tool window. What its rule says now counts, not what a menu
/// has shown before.
void CMainFrame::Run(const SCommandRow& row) {
  const SCommandTarget target = CommandTarget();
  NoteForCrash(row.name);
  try {
    // What the command changes is one step of the document, whatever else it opens meanwhile.
    std::optional<CStep> step;
    if (target.document != nullptr) step.emplace(*target.document, CommandName(row));
    if (row.run != nullptr && IsEnabled(row, target)) row.run(target);
  } catch (const std::bad_alloc&) {
    TellOutOfMemory();
  }
  GiveKeysToView();
  RefreshCommands();
}

/// Telling may take more memory than there is.
void CMainFrame::TellOutOfMemory() try {
  if (std::exchange(is_out_of_memory_, true)) return;
  app_.Recovery().SaveAll();
  app_.Questions().Message(
      {.text = "There is not enough memory for this.",
       .caption = kErrorCaption,
       .icon = EIcon::kError,
       .details = "What was begun has been given up. Unsaved work has been copied as far as that could be."});
  is_out_of_memory_ = false;
} catch (const std::bad_alloc&) {
  is_out_of_memory_ = false;
}

void CMainFrame::RunKey(const SCommandRow& row) {
  if (!IsEnabled(row, CommandTarget()) && *row.needs != '\0') Say(QString::fromUtf8(row.needs));
  Run(row);
}

/// The shortcut of a command that is enabled does not get here.
void CMainFrame::keyPressEvent(QKeyEvent* event) {
  const SCommandRow* row = keys_.FindInWindow(*event);
  row != nullptr ? RunKey(*row) : QMainWindow::keyPressEvent(event);
}

/// After a command that was chosen in a tool window the keys are the view's again.
void CMainFrame::GiveKeysToView() {
  if (CTarnView* view = ActiveView(); view != nullptr && docks_->HasFocus()) view->setFocus();
}

/// The settings hold other ones.
void CMainFrame::TakeKeys() {
  keys_ = CCommandKeys(app_.Settings().keys);
  actions_->RefreshKeys(CommandTarget());
  CWindowKeys::RefreshAll();
}

// --- State ---------------------------------------------------------------------------------------------------------

void CMainFrame::RefreshCommands() {
  if (refresh_is_due_) return;
  refresh_is_due_ = true;
  QMetaObject::invokeMethod(
      this, [this] { Refresh(); }, Qt::QueuedConnection);
}

/// A key may come before what the last one did is seen in the menus, and would find its command disabled.
bool CMainFrame::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && refresh_is_due_) Refresh();
  return QMainWindow::event(event);
}

void CMainFrame::Refresh() {
  refresh_is_due_ = false;
  docks_->Follow(ActiveView());
  NoteDocuments();
  if (std::exchange(watched_textures_, app_.Textures().Count()) != watched_textures_) watch_->Follow();
  const bool is_empty = Children().isEmpty();
  if (is_empty && had_windows_) ShowWelcome();
  had_windows_ = !is_empty;
  actions_->Refresh(CommandTarget());
  RefreshStatus();
}

/// For a report of a crash.
void CMainFrame::NoteDocuments() {
  std::vector<std::string> titles;
  for (const CFileDocument* document : Documents()) {
    const std::string& path = document->Path();
    titles.push_back((path.empty() ? document->Title() : path) + (document->IsModified() ? " (changed)" : ""));
  }
  NoteOpenForCrash(titles);
}

/// As long as it is so: nobody is to take them for lost.
void CMainFrame::RefreshHidden() {
  const int32_t count = ActiveView() == nullptr ? 0 : ActiveView()->Cursor().HiddenCount();
  hidden_->setVisible(count > 0);
  const std::string faces = Counted(count, "face is", "faces are");
  hidden_->setText(tr("%1 hidden: Show All").arg(ToQString(faces)));
  const std::string keys = ShownKeys(keys_.KeysOf(CommandRow(ECommand::kSelectShowAll)));
  hidden_->setToolTip(
      keys.empty() ? tr("They are saved like all others. A click shows them again.")
                   : tr("They are saved like all others. A click, or %1, shows them again.").arg(ToQString(keys)));
}

void CMainFrame::RefreshStatus() {
  RefreshHidden();
  const CTarnDoc* document = ActiveDocument();
  if (document == nullptr) {
    counts_->clear();
    selected_->clear();
    return;
  }
  const CBinModel& model = document->Model();
  const CEditCursor& cursor = ActiveView()->Cursor();
  const std::string all = Counted(model.VertexCount(), "vertex", "vertices") + ", " +
                          Counted(model.FaceCount(), "face", "faces") + ", " +
                          Counted(model.TextureCount(), "texture", "textures");
  const std::string selected = Counted(cursor.SelectedCount(EGroupKind::kFaces), "face", "faces") + ", " +
                               Counted(cursor.SelectedCount(EGroupKind::kVertices), "vertex", "vertices") + " selected";
  counts_->setText(ToQString(all));
  selected_->setText(ToQString(selected));
}

void CMainFrame::Say(const QString& text) {
  statusBar()->showMessage(text, kMessageMs);
}

void CMainFrame::ReadWindowState() {
  RestoreWindowPlace(*this, app_.Settings());
  const QSettings kept = WindowSettings();
  docks_->Restore(kept);
  MaximizeAsBefore(*this, app_.Settings());
  std::vector<std::string> paths;
  for (const QString& path : kept.value(kRecentFilesKey).toStringList())
    paths.push_back(path.toStdString());
  app_.RecentFiles().Set(std::move(paths));
  app_.RecentFiles().SetOnChange([this] { WriteRecentFiles(); });
}

void CMainFrame::ShowWelcome() {
  if (!Children().isEmpty()) return;
  if (welcome_ == nullptr) {
    welcome_ = new CWelcomePage;
    connect(welcome_, &CWelcomePage::CommandWanted, this, [this](const char* name) { Run(*FindCommand(name)); });
    connect(welcome_, &CWelcomePage::FileWanted, this, [this](const std::string& path) { OpenFile(path); });
    area_->SetWelcome(welcome_);
  }
  std::vector<std::pair<std::string, std::string>> files;
  for (const std::string& path : app_.RecentFiles().Paths())
    files.emplace_back(path, app_.RecentPictures().FileOf(path));
  welcome_->SetRecent(files);
}

void CMainFrame::WriteRecentFiles() {
  QSettings kept = WindowSettings();
  QStringList paths;
  for (const std::string& path : app_.RecentFiles().Paths())
    paths.append(ToQString(path));
  kept.setValue(kRecentFilesKey, paths);
  kept.sync();
  ListRecentInTaskbar(app_.RecentFiles().Paths());
}

void CMainFrame::WriteWindowState() {
  windows_->RememberState();
  RememberWindowPlace(*this, app_.Settings());
  QSettings kept = WindowSettings();
  docks_->Keep(kept);
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  if (!MayCloseModels() || !tools_->CloseWindows()) {
    event->ignore();
    return;
  }
  for (CTarnDoc* document : windows_->Documents())
    app_.LetGo(*document);
  WriteWindowState();
  event->accept();
}

bool CMainFrame::MayCloseAll() {
  return MayCloseModels() && tools_->MayCloseDocuments();
}

bool CMainFrame::MayCloseModels() {
  for (CTarnDoc* document : windows_->Documents()) {
    if (!document->IsModified()) continue;
    windows_->Activate(*document);
    if (!app_.MayClose(*document)) return false;
  }
  return true;
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event) {
  const QMimeData& dragged = *event->mimeData();
  const bool can_import = ActiveView() != nullptr && CanDefineAnimation(ActiveView()->Cursor());
  if (!FilesToOpen(dragged).isEmpty() || (can_import && HasPicture(dragged))) event->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  const QStringList files = FilesToOpen(*event->mimeData());
  const std::vector<SOpenPicture> pictures = files.isEmpty() && ActiveDocument() != nullptr
                                                 ? PicturesIn(*event->mimeData(), *ActiveDocument())
                                                 : std::vector<SOpenPicture>();
  // Opening may ask; the program that the files came from must not wait for the answers.
  QMetaObject::invokeMethod(
      this,
      [this, files, pictures] {
        for (const QString& file : files)
          OpenFile(ToNativePath(file));
        for (const SOpenPicture& picture : pictures)
          if (ActiveDocument() != nullptr) AskAndImport(*ActiveDocument(), picture, this);
      },
      Qt::QueuedConnection);
}

}  // namespace veldra
