#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <functional>
#include <map>

#include "app/commands/commandkeys.h"

namespace veldra {

/// The actions of a main window, its menus and its tool bar, made from the command table.
class CCommandActions {
 public:
  using Runner = std::function<void(const SCommandRow&)>;

  /// RUN carries a command out. KEYS outlive it.
  CCommandActions(QMainWindow& window, const CCommandKeys& keys, Runner run);
  CCommandActions(const CCommandActions&) = delete;
  CCommandActions& operator=(const CCommandActions&) = delete;

  QAction* Action(ECommand id) const;
  /// The menu of a list that is filled when it opens: recent files or windows.
  QMenu* ListMenu(ECommand id) const;
  /// The commands of ROW as a menu at AT on the screen. Comes back when it is closed.
  void PopUp(const SMenuRow& row, const QPoint& at);
  /// Enabling and check marks.
  void Refresh(const SCommandTarget& target);
  /// KEYS are others.
  void RefreshKeys(const SCommandTarget& target);

 private:
  QAction* MakeAction(const SCommandRow& row);
  void ShowKeys(const SCommandRow& row, QAction& action, const std::string& object = {}) const;
  void MakeMenu(QMenu& menu, const SMenuRow& menu_row);
  void MakeListMenu(QMenu& menu, const SCommandRow& row);
  void MakeToolBar();

  QMainWindow& window_;
  const CCommandKeys& keys_;
  Runner run_;
  std::map<ECommand, QAction*> actions_;
  std::map<ECommand, QMenu*> list_menus_;
};

}  // namespace veldra
