#pragma once

#include <QMenu>
#include <string>

#include "app/tarn2.h"

namespace veldra {

class CMainFrame;

/// The commands of the File menu: documents opened, saved, read anew and closed.
class CFileCommands {
 public:
  explicit CFileCommands(CMainFrame& frame);

  void New();
  void AskAndOpen();
  void Close();
  void Save();
  void SaveAs();
  void Reload();
  void EarlierStates();
  void Recover();
  void Preferences();

  /// Opens PATH by its type. False when it could not be opened; the user has been told then.
  bool OpenFile(const std::string& path, bool read_only);
  /// Opens the model PATH in a window of its own, or activates the window that shows it.
  bool OpenModel(const std::string& path, bool read_only);
  /// The recent files as the items of MENU.
  void ListRecentIn(QMenu& menu);

 private:
  CTarnDoc& Active() const;
  void ReportSaved(bool saved);
  void ShowDefaultColors();

  CMainFrame& frame_;
  CTarn2App& app_;
};

}  // namespace veldra
