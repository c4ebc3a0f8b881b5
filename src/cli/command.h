#pragma once

#include <functional>

namespace CLI {
class App;
}

/// The commands, group by group. Each function here describes its commands to the parser; the one that the user names
/// leaves in RUN what is to be done once the whole command line has been understood.
namespace veldra {

class CSession;

enum EExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// Returns the exit status.
using CommandRun = std::function<int(CSession&)>;

void AddModelCommands(CLI::App& app, CommandRun& run);
void AddEditCommand(CLI::App& app, CommandRun& run);
void AddImportCommand(CLI::App& app, CommandRun& run);
void AddRenderCommand(CLI::App& app, CommandRun& run);
void AddTextureCommands(CLI::App& app, CommandRun& run);
void AddPodCommands(CLI::App& app, CommandRun& run);
void AddTruckCommands(CLI::App& app, CommandRun& run);

}  // namespace veldra
