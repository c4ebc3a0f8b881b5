#include "truck/truck.h"

#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/trucktools.h"
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

int Show(CSession& session, const STruckOptions& options) {
  const auto truck = OpenTruck(session, options.truck);
  if (!truck) return kFailed;
  return session.Print(options.json ? TruckJson(*truck) : TruckText(*truck));
}

int Rewrite(CSession& session, const STruckOptions& options) {
  const auto truck = OpenTruckToWrite(session, options.truck);
  if (!truck) return kFailed;
  return SaveTruck(session, *truck, options.out);
}

int PrintNeeded(CSession& session, const STruckOptions& options) {
  const auto truck = OpenTruck(session, options.truck);
  if (!truck) return kFailed;
  const STruckDependencies needed = truck->GetDependencies();
  std::string out;
  const auto add = [&](const char* kind, const std::vector<std::string>& names) {
    for (const std::string& name : names)
      out += std::string(kind) + " " + DisplayName(name) + "\n";
  };
  add("model", needed.models);
  add("texture", needed.textures);
  add("palette", needed.palettes);
  add("sound", needed.sounds);
  return session.Print(out);
}

int Pack(CSession& session, const STruckOptions& options) {
  if (options.truck == kStandardStream)
    return session.Fail("A truck that is packed needs a file of its own.", "Standard input has no name to give it.");
  if (!OpenTruckToWrite(session, options.truck)) return kFailed;
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

/// OPTIONS are those behind the truck's file; all fill VALUES.
SCommandRow Command(const char* name, const char* help, TruckAction action,
                    const std::shared_ptr<STruckOptions>& values, const std::vector<SOptionRow>& options = {}) {
  SCommandRow command = {.name = name,
                         .help = help,
                         .options = {Argument("TRK", "Truck file", values->truck)},
                         .run = [values, action](CSession& session) { return action(session, *values); }};
  command.options.insert(command.options.end(), options.begin(), options.end());
  return command;
}

}  // namespace

namespace {

/// KNOWN gets the number of lines that are a truck's.
std::optional<CTruck> LoadTruck(CSession& session, const std::string& name, int& known) {
  CTruck truck;
  SError error;
  if (name != kStandardStream) {
    if (truck.Load(name, &error, &known)) return truck;
  } else {
    // It has no name, and so no extension that would have to be right.
    const std::string path = session.InputPath(name);
    const auto text = path.empty() ? std::nullopt : ReadTextFile(path, &error);
    if (text) known = truck.Parse(text->Text());
    if (text) return truck;
  }
  session.Fail(kFailedToLoadTruck, name + ": " + error.what);
  return std::nullopt;
}

}  // namespace

std::optional<CTruck> OpenTruck(CSession& session, const std::string& name) {
  int known = 0;
  auto truck = LoadTruck(session, name, known);
  if (truck && known == 0)
    session.Questions().Message({.text = Format(kNothingKnownText, name.c_str()), .icon = EIcon::kWarning});
  return truck;
}

std::optional<CTruck> OpenTruckToWrite(CSession& session, const std::string& name) {
  int known = 0;
  auto truck = LoadTruck(session, name, known);
  if (!truck || known > 0) return truck;
  const SMessage question = {.text = Format(kNothingKnownText, name.c_str()) + "\nGo on all the same?",
                             .icon = EIcon::kWarning,
                             .usual = EAnswer::kNo};
  return session.Questions().AskYesNo(question) == EAnswer::kYes ? std::move(truck) : std::nullopt;
}

int SaveTruck(CSession& session, const CTruck& truck, const std::string& out) {
  if (out == kStandardStream) return session.Pass(truck.FileText());
  SError error;
  return truck.Save(out, &error) ? kDone : session.Fail(kFailedToOpenDestination, out + ": " + error.what);
}

SCommandRow TruckCommands() {
  const auto values = std::make_shared<STruckOptions>();
  SCommandRow group = {.name = "truck",
                       .help = "Truck files",
                       .commands = {
                           Command("show", "Print a truck", Show, values, {Flag("--json", "As JSON", values->json)}),
                           Command("rewrite", "Read a truck and write it again", Rewrite, values,
                                   {TextOutput("OUT", "Truck file to write", values->out)}),
                           Command("deps", "Print the files that a truck needs, one a line", PrintNeeded, values),
                           Command("pack", "Write an archive of a truck and all that it needs", Pack, values,
                                   {Output("POD", "Archive to write", values->out),
                                    Flag("--skip-stock", "Leave out files that every installation has. " + StockNote(),
                                         values->skip_stock)}),
                       }};
  for (SCommandRow& command : TruckToolCommands())
    group.commands.push_back(std::move(command));
  return group;
}

}  // namespace veldra
