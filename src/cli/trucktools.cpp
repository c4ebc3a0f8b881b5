#include "cli/trucktools.h"

#include <algorithm>
#include <memory>

#include "archive/podnames.h"
#include "cli/findings.h"
#include "cli/pictureoptions.h"
#include "cli/suggest.h"
#include "packing/packtruck.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "settings/coptools.h"
#include "truck/truckjson.h"
#include "truck/truckpoints.h"
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

class CTruckCheck {
 public:
  CTruckCheck(CSession& session, const std::string& path) : session_(session), path_(path), places_(session, path) {}

  /// False when a model could not be looked into; the user has been told.
  bool Run(const CTruck& truck, CFindings& findings) {
    const STruckDependencies needed = truck.GetDependencies();
    CheckName(FileNamePart(path_), findings);
    bool all_read = true;
    for (const std::string& model : needed.models) {
      CheckName(model, findings);
      if (IsThere(model, findings)) all_read = CheckOne(model, findings) && all_read;
    }
    for (const auto* names : {&needed.textures, &needed.palettes, &needed.sounds}) {
      for (const std::string& name : *names) {
        CheckName(name, findings);
        IsThere(name, findings);
      }
    }
    return all_read;
  }

 private:
  using EPlace = SDependency::EPlace;

  /// The file itself lies somewhere; a stock file that does not is missed by nobody.
  bool IsThere(const std::string& name, CFindings& findings) {
    const STruckFile& file = places_.Files().Find(name, kTypeOther);
    if (file.place != EPlace::kMissing) return true;
    if (!file.is_stock) findings.Add(path_, "missing-file", ToUtf8(name) + " is not found");
    return false;
  }

  void CheckName(const std::string& name, CFindings& findings) {
    const SNameResult usable = PodEntryName(name);
    if (usable.Ok()) return;
    std::string text = usable.details.empty() ? usable.refusal : usable.refusal + ": " + usable.details;
    std::ranges::replace(text, '\n', ' ');
    findings.Add(path_, "unusable-name", text);
  }

  bool CheckOne(const std::string& model, CFindings& findings) {
    SError error;
    const auto bytes = ReadFilePart(places_.Files().Find(model, kTypeBin).source.bytes, &error);
    if (!bytes) {
      session_.Fail(Format("\"%s\" could not be opened.", model.c_str()), error.what);
      return false;
    }
    const auto width = [this](const std::string& name) -> std::optional<int> {
      constexpr int kGoodWidth = 64;
      const STruckFile& file = places_.Files().Find(name, kTypeRaw);
      if (file.place == EPlace::kMissing) return file.is_stock ? std::optional<int>(kGoodWidth) : std::nullopt;
      const SFilePart& part = file.source.bytes;
      return TextureSizeOfLength(part.length ? *part.length : FileLength(part.path).value_or(0));
    };
    return CheckModelBytes(session_, ToUtf8(model), bytes->View(), width, findings);
  }

  CSession& session_;
  const std::string& path_;
  CTruckPlaces places_;
};

struct STruckCheckOptions {
  std::string truck;
  bool json = false;
};

int CheckTruck(CSession& session, const STruckCheckOptions& options) {
  const auto truck = OpenTruck(session, options.truck);
  if (!truck) return kFailed;
  CFindings findings;
  const bool all_read = CTruckCheck(session, options.truck).Run(*truck, findings);
  const int status = findings.Print(session, options.json);
  return all_read ? status : kFailed;
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
  scene.Follow(*truck, places.Files(), textures, kUnitsPerFoot);
  const double units = GuessUnitsPerFoot(*truck, scene.BodyLength());
  if (units != kUnitsPerFoot) scene.Follow(*truck, places.Files(), textures, units);
  if (scene.PartBounds() == SBounds()) return session.Fail("None of the truck's models were found.", path);
  return DrawPicture(session, scene.Model(), scene.PartBounds(), options, out);
}

std::vector<SCommandRow> TruckToolCommands() {
  return {FromJsonCommand(), RenderTruckCommand(), CheckTruckCommand()};
}

}  // namespace veldra
