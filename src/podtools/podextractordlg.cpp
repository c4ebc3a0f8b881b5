#include "podtools/podextractordlg.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLocale>
#include <QMenuBar>
#include <QMimeData>
#include <QShortcut>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>

#include "archive/filetypes.h"
#include "archive/podextract.h"
#include "packing/dependencies.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/unattendedquestions.h"
#include "podtools/podcomparedlg.h"
#include "podtools/podviewerdlg.h"
#include "ui/qstrings.h"
#include "ui/scrolled.h"

namespace veldra {

namespace {

constexpr QSize kUsualExtractorSize(860, 560);
constexpr int kListShare = 3;
constexpr int kPreviewShare = 2;
const QList<int> kListAndProblems = {300, 100};

std::vector<std::string> LocalFilesIn(const QMimeData& data) {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile()) paths.push_back(ToNativePath(url.toLocalFile()));
  return paths;
}

bool IsArchiveName(const std::string& path) {
  return EqualNoCase(ExtensionPart(path), "POD");
}

}  // namespace

SFilePrompt PodFilePrompt(const std::string& title, const CSettings& settings) {
  return {.title = title,
          .filters = {{"Pod *.pod", "*.pod"}, {"All Files *.*", "*.*"}},
          .directory = settings.pod_dir,
          .name = {},
          .default_extension = "pod"};
}

CPodExtractorDialog::CPodExtractorDialog(const SToolServices& services, QWidget* parent)
    : QDialog(parent, kToolWindow), services_(services), document_(services.questions, services.settings) {
  setObjectName("podExtractor");
  setAcceptDrops(true);
  preview_ = new CPodPreview(services_.settings);
  auto* middle = new QSplitter;
  middle->addWidget(MakeList());
  middle->addWidget(preview_);
  middle->setStretchFactor(0, kListShare);
  middle->setStretchFactor(1, kPreviewShare);
  middle->setChildrenCollapsible(false);
  keys_ = new CWindowKeys(PodExtractorKeys(), PodExtractorKeyCommands(), services_.settings, this);
  actions_ = new CPodEditActions(document_, services_, *list_, *keys_, *this);

  auto* content = new QWidget;
  auto* above = new QVBoxLayout(content);
  above->setContentsMargins({});
  above->addLayout(MakeTop());
  above->addWidget(middle, 1);
  above->addWidget(MakeDestination());
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new CScrolled(content, kAroundButtons), 1);
  layout->addWidget(MakeButtons());
  MakeMenus();
  connect(&document_, &CArchiveDocument::Changed, this, &CPodExtractorDialog::OnEntriesChanged);
  connect(&document_, &CArchiveDocument::StateChanged, this, &CPodExtractorDialog::OnStateChanged);
  connect(&document_, &CArchiveDocument::Loaded, this, &CPodExtractorDialog::OnStateChanged);
  connect(actions_, &CPodEditActions::Done, status_, &QLabel::setText);
  resize(kUsualExtractorSize);
  place_.emplace(*this, services_.settings.extractor_dialog);
  OnStateChanged();
  OnSelectionChanged();
}

/// What the document still says on its way is for nobody here.
CPodExtractorDialog::~CPodExtractorDialog() {
  document_.disconnect(this);
  list_->Entries().SetArchive(nullptr);
}

QLayout* CPodExtractorDialog::MakeTop() {
  auto* load = new QPushButton(tr("&Load..."));
  load->setObjectName("load");
  load->setAutoDefault(false);
  connect(load, &QPushButton::clicked, this, &CPodExtractorDialog::AskAndLoad);
  archive_text_ = new QLabel(tr("No archive is loaded."));
  archive_text_->setTextFormat(Qt::PlainText);
  archive_text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* bar = new QToolBar;
  bar->setObjectName("entryBar");
  actions_->FillToolBar(*bar);
  auto* top = new QHBoxLayout;
  top->addWidget(load);
  top->addWidget(bar);
  top->addWidget(archive_text_, 1);
  return top;
}

void CPodExtractorDialog::MakeMenus() {
  auto* bar = new QMenuBar;
  const auto make = [this](const char* key, const char* name) {
    auto* const made = new QAction(this);
    made->setObjectName(name);
    keys_->Bind(*made, key);
    return made;
  };
  QAction* const open_entry = make("open", "openEntry");
  connect(open_entry, &QAction::triggered, this, &CPodExtractorDialog::OpenEntry);
  // Whatever the desktop opens files by, and the Enter key.
  connect(list_, &QTreeView::activated, this, &CPodExtractorDialog::OpenEntry);
  QMenu* const archive = bar->addMenu(tr("&Archive"));
  QAction* const load = make("load", "openArchive");
  connect(load, &QAction::triggered, this, &CPodExtractorDialog::AskAndLoad);
  archive->addAction(load);
  actions_->FillArchiveMenu(*archive);
  archive->addSeparator();
  QAction* const problems = make("problems", "showProblems");
  problems->setCheckable(true);
  connect(problems, &QAction::toggled, problems_, &QWidget::setVisible);
  QAction* const compare = make("compare", "compareArchive");
  connect(compare, &QAction::triggered, this, &CPodExtractorDialog::AskAndCompare);
  QAction* const extract = make("extract", "extractEntries");
  connect(extract, &QAction::triggered, this, &CPodExtractorDialog::Extract);
  QAction* const close_window = make("close", "closeExtractor");
  connect(close_window, &QAction::triggered, this, &QWidget::close);
  archive->addActions({problems, compare});
  archive->addSeparator();
  archive->addAction(extract);
  archive->addSeparator();
  archive->addAction(close_window);
  QMenu* const edit = bar->addMenu(tr("&Edit"));
  edit->addAction(open_entry);
  edit->addSeparator();
  actions_->FillEditMenu(*edit);
  layout()->setMenuBar(bar);
  connect(list_, &QWidget::customContextMenuRequested, this, [this, open_entry](const QPoint& at) {
    QMenu menu;
    menu.addAction(open_entry);
    menu.addSeparator();
    actions_->FillContextMenu(menu);
    menu.exec(list_->viewport()->mapToGlobal(at));
  });
}

QWidget* CPodExtractorDialog::MakeList() {
  list_ = new CPodListView(services_.settings);
  list_->Entries().SetExporter([this](const std::vector<size_t>& entries) { return ExportForDrag(entries); });
  search_ = new QLineEdit;
  search_->setObjectName("search");
  search_->setPlaceholderText(tr("Search files and folders"));
  search_->setClearButtonEnabled(true);
  connect(search_, &QLineEdit::textChanged, &list_->Filter(), &CPodListFilter::Search);
  // On to what was found.
  auto* const down = new QShortcut(Qt::Key_Down, search_);
  down->setContext(Qt::WidgetShortcut);
  connect(down, &QShortcut::activated, list_, [this] {
    list_->setFocus();
    list_->setCurrentIndex(list_->Filter().index(0, 0));
  });
  connect(search_, &QLineEdit::textChanged, this, &CPodExtractorDialog::Refresh);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &CPodExtractorDialog::OnSelectionChanged);
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins({});
  problems_ = new CPodProblemsWidget;
  problems_->hide();
  connect(problems_, &CPodProblemsWidget::EntriesWanted, list_, &CPodListView::Select);
  auto* split = new QSplitter(Qt::Vertical);
  split->addWidget(list_);
  split->addWidget(problems_);
  split->setStretchFactor(0, 1);
  split->setSizes(kListAndProblems);
  split->setChildrenCollapsible(false);
  layout->addWidget(search_);
  layout->addWidget(split, 1);
  return box;
}

QWidget* CPodExtractorDialog::MakeDestination() {
  destination_ = new CPathField(CPathField::EKind::kFolder);
  destination_->setObjectName("destination");
  destination_->SetPrompt(tr("Get Destination Directory"));
  destination_->SetPath(services_.settings.pod_dest_dir);
  auto* label = new QLabel(tr("&Extract to:"));
  label->setBuddy(destination_->Edit());
  folders_ = new QCheckBox(tr("&Recreate the archive's folders"));
  folders_->setObjectName("folders");
  folders_->setChecked(services_.settings.recreate_dir_structure != 0);
  dependencies_ = new QCheckBox(tr("Extract also what the selected files &depend on"));
  dependencies_->setObjectName("dependencies");
  dependencies_->setChecked(services_.settings.extract_deps != 0);
  auto* box = new QWidget;
  auto* path = new QFormLayout;
  path->addRow(label, destination_);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins({});
  layout->addLayout(path);
  layout->addWidget(folders_);
  layout->addWidget(dependencies_);
  return box;
}

QWidget* CPodExtractorDialog::MakeButtons() {
  status_ = new QLabel;
  status_->setObjectName("status");
  auto* all = new QPushButton(tr("Select &All"));
  all->setObjectName("selectAll");
  extract_ = new QPushButton(tr("E&xtract"));
  extract_->setObjectName("extract");
  auto* close = new QPushButton(tr("Close"));
  close->setObjectName("close");
  // The Enter key opens what is selected.
  for (QPushButton* button : {all, extract_, close})
    button->setAutoDefault(false);
  connect(all, &QPushButton::clicked, list_, &QTreeView::selectAll);
  connect(extract_, &QPushButton::clicked, this, &CPodExtractorDialog::Extract);
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  auto* box = new QWidget;
  auto* layout = new QHBoxLayout(box);
  layout->setContentsMargins({});
  layout->addWidget(status_, 1);
  for (QPushButton* button : {all, extract_, close})
    layout->addWidget(button);
  return box;
}

bool CPodExtractorDialog::LoadArchive(const std::string& path) {
  if (!MayLeave() || !document_.Load(path)) return false;
  list_->setFocus();
  return true;
}

void CPodExtractorDialog::OnEntriesChanged() {
  list_->Show(&document_.Archive());
  list_->Select(document_.Changes().Touched());
  problems_->ShowProblemsOf(document_.Archive());
  OnSelectionChanged();
}

void CPodExtractorDialog::AskAndCompare() {
  if (document_.Path().empty()) return;
  SFilePrompt prompt = PodFilePrompt("Compare With", services_.settings);
  prompt.directory = DirectoryPart(document_.Path());
  const auto path = services_.questions.AskOpenFile(prompt);
  if (!path) return;
  const auto take = [this](const std::vector<SPodSource>& sources) {
    return document_.Change([&](CPodChanges& changes) { return changes.Add(services_.questions, sources); });
  };
  CPodCompareDlg dialog(services_, Archive(), take, this);
  if (dialog.CompareWith(*path)) dialog.exec();
}

void CPodExtractorDialog::OnStateChanged() {
  const std::string& path = document_.Path();
  setWindowTitle(path.empty() ? tr("POD Extractor")
                              : tr("POD Extractor - %1[*]").arg(NameToQString(FileNamePart(path))));
  setWindowModified(document_.IsModified());
  const QString comment = NameToQString(Archive().Comment());
  if (!path.empty())
    archive_text_->setText(comment.isEmpty() ? NameToQString(path) : NameToQString(path) + "   \"" + comment + '"');
  Refresh();
}

void CPodExtractorDialog::AskAndLoad() {
  SFilePrompt prompt = PodFilePrompt("Load POD File", services_.settings);
  if (!document_.Path().empty()) prompt.directory = DirectoryPart(document_.Path());
  const auto path = services_.questions.AskOpenFile(prompt);
  if (path) LoadArchive(*path);
}

void CPodExtractorDialog::TakeDefaultColors() {
  preview_->ReadDefaultColors();
  OnSelectionChanged();
}

void CPodExtractorDialog::OnSelectionChanged() {
  const QModelIndex current = list_->currentIndex();
  const auto selected = list_->selectionModel()->selectedRows();
  if (document_.Path().empty()) {
    preview_->ShowNothing(tr("Load an archive, or drop one here."));
  } else if (selected.isEmpty()) {
    preview_->ShowNothing(tr("Select a file to see what is in it."));
  } else {
    const QModelIndex shown = selected.size() == 1 || !current.isValid() ? selected.first() : current;
    preview_->ShowEntry(Archive(), list_->Filter().Entries({shown}).front());
  }
  Refresh();
}

void CPodExtractorDialog::Refresh() {
  const auto selected = list_->Selected();
  uint64_t bytes = 0;
  for (const size_t entry : selected)
    bytes += Archive().Entries()[entry].length;
  extract_->setEnabled(!selected.empty());
  actions_->Refresh();
  status_->setText(document_.Path().empty() ? QString()
                                            : tr("%1 of %2 files selected, %3 bytes")
                                                  .arg(QLocale().toString(static_cast<qulonglong>(selected.size())))
                                                  .arg(QLocale().toString(list_->Filter().rowCount()))
                                                  .arg(QLocale().toString(static_cast<qulonglong>(bytes))));
}

/// Step one of the extraction: what stands in the fields becomes the settings.
void CPodExtractorDialog::TakeFields() {
  services_.settings.pod_dest_dir = destination_->Path();
  services_.settings.recreate_dir_structure = folders_->isChecked() ? 1 : 0;
  services_.settings.extract_deps = dependencies_->isChecked() ? 1 : 0;
}

void CPodExtractorDialog::Extract() {
  TakeFields();
  SExtractRequest request{.destination = NativePath(services_.settings.pod_dest_dir),
                          .folders = services_.settings.recreate_dir_structure != 0,
                          .entries = list_->Selected(),
                          .add_dependencies = {}};
  std::vector<std::string> missing;
  if (services_.settings.extract_deps != 0) {
    request.add_dependencies = [&](std::vector<size_t>& entries) {
      const SSearchPlaces places = PlacesBeside(document_.Path(), services_.settings, services_.game_folder);
      missing = AddOwnDependencies(Archive(), places, services_.stock, entries);
    };
  }
  const SExtractResult result = ExtractPod(services_.questions, document_.Archive(), request);
  list_->Entries().RefreshMarks();
  if (!result.started) return;
  std::string details;
  for (const std::string& line : missing)
    details += (details.empty() ? "" : "\n") + line;
  services_.questions.Message({.text = result.Text(), .details = details});
  status_->setText(ToQString(result.Text()));
}

void CPodExtractorDialog::OpenEntry() {
  const auto selected = list_->Selected();
  if (selected.size() != 1) return;
  const size_t entry = selected.front();
  switch (TypeOfFile(Archive().Entries()[entry].FileName())) {
    case kTypeBin:
    case kTypeTrk:
      return OpenWhereEdited(entry);
    case kTypeWav:
      return Play(entry);
    default:
      break;
  }
  auto* const viewer = new CPodViewerDlg(services_.settings, this);
  viewer->setAttribute(Qt::WA_DeleteOnClose);
  viewer->ShowEntry(Archive(), entry);
}

/// From the file itself, which has to hold what the list shows.
void CPodExtractorDialog::OpenWhereEdited(size_t entry) {
  if (!services_.open_entry) return;
  const SMessage question = {
      .text = Format("\"%s\" is not in the archive on the disk yet.\nSave the archive now, and open it?",
                     DisplayName(Archive().Entries()[entry].FileName()).c_str()),
      .icon = EIcon::kQuestion};
  const bool is_new = Archive().IsChanged(Archive().Entries()[entry]);
  if (is_new && (services_.questions.AskYesNo(question) != EAnswer::kYes || !actions_->Save())) return;
  services_.open_entry(Archive(), entry);
}

void CPodExtractorDialog::Play(size_t entry) {
  SError error;
  const auto bytes = Archive().ReadEntry(entry, &error);
  const std::string copy = ToNativePath(sound_folder_.filePath("sound.wav"));
  if (bytes && ReplaceFile(copy, bytes->View(), &error) && player_.Play(copy, &error)) {
    status_->setText(tr("Playing %1").arg(NameToQString(Archive().Entries()[entry].FileName())));
    return;
  }
  services_.questions.Fail("The sound cannot be played.", error.what);
}

/// The files of a drag stay until the next one or the window's end: who takes them may copy them later.
QStringList CPodExtractorDialog::ExportForDrag(const std::vector<size_t>& entries) {
  drag_folder_ = std::make_unique<QTemporaryDir>();
  if (!drag_folder_->isValid()) return {};
  CUnattendedQuestions nobody;
  // A drag does not count as extraction.
  const SExtractRequest request{
      .destination = drag_folder_->path().toStdString(), .folders = false, .entries = entries, .marks = false};
  ExtractPod(nobody, document_.Archive(), request);
  QStringList files;
  for (const QString& name : QDir(drag_folder_->path()).entryList(QDir::Files))
    files.append(drag_folder_->filePath(name));
  return files;
}

void CPodExtractorDialog::reject() {
  if (!MayLeave()) return;
  document_.LetGo();
  QDialog::reject();
}

/// What comes from this very list is in the archive already.
void CPodExtractorDialog::dragEnterEvent(QDragEnterEvent* event) {
  const bool is_own = event->source() != nullptr && isAncestorOf(qobject_cast<QWidget*>(event->source()));
  if (!is_own && !LocalFilesIn(*event->mimeData()).empty()) event->acceptProposedAction();
}

/// One archive is opened; anything else goes into the one that is open.
void CPodExtractorDialog::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  const auto paths = LocalFilesIn(*event->mimeData());
  const bool opens = paths.size() == 1 && IsArchiveName(paths.front());
  // Either may show a message; the program that the file came from must not wait for its end.
  QMetaObject::invokeMethod(
      this,
      [this, paths, opens] {
        if (opens)
          LoadArchive(paths.front());
        else
          actions_->Add(paths);
      },
      Qt::QueuedConnection);
}

}  // namespace veldra
