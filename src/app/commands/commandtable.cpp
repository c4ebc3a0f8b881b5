#include "app/commands/commandtable.h"

#include <algorithm>

#include "app/commands/commandrows.h"
#include "platform/assert.h"
#include "settings/userkeys.h"

namespace veldra {

std::span<const SCommandRow> CommandRows() {
  static const std::vector<SCommandRow> rows = [] {
    std::vector<SCommandRow> all;
    for (const auto part :
         {FileCommands(), EditCommands(), SelectCommands(), MakeCommands(), ViewCommands(), ModelCommands(),
          FaceCommands(), VertexCommands(), TextureCommands(), ToolCommands(), WindowCommands(), DockCommands()})
      all.insert(all.end(), part.begin(), part.end());
    return all;
  }();
  return rows;
}

const SCommandRow& CommandRow(ECommand id) {
  const auto rows = CommandRows();
  const auto row =
      std::find_if(rows.begin(), rows.end(), [id](const SCommandRow& candidate) { return candidate.id == id; });
  VELDRA_ASSERT(row != rows.end());
  return *row;
}

const SCommandRow* FindCommand(std::string_view name) {
  const auto rows = CommandRows();
  const auto row =
      std::find_if(rows.begin(), rows.end(), [name](const SCommandRow& each) { return each.name == name; });
  return row != rows.end() ? &*row : nullptr;
}

bool IsEnabled(const SCommandRow& row, const SCommandTarget& target) {
  return row.when == nullptr || row.when(target);
}

std::string CommandName(const SCommandRow& row) {
  return WithoutMenuSigns(row.text);
}

QString StatusText(const SCommandRow& row) {
  return QString::fromUtf8(row.status).section('\n', 0, 0);
}

QString ToolTip(const SCommandRow& row) {
  const QString own = QString::fromUtf8(row.status).section('\n', 1);
  return own.isEmpty() ? QString::fromStdString(CommandName(row)) : own;
}

const SMenuRow* FindSubmenu(ECommand id) {
  if (id == ECommand::kNone) return nullptr;
  const auto menus = MenuRows();
  const auto menu = std::find_if(menus.begin(), menus.end(), [id](const SMenuRow& row) { return row.submenu == id; });
  return menu != menus.end() ? &*menu : nullptr;
}

}  // namespace veldra
