#pragma once

#include <span>
#include <vector>

#include "settings/userkeys.h"

namespace veldra {

/// The commands of the extractor's window with their keys.
std::span<const SWindowKey> PodExtractorKeys();
/// The same rows, and behind them the keys of its menus.
std::vector<SKeyCommand> PodExtractorKeyCommands();

}  // namespace veldra
