#pragma once

#include <QMenu>
#include <functional>
#include <string>

#include "app/documentwindows.h"
#include "app/tarn2.h"
#include "app/toolcommands.h"
#include "app/tooldocks.h"

namespace veldra {

/// The commands of the File menu: documents opened, saved, read anew and closed.
class CFileCommands {
 public:
  /// Dialogs stand over WINDOW. SHOW_KEYS is called when the settings hold other keys. All outlive it.
  CFileCommands(CTarn2App& app, CDocumentWindows& windows, CToolCommands& tools, CToolDocks& docks, QWidget& window,
                std::function<void()> show_keys);

  void New();
  void AskAndOpen();
  void Close();
  void Save();
  void SaveAs();
  void Reload();
  void EditInArchive();
  void EarlierStates();
  void Recover();
  void Preferences() { PreferencesOn(ESettingPage::kFolders); }
  /// Opened at PAGE.
  void PreferencesOn(ESettingPage page);
  void SetUpAgain();
  /// Makes the sample project first where it is not there yet.
  void OpenSample();

  /// Opens PATH by its type. False when it could not be opened; the user has been told then.
  bool OpenFile(const std::string& path, bool read_only);
  /// Opens the model PATH in a window of its own, or activates the window that shows it.
  bool OpenModel(const std::string& path, bool read_only);
  /// Opens the model in FILE, which may be in an archive, and shows what FINDING is about.
  void ShowFinding(const SPodSource& file, const SFinding& finding);
  /// The recent files as the items of MENU.
  void ListRecentIn(QMenu& menu);
  /// To all that shows textures: some have other texels.
  void ShowTexturesAnew();

 private:
  CTarnDoc& Active() const;
  bool OpenPart(const SFilePart& part);
  void ReportSaved(bool saved);
  void ShowDefaultColors();

  CTarn2App& app_;
  CDocumentWindows& windows_;
  CToolCommands& tools_;
  CToolDocks& docks_;
  QWidget& window_;
  std::function<void()> show_keys_;
};

}  // namespace veldra
