#pragma once

#include <span>
#include <vector>

#include "settings/userkeys.h"

namespace veldra {

/// The commands of the truck editor with their keys; its pages are among them.
std::span<const SWindowKey> TruckEditorKeys();
/// The same rows, and behind them the keys of its menus.
std::vector<SKeyCommand> TruckEditorKeyCommands();

}  // namespace veldra
