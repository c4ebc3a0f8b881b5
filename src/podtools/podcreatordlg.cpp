#include "podtools/podcreatordlg.h"

#include <QDateTime>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLocale>
#include <QMimeData>
#include <QShortcut>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "archive/poddocument.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "ui/faultlabel.h"
#include "ui/notelabel.h"
#include "ui/qstrings.h"
#include "ui/scrolled.h"

namespace veldra {

namespace {

enum EFileColumn { kName, kFolder, kSize, kDate, kFileColumns };
enum ENeededColumn { kNeededName, kNeededBy, kPlace, kNeededColumns };

constexpr QSize kUsualSize(820, 600);
constexpr int kFilesShare = 3;
constexpr int kNeededShare = 2;
constexpr int kNeededNameWidth = 160;

std::vector<std::string> LocalFiles(const QMimeData& data) {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile()) paths.push_back(ToNativePath(url.toLocalFile()));
  return paths;
}

QString PlaceText(const SDependency& needed) {
  switch (needed.place) {
    case SDependency::EPlace::kOwn:
      return QObject::tr("in the list");
    case SDependency::EPlace::kArchive:
    case SDependency::EPlace::kFolder:
      return ToQString(needed.source.bytes.path);
    case SDependency::EPlace::kMissing:
      break;
  }
  return needed.is_stock ? QObject::tr("in every installation") : QObject::tr("not found");
}

bool IsFound(const SDependency& needed) {
  return needed.place == SDependency::EPlace::kArchive || needed.place == SDependency::EPlace::kFolder;
}

QTreeWidget* MakeTree(const char* name, const QStringList& titles) {
  auto* tree = new QTreeWidget;
  tree->setObjectName(name);
  tree->setHeaderLabels(titles);
  tree->setRootIsDecorated(false);
  tree->setUniformRowHeights(true);
  tree->setAllColumnsShowFocus(true);
  tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
  return tree;
}

}  // namespace

CPodCreatorDialog::CPodCreatorDialog(const SToolServices& services, QWidget* parent)
    : QDialog(parent, kToolWindow), services_(services), build_(services.questions, services.stock) {
  setObjectName("podCreator");
  setWindowTitle(tr("POD Creator"));
  setAcceptDrops(true);
  auto* splitter = new QSplitter(Qt::Vertical);
  splitter->addWidget(MakeFiles());
  needed_box_ = MakeNeeded();
  splitter->addWidget(needed_box_);
  splitter->setStretchFactor(0, kFilesShare);
  splitter->setStretchFactor(1, kNeededShare);
  splitter->setChildrenCollapsible(false);

  auto* content = new QWidget;
  auto* above = new QVBoxLayout(content);
  above->setContentsMargins({});
  above->addWidget(splitter, 1);
  above->addWidget(MakeOptions());
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new CScrolled(content, kAroundButtons), 1);
  total_ = new QLabel;
  total_->setObjectName("total");
  create_ = MakeButton("create", tr("&Create..."), &CPodCreatorDialog::Create);
  create_->setDefault(true);
  auto* close = new QPushButton(tr("Close"));
  close->setAutoDefault(false);
  close->setObjectName("close");
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(total_, 1);
  bottom->addWidget(create_);
  bottom->addWidget(close);
  layout->addLayout(bottom);
  resize(kUsualSize);
  place_.emplace(*this, services_.settings.creator_dialog);
  ShowBuild();
}

QPushButton* CPodCreatorDialog::MakeButton(const char* name, const QString& text,
                                           void (CPodCreatorDialog::*pressed)()) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, pressed);
  return button;
}

QWidget* CPodCreatorDialog::MakeFiles() {
  CSettings& settings = services_.settings;
  files_ = MakeTree("files", {tr("Filename"), tr("Folder"), tr("Size"), tr("Date")});
  files_->header()->setStretchLastSection(false);
  KeepColumnWidths(*files_->header(), {&settings.creator_name_width, &settings.creator_folder_width,
                                       &settings.creator_size_width, &settings.creator_date_width});
  connect(files_, &QTreeWidget::itemSelectionChanged, this, &CPodCreatorDialog::Refresh);
  connect(new QShortcut(QKeySequence::Delete, files_), &QShortcut::activated, this, &CPodCreatorDialog::RemoveSelected);
  auto* box = new QWidget;
  auto* layout = new QHBoxLayout(box);
  layout->setContentsMargins({});
  layout->addWidget(files_, 1);
  layout->addWidget(MakeFileButtons());
  return box;
}

QWidget* CPodCreatorDialog::MakeFileButtons() {
  remove_ = MakeButton("remove", tr("&Remove"), &CPodCreatorDialog::RemoveSelected);
  up_ = MakeButton("up", tr("Move &Up"), &CPodCreatorDialog::MoveUp);
  down_ = MakeButton("down", tr("Move &Down"), &CPodCreatorDialog::MoveDown);
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins({});
  layout->addWidget(MakeButton("addFiles", tr("Add &Files..."), &CPodCreatorDialog::AskFiles));
  layout->addWidget(MakeButton("addFolder", tr("Add F&older..."), &CPodCreatorDialog::AskFolder));
  layout->addWidget(MakeButton("insertArchive", tr("&Insert POD..."), &CPodCreatorDialog::AskArchive));
  layout->addSpacing(layout->spacing());
  for (QPushButton* button : {remove_, up_, down_})
    layout->addWidget(button);
  layout->addStretch(1);
  return box;
}

QWidget* CPodCreatorDialog::MakeNeeded() {
  needed_list_ = MakeTree("needed", {tr("Also needed"), tr("By"), tr("Found in")});
  needed_list_->setColumnWidth(kNeededName, kNeededNameWidth);
  needed_list_->setColumnWidth(kNeededBy, kNeededNameWidth);
  add_needed_ = MakeButton("addNeeded", tr("&Add Those Found"), &CPodCreatorDialog::AddNeeded);
  auto* box = new QWidget;
  auto* layout = new QHBoxLayout(box);
  layout->setContentsMargins({});
  layout->addWidget(needed_list_, 1);
  layout->addWidget(add_needed_, 0, Qt::AlignTop);
  return box;
}

QWidget* CPodCreatorDialog::MakeOptions() {
  const auto make = [this](const char* name, const QString& text, int32_t checked) {
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    box->setChecked(checked != 0);
    connect(box, &QCheckBox::toggled, this, [this] {
      TakeOptions();
      ShowBuild();
    });
    return box;
  };
  const CSettings& settings = services_.settings;
  show_needed_ = make("showNeeded", tr("&Show what the files need"), settings.creator_show_deps);
  insert_archives_ = make("insertArchives", tr("Take a&part archives that are added"), settings.creator_insert_pod);
  leave_out_stock_ =
      make("leaveOutStock", tr("&Leave out files that every installation has"), settings.creator_pod_zip);
  auto* comment = new QLabel(tr("Comment: %1").arg(ToQString(PodComment())));
  comment->setObjectName("comment");
  comment->setTextFormat(Qt::PlainText);
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins({});
  layout->addWidget(leave_out_stock_);
  const std::string note = services_.stock.Note();
  if (!note.empty()) layout->addWidget(new CNoteLabel(ToQString(note), *leave_out_stock_));
  layout->addWidget(show_needed_);
  layout->addWidget(insert_archives_);
  layout->addWidget(comment);
  return box;
}

void CPodCreatorDialog::TakeOptions() {
  services_.settings.creator_show_deps = show_needed_->isChecked() ? 1 : 0;
  services_.settings.creator_insert_pod = insert_archives_->isChecked() ? 1 : 0;
  services_.settings.creator_pod_zip = leave_out_stock_->isChecked() ? 1 : 0;
}

void CPodCreatorDialog::ShowBuild() {
  const QLocale locale;
  files_->clear();
  QList<QTreeWidgetItem*> rows;
  for (const CPodBuild::SItem& item : build_.Items()) {
    auto* row = new QTreeWidgetItem;
    row->setText(kName, NameToQString(FileNamePart(item.name)));
    row->setText(kFolder, NameToQString(DirectoryPart(item.name)));
    row->setText(kSize, locale.toString(static_cast<qulonglong>(item.length)));
    row->setTextAlignment(kSize, Qt::AlignRight | Qt::AlignVCenter);
    const QFileInfo file(ToQString(item.source.bytes.path));
    row->setText(kDate, ToQString(PodDateText(file.lastModified().toSecsSinceEpoch())));
    row->setToolTip(kName, ToolTipText(NameToQString(item.source.bytes.path)));
    if (item.is_stock && LeavesOutStock()) {
      for (int column = 0; column < kFileColumns; ++column)
        row->setForeground(column, palette().color(QPalette::Disabled, QPalette::Text));
      row->setToolTip(kName, tr("Left out: every installation of the game has this file."));
    }
    rows.append(row);
  }
  files_->addTopLevelItems(rows);
  ShowNeeded();
  Refresh();
}

void CPodCreatorDialog::ShowNeeded() {
  needed_box_->setVisible(show_needed_->isChecked());
  needed_list_->clear();
  needed_.clear();
  if (!show_needed_->isChecked() || build_.IsEmpty()) return;
  const std::string beside = build_.Items().front().source.bytes.path;
  needed_ = build_.Missing(PlacesBeside(beside, services_.settings, services_.game_folder));
  for (const SDependency& needed : needed_) {
    auto* row = new QTreeWidgetItem(needed_list_);
    row->setText(kNeededName, NameToQString(needed.name));
    row->setText(kNeededBy, NameToQString(needed.needed_by));
    row->setText(kPlace, PlaceText(needed));
    row->setToolTip(kPlace, row->text(kPlace));
    if (needed.is_stock) {
      for (int column = 0; column < kNeededColumns; ++column)
        row->setForeground(column, palette().color(QPalette::Disabled, QPalette::Text));
    } else if (!IsFound(needed)) {
      row->setForeground(kPlace, FaultColor(palette()));
    }
  }
}

void CPodCreatorDialog::Refresh() {
  const auto selected = Selected();
  remove_->setEnabled(!selected.empty());
  up_->setEnabled(!selected.empty() && selected.front() > 0);
  down_->setEnabled(!selected.empty() && selected.back() + 1 < build_.Items().size());
  add_needed_->setEnabled(std::any_of(needed_.begin(), needed_.end(), IsFound));
  const size_t count = build_.Sources(LeavesOutStock()).size();
  create_->setEnabled(count > 0);
  const uint64_t length = build_.TotalLength(LeavesOutStock());
  const QLocale locale;
  total_->setText(build_.IsEmpty() ? tr("Add files, or drop files and folders here.")
                                   : tr("%1 files, %2 bytes in all")
                                         .arg(locale.toString(static_cast<qulonglong>(count)))
                                         .arg(locale.toString(static_cast<qulonglong>(length))));
}

void CPodCreatorDialog::Add(const std::vector<std::string>& paths) {
  if (build_.AddAny(paths, insert_archives_->isChecked()) > 0) is_written_ = false;
  ShowBuild();
}

void CPodCreatorDialog::AskFiles() {
  const auto files = services_.questions.AskOpenFiles({.title = "Add Files",
                                                       .filters = {{"All Files *.*", "*.*"}},
                                                       .directory = services_.settings.pod_dir,
                                                       .name = {},
                                                       .default_extension = {}});
  if (files) Add(files->paths);
}

void CPodCreatorDialog::AskFolder() {
  const auto folder = services_.questions.AskFolder("Add Folder", services_.settings.pod_dir);
  if (folder) Add({*folder});
}

void CPodCreatorDialog::AskArchive() {
  const auto path = services_.questions.AskOpenFile(PodFilePrompt("Load POD File", services_.settings));
  if (!path) return;
  if (build_.AddArchive(*path) > 0) is_written_ = false;
  ShowBuild();
}

void CPodCreatorDialog::AddNeeded() {
  std::vector<SPodSource> found;
  for (const SDependency& needed : needed_)
    if (IsFound(needed) && !(needed.is_stock && LeavesOutStock())) found.push_back(needed.source);
  if (build_.AddSources(found) > 0) is_written_ = false;
  ShowBuild();
}

std::vector<size_t> CPodCreatorDialog::Selected() const {
  std::vector<size_t> positions;
  for (const QModelIndex& index : files_->selectionModel()->selectedRows())
    positions.push_back(static_cast<size_t>(index.row()));
  std::sort(positions.begin(), positions.end());
  return positions;
}

void CPodCreatorDialog::Select(const std::vector<size_t>& positions) {
  for (const size_t position : positions)
    files_->topLevelItem(static_cast<int>(position))->setSelected(true);
}

void CPodCreatorDialog::RemoveSelected() {
  build_.Remove(Selected());
  is_written_ = build_.IsEmpty();
  ShowBuild();
}

void CPodCreatorDialog::MoveSelected(int by) {
  auto selected = Selected();
  if (!build_.Move(selected, by)) return;
  is_written_ = false;
  ShowBuild();
  for (size_t& position : selected)
    position = by < 0 ? position - 1 : position + 1;
  Select(selected);
}

void CPodCreatorDialog::Create() {
  const auto path = services_.questions.AskSaveFile(PodFilePrompt("Create POD File", services_.settings));
  if (!path) return;
  const auto sources = build_.Sources(LeavesOutStock());
  if (!CreatePod(services_.questions, path->path, sources)) return;
  is_written_ = true;
  const SMessage written{
      .text = Format("The archive with %zu files has been written.\nOpen it in the POD Extractor?", sources.size()),
      .icon = EIcon::kQuestion,
      .details = path->path};
  if (services_.show_archive && services_.questions.AskYesNo(written) == EAnswer::kYes)
    services_.show_archive(path->path);
}

/// Every way out comes here: the button, Esc, the window's own close.
void CPodCreatorDialog::reject() {
  const SMessage question{.text = "The archive has not been written.\nClose the POD Creator all the same?",
                          .icon = EIcon::kQuestion,
                          .usual = EAnswer::kNo};
  if (is_written_ || services_.questions.AskYesNo(question) == EAnswer::kYes) QDialog::reject();
}

void CPodCreatorDialog::dragEnterEvent(QDragEnterEvent* event) {
  if (!LocalFiles(*event->mimeData()).empty()) event->acceptProposedAction();
}

void CPodCreatorDialog::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  const auto paths = LocalFiles(*event->mimeData());
  // Adding may show a message; the program that the files came from must not wait for its end.
  QMetaObject::invokeMethod(
      this, [this, paths] { Add(paths); }, Qt::QueuedConnection);
}

}  // namespace veldra
