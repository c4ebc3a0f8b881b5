#include "app/filecommands.h"

#include <algorithm>

#include "app/commands/commandkeys.h"
#include "app/fileopeners.h"
#include "app/recoveryoffer.h"
#include "app/setupdlg.h"
#include "document/earlierstatesdlg.h"
#include "document/filenews.h"
#include "editing/problemcommands.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "settings/preferencesdlg.h"
#include "ui/qstrings.h"

namespace veldra {

CFileCommands::CFileCommands(CTarn2App& app, CDocumentWindows& windows, CToolCommands& tools, CToolDocks& docks,
                             QWidget& window, std::function<void()> show_keys)
    : app_(app), windows_(windows), tools_(tools), docks_(docks), window_(window), show_keys_(std::move(show_keys)) {}

/// The enabling rules see to it that there is one.
CTarnDoc& CFileCommands::Active() const {
  CTarnDoc* document = windows_.ActiveDocument();
  VELDRA_ASSERT(document != nullptr);
  return *document;
}

// --- Opening -------------------------------------------------------------------------------------------------------

void CFileCommands::New() {
  windows_.AddView(app_.NewDocument(), false);
}

void CFileCommands::AskAndOpen() {
  const auto files =
      app_.Questions().AskOpenFiles({.title = "Open",
                                     .filters = {{.label = "MTM Model *.bin", .pattern = "*.bin"},
                                                 {.label = "Models in an archive *.pod", .pattern = "*.pod"},
                                                 {.label = "All Files *.*", .pattern = "*.*"}},
                                     .directory = app_.ModelDirectory(),
                                     .name = {},
                                     .default_extension = "bin",
                                     .offers_read_only = true});
  if (!files) return;
  for (const std::string& path : files->paths) {
    const bool is_archive = EqualNoCase(ExtensionPart(path), "POD");
    is_archive ? tools_.OpenModelsOf(path) : OpenFile(path, files->read_only);
  }
}

bool CFileCommands::OpenFile(const std::string& path, bool read_only) {
  // What the table does not know may still be a model of another name.
  const SFileOpener* opener = FindFileOpener(path);
  return opener != nullptr ? opener->open(*this, tools_, path, read_only) : OpenModel(path, read_only);
}

bool CFileCommands::OpenModel(const std::string& path, bool read_only) {
  if (const auto open = app_.FindDocument(path)) {
    windows_.Activate(*open);
    return true;
  }
  const auto document = app_.OpenDocument(path, read_only);
  if (document == nullptr) {
    if (!FileExists(path)) app_.RecentFiles().Remove(AbsolutePath(path));
    return false;
  }
  windows_.AddView(document, true);
  const std::string& note = document->TextureNote();
  app_.Say("Opened " + document->Title() + (note.empty() ? "" : ": " + note));
  return true;
}

void CFileCommands::ShowFinding(const SPodSource& file, const SFinding& finding) {
  if (!file.bytes.length) {
    if (!OpenModel(file.bytes.path, false)) return;
  } else if (!OpenPart(file.bytes)) {
    return;
  }
  CTarnView* view = windows_.ActiveView();
  if (view == nullptr) return;
  view->window()->activateWindow();
  if (SelectProblem(view->Cursor(), finding)) view->BringSelectionIntoSight();
}

/// The model that is PART of an archive. False when that has other entries by now.
bool CFileCommands::OpenPart(const SFilePart& part) {
  CPodDocument archive;
  SError error;
  if (!archive.Load(part.path, &error)) return app_.Questions().Fail(kFailedToLoadPod, error.what);
  const auto& entries = archive.Entries();
  const auto found = std::ranges::find_if(entries, [&](const SPodEntry& entry) {
    const SFilePart other = archive.PartOf(entry);
    return other.offset == part.offset && other.length == part.length;
  });
  if (found == entries.end()) return false;
  const std::string name(found->Name());
  tools_.OpenEntry(archive, static_cast<size_t>(found - entries.begin()));
  const CTarnDoc* document = windows_.ActiveDocument();
  return document != nullptr && document->ArchivePlace() != nullptr &&
         document->ArchivePlace()->IsSame({part.path, name});
}

void CFileCommands::ListRecentIn(QMenu& menu) {
  menu.clear();
  int number = 0;
  for (const std::string& path : app_.RecentFiles().Paths()) {
    const QString text = ToQString(path).replace('&', "&&");
    QAction* action = menu.addAction(QStringLiteral("&%1 %2").arg(++number).arg(text));
    action->setStatusTip(QObject::tr("Open this document"));
    QObject::connect(action, &QAction::triggered, &window_, [this, path] { OpenFile(path, false); });
  }
}

/// Textures look different now.
void CFileCommands::ShowTexturesAnew() {
  for (CTarnView* view : window_.findChildren<CTarnView*>())
    view->Redraw();
  docks_.ForgetPictures();
}

/// Those without colours of their own.
void CFileCommands::ShowDefaultColors() {
  ShowTexturesAnew();
  tools_.ShowDefaultColors();
}

void CFileCommands::PreferencesOn(ESettingPage page) {
  CPreferencesDialog dialog(app_.Settings(), AllKeyCommands(), &window_);
  dialog.ShowPage(page);
  QObject::connect(&dialog, &CPreferencesDialog::SettingsChanged, &window_,
                   [this](const std::vector<std::string>& keys) {
                     app_.SettingsChanged(keys);
                     if (std::ranges::find(keys, "DEFPAL") != keys.end()) ShowDefaultColors();
                     if (std::ranges::find(keys, "KEYS") != keys.end()) show_keys_();
                   });
  dialog.exec();
}

void CFileCommands::SetUpAgain() {
  CSetUpDialog dialog(CSetUpDialog::EOccasion::kAgain, ProposeSetUp(app_.Settings()), &window_);
  if (dialog.exec() != QDialog::Accepted) return;
  std::string first_file;
  ApplySetUp(dialog.Choice(), DirectoryPart(app_.SettingsPath()), app_.Settings(), app_.Questions(), &first_file);
  app_.SettingsChanged({"DEFPAL"});
  tools_.TakeStockList();
  ShowDefaultColors();
  if (!first_file.empty()) OpenFile(first_file, false);
}

void CFileCommands::OpenSample() {
  const std::string folder = SampleFolder();
  const SMessage question = {.text = "Make a sample project?", .icon = EIcon::kQuestion, .details = "In " + folder};
  if (!FileExists(folder) && app_.Questions().AskYesNo(question) != EAnswer::kYes) return;
  const std::string truck = WriteSample(folder, app_.Questions());
  if (!truck.empty()) OpenFile(truck, false);
}

// --- Saving and closing --------------------------------------------------------------------------------------------

void CFileCommands::Close() {
  windows_.CloseActive();
}

void CFileCommands::Save() {
  ReportSaved(Active().Saver().Save());
}

void CFileCommands::SaveAs() {
  ReportSaved(Active().Saver().SaveAs());
}

void CFileCommands::Reload() {
  if (AskAndReload(Active())) app_.Say("Reloaded " + Active().Title());
}

void CFileCommands::EarlierStates() {
  CTarnDoc& document = Active();
  const std::string key = document.StatesKey();
  const QString title = NameToQString(document.Title());
  CEarlierStatesDialog dialog(title, app_.EarlierStates().List(key), ECopyKind::kModel, &window_);
  dialog.SetReadOnly(document.IsReadOnly());
  dialog.exec();
  const auto chosen = dialog.Chosen();
  if (!chosen) return;
  if (dialog.GoesBack()) {
    document.GoBackTo(app_.EarlierStates().Read(key, *chosen));
    return;
  }
  if (const auto opened = app_.OpenEarlierState(document, *chosen)) windows_.AddView(opened, false);
}

void CFileCommands::Recover() {
  if (!OfferLeftovers(app_, windows_, tools_, &window_))
    app_.Questions().Message({.text = "There are no unsaved documents to recover."});
}

void CFileCommands::EditInArchive() {
  Active().EditInArchive();
  app_.Say(Active().Title() + " can be changed now; Save gives the archive what it becomes");
}

void CFileCommands::ReportSaved(bool saved) {
  if (!saved) return;
  if (Active().ArchivePlace() != nullptr) return app_.Say("Saved " + Active().Title());
  app_.RecentFiles().Add(Active().Path());
  app_.Say("Saved " + Active().Path());
}

}  // namespace veldra
