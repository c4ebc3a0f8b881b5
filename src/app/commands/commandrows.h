#pragma once

#include "app/commands/commandtable.h"

/// The command table by menus: each file commands_<menu>.cpp holds the rows of one. CommandRows() joins them.
namespace veldra {

std::span<const SCommandRow> FileCommands();
std::span<const SCommandRow> EditCommands();
std::span<const SCommandRow> SelectCommands();
std::span<const SCommandRow> MakeCommands();
std::span<const SCommandRow> ViewCommands();
std::span<const SCommandRow> ModelCommands();
std::span<const SCommandRow> FaceCommands();
std::span<const SCommandRow> VertexCommands();
std::span<const SCommandRow> TextureCommands();
std::span<const SCommandRow> ToolCommands();
std::span<const SCommandRow> WindowCommands();
std::span<const SCommandRow> DockCommands();

}  // namespace veldra
