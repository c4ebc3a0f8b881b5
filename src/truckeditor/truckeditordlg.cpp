#include "truckeditor/truckeditordlg.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>

#include "document/earlierstates.h"
#include "document/earlierstatesdlg.h"
#include "document/filenews.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "truckeditor/newtruckwizard.h"
#include "truckeditor/truck3dpage.h"
#include "truckeditor/truckcheckpage.h"
#include "truckeditor/truckeditorkeys.h"
#include "truckeditor/trucklightspage.h"
#include "truckeditor/trucknamespage.h"
#include "truckeditor/truckpackdlg.h"
#include "truckeditor/truckpositionspage.h"
#include "truckeditor/truckprompt.h"
#include "truckeditor/trucksoundspage.h"
#include "ui/commandicons.h"
#include "ui/dialogplace.h"
#include "ui/qstrings.h"
#include "ui/scrolled.h"

namespace veldra {

namespace {

constexpr QSize kUsualSize(900, 640);
constexpr int kMessageMs = 6000;

/// The first local truck file among what is dragged; "" for none.
std::string DraggedTruck(const QMimeData& data) {
  for (const QUrl& url : data.urls()) {
    const std::string path = ToNativePath(url.toLocalFile());
    if (EqualNoCase(ExtensionPart(path), "TRK")) return path;
  }
  return {};
}

}  // namespace

CTruckEditorDlg::CTruckEditorDlg(const SToolServices& services, CEarlierStates* states, QWidget* parent)
    : QMainWindow(parent, kToolWindow),
      services_(services),
      states_(states),
      document_(services.questions, services.settings, states),
      context_{document_, services.questions, services.settings},
      pages_(new QTabWidget),
      path_(new QLabel) {
  setObjectName("truckEditor");
  setAcceptDrops(true);
  resize(kUsualSize);
  path_->setObjectName("truckPath");
  // A label, since a message would be gone for good after the first menu that is looked at. It may be cut off.
  path_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  statusBar()->addWidget(path_, 1);
  connect(&document_, &CTruckDocument::FileChanged, this, &CTruckEditorDlg::OnFileChanged);
  connect(&document_, &CTruckDocument::Changed, this, &CTruckEditorDlg::OnChanged);
  keys_ = new CWindowKeys(TruckEditorKeys(), TruckEditorKeyCommands(), services_.settings, this);
  // The pages show where files are as soon as they are made.
  OnFileChanged();
  MakeActions();
  MakePages();
  setCentralWidget(pages_);
  OnChanged();
  new CDialogPlace(*this, services_.settings.truck_dialog);
}

CTruckEditorDlg::~CTruckEditorDlg() {
  // The pages look at what would go before them.
  delete takeCentralWidget();
}

QAction* CTruckEditorDlg::MakeAction(const char* name, std::function<void()> action) {
  auto* const made = new QAction(CommandIcon(name), {}, this);
  made->setObjectName(QString(name) + "Truck");
  keys_->Bind(*made, name);
  connect(made, &QAction::triggered, this, [action = std::move(action)] { action(); });
  return made;
}

void CTruckEditorDlg::MakeActions() {
  QMenu* const file = menuBar()->addMenu(tr("&File"));
  const QList<QAction*> opening = {MakeAction("new", [this] { New(); }), MakeAction("open", [this] { Open(); })};
  const QList<QAction*> saving = {MakeAction("save", [this] { Save(); }), MakeAction("saveAs", [this] { SaveAs(); })};
  QAction* const pack = MakeAction("pack", [this] { PackTruck(); });
  reload_ = MakeAction("reload", [this] { Reload(); });
  QAction* const earlier = MakeAction("earlierStates", [this] { EarlierStates(); });
  earlier->setEnabled(states_ != nullptr);
  file->addActions(opening + saving);
  file->insertAction(opening.last(), MakeAction("newByWizard", [this] { NewByWizard(); }));
  file->addActions({reload_, earlier});
  file->addSeparator();
  pack_again_ = MakeAction("packAgain", [this] { PackAgain(); });
  pack_and_start_ = MakeAction("packAndStart", [this] { PackAndStart(); });
  file->addActions({pack, pack_again_, pack_and_start_});
  file->addSeparator();
  file->addAction(MakeAction("close", [this] { close(); }));

  QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
  undo_ = MakeAction("undo", [this] { document_.Undo(); });
  redo_ = MakeAction("redo", [this] { document_.Redo(); });
  edit->addActions({undo_, redo_});

  view_menu_ = menuBar()->addMenu(tr("&View"));
  QAction* const refresh = MakeAction("refresh", [this] { RefreshFiles(); });
  view_menu_->addAction(refresh);
  view_menu_->addSeparator();
  MakeToolBar({opening + saving, {undo_, redo_}, {pack, refresh}});
}

void CTruckEditorDlg::MakeToolBar(const QList<QList<QAction*>>& groups) {
  auto* bar = addToolBar(tr("Truck"));
  bar->setObjectName("truckBar");
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  for (const QList<QAction*>& group : groups) {
    if (&group != &groups.first()) bar->addSeparator();
    bar->addActions(group);
  }
}

/// Also leads to it from the menu and by its key.
void CTruckEditorDlg::AddPage(QWidget* page, const char* name) {
  const int index = pages_->count();
  QAction* const show = MakeAction(name, [this, index] { pages_->setCurrentIndex(index); });
  pages_->addTab(page, show->text());
  view_menu_->addAction(show);
}

void CTruckEditorDlg::MakePages() {
  pages_->setObjectName("pages");
  AddPage(new CScrolled(new CTruckNamesPage(context_)), "names");
  AddPage(new CScrolled(new CTruckPositionsPage(context_)), "positions");
  AddPage(new CScrolled(new CTruckScrapePage(context_)), "scrapePoints");
  lights_ = new CTruckLightsPage(context_);
  AddPage(new CScrolled(lights_), "lights");
  AddPage(new CScrolled(new CTruckSoundsPage(context_)), "sounds");
  view_ = new CTruck3dPage(context_);
  AddPage(view_, "view3d");
  check_ = new CTruckCheckPage(context_);
  AddPage(check_, "check");
  connect(check_, &CTruckCheckPage::FieldWanted, this, &CTruckEditorDlg::GoTo);
  connect(check_, &CTruckCheckPage::FindingWanted, this, &CTruckEditorDlg::FindingWanted);
  document_.SetPictureMaker([this] { return view_->View().SmallPicture(); });
  // The light that is worked on is the same on both pages.
  connect(&view_->View(), &CTruckView::SelectedChanged, this, [this] {
    const auto& selected = view_->View().Selected();
    if (selected && selected->kind == ETruckPoint::kLight) lights_->Select(selected->index);
  });
}

void CTruckEditorDlg::GoTo(const STruckNameField& field) {
  if (field.light >= 0) lights_->Select(field.light);
  auto* const line = findChild<QLineEdit*>(field.name);
  for (int page = 0; line != nullptr && page < pages_->count(); ++page)
    if (pages_->widget(page)->isAncestorOf(line)) pages_->setCurrentIndex(page);
  if (line == nullptr) return;
  line->setFocus();
  line->selectAll();
}

/// The places to look in depend on where the truck is.
void CTruckEditorDlg::OnFileChanged() {
  packed_ = ReadPackMemory(document_.Path());
  const std::string& path = document_.Path();
  const SArchivePlace* const archive = document_.ArchivePlace();
  auto places = PlacesForTruck(archive != nullptr ? archive->archive : path, services_.settings, services_.game_folder);
  // What it needs is first of all beside it.
  if (archive != nullptr) places.archives.insert(places.archives.begin(), archive->archive);
  auto files = std::make_unique<CTruckFiles>(path, std::move(places), services_.stock);
  auto textures = std::make_unique<CTruckTextures>(*files, services_.default_colors);
  context_.files = files.get();
  context_.textures = textures.get();
  // The view's model still points into the old textures, and is only drawn again once it has been read again.
  if (view_ != nullptr) view_->View().Reload();
  textures_ = std::move(textures);
  files_ = std::move(files);
  if (check_ != nullptr) check_->Forget();
}

void CTruckEditorDlg::RefreshFiles() {
  OnFileChanged();
  emit document_.Changed();
}

void CTruckEditorDlg::OnChanged() {
  setWindowTitle(tr("%1[*] - Truck Editor").arg(NameToQString(document_.Title())));
  setWindowModified(document_.IsModified());
  path_->setText(NameToQString(document_.Path()));
  if (undo_ == nullptr) return;
  undo_->setEnabled(document_.CanUndo());
  redo_->setEnabled(document_.CanRedo());
  reload_->setEnabled(!document_.Path().empty());
  ShowPackActions();
}

/// The command may be set while this window is open.
void CTruckEditorDlg::ShowPackActions() {
  pack_again_->setEnabled(packed_.has_value());
  pack_again_->setStatusTip(packed_ ? tr("Into %1").arg(NameToQString(packed_->archive)) : QString());
  const bool is_set = services_.CanStartGame();
  pack_and_start_->setEnabled(is_set);
  pack_and_start_->setText(is_set ? tr("Pack and Start &Game")
                                  : tr("Pack and Start &Game (its command is set in File > Preferences, Archives)"));
}

void CTruckEditorDlg::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && pack_and_start_ != nullptr) ShowPackActions();
}

bool CTruckEditorDlg::MayLeave() {
  return document_.MayLeave([this] { return Save(); });
}

void CTruckEditorDlg::New() {
  if (MayLeave()) document_.New();
}

void CTruckEditorDlg::NewByWizard() {
  if (!MayLeave()) return;
  CNewTruckWizard wizard(services_, this);
  if (wizard.exec() != QDialog::Accepted) return;
  document_.New(wizard.Truck());
  if (!wizard.Path().empty()) KeepNew(wizard);
}

bool CTruckEditorDlg::KeepNew(const CNewTruckWizard& wizard) {
  const std::string path = wizard.Path();
  if (!document_.Save(path)) return false;
  size_t copied = 0;
  if (wizard.CopiesFiles()) {
    const STruckPackPlan plan = PlanTruckPack(path, wizard.PlacesFor(path), services_.stock);
    const bool all = CopyNeededFiles(services_.questions, plan, path, copied);
    RefreshFiles();
    if (!all) return false;
  }
  const QString files = ToQString(Counted(static_cast<int64_t>(copied), "file", "files"));
  statusBar()->showMessage(tr("Saved %1, copied %2 to it").arg(NameToQString(document_.Title()), files), kMessageMs);
  return true;
}

void CTruckEditorDlg::Open() {
  const auto path = services_.questions.AskOpenFile(TruckPrompt(tr("Open Truck"), services_, document_.Path(), true));
  if (path) OpenFile(*path);
}

bool CTruckEditorDlg::OpenFile(const std::string& path) {
  return MayLeave() && document_.Load(path);
}

/// Yes: the archive gets it. No: it becomes a file of its own.
bool CTruckEditorDlg::SaveIntoArchive() {
  const SArchivePlace place = *document_.ArchivePlace();
  const std::string name = DisplayFileName(place.entry);
  const SMessage question = {.text = Format("Save %s back into %s?", name.c_str(), FileNamePart(place.archive).c_str()),
                             .icon = EIcon::kQuestion,
                             .yes = "Save into the &Archive",
                             .no = "Save &Elsewhere..."};
  const EAnswer answer = services_.questions.AskYesNoCancel(question);
  if (answer != EAnswer::kYes) return answer == EAnswer::kNo && SaveAs();
  const std::string text = document_.Truck().FileText();
  const std::span bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
  if (!document_.MayUseUnknownFile() || !services_.save_into_archive(place.archive, place.entry, bytes)) return false;
  document_.TakeSavedEntry();
  statusBar()->showMessage(tr("Saved %1").arg(NameToQString(place.Title())), kMessageMs);
  return true;
}

bool CTruckEditorDlg::Save() {
  if (document_.ArchivePlace() != nullptr && services_.save_into_archive) return SaveIntoArchive();
  return document_.Path().empty() ? SaveAs() : document_.Save(document_.Path());
}

bool CTruckEditorDlg::SaveAs() {
  const std::string path = document_.Path().empty() ? "" : document_.Path();
  const auto chosen = services_.questions.AskSaveFile(TruckPrompt(tr("Save Truck As"), services_, path, false));
  if (!chosen) return false;
  // Under another extension it could not be opened again.
  const bool has_extension = EqualNoCase(ExtensionPart(chosen->path), "TRK");
  return document_.Save(has_extension ? chosen->path : chosen->path + ".trk");
}

void CTruckEditorDlg::Reload() {
  if (!AskAndReload(document_)) return;
  statusBar()->showMessage(tr("Reloaded %1").arg(NameToQString(document_.Title())), kMessageMs);
}

void CTruckEditorDlg::EarlierStates() {
  const std::string key = document_.StatesKey();
  CEarlierStatesDialog dialog(NameToQString(document_.Title()), states_->List(key), ECopyKind::kTruck, this);
  dialog.exec();
  if (const auto chosen = dialog.Chosen()) document_.GoBackTo(states_->Read(key, *chosen));
}

/// Packing reads the truck's file. False when there is none that holds what is shown.
bool CTruckEditorDlg::IsReadyToPack() {
  if (document_.IsModified() || document_.Path().empty()) {
    const SMessage question = {.text = tr("The truck is packed as its file is. Save it now?").toStdString(),
                               .icon = EIcon::kQuestion};
    if (services_.questions.AskYesNo(question) != EAnswer::kYes) return false;
    if (!(document_.Path().empty() ? SaveAs() : Save())) return false;
  }
  return document_.MayUseUnknownFile();
}

STruckPackPlan CTruckEditorDlg::PackPlan() const {
  const SSearchPlaces places = PlacesForTruck(document_.Path(), services_.settings, services_.game_folder);
  STruckPackPlan plan = PlanTruckPack(document_.Path(), places, services_.stock);
  if (packed_) plan.AddFiles(packed_->more_files);
  return plan;
}

void CTruckEditorDlg::PackTruck() {
  if (const auto files = AskAndPack()) OfferArchive(*files);
}

std::optional<size_t> CTruckEditorDlg::AskAndPack() {
  if (!IsReadyToPack()) return std::nullopt;
  STruckPackPlan plan = PackPlan();
  const bool leaves_out = packed_ ? packed_->leaves_out_stock : services_.settings.creator_pod_zip != 0;
  CTruckPackDialog dialog(plan, leaves_out, services_.questions, this);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  services_.settings.creator_pod_zip = dialog.LeavesOutStock() ? 1 : 0;
  return WritePod(plan, dialog.LeavesOutStock());
}

void CTruckEditorDlg::PackAndStart() {
  const bool is_written = packed_ ? PackAgain() : AskAndPack().has_value();
  if (is_written && services_.start_game(packed_->archive, document_.Path()))
    statusBar()->showMessage(tr("Packed %1 and started the game").arg(NameToQString(packed_->archive)), kMessageMs);
}

/// As it was packed the last time; asks only where something is missing.
bool CTruckEditorDlg::PackAgain() {
  if (!packed_ || !IsReadyToPack()) return false;
  const STruckPackPlan plan = PackPlan();
  const auto lacking = plan.Lacking(packed_->leaves_out_stock);
  std::string details;
  for (const STruckPackRow* row : lacking)
    details += LackingText(*row) + "\n";
  const SMessage question = {.text = Counted(static_cast<int64_t>(lacking.size()), "file was", "files were") +
                                     " not found.\nPack without them?",
                             .icon = EIcon::kWarning,
                             .details = details,
                             .usual = EAnswer::kNo};
  if (!lacking.empty() && services_.questions.AskYesNo(question) != EAnswer::kYes) return false;
  const std::vector<SPodSource> sources = plan.Sources(packed_->leaves_out_stock);
  if (!CreatePod(services_.questions, packed_->archive, sources)) return false;
  statusBar()->showMessage(tr("Packed %1 files into %2").arg(sources.size()).arg(NameToQString(packed_->archive)),
                           kMessageMs);
  return true;
}

std::optional<size_t> CTruckEditorDlg::WritePod(const STruckPackPlan& plan, bool leave_out_stock) {
  const std::string folder = packed_ ? DirectoryPart(packed_->archive) : FindAnyCase(services_.settings.pod_dir);
  const SFilePrompt prompt = {
      .title = tr("Write Archive").toStdString(),
      .filters = {{"POD files *.pod", "*.pod"}},
      .directory = folder,
      .name = packed_ ? FileNamePart(packed_->archive) : ChangeExtension(document_.Title(), "pod"),
      .default_extension = "pod"};
  const auto pod = services_.questions.AskSaveFile(prompt);
  const std::vector<SPodSource> sources = plan.Sources(leave_out_stock);
  if (!pod || !CreatePod(services_.questions, pod->path, sources)) return std::nullopt;
  RememberPacking({pod->path, leave_out_stock, plan.AddedFiles()});
  return sources.size();
}

void CTruckEditorDlg::OfferArchive(size_t files) {
  const std::string& pod = packed_->archive;
  const SMessage question = {
      .text = Format("Packed %zu files into %s.\nShow the archive in the extractor?", files, FileNamePart(pod).c_str()),
      .icon = EIcon::kQuestion};
  if (services_.show_archive && services_.questions.AskYesNo(question) == EAnswer::kYes) services_.show_archive(pod);
}

/// Where it cannot be kept it holds until the truck is closed.
void CTruckEditorDlg::RememberPacking(SPackMemory packed) {
  packed_ = std::move(packed);
  SError error;
  if (!WritePackMemory(document_.Path(), *packed_, &error))
    Trace(">> CTruckEditorDlg::RememberPacking(%s): %s\n", document_.Path().c_str(), error.what.c_str());
  OnChanged();
}

void CTruckEditorDlg::closeEvent(QCloseEvent* event) {
  if (MayLeave()) {
    document_.LetGo();
    event->accept();
  } else {
    event->ignore();
  }
}

void CTruckEditorDlg::dragEnterEvent(QDragEnterEvent* event) {
  if (!DraggedTruck(*event->mimeData()).empty()) event->acceptProposedAction();
}

void CTruckEditorDlg::dropEvent(QDropEvent* event) {
  const std::string path = DraggedTruck(*event->mimeData());
  if (path.empty()) return;
  event->acceptProposedAction();
  OpenFile(path);
}

}  // namespace veldra
