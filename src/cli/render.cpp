#include <CLI/CLI.hpp>
#include <memory>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "platform/png.h"
#include "render/modelpicture.h"

namespace veldra {

namespace {

struct SRenderOptions {
  std::string model;
  std::string out;
  std::pair<int, int> size = {800, 600};
  std::optional<ERenderMode> mode;
  std::optional<std::vector<double>> rotation;
  std::optional<SColor> background;
  bool axes = false;
  bool transparency = false;
};

SViewState ViewState(const CSession& session, const CBinModel& model, const SRenderOptions& options) {
  SViewState state = SViewState::FromSettings(session.Settings());
  if (options.mode) state.ChooseMode(*options.mode);
  if (options.rotation) state.rotation = {(*options.rotation)[0], (*options.rotation)[1], (*options.rotation)[2]};
  state.background = options.background.value_or(state.background);
  // What a switch of the command turns on is off without it: a picture should not hang on somebody's settings for that.
  state.axes = options.axes;
  state.transparency = options.transparency;
  state.ZoomToFit(model.Bounds());
  return state;
}

int Render(CSession& session, const SRenderOptions& options) {
  const auto document = session.Open(options.model);
  if (!document || session.CheckWritable(options.out) != kDone) return kFailed;
  const SViewState state = ViewState(session, document->Model(), options);
  SError error;
  const auto picture = DrawModelPicture(document->Model(), state, options.size.first, options.size.second, &error);
  if (!picture) return session.Fail("The picture could not be drawn.", error.what);
  return WritePng(options.out, *picture, &error) ? kDone : session.FailToWrite(options.out, error.what);
}

/// An option whose value PARSE understands, or says nothing to; FORM is what it looks like.
template <typename Target, typename Parse>
void AddParsed(CLI::App& command, const std::string& name, const std::string& form, const std::string& help,
               Target& target, Parse parse) {
  const auto take = [name, form, parse, &target](const std::string& text) {
    const auto value = parse(text);
    if (!value) throw CLI::ValidationError(name, "\"" + text + "\" does not have the form " + form);
    target = *value;
  };
  command.add_option_function<std::string>(name, take, help)->type_name(form);
}

std::optional<ERenderMode> ParseMode(const std::string& text) {
  if (text == "vertices") return ERenderMode::kVertices;
  if (text == "wireframe") return ERenderMode::kWireframe;
  if (text == "solid") return ERenderMode::kSolid;
  if (text == "textured") return ERenderMode::kTextured;
  return std::nullopt;
}

}  // namespace

void AddRenderCommand(CLI::App& app, CommandRun& run) {
  const auto options = std::make_shared<SRenderOptions>();
  CLI::App* const command = app.add_subcommand("render", "Draw the model into a PNG file; needs no display");
  command->add_option("MODEL", options->model, "Model file")->required();
  command->add_option("OUT", options->out, "PNG file to write")->required();
  AddParsed(*command, "--size", "WxH", "Size in pixels (default: 800x600)", options->size, ParsePictureSize);
  AddParsed(*command, "--mode", "vertices|wireframe|solid|textured", "Render mode (default: that of new views)",
            options->mode, ParseMode);
  AddParsed(*command, "--rotate", "X,Y,Z", "Rotation in degrees (default: that of new views)", options->rotation,
            [](const std::string& text) { return ParseNumbers(text, 3); });
  AddParsed(*command, "--background", "RRGGBB", "Colour behind the model (default: that of the settings)",
            options->background, ParseColor);
  command->add_flag("--axes", options->axes, "Draw the axes")->disable_flag_override();
  command->add_flag("--transparency", options->transparency, "Let the transparent texels of faces through")
      ->disable_flag_override();
  command->callback([options, &run] { run = [options](CSession& session) { return Render(session, *options); }; });
}

}  // namespace veldra
