#include "app/commands/commandactions.h"

#include <QActionGroup>
#include <QMenuBar>
#include <QToolBar>

#include "ui/commandicons.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kIconSide = 22;

QString TextOf(const SCommandRow& row, const std::string& object) {
  QString text = QString::fromUtf8(row.text);
  if (!object.empty()) {
    // Dots stay at the end.
    const bool asks = text.endsWith("...");
    if (asks) text.chop(3);
    text += ": " + NameToQString(object).replace('&', "&&") + (asks ? "..." : "");
  }
  return text;
}

}  // namespace

CCommandActions::CCommandActions(QMainWindow& window, const CCommandKeys& keys, Runner run)
    : window_(window), keys_(keys), run_(std::move(run)) {
  QActionGroup* choices = nullptr;  // of rows that follow each other
  for (const SCommandRow& row : CommandRows()) {
    if (row.id == ECommand::kFileRecent || row.id == ECommand::kWindowList) continue;
    QAction* action = MakeAction(row);
    if (!row.is_choice) {
      choices = nullptr;
      continue;
    }
    if (choices == nullptr) choices = new QActionGroup(&window);
    choices->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    choices->addAction(action);
  }
  for (const SMenuRow& row : MenuRows())
    if (row.submenu == ECommand::kNone) MakeMenu(*window.menuBar()->addMenu(QString::fromUtf8(row.title)), row);
  MakeToolBar();
}

QAction* CCommandActions::MakeAction(const SCommandRow& row) {
  auto* action = new QAction(&window_);
  action->setObjectName(QString::fromUtf8(row.name));
  action->setStatusTip(StatusText(row));
  action->setToolTip(ToolTip(row));
  action->setShortcuts(ShortcutsOf(keys_.ShortcutsOf(row)));
  ShowKeys(row, *action);
  action->setCheckable(row.checked != nullptr);
  // A menu shows an icon in the place of the check mark, and a pressed icon is poor at saying "on".
  action->setIconVisibleInMenu(row.checked == nullptr);
  action->setMenuRole(QAction::NoRole);
  if (row.has_icon) action->setIcon(CommandIcon(QString::fromUtf8(row.name)));
  QObject::connect(action, &QAction::triggered, &window_, [this, &row] { run_(row); });
  actions_[row.id] = action;
  return action;
}

void CCommandActions::MakeMenu(QMenu& menu, const SMenuRow& menu_row) {
  menu.setObjectName(QString::fromUtf8(menu_row.name));
  for (const ECommand id : menu_row.commands) {
    if (id == ECommand::kNone) {
      menu.addSeparator();
    } else if (id == ECommand::kWindowList) {
      list_menus_[id] = &menu;
    } else if (id == ECommand::kFileRecent) {
      MakeListMenu(menu, CommandRow(id));
    } else if (const SMenuRow* submenu = FindSubmenu(id)) {
      MakeMenu(*menu.addMenu(QString::fromUtf8(submenu->title)), *submenu);
    } else {
      menu.addAction(actions_.at(id));
    }
  }
}

void CCommandActions::MakeListMenu(QMenu& menu, const SCommandRow& row) {
  QMenu* list = menu.addMenu(QString::fromUtf8(row.text));
  list->setObjectName(QString::fromUtf8(row.name));
  list->menuAction()->setStatusTip(StatusText(row));
  list_menus_[row.id] = list;
  actions_[row.id] = list->menuAction();
}

void CCommandActions::MakeToolBar() {
  QToolBar* bar = window_.addToolBar(QObject::tr("Standard"));
  bar->setObjectName("toolBar");
  bar->setIconSize(QSize(kIconSide, kIconSide));
  for (const ECommand id : ToolBarCommands()) {
    if (id == ECommand::kNone) {
      bar->addSeparator();
    } else {
      bar->addAction(actions_.at(id));
    }
  }
}

QAction* CCommandActions::Action(ECommand id) const {
  return actions_.at(id);
}

QMenu* CCommandActions::ListMenu(ECommand id) const {
  return list_menus_.at(id);
}

void CCommandActions::PopUp(const SMenuRow& row, const QPoint& at) {
  QMenu menu(&window_);
  MakeMenu(menu, row);
  menu.exec(at);
}

void CCommandActions::Refresh(const SCommandTarget& target) {
  for (const auto& [id, action] : actions_) {
    const SCommandRow& row = CommandRow(id);
    action->setEnabled(IsEnabled(row, target));
    if (row.checked != nullptr) action->setChecked(row.checked(target));
    if (row.object != nullptr) ShowKeys(row, *action, row.object(target));
  }
}

/// The menu shows an action's first shortcut by itself. A key of the 3D views is no shortcut: text behind a tab stands
/// where a menu shows keys.
void CCommandActions::ShowKeys(const SCommandRow& row, QAction& action, const std::string& object) const {
  const auto& keys = keys_.KeysOf(row);
  const bool is_shown = keys.empty() || (keys.size() == 1 && !keys_.ShortcutsOf(row).empty());
  action.setText(TextOf(row, object) + (is_shown ? QString() : '\t' + ToQString(ShownKeys(keys))));
}

void CCommandActions::RefreshKeys(const SCommandTarget& target) {
  for (const auto& [id, action] : actions_) {
    const SCommandRow& row = CommandRow(id);
    if (id == ECommand::kFileRecent) continue;
    action->setShortcuts(ShortcutsOf(keys_.ShortcutsOf(row)));
    ShowKeys(row, *action);
  }
  Refresh(target);
}

}  // namespace veldra
