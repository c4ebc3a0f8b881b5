#include "packing/gamecommand.h"

#include "platform/files.h"
#include "platform/paths.h"

namespace veldra {

std::optional<SGameCommand> ReadGameCommand(const std::string& text, const SGameCommandPlaces& places) {
  const Filling fillings[] = {{"{archive}", places.archive}, {"{truck}", places.truck}, {"{game}", places.game}};
  const auto call = ReadProgramCall(text, fillings);
  if (!call) return std::nullopt;
  SGameCommand command = {.call = *call, .folder = {}};
  for (const std::string& folder : {places.game, DirectoryPart(call->program)})
    if (command.folder.empty() && !folder.empty() && IsDirectory(folder)) command.folder = folder;
  return command;
}

}  // namespace veldra
