#include "truck/truck.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/session.h"
#include "packing/packtruck.h"
#include "platform/text.h"
#include "settings/coptools.h"
#include "truck/truckreport.h"

namespace veldra {

namespace {

struct STruckOptions {
  std::string truck;
  std::string out;
  bool json = false;
  bool skip_stock = false;
};

/// Nothing when it cannot be loaded; the user has been told why.
std::optional<CTruck> OpenTruck(CSession& session, const std::string& path) {
  CTruck truck;
  SError error;
  if (truck.Load(path, &error)) return truck;
  session.Fail(kFailedToLoadTruck, path + ": " + error.what);
  return std::nullopt;
}

int Show(CSession& session, const STruckOptions& options) {
  const auto truck = OpenTruck(session, options.truck);
  if (!truck) return kFailed;
  return session.Print(options.json ? TruckJson(*truck) : TruckText(*truck));
}

int Rewrite(CSession& session, const STruckOptions& options) {
  const auto truck = OpenTruck(session, options.truck);
  if (!truck) return kFailed;
  SError error;
  return truck->Save(options.out, &error) ? kDone
                                          : session.Fail(kFailedToOpenDestination, options.out + ": " + error.what);
}

int PrintNeeded(CSession& session, const STruckOptions& options) {
  const auto truck = OpenTruck(session, options.truck);
  if (!truck) return kFailed;
  const STruckDependencies needed = truck->GetDependencies();
  std::string out;
  const auto add = [&](const char* kind, const std::vector<std::string>& names) {
    for (const std::string& name : names)
      out += std::string(kind) + " " + ToUtf8(name) + "\n";
  };
  add("model", needed.models);
  add("texture", needed.textures);
  add("palette", needed.palettes);
  add("sound", needed.sounds);
  return session.Print(out);
}

int Pack(CSession& session, const STruckOptions& options) {
  if (!OpenTruck(session, options.truck)) return kFailed;
  const CStockFiles stock(session.SettingsFolder());
  const SSearchPlaces places = PlacesForTruck(options.truck, session.Settings(), CopTools::InstallationDirectory());
  const STruckPackPlan plan = PlanTruckPack(options.truck, places, stock);
  const std::vector<const STruckPackRow*> lacking = plan.Lacking(options.skip_stock);
  if (!lacking.empty()) {
    SMessage question = {.text = Format("%zu files were not found. Pack the truck without them?", lacking.size()),
                         .icon = EIcon::kQuestion};
    for (const STruckPackRow* row : lacking)
      question.details += LackingText(*row) + "\n";
    if (session.Questions().AskYesNo(question) != EAnswer::kYes) return kFailed;
  }
  const std::vector<SPodSource> sources = plan.Sources(options.skip_stock);
  if (!CreatePod(session.Questions(), options.out, sources)) return kFailed;
  return session.Print(Format("Packed %zu files\n", sources.size()));
}

using TruckAction = int (*)(CSession& session, const STruckOptions& options);

CLI::App* Add(CLI::App& group, CommandRun& run, const char* name, const char* help,
              const std::shared_ptr<STruckOptions>& options, TruckAction action) {
  CLI::App* const command = group.add_subcommand(name, help);
  command->add_option("TRK", options->truck, "Truck file")->required();
  command->callback(
      [options, action, &run] { run = [options, action](CSession& session) { return action(session, *options); }; });
  return command;
}

}  // namespace

void AddTruckCommands(CLI::App& app, CommandRun& run) {
  CLI::App* const group = app.add_subcommand("truck", "Truck files");
  group->require_subcommand(0, 1);
  const auto options = std::make_shared<STruckOptions>();
  Add(*group, run, "show", "Print a truck", options, Show)->add_flag("--json", options->json, "As JSON");
  Add(*group, run, "rewrite", "Read a truck and write it again", options, Rewrite)
      ->add_option("OUT", options->out, "Truck file to write")
      ->required();
  Add(*group, run, "deps", "Print the files that a truck needs, one a line", options, PrintNeeded);
  CLI::App* const pack = Add(*group, run, "pack", "Write an archive of a truck and all that it needs", options, Pack);
  pack->add_option("POD", options->out, "Archive to write")->required();
  pack->add_flag("--skip-stock", options->skip_stock, "Leave out files that every installation of the game has");
}

}  // namespace veldra
