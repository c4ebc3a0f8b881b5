#include "app/toolcommands.h"

#include "archive/stockbuilder.h"
#include "interchange/importoptionsdlg.h"
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
  delete truck_editor_;
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
  stock_ = CStockFiles(settings_folder);
  app_.Questions().Message({.text = "The stock-file list has been built.", .details = list.CountsText()});
}

void CToolCommands::ShowDefaultColors() {
  if (extractor_ != nullptr) extractor_->TakeDefaultColors();
  if (truck_editor_ != nullptr) truck_editor_->RefreshFiles();
}

// --- Trucks --------------------------------------------------------------------------------------------------------

CTruckEditorDlg& CToolCommands::TruckEditor() {
  if (truck_editor_ == nullptr) {
    truck_editor_ = new CTruckEditorDlg(Services(), &window_);
    truck_editor_->setAttribute(Qt::WA_DeleteOnClose);
  }
  BringToFront(*truck_editor_);
  return *truck_editor_;
}

void CToolCommands::ShowTruckEditor() {
  TruckEditor();
}

bool CToolCommands::OpenTruck(const std::string& path) {
  return TruckEditor().OpenFile(path);
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
          .ask_wave_options =
              [this](const SWaveMesh& mesh, const std::string& path) {
                return AskImportOptions(mesh, path, wave_options_, &window_);
              }};
}

void CToolCommands::Import3ds() {
  RunImport3ds(ImportServices());
}

void CToolCommands::ImportWavefront() {
  RunImportWavefront(ImportServices());
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
  return close(truck_editor_) && close(creator_) && close(extractor_);
}

}  // namespace veldra
