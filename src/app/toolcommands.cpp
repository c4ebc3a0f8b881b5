#include "app/toolcommands.h"

#include <algorithm>

#include "app/programstart.h"
#include "app/setup.h"
#include "archive/filetypes.h"
#include "archive/podedit.h"
#include "archive/stockbuilder.h"
#include "interchange/importmeshesdlg.h"
#include "packing/gamecommand.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "podtools/podcreatordlg.h"
#include "podtools/podextractordlg.h"
#include "podtools/podmodelsdlg.h"
#include "truckeditor/truckeditordlg.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

void BringToFront(QWidget& window) {
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace

CToolCommands::CToolCommands(CTarn2App& app, CDocumentWindows& windows, QWidget& window)
    : app_(app), windows_(windows), window_(window), stock_(DirectoryPart(app_.SettingsPath())) {
  app_.SetArchiveSaver(
      [this](const SArchivePlace& place, std::span<const uint8_t> bytes) { return SaveIntoArchive(place, bytes); });
}

/// Before the settings and the stock files that they look at.
CToolCommands::~CToolCommands() {
  app_.SetArchiveSaver({});
  delete extractor_;
  delete creator_;
  qDeleteAll(TruckEditors());
}

// --- Archives ------------------------------------------------------------------------------------------------------

SToolServices CToolCommands::Services() {
  return {
      .questions = app_.Questions(),
      .settings = app_.Settings(),
      .stock = stock_,
      .default_colors = app_.DefaultColors(),
      .game_folder = app_.InstallationDirectory(),
      .show_archive = [this](const std::string& path) { OpenArchive(path); },
      .open_entry = [this](const CPodDocument& archive, size_t entry) { OpenEntry(archive, entry); },
      .save_into_archive =
          [this](const std::string& path, const std::string& name, std::span<const uint8_t> bytes) {
            return SaveIntoArchive({path, name}, bytes);
          },
      .start_game = [this](const std::string& archive, const std::string& truck) { return StartGame(archive, truck); },
      .write_sample = [this](const std::string& folder) { return WriteSampleTruck(folder, app_.Questions()); }};
}

void CToolCommands::OpenEntry(const CPodDocument& archive, size_t entry) {
  const SArchivePlace place = {archive.Path(), std::string(archive.Entries()[entry].Name())};
  TypeOfFile(place.entry) == kTypeTrk ? OpenTruck(place) : OpenModel(place);
}

void CToolCommands::OpenModel(const SArchivePlace& place) {
  const auto open = app_.FindDocument(place);
  const auto document = open != nullptr ? open : app_.OpenFromArchive(place);
  if (document == nullptr) return;
  if (open != nullptr)
    windows_.Activate(*open);
  else
    windows_.AddView(document, true);
  window_.activateWindow();
  const std::string& note = document->TextureNote();
  app_.Say("Opened " + document->Title() + (document->IsReadOnly() ? " read-only" : "") +
           (note.empty() ? "" : ": " + note));
}

void CToolCommands::OpenTruck(const SArchivePlace& place) {
  for (CTruckEditorDlg* editor : TruckEditors()) {
    const SArchivePlace* const other = editor->Document().ArchivePlace();
    if (other != nullptr && other->IsSame(place)) return BringToFront(*editor);
  }
  TruckEditor().OpenFromArchive(place);
}

bool CToolCommands::OpenModelsOf(const std::string& path) {
  CPodModelsDlg dialog(Services(), &window_);
  if (!dialog.LoadArchive(path)) return false;
  if (dialog.exec() != QDialog::Accepted) return true;
  if (dialog.WantsArchive()) return OpenArchive(path);
  for (const size_t entry : dialog.Chosen())
    OpenEntry(dialog.Archive(), entry);
  return true;
}

/// What is unsaved in the archive's own window is saved with it or stays there, as the user likes.
bool CToolCommands::SaveIntoArchive(const SArchivePlace& place, std::span<const uint8_t> bytes) {
  CQuestions& questions = app_.Questions();
  CArchiveDocument* const open = extractor_ != nullptr && IsSameFile(extractor_->Document().Path(), place.archive)
                                     ? &extractor_->Document()
                                     : nullptr;
  if (open != nullptr && open->IsModified()) {
    const SMessage question = {.text = Format("%s has unsaved changes in the POD Extractor.\nSave them too?",
                                              FileNamePart(place.archive).c_str()),
                               .icon = EIcon::kQuestion};
    if (questions.AskYesNo(question) != EAnswer::kYes || !open->Save(open->Path())) return false;
  }
  CPodDocument archive;
  SError error;
  if (!archive.Load(place.archive, &error)) return questions.Fail(kFailedToLoadPod, error.what);
  const auto found = archive.FindAll(place.entry);
  if (found.empty())
    return questions.Fail(Format("\"%s\" is not in the archive any more.", DisplayName(place.entry).c_str()),
                          place.archive);
  if (!ReplaceInPod(questions, archive, found.back(), bytes)) return false;
  if (open != nullptr) open->Reload();
  return true;
}

bool CToolCommands::StartGame(const std::string& archive, const std::string& truck) {
  const CSettings& settings = app_.Settings();
  const std::string installed = app_.InstallationDirectory();
  const std::string game = installed.empty() || installed == "." ? FindAnyCase(settings.pod_dir) : installed;
  // The program runs in another folder.
  const auto absolute = [](const std::string& path) { return path.empty() ? path : AbsolutePath(path); };
  const auto command = ReadGameCommand(settings.game_command, {absolute(archive), absolute(truck), absolute(game)});
  if (!command || !app_.MayStart(&CSettings::game_command)) return false;
  const std::string fault = StartProgram(command->call, command->folder);
  return fault.empty() || app_.Questions().Fail("The game could not be started.", fault);
}

CPodExtractorDialog& CToolCommands::Extractor() {
  if (extractor_ == nullptr) {
    extractor_ = new CPodExtractorDialog(Services(), &window_);
    extractor_->setAttribute(Qt::WA_DeleteOnClose);
    app_.Recovery().Watch(extractor_->Document());
    connect(&extractor_->Document(), &CArchiveDocument::Loaded, this, &CToolCommands::FilesChanged);
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

void CToolCommands::RecoverArchive(const SLeftover& leftover) {
  CPodExtractorDialog& extractor = Extractor();
  if (extractor.MayLeave()) app_.Recovery().TakeOver(leftover, extractor.Document());
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
  connect(&editor->Document(), &CTruckDocument::FileChanged, this, &CToolCommands::FilesChanged);
  connect(editor, &CTruckEditorDlg::FindingWanted, this, &CToolCommands::FindingWanted);
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

void CToolCommands::NewTruck() {
  TruckEditor().NewByWizard();
}

bool CToolCommands::OpenTruck(const std::string& path) {
  for (CFileDocument* truck : Documents()) {
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

QList<CFileDocument*> CToolCommands::Documents() const {
  QList<CFileDocument*> documents;
  for (CTruckEditorDlg* editor : TruckEditors())
    documents.append(&editor->Document());
  if (extractor_ != nullptr && !extractor_->Document().Path().empty()) documents.append(&extractor_->Document());
  return documents;
}

void CToolCommands::Activate(const CFileDocument& document) {
  for (CTruckEditorDlg* editor : TruckEditors())
    if (&editor->Document() == &document) BringToFront(*editor);
  if (extractor_ != nullptr && &extractor_->Document() == &document) BringToFront(*extractor_);
}

bool CToolCommands::MayCloseDocuments() {
  const auto may_close_archive = [this] {
    if (extractor_ == nullptr || !extractor_->Document().IsModified()) return true;
    BringToFront(*extractor_);
    return extractor_->MayLeave();
  };
  return may_close_archive() && std::ranges::all_of(TruckEditors(), [](CTruckEditorDlg* editor) {
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
                      .face_type = static_cast<uint32_t>(settings.def_face_type),
                      .settings = &settings},
          .directory = app_.ModelDirectory(),
          .fill_new_document =
              [this](const std::string& title, const std::function<bool(CBinModel & model)>& fill) {
                const auto document = app_.NewDocument();
                document->SetTitle(title);
                if (!fill(document->Model())) return app_.LetGo(*document);
                document->Steps().Clear();  // what it starts from
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

bool CToolCommands::ImportMeshFile(const std::string& path) {
  ImportMeshFiles(ImportServices(), {path});
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
