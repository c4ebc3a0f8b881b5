#include <memory>
#include <optional>

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

const Words<ERenderMode> kModes = {{"vertices", ERenderMode::kVertices},
                                   {"wireframe", ERenderMode::kWireframe},
                                   {"solid", ERenderMode::kSolid},
                                   {"textured", ERenderMode::kTextured}};

}  // namespace

SCommandRow RenderCommand() {
  const auto options = std::make_shared<SRenderOptions>();
  const auto take_size = [options = options.get()](const std::string& text) {
    return TakePictureSize(text, options->size);
  };
  const auto parse_rotation = [](const std::string& text) { return ParseNumbers(text, 3); };
  return {.name = "render",
          .help = "Draw the model into a PNG file; needs no display",
          .options = {Argument("MODEL", "Model file", options->model), Output("OUT", "PNG file to write", options->out),
                      Option("--size", "WxH", "Size in pixels (default: 800x600)", take_size),
                      Choice("--mode", kModes, "Render mode (default: that of new views)", options->mode),
                      Option("--rotate", "X,Y,Z", "Rotation in degrees (default: that of new views)",
                             Parsed(options->rotation, parse_rotation, "does not have the form X,Y,Z")),
                      Option("--background", "RRGGBB", "Colour behind the model (default: that of the settings)",
                             Parsed(options->background, ParseColor, "does not have the form RRGGBB")),
                      Flag("--axes", "Draw the axes", options->axes),
                      Flag("--transparency", "Let the transparent texels of faces through", options->transparency)},
          .run = [options](CSession& session) { return Render(session, *options); }};
}

}  // namespace veldra
