#include "settings/windowkeys.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "platform/assert.h"
#include "settings/keyevents.h"

namespace veldra {

CWindowKeys::CWindowKeys(std::span<const SWindowKey> rows, std::vector<SKeyCommand> commands, const CSettings& settings,
                         QObject* window)
    : QObject(window), rows_(rows), settings_(settings), keys_(std::move(commands), settings.keys) {}

void CWindowKeys::Bind(QAction& action, const char* name) {
  const auto row = std::find_if(rows_.begin(), rows_.end(),
                                [&](const SWindowKey& each) { return std::string_view(each.name) == name; });
  VELDRA_ASSERT(row != rows_.end());
  action.setText(tr(row->text));
  const auto command = static_cast<size_t>(row - rows_.begin());
  actions_[command] = &action;
  action.setShortcuts(ShortcutsOf(keys_.Keys(command)));
}

void CWindowKeys::Refresh() {
  keys_.Read(settings_.keys);
  for (const auto& [command, action] : actions_)
    action->setShortcuts(ShortcutsOf(keys_.Keys(command)));
}

void CWindowKeys::RefreshAll() {
  for (QWidget* window : QApplication::topLevelWidgets())
    for (CWindowKeys* keys : window->findChildren<CWindowKeys*>())
      keys->Refresh();
}

}  // namespace veldra
