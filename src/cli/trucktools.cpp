#include "cli/trucktools.h"

#include <memory>

#include "cli/findings.h"
#include "cli/pictureoptions.h"
#include "cli/suggest.h"
#include "packing/packtruck.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "settings/coptools.h"
#include "truck/truckjson.h"
#include "truckscene/truckcheck.h"
#include "truckscene/truckscene.h"

namespace veldra {

namespace {

// --- from-json ------------------------------------------------------------------------------------------------------

struct SFromJsonOptions {
  std::string json;
  std::string out;
};

int FromJson(CSession& session, const SFromJsonOptions& options) {
  const std::string path = session.InputPath(options.json);
  if (path.empty()) return kFailed;
  SError error;
  const auto text = ReadTextFile(path, &error);
  if (!text) return session.Fail(Format("\"%s\" could not be opened.", options.json.c_str()), error.what);
  CTruck truck;
  const STruckJsonFault fault = ReadTruckJson(text->Text(), truck);
  if (fault.Empty()) return SaveTruck(session, truck, options.out);
  return session.Fail(options.json + ": " + fault.what + DidYouMean(fault.unknown, fault.known));
}

SCommandRow FromJsonCommand() {
  const auto options = std::make_shared<SFromJsonOptions>();
  return {.name = "from-json",
          .help = "Write a truck from what show --json prints",
          .options = {Argument("JSON", "File to read", options->json),
                      TextOutput("TRK", "Truck file to write", options->out)},
          .run = [options](CSession& session) { return FromJson(session, *options); }};
}

// --- render ---------------------------------------------------------------------------------------------------------

/// A truck and where the files that it names are looked for.
class CTruckPlaces {
 public:
  CTruckPlaces(const CSession& session, const std::string& path)
      : stock_(session.SettingsFolder()),
        files_(path, PlacesForTruck(path, session.Settings(), CopTools::InstallationDirectory()), stock_) {}
  CTruckFiles& Files() { return files_; }

 private:
  CStockFiles stock_;
  CTruckFiles files_;
};

struct STruckRenderOptions {
  std::string truck;
  std::string out;
  SPictureOptions picture;
};

int RenderTruck(CSession& session, const STruckRenderOptions& options) {
  return DrawTruck(session, options.truck, options.picture, options.out);
}

SCommandRow RenderTruckCommand() {
  const auto options = std::make_shared<STruckRenderOptions>();
  SCommandRow command = {
      .name = "render",
      .help = "Draw the truck, put together, into a PNG file",
      .options = {Argument("TRK", "Truck file", options->truck), Output("OUT", "PNG file to write", options->out)},
      .run = [options](CSession& session) { return RenderTruck(session, *options); }};
  for (SOptionRow& row : PictureRows(options->picture))
    command.options.push_back(std::move(row));
  return command;
}

// --- check ----------------------------------------------------------------------------------------------------------

struct STruckCheckOptions {
  std::string truck;
  bool json = false;
};

int CheckTruck(CSession& session, const STruckCheckOptions& options) {
  const auto truck = OpenTruck(session, options.truck);
  if (!truck) return kFailed;
  CTruckPlaces places(session, options.truck);
  const STruckReport report = CTruckCheck(places.Files()).Run(*truck, FileNamePart(options.truck));
  CFindings findings;
  for (const STruckFinding& found : report.findings)
    findings.Add(found.model.empty() ? options.truck : ToUtf8(found.model), found.kind, found.finding);
  for (const STruckReport::SUnread& unread : report.unread)
    session.Fail(unread.text, unread.details);
  const int status = findings.Print(session, options.json);
  return report.unread.empty() ? status : kFailed;
}

SCommandRow CheckTruckCommand() {
  const auto options = std::make_shared<STruckCheckOptions>();
  return {.name = "check",
          .help = "List what is wrong with a truck, its models and their files; status 1 if there is anything",
          .options = {Argument("TRK", "Truck file", options->truck), Flag("--json", "As JSON", options->json)},
          .run = [options](CSession& session) { return CheckTruck(session, *options); }};
}

}  // namespace

int DrawTruck(CSession& session, const std::string& path, const SPictureOptions& options, const std::string& out) {
  const auto truck = OpenTruck(session, path);
  if (!truck) return kFailed;
  CTruckPlaces places(session, path);
  CTruckTextures textures(places.Files(), session.DefaultColors());
  CTruckScene scene;
  scene.PutTogether(*truck, places.Files(), textures);
  if (scene.PartBounds() == SBounds()) return session.Fail("None of the truck's models were found.", path);
  return DrawPicture(session, scene.Model(), scene.PartBounds(), options, out);
}

std::vector<SCommandRow> TruckToolCommands() {
  return {FromJsonCommand(), RenderTruckCommand(), CheckTruckCommand()};
}

}  // namespace veldra
