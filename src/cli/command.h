#pragma once

#include <string>
#include <vector>

#include "cli/commandrow.h"

/// The commands, in the order of the help.
namespace veldra {

struct SGlobalOptions;

/// All of the command line. What its options say goes to OPTIONS.
SCommandRow Program(SGlobalOptions& options);

/// The built-in list's shortcoming and the way out.
std::string StockNote();

std::vector<SCommandRow> ModelCommands();  ///< info, dump, json, textures, convert
SCommandRow CheckCommand();
SCommandRow EditCommand();
SCommandRow ShapeCommand();
SCommandRow ImportCommand();
SCommandRow RenderCommand();
SCommandRow TextureCommands();
SCommandRow PodCommands();
SCommandRow ThumbnailCommand();
SCommandRow TruckCommands();

}  // namespace veldra
