#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "interchange/modelreport.h"
#include "interchange/waveexport.h"
#include "interchange/wavefront.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

// --- info -----------------------------------------------------------------------------------------------------------

struct SInfoOptions {
  std::string model;
  std::optional<int32_t> face;
  std::optional<int32_t> vertex;
};

/// kDone when INDEX is not given or there is such a THING ("face").
int CheckIndex(CSession& session, const std::optional<int32_t>& index, int32_t count, const char* thing) {
  if (!index || (*index >= 0 && *index < count)) return kDone;
  return session.Fail(Format("There is no %s %d: the model has %d of them, counted from 0.", thing, *index, count));
}

int Info(CSession& session, const SInfoOptions& options) {
  const auto document = session.Open(options.model);
  if (!document) return kFailed;
  const CBinModel& model = document->Model();
  if (CheckIndex(session, options.face, model.FaceCount(), "face") != kDone ||
      CheckIndex(session, options.vertex, model.VertexCount(), "vertex") != kDone) {
    return kFailed;
  }
  const CBinFace* const face = options.face ? &model.Face(*options.face) : nullptr;
  const CBinVertex* const vertex = options.vertex ? &model.Vertex(*options.vertex) : nullptr;
  return session.Print(ModelInformation(model, face, vertex));
}

SCommandRow InfoCommand() {
  const auto options = std::make_shared<SInfoOptions>();
  const auto index = [](std::optional<int32_t>& target) { return Parsed(target, ParseInteger, "is not an integer"); };
  return {.name = "info",
          .help = "Print what the model holds",
          .options = {Argument("MODEL", "Model file", options->model),
                      Option("--face", "N", "Face to describe too, counted from 0", index(options->face)),
                      Option("--vertex", "N", "Vertex to describe too, counted from 0", index(options->vertex))},
          .run = [options](CSession& session) { return Info(session, *options); }};
}

// --- dump, json, textures -------------------------------------------------------------------------------------------

struct SReportRow {
  const char* command;
  const char* help;
  std::string (*text)(const CBinModel& model, const std::string& path);
};

constexpr SReportRow kReports[] = {
    {"dump", "List everything in the model face by face",
     [](const CBinModel& model, const std::string& path) { return ModelDump(model, FileNamePart(path)); }},
    {"json", "Print the whole model as JSON",
     [](const CBinModel& model, const std::string&) { return ModelJson(model); }},
    {"textures", "List the names of the model's textures",
     [](const CBinModel& model, const std::string&) { return TextureList(model); }},
};

struct SReportOptions {
  std::string model;
  std::string out;
};

int Report(CSession& session, const SReportRow& row, const SReportOptions& options) {
  const auto document = session.Open(options.model);
  if (!document) return kFailed;
  return session.PrintOrWrite(row.text(document->Model(), options.model), options.out);
}

SCommandRow ReportCommand(const SReportRow& row) {
  const auto options = std::make_shared<SReportOptions>();
  return {.name = row.command,
          .help = row.help,
          .options = {Argument("MODEL", "Model file", options->model),
                      Required(TextOutput("OUT", "File to write (default: standard output)", options->out), false)},
          .run = [options, &row](CSession& session) { return Report(session, row, *options); }};
}

// --- convert --------------------------------------------------------------------------------------------------------

const Words<std::optional<EModelVariant>> kConvertKinds = {{"mtm", EModelVariant::kMtm},
                                                           {"backdrop", EModelVariant::kBackdrop},
                                                           {"hellbender", EModelVariant::kHellbender},
                                                           {"obj", std::nullopt}};

struct SConvertOptions {
  std::string model;
  std::string out;
  std::optional<EModelVariant> variant;  ///< nothing for a Wavefront file
  std::optional<double> scale;
  bool with_materials = false;
};

int ConvertToWavefront(CSession& session, const CBinModel& model, const SConvertOptions& options) {
  const std::string& path = options.out;
  if (path == kStandardStream) return session.Pass(WavefrontText(model));
  SError error;
  if (session.CheckWritable(path) != kDone) return kFailed;
  const bool is_done = options.with_materials ? ExportWithMaterials(model, path, {}, session.DefaultColors(), &error)
                                              : ExportWavefront(model, path, &error);
  return is_done ? kDone : session.FailToWrite(path, error.what);
}

/// "" or what is wrong.
std::string CheckConversion(const SConvertOptions& options) {
  if (!options.with_materials) return "";
  if (options.variant) return "--materials: only with --to obj";
  return options.out == kStandardStream ? "--materials: several files cannot go to standard output" : "";
}

int Convert(CSession& session, const SConvertOptions& options) {
  const auto document = session.Open(options.model);
  if (!document) return kFailed;
  if (!options.variant) return ConvertToWavefront(session, document->Model(), options);
  if (options.out == kStandardStream) return session.Fail("A model file cannot be written to standard output.");
  // Not the setting's: what a script writes must not depend on what somebody last typed into a window.
  session.Questions().SetScaleFactor(options.scale.value_or(document->Model().ScaleWord() / 65536.0));
  return document->Saver().SaveAsVariant(options.out, *options.variant) ? kDone : kFailed;
}

SCommandRow ConvertCommand() {
  const auto options = std::make_shared<SConvertOptions>();
  return {.name = "convert",
          .help = "Save the model as another kind of file, with the save checks",
          .options = {Argument("MODEL", "Model file", options->model), TextOutput("OUT", "File to write", options->out),
                      Required(Choice("--to", kConvertKinds, "Kind of file", options->variant)),
                      Option("--scale", "F", "Hellbender scale factor (default: that in the model file)",
                             Parsed(options->scale, ParseNumber, "is not a number")),
                      Flag("--materials", "Of a Wavefront file: with materials, textures and groups",
                           options->with_materials)},
          .run = [options](CSession& session) { return Convert(session, *options); },
          .check = [options] { return CheckConversion(*options); }};
}

}  // namespace

std::vector<SCommandRow> ModelCommands() {
  std::vector<SCommandRow> commands = {InfoCommand()};
  for (const SReportRow& row : kReports)
    commands.push_back(ReportCommand(row));
  commands.push_back(ConvertCommand());
  return commands;
}

}  // namespace veldra
