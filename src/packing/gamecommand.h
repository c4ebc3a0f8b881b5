#pragma once

#include "platform/programcall.h"

namespace veldra {

/// What the placeholders of the command that starts the game stand for, and where it runs.
struct SGameCommandPlaces {
  std::string archive;  ///< {archive}
  std::string truck;    ///< {truck}: its file; "" where none is meant
  std::string game;     ///< {game}: the folder
};

struct SGameCommand {
  SProgramCall call;
  std::string folder;  ///< in which it runs; "" for that of this program
};

/// TEXT as ReadProgramCall takes it. Nothing when it is empty.
std::optional<SGameCommand> ReadGameCommand(const std::string& text, const SGameCommandPlaces& places);

}  // namespace veldra
