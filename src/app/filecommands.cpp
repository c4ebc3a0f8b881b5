#include "app/filecommands.h"

#include <algorithm>

#include "app/fileopeners.h"
#include "app/mainfrm.h"
#include "app/recoveryoffer.h"
#include "document/earlierstatesdlg.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "settings/preferencesdlg.h"

namespace veldra {

CFileCommands::CFileCommands(CMainFrame& frame) : frame_(frame), app_(frame.App()) {}

/// The enabling rules see to it that there is one.
CTarnDoc& CFileCommands::Active() const {
  CTarnDoc* document = frame_.ActiveDocument();
  VELDRA_ASSERT(document != nullptr);
  return *document;
}

// --- Opening -------------------------------------------------------------------------------------------------------

void CFileCommands::New() {
  frame_.Windows().AddView(app_.NewDocument(), false);
}

void CFileCommands::AskAndOpen() {
  const auto files = app_.Questions().AskOpenFiles(
      {.title = "Open",
       .filters = {{.label = "MTM Model *.bin", .pattern = "*.bin"}, {.label = "All Files *.*", .pattern = "*.*"}},
       .directory = app_.ModelDirectory(),
       .name = {},
       .default_extension = "bin",
       .offers_read_only = true});
  if (!files) return;
  for (const std::string& path : files->paths)
    OpenFile(path, files->read_only);
}

bool CFileCommands::OpenFile(const std::string& path, bool read_only) {
  // What the table does not know may still be a model of another name.
  const SFileOpener* opener = FindFileOpener(path);
  return opener != nullptr ? opener->open(frame_, path, read_only) : OpenModel(path, read_only);
}

bool CFileCommands::OpenModel(const std::string& path, bool read_only) {
  if (const auto open = app_.FindDocument(path)) {
    frame_.Windows().Activate(*open);
    return true;
  }
  const auto document = app_.OpenDocument(path, read_only);
  frame_.RefreshCommands();
  if (document == nullptr) {
    if (!FileExists(path)) app_.RecentFiles().Remove(AbsolutePath(path));
    return false;
  }
  frame_.Windows().AddView(document, true);
  frame_.Say(QObject::tr("Opened %1").arg(QString::fromStdString(document->Title())));
  return true;
}

void CFileCommands::ListRecentIn(QMenu& menu) {
  menu.clear();
  int number = 0;
  for (const std::string& path : app_.RecentFiles().Paths()) {
    const QString text = QString::fromStdString(path).replace('&', "&&");
    QAction* action = menu.addAction(QStringLiteral("&%1 %2").arg(++number).arg(text));
    action->setStatusTip(QObject::tr("Open this document"));
    QObject::connect(action, &QAction::triggered, &frame_, [this, path] { OpenFile(path, false); });
  }
}

/// Textures without colours of their own look different now.
void CFileCommands::ShowDefaultColors() {
  for (CTarnView* view : frame_.findChildren<CTarnView*>())
    view->update();
  frame_.Docks().ForgetPictures();
  frame_.Tools().ShowDefaultColors();
}

void CFileCommands::Preferences() {
  CPreferencesDialog dialog(app_.Settings(), &frame_);
  QObject::connect(&dialog, &CPreferencesDialog::SettingsChanged, &frame_,
                   [this](const std::vector<std::string>& keys) {
                     app_.SettingsChanged(keys);
                     if (std::ranges::find(keys, "DEFPAL") != keys.end()) ShowDefaultColors();
                   });
  dialog.exec();
}

// --- Saving and closing --------------------------------------------------------------------------------------------

void CFileCommands::Close() {
  frame_.Windows().CloseActive();
}

void CFileCommands::Save() {
  ReportSaved(Active().Save());
}

void CFileCommands::SaveAs() {
  ReportSaved(Active().SaveAs());
}

void CFileCommands::Reload() {
  if (Active().Reload()) frame_.Say(QObject::tr("Reloaded %1").arg(QString::fromStdString(Active().Title())));
}

void CFileCommands::EarlierStates() {
  const CTarnDoc& document = Active();
  const std::string key = document.StatesKey();
  const QString title = QString::fromStdString(document.Title());
  CEarlierStatesDialog dialog(title, app_.EarlierStates().List(key), &frame_);
  dialog.exec();
  const auto chosen = dialog.Chosen();
  if (!chosen) return;
  if (const auto opened = app_.OpenEarlierState(document, *chosen)) frame_.Windows().AddView(opened, false);
}

void CFileCommands::Recover() {
  if (!OfferLeftovers(frame_)) app_.Questions().Message({.text = "There are no unsaved documents to recover."});
}

void CFileCommands::ReportSaved(bool saved) {
  if (!saved) return;
  app_.RecentFiles().Add(Active().Path());
  frame_.Say(QObject::tr("Saved %1").arg(QString::fromStdString(Active().Path())));
}

}  // namespace veldra
