#include "cli/cli.h"

#include <iostream>
#include <new>

#include "cli/command.h"
#include "cli/globaloptions.h"
#include "cli/parser.h"
#include "cli/session.h"
#include "platform/process.h"

namespace veldra {

SCommandRow Program(SGlobalOptions& options) {
  SCommandRow program = {.name = "veldra-cli",
                         .help = "Reads, changes, converts and draws models of Monster Truck Madness 2.",
                         .options = GlobalOptions(options),
                         .commands = ModelCommands()};
  for (const auto command : {CheckCommand, EditCommand, ShapeCommand, ImportCommand, RenderCommand, TextureCommands,
                             PodCommands, TruckCommands, ThumbnailCommand})
    program.commands.push_back(command());
  return program;
}

int RunCli(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) try {
  SGlobalOptions options;
  const SCommandRow program = Program(options);
  const SParsedLine line = ParseCommandLine(program, VELDRA_VERSION, arguments, out, err);
  if (line.command == nullptr) return line.status;
  CSession session(options, out, err);
  if (&err == &std::cerr && IsStandardErrorTerminal()) session.Questions().ShowProgressOn(err);
  const int status = session.CheckSettings();
  return status == kDone ? line.command->run(session) : status;
} catch (const std::bad_alloc&) {
  // Wherever that was: all files that were to be replaced are as they were.
  err << kNotEnoughMemoryText;
  return kFailed;
}

}  // namespace veldra
