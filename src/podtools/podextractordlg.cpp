#include "podtools/podextractordlg.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLocale>
#include <QMimeData>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>

#include "archive/podextract.h"
#include "packing/dependencies.h"
#include "platform/paths.h"
#include "platform/unattendedquestions.h"
#include "ui/qstrings.h"
#include "ui/scrolled.h"

namespace veldra {

namespace {

constexpr QSize kUsualExtractorSize(860, 560);
constexpr int kListShare = 3;
constexpr int kPreviewShare = 2;

QString PodFileIn(const QMimeData& data) {
  for (const QUrl& url : data.urls())
    if (url.isLocalFile() && url.fileName().endsWith(".pod", Qt::CaseInsensitive))
      return QDir::toNativeSeparators(url.toLocalFile());
  return {};
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
    : QDialog(parent, kToolWindow), services_(services) {
  setObjectName("podExtractor");
  setWindowTitle(tr("POD Extractor"));
  setAcceptDrops(true);
  auto* load = new QPushButton(tr("&Load..."));
  load->setObjectName("load");
  load->setAutoDefault(false);
  archive_text_ = new QLabel(tr("No archive is loaded."));
  archive_text_->setTextFormat(Qt::PlainText);
  auto* top = new QHBoxLayout;
  top->addWidget(load);
  top->addWidget(archive_text_, 1);

  preview_ = new CPodPreview(services_.settings);
  auto* middle = new QSplitter;
  middle->addWidget(MakeList());
  middle->addWidget(preview_);
  middle->setStretchFactor(0, kListShare);
  middle->setStretchFactor(1, kPreviewShare);
  middle->setChildrenCollapsible(false);

  auto* content = new QWidget;
  auto* above = new QVBoxLayout(content);
  above->setContentsMargins({});
  above->addLayout(top);
  above->addWidget(middle, 1);
  above->addWidget(MakeDestination());
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new CScrolled(content, kAroundButtons), 1);
  layout->addWidget(MakeButtons());
  connect(load, &QPushButton::clicked, this, &CPodExtractorDialog::AskAndLoad);
  resize(kUsualExtractorSize);
  place_.emplace(*this, services_.settings.extractor_dialog);
  OnSelectionChanged();
}

CPodExtractorDialog::~CPodExtractorDialog() {
  entries_->SetArchive(nullptr);
}

QWidget* CPodExtractorDialog::MakeList() {
  CSettings& settings = services_.settings;
  entries_ = new CPodListModel(this);
  entries_->SetExporter([this](const std::vector<size_t>& entries) { return ExportForDrag(entries); });
  filter_ = new CPodListFilter(this);
  filter_->setSourceModel(entries_);
  search_ = new QLineEdit;
  search_->setObjectName("search");
  search_->setPlaceholderText(tr("Search files and folders"));
  search_->setClearButtonEnabled(true);
  list_ = new QTreeView;
  list_->setObjectName("entries");
  list_->setModel(filter_);
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setDragEnabled(true);
  list_->setDragDropMode(QAbstractItemView::DragOnly);
  // No column: the archive's own order until the user wants another.
  list_->header()->setSortIndicator(-1, Qt::AscendingOrder);
  list_->setSortingEnabled(true);
  list_->header()->setStretchLastSection(false);
  KeepColumnWidths(*list_->header(), {&settings.extractor_name_width, &settings.extractor_folder_width,
                                      &settings.extractor_size_width, &settings.extractor_date_width});
  connect(search_, &QLineEdit::textChanged, filter_, &CPodListFilter::Search);
  connect(search_, &QLineEdit::textChanged, this, &CPodExtractorDialog::Refresh);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &CPodExtractorDialog::OnSelectionChanged);
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins({});
  layout->addWidget(search_);
  layout->addWidget(list_, 1);
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
  extract_->setDefault(true);
  auto* close = new QPushButton(tr("Close"));
  close->setObjectName("close");
  for (QPushButton* button : {all, close})
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
  CPodDocument loaded;
  SError error;
  if (!loaded.Load(path, &error)) {
    services_.questions.Message(
        {.text = kFailedToLoadPod, .caption = kErrorCaption, .icon = EIcon::kError, .details = error.what});
    return false;
  }
  entries_->SetArchive(nullptr);
  archive_ = std::move(loaded);
  entries_->SetArchive(&archive_);
  setWindowTitle(tr("POD Extractor - %1").arg(NameToQString(FileNamePart(path))));
  const QString comment = NameToQString(archive_.Comment());
  archive_text_->setText(comment.isEmpty() ? NameToQString(path) : NameToQString(path) + "   \"" + comment + '"');
  list_->setFocus();
  OnSelectionChanged();
  return true;
}

void CPodExtractorDialog::AskAndLoad() {
  SFilePrompt prompt = PodFilePrompt("Load POD File", services_.settings);
  if (!archive_.Path().empty()) prompt.directory = DirectoryPart(archive_.Path());
  const auto path = services_.questions.AskOpenFile(prompt);
  if (path) LoadArchive(*path);
}

std::vector<size_t> CPodExtractorDialog::Selected() const {
  return filter_->Entries(list_->selectionModel()->selectedRows());
}

void CPodExtractorDialog::TakeDefaultColors() {
  preview_->ReadDefaultColors();
  OnSelectionChanged();
}

void CPodExtractorDialog::OnSelectionChanged() {
  const QModelIndex current = list_->currentIndex();
  const auto selected = list_->selectionModel()->selectedRows();
  if (archive_.Path().empty()) {
    preview_->ShowNothing(tr("Load an archive, or drop one here."));
  } else if (selected.isEmpty()) {
    preview_->ShowNothing(tr("Select a file to see what is in it."));
  } else {
    const QModelIndex shown = selected.size() == 1 || !current.isValid() ? selected.first() : current;
    preview_->ShowEntry(archive_, filter_->Entries({shown}).front());
  }
  Refresh();
}

void CPodExtractorDialog::Refresh() {
  const auto selected = Selected();
  uint64_t bytes = 0;
  for (const size_t entry : selected)
    bytes += archive_.Entries()[entry].length;
  extract_->setEnabled(!selected.empty());
  status_->setText(archive_.Path().empty() ? QString()
                                           : tr("%1 of %2 files selected, %3 bytes")
                                                 .arg(QLocale().toString(static_cast<qulonglong>(selected.size())))
                                                 .arg(QLocale().toString(filter_->rowCount()))
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
                          .entries = Selected(),
                          .add_dependencies = {}};
  std::vector<std::string> missing;
  if (services_.settings.extract_deps != 0) {
    request.add_dependencies = [&](std::vector<size_t>& entries) {
      const SSearchPlaces places = PlacesBeside(archive_.Path(), services_.settings, services_.game_folder);
      missing = AddOwnDependencies(archive_, places, services_.stock, entries);
    };
  }
  const SExtractResult result = ExtractPod(services_.questions, archive_, request);
  entries_->RefreshMarks();
  if (!result.started) return;
  std::string details;
  for (const std::string& line : missing)
    details += (details.empty() ? "" : "\n") + line;
  services_.questions.Message({.text = result.Text(), .details = details});
  status_->setText(ToQString(result.Text()));
}

/// The files of a drag stay until the next one or the window's end: who takes them may copy them later.
QStringList CPodExtractorDialog::ExportForDrag(const std::vector<size_t>& entries) {
  drag_folder_ = std::make_unique<QTemporaryDir>();
  if (!drag_folder_->isValid()) return {};
  // Another reader of the same archive: a drag does not count as extraction.
  CPodDocument source;
  if (!source.Load(archive_.Path())) return {};
  CUnattendedQuestions nobody;
  const SExtractRequest request{
      .destination = drag_folder_->path().toStdString(), .folders = false, .entries = entries, .add_dependencies = {}};
  ExtractPod(nobody, source, request);
  QStringList files;
  for (const QString& name : QDir(drag_folder_->path()).entryList(QDir::Files))
    files.append(drag_folder_->filePath(name));
  return files;
}

void CPodExtractorDialog::dragEnterEvent(QDragEnterEvent* event) {
  if (!PodFileIn(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void CPodExtractorDialog::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  const std::string path = PodFileIn(*event->mimeData()).toStdString();
  // Loading may show a message; the program that the file came from must not wait for its end.
  QMetaObject::invokeMethod(
      this, [this, path] { LoadArchive(path); }, Qt::QueuedConnection);
}

}  // namespace veldra
