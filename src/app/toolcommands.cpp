#include "app/toolcommands.h"

#include <algorithm>

#include "archive/stockbuilder.h"
#include "interchange/importmeshesdlg.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "podtools/podcreatordlg.h"
#include "podtools/podextractordlg.h"
#include "truckeditor/truckeditordlg.h"

namespace veldra {

namespace {

void BringToFront(QWidget& window) {
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace

CToolCommands::CToolCommands(CTarn2App& app, CDocumentWindows& windows, QWidget& window)
    : app_(app), windows_(windows), window_(window), stock_(DirectoryPart(app_.SettingsPath())) {}

/// Before the settings and the stock files that they look at.
CToolCommands::~CToolCommands() {
  delete extractor_;
  delete creator_;
  qDeleteAll(TruckEditors());
}

// --- Archives ------------------------------------------------------------------------------------------------------

SToolServices CToolCommands::Services() {
  return {.questions = app_.Questions(),
          .settings = app_.Settings(),
          .stock = stock_,
          .default_colors = app_.DefaultColors(),
          .game_folder = app_.InstallationDirectory(),
          .show_archive = [this](const std::string& path) { OpenArchive(path); }};
}

CPodExtractorDialog& CToolCommands::Extractor() {
  if (extractor_ == nullptr) {
    extractor_ = new CPodExtractorDialog(Services(), &window_);
    extractor_->setAttribute(Qt::WA_DeleteOnClose);
  }
  BringToFront(*extractor_);
  return *extractor_;
}

void CToolCommands::ShowExtractor() {
  const bool is_new = extractor_ == nullptr;
  CPodExtractorDialog& extractor = Extractor();
  if (!is_new) return;
  extractor.AskAndLoad();
  BringToFront(extractor);
}

bool CToolCommands::OpenArchive(const std::string& path) {
  return Extractor().LoadArchive(path);
}

void CToolCommands::ShowCreator() {
  if (creator_ == nullptr) {
    creator_ = new CPodCreatorDialog(Services(), &window_);
    creator_->setAttribute(Qt::WA_DeleteOnClose);
  }
  BringToFront(*creator_);
}

void CToolCommands::BuildStockList() {
  const auto folder = app_.Questions().AskFolder("Folder of the installed game", app_.InstallationDirectory());
  if (!folder) return;
  const std::string settings_folder = DirectoryPart(app_.SettingsPath());
  SStockList list;
  if (!WriteStockList(app_.Questions(), *folder, JoinPath(settings_folder, kStockFileName), list)) return;
  TakeStockList();
  app_.Questions().Message({.text = "The stock-file list has been built.", .details = list.CountsText()});
}

void CToolCommands::TakeStockList() {
  stock_ = CStockFiles(DirectoryPart(app_.SettingsPath()));
}

void CToolCommands::ShowDefaultColors() {
  if (extractor_ != nullptr) extractor_->TakeDefaultColors();
  for (CTruckEditorDlg* editor : TruckEditors())
    editor->RefreshFiles();
}

// --- Trucks --------------------------------------------------------------------------------------------------------

/// The newest first.
QList<CTruckEditorDlg*> CToolCommands::TruckEditors() const {
  QList<CTruckEditorDlg*> open;
  for (const auto& editor : truck_editors_)
    if (editor != nullptr) open.prepend(editor);
  return open;
}

CTruckEditorDlg& CToolCommands::NewTruckEditor() {
  truck_editors_.removeAll(nullptr);
  auto* editor = new CTruckEditorDlg(Services(), &app_.EarlierStates(), &window_);
  editor->setAttribute(Qt::WA_DeleteOnClose);
  truck_editors_.append(editor);
  app_.Recovery().Watch(editor->Document());
  connect(&editor->Document(), &CTruckDocument::FileChanged, this, &CToolCommands::TrucksChanged);
  return *editor;
}

CTruckEditorDlg& CToolCommands::TruckEditor() {
  const auto editors = TruckEditors();
  CTruckEditorDlg& editor = editors.isEmpty() ? NewTruckEditor() : *editors.first();
  BringToFront(editor);
  return editor;
}

void CToolCommands::ShowTruckEditor() {
  TruckEditor();
}

bool CToolCommands::OpenTruck(const std::string& path) {
  for (CFileDocument* truck : Trucks()) {
    if (!IsSameFile(truck->Path(), path)) continue;
    Activate(*truck);
    return true;
  }
  return TruckEditor().OpenFile(path);
}

void CToolCommands::RecoverTruck(const SLeftover& leftover) {
  const auto editors = TruckEditors();
  const auto free = std::ranges::find_if(editors, [&](CTruckEditorDlg* editor) {
    const CTruckDocument& truck = editor->Document();
    return !truck.IsModified() && (truck.Path().empty() || IsSameFile(truck.Path(), leftover.label.path));
  });
  CTruckEditorDlg& editor = free != editors.end() ? **free : NewTruckEditor();
  if (app_.Recovery().TakeOver(leftover, editor.Document())) BringToFront(editor);
}

QList<CFileDocument*> CToolCommands::Trucks() const {
  QList<CFileDocument*> trucks;
  for (CTruckEditorDlg* editor : TruckEditors())
    trucks.append(&editor->Document());
  return trucks;
}

void CToolCommands::Activate(const CFileDocument& document) {
  for (CTruckEditorDlg* editor : TruckEditors())
    if (&editor->Document() == &document) BringToFront(*editor);
}

bool CToolCommands::MayCloseTrucks() {
  return std::ranges::all_of(TruckEditors(), [](CTruckEditorDlg* editor) {
    if (editor->Document().IsModified()) BringToFront(*editor);
    return editor->MayLeave();
  });
}

// --- Imports -------------------------------------------------------------------------------------------------------

SImportServices CToolCommands::ImportServices() {
  const CSettings& settings = app_.Settings();
  return {.context = {.textures = app_.Textures(),
                      .questions = app_.Questions(),
                      .art_directory = settings.art_dir,
                      .face_type = static_cast<uint32_t>(settings.def_face_type)},
          .directory = app_.ModelDirectory(),
          .fill_new_document =
              [this](const std::string& title, const std::function<bool(CBinModel & model)>& fill) {
                const auto document = app_.NewDocument();
                document->SetTitle(title);
                if (!fill(document->Model())) return app_.LetGo(*document);
                document->SetModified(true);
                windows_.AddView(document, false);
              },
          .ask_jobs =
              [this](std::vector<SMeshJob>& jobs) {
                return AskMeshJobs(jobs, wave_options_, app_.Textures(), app_.Questions(), &window_);
              }};
}

void CToolCommands::Import3ds() {
  RunImport3ds(ImportServices());
}

void CToolCommands::ImportWavefront() {
  RunImportWavefront(ImportServices());
}

void CToolCommands::ImportMeshes() {
  RunImportMeshes(ImportServices());
}

bool CToolCommands::Import3dsFile(const std::string& path) {
  Import3dsFiles(ImportServices(), {path});
  return true;
}

bool CToolCommands::ImportWavefrontFile(const std::string& path) {
  ImportWavefrontFiles(ImportServices(), {path});
  return true;
}

bool CToolCommands::CloseWindows() {
  const auto close = [](QWidget* window) { return window == nullptr || window->close(); };
  return std::ranges::all_of(TruckEditors(), close) && close(creator_) && close(extractor_);
}

}  // namespace veldra
