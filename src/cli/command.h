#pragma once

#include <vector>

#include "cli/commandrow.h"

/// The commands, in the order of the help.
namespace veldra {

struct SGlobalOptions;

/// All of the command line. What its options say goes to OPTIONS.
SCommandRow Program(SGlobalOptions& options);

inline constexpr const char* kSkipStockHelp =
    "Leave out files that every installation of the game has, as far as the list of pod stock-list knows them; the "
    "built-in one is short";

std::vector<SCommandRow> ModelCommands();  ///< info, dump, json, textures, convert
SCommandRow EditCommand();
SCommandRow ImportCommand();
SCommandRow RenderCommand();
SCommandRow TextureCommands();
SCommandRow PodCommands();
SCommandRow TruckCommands();

}  // namespace veldra
