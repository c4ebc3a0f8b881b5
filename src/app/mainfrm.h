#pragma once

#include <QLabel>
#include <QMainWindow>
#include <memory>
#include <string>

#include "app/childfrm.h"
#include "app/commandactions.h"
#include "app/documentarea.h"
#include "app/tarn2.h"

namespace veldra {

/// The main window: documents in child windows, and the commands on them.
class CMainFrame : public QMainWindow {
  Q_OBJECT

 public:
  explicit CMainFrame(CTarn2App& app);
  ~CMainFrame() override;

  /// Opens PATH in a window of its own, or activates the window that shows it. False when it could not be opened; the
  /// user has been told then.
  bool OpenFile(const std::string& path);
  /// Another view of DOCUMENT.
  CChildFrame& AddView(const std::shared_ptr<CTarnDoc>& document);

  CChildFrame* ActiveChild() const;
  CTarnView* ActiveView() const;
  CTarnDoc* ActiveDocument() const;
  QList<CChildFrame*> Children() const;
  QAction* Action(ECommand id) const { return actions_->Action(id); }
  /// Brings menus, tool bar and status bar up to date, once after all that happens in this turn of the event loop.
  void RefreshCommands();

  // What the command table calls.
  void AskAndOpen();
  void CloseActive();
  void SaveActive();
  void SaveActiveAs();
  void Exit() { close(); }
  void AskBackground();
  void DeleteUnused();
  void CascadeWindows() { area_->cascadeSubWindows(); }
  void TileWindows() { area_->tileSubWindows(); }
  void About();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void MakeReadyForOpenGL();
  void Run(const SCommandRow& row);
  void Refresh();
  void RefreshStatus();
  SCommandState CommandState() const;
  void FillRecentFiles();
  void FillWindowList();
  void Say(const QString& text);
  void ReportSaved(bool saved);
  void ReadWindowState();
  void WriteWindowState();

  CTarn2App& app_;
  CDocumentArea* area_;
  QLabel* counts_;
  std::unique_ptr<CCommandActions> actions_;
  QList<QAction*> window_actions_;
  bool refresh_is_due_ = false;
};

}  // namespace veldra
