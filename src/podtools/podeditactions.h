#pragma once

#include <QAction>
#include <QMenu>
#include <QToolBar>
#include <functional>
#include <vector>

#include "packing/toolservices.h"
#include "podtools/archivedocument.h"
#include "podtools/podlistview.h"
#include "settings/windowkeys.h"

namespace veldra {

/// What can be done to the archive in the extractor's window: its file, the steps back, and the changes of its entries,
/// as menus, tool bar and keys.
class CPodEditActions : public QObject {
  Q_OBJECT

 public:
  /// Texts and shortcuts are WINDOW's KEYS. All outlive it.
  CPodEditActions(CArchiveDocument& document, const SToolServices& services, CPodListView& list, CWindowKeys& keys,
                  QWidget& window);

  void FillArchiveMenu(QMenu& menu) const;
  void FillEditMenu(QMenu& menu) const;
  void FillToolBar(QToolBar& bar) const;
  /// Of the selected entries.
  void FillContextMenu(QMenu& menu) const;
  /// Which of them can be used now.
  void Refresh();

  /// Files and folders go into the archive.
  void Add(const std::vector<std::string>& paths);
  bool Save();
  bool SaveAs();
  /// Saves what is not saved, and starts the game with the archive.
  void SaveAndStart();
  /// Asks about unsaved changes. True when they may go: they are saved, or the user does not want them to be.
  bool MayLeave();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  /// In words, for the status line.
  void Done(const QString& what);

 private:
  QAction* Make(const char* name, std::function<void()> action);
  void MakeFileActions();
  void MakeEntryActions();
  void MakeOrderActions();
  void AskAndAdd();
  void AskAndAddFolder();
  void AskAndReplace();
  void ReplaceByPicture(size_t entry, const std::string& picture);
  void Rename(size_t entry, const QString& name);
  void Remove();
  void MoveBy(int by);
  void MoveTo(size_t to);
  void Reload();

  CArchiveDocument& document_;
  SToolServices services_;
  CPodListView& list_;
  CWindowKeys& keys_;
  QWidget& window_;
  QAction* save_ = nullptr;
  QAction* save_as_ = nullptr;
  QAction* reload_ = nullptr;
  QAction* save_and_start_ = nullptr;
  QAction* back_ = nullptr;
  QAction* forward_ = nullptr;
  QAction* replace_ = nullptr;
  QAction* rename_ = nullptr;
  QAction* remove_ = nullptr;
  QAction* arrange_ = nullptr;
  QAction* own_order_ = nullptr;
  QList<QAction*> adding_;
  QList<QAction*> moving_;
};

}  // namespace veldra
