#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <memory>
#include <string>

#include "app/commands/commandactions.h"
#include "app/commands/commandtarget.h"
#include "app/commands/viewkeys.h"
#include "app/documentwindows.h"
#include "app/filecommands.h"
#include "app/tarn2.h"
#include "app/toolcommands.h"
#include "app/tooldocks.h"
#include "document/texturewatch.h"
#include "editing/pictureedits.h"

namespace veldra {

class CFileWatch;
class CWelcomePage;

/// The main window: the area of documents with menus, tool bar and status bar, and the dispatch of commands to those
/// who carry them out.
class CMainFrame : public QMainWindow {
  Q_OBJECT

 public:
  explicit CMainFrame(CTarn2App& app);
  ~CMainFrame() override;

  CTarn2App& App() { return app_; }
  CDocumentWindows& Windows() { return *windows_; }
  CFileCommands& Files() { return *files_; }
  CToolDocks& Docks() { return *docks_; }
  CToolCommands& Tools() { return *tools_; }

  /// Opens PATH by its type. False when it could not be opened; the user has been told then.
  bool OpenFile(const std::string& path, bool read_only = false) { return files_->OpenFile(path, read_only); }
  CChildFrame* ActiveChild() const { return windows_->Active(); }
  CTarnView* ActiveView() const { return windows_->ActiveView(); }
  CTarnDoc* ActiveDocument() const { return windows_->ActiveDocument(); }
  QList<CChildFrame*> Children() const { return windows_->Children(); }
  /// The open documents of all kinds.
  QList<CFileDocument*> Documents() const;
  QAction* Action(ECommand id) const { return actions_->Action(id); }
  /// Brings menus, tool bar and status bar up to date, once after all that happens in this turn of the event loop.
  void RefreshCommands();
  /// In the status bar, for a while.
  void Say(const QString& text);
  /// Something ended because there was no memory for it: unsaved work is copied, and the user told.
  void TellOutOfMemory();
  /// Ways to begin, unless something is open. Not made before, as it takes time that a start with a file has better
  /// uses for.
  void ShowWelcome();
  /// Asks about each document with unsaved changes, and saves where the user wants it. False: something stays open.
  bool MayCloseAll();
  /// What the settings keep of the windows.
  void WriteWindowState();

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  bool MayCloseModels();
  void MakeReadyForOpenGL();
  void MakeCommands();
  void WatchFiles();
  void ShowChangedFiles();
  void Run(const SCommandRow& row);
  void RunKey(const SCommandRow& row);
  void GiveKeysToView();
  void TakeKeys();
  void Refresh();
  void NoteDocuments();
  void MakeStatusBar();
  void RefreshStatus();
  void RefreshHidden();
  SCommandTarget CommandTarget();
  void ReadWindowState();
  void WriteRecentFiles();

  CTarn2App& app_;
  CDocumentArea* area_;
  CWelcomePage* welcome_ = nullptr;
  CCommandKeys keys_;
  QLabel* counts_;
  QLabel* selected_;
  QPushButton* hidden_;  ///< says that faces are hidden, and shows them again
  CToolDocks* docks_;
  CFileWatch* watch_ = nullptr;
  CTextureWatch textures_;
  CPictureEdits edits_;
  size_t watched_textures_ = 0;
  std::unique_ptr<CDocumentWindows> windows_;
  std::unique_ptr<CToolCommands> tools_;
  std::unique_ptr<CFileCommands> files_;
  CEditDialogs dialogs_;
  std::unique_ptr<CCommandActions> actions_;
  bool refresh_is_due_ = false;
  bool had_windows_ = false;
  bool is_out_of_memory_ = false;  ///< and being told
};

}  // namespace veldra
