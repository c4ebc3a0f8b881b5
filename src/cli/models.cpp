#include <CLI/CLI.hpp>
#include <memory>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "interchange/modelreport.h"
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

void AddIndexOption(CLI::App& command, const std::string& name, std::optional<int32_t>& index,
                    const std::string& help) {
  const auto take = [name, &index](const std::string& text) {
    index = ParseInteger(text);
    if (!index) throw CLI::ValidationError(name, "\"" + text + "\" is not an integer");
  };
  command.add_option_function<std::string>(name, take, help)->type_name("N");
}

void AddInfo(CLI::App& app, CommandRun& run) {
  const auto options = std::make_shared<SInfoOptions>();
  CLI::App* const command = app.add_subcommand("info", "Print what the model holds");
  command->add_option("MODEL", options->model, "Model file")->required();
  AddIndexOption(*command, "--face", options->face, "Face to describe too, counted from 0");
  AddIndexOption(*command, "--vertex", options->vertex, "Vertex to describe too, counted from 0");
  command->callback([options, &run] { run = [options](CSession& session) { return Info(session, *options); }; });
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

void AddReport(CLI::App& app, CommandRun& run, const SReportRow& row) {
  const auto options = std::make_shared<SReportOptions>();
  CLI::App* const command = app.add_subcommand(row.command, row.help);
  command->add_option("MODEL", options->model, "Model file")->required();
  command->add_option("OUT", options->out, "File to write (default: standard output)");
  command->callback(
      [options, &row, &run] { run = [options, &row](CSession& session) { return Report(session, row, *options); }; });
}

// --- convert --------------------------------------------------------------------------------------------------------

struct SConvertOptions {
  std::string model;
  std::string out;
  std::string to;
  std::optional<double> scale;
};

int ConvertToWavefront(CSession& session, const CBinModel& model, const std::string& path) {
  SError error;
  if (session.CheckWritable(path) != kDone) return kFailed;
  return ExportWavefront(model, path, &error) ? kDone : session.FailToWrite(path, error.what);
}

int Convert(CSession& session, const SConvertOptions& options) {
  const auto document = session.Open(options.model);
  if (!document) return kFailed;
  if (options.to == "obj") return ConvertToWavefront(session, document->Model(), options.out);
  // Not the setting's: what a script writes must not depend on what somebody last typed into a window.
  session.Questions().SetScaleFactor(options.scale.value_or(document->Model().ScaleWord() / 65536.0));
  const EModelVariant variant = options.to == "mtm"        ? EModelVariant::kMtm
                                : options.to == "backdrop" ? EModelVariant::kBackdrop
                                                           : EModelVariant::kHellbender;
  return document->Saver().SaveAsVariant(options.out, variant) ? kDone : kFailed;
}

void AddConvert(CLI::App& app, CommandRun& run) {
  const auto options = std::make_shared<SConvertOptions>();
  CLI::App* const command =
      app.add_subcommand("convert", "Save the model as another kind of file, with the save checks");
  command->add_option("MODEL", options->model, "Model file")->required();
  command->add_option("OUT", options->out, "File to write")->required();
  command->add_option("--to", options->to, "Kind of file")
      ->required()
      ->type_name("KIND")
      ->check(CLI::IsMember({"mtm", "backdrop", "hellbender", "obj"}));
  const auto take_scale = [options](const std::string& text) {
    options->scale = ParseNumber(text);
    if (!options->scale) throw CLI::ValidationError("--scale", "\"" + text + "\" is not a number");
  };
  command
      ->add_option_function<std::string>("--scale", take_scale,
                                         "Hellbender scale factor (default: that in the model file)")
      ->type_name("F");
  command->callback([options, &run] { run = [options](CSession& session) { return Convert(session, *options); }; });
}

}  // namespace

void AddModelCommands(CLI::App& app, CommandRun& run) {
  AddInfo(app, run);
  for (const SReportRow& row : kReports)
    AddReport(app, run, row);
  AddConvert(app, run);
}

}  // namespace veldra
