#include "cli/cli.h"

#include <CLI/CLI.hpp>
#include <ostream>

#include "cli/command.h"
#include "cli/globaloptions.h"
#include "cli/session.h"

namespace veldra {

namespace {

void Describe(CLI::App& app, SGlobalOptions& options, CommandRun& run) {
  // A path that begins with "/" is a path on every system.
  app.allow_windows_style_options(false);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND ...");
  app.get_formatter()->label("TEXT", "PATH");
  app.set_version_flag("--version", VELDRA_VERSION, "Print the version and exit");
  app.require_subcommand(0, 1);
  AddGlobalOptions(app, options);
  AddModelCommands(app, run);
  AddEditCommand(app, run);
  AddImportCommand(app, run);
  AddRenderCommand(app, run);
  AddTextureCommands(app, run);
  AddPodCommands(app, run);
  AddTruckCommands(app, run);
  for (CLI::App* command : app.get_subcommands({}))
    command->group("Commands");
}

}  // namespace

int RunCli(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  SGlobalOptions options;
  CommandRun run;
  CLI::App app("Reads, changes, converts and draws models of Monster Truck Madness 2.", "veldra-cli");
  try {
    Describe(app, options, run);
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    app.parse(reversed);
    // Not left to the parser, which would say this of an unknown command too.
    if (!run) throw CLI::RequiredError("A command");
  } catch (const CLI::Error& error) {
    // Help and version come this way too, and go to standard output.
    return app.exit(error, out, err) == 0 ? kDone : kWrongUsage;
  }
  CSession session(options, out, err);
  return run(session);
}

}  // namespace veldra
