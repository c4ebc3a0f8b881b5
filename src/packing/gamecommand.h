#pragma once

#include <optional>
#include <string>
#include <vector>

namespace veldra {

/// What the placeholders of a command stand for, and where it runs.
struct SGameCommandPlaces {
  std::string archive;  ///< {archive}
  std::string truck;    ///< {truck}: its file; "" where none is meant
  std::string game;     ///< {game}: the folder
};

struct SGameCommand {
  std::string program;
  std::vector<std::string> arguments;
  std::string folder;  ///< in which it runs; "" for that of this program
};

/// TEXT, a program and its arguments with blanks between them and quotes round what has blanks in it, as one starts it
/// without a shell: what a placeholder stands for is never taken apart. The path of a program alone needs no quotes.
/// Nothing when TEXT is empty.
std::optional<SGameCommand> ReadGameCommand(const std::string& text, const SGameCommandPlaces& places);

}  // namespace veldra
