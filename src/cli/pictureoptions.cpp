#include "cli/pictureoptions.h"

#include "cli/values.h"
#include "platform/png.h"
#include "render/modelpicture.h"

namespace veldra {

namespace {

SViewState ViewState(const CSession& session, const SBounds& bounds, const SPictureOptions& options) {
  SViewState state = SViewState::FromSettings(session.Settings());
  if (options.mode) state.ChooseMode(*options.mode);
  if (options.rotation) state.rotation = {(*options.rotation)[0], (*options.rotation)[1], (*options.rotation)[2]};
  state.background = options.background.value_or(state.background);
  // What a switch of the command turns on is off without it: a picture should not hang on somebody's settings for that.
  state.axes = options.axes;
  state.transparency = options.transparency;
  state.ZoomToFit(bounds);
  return state;
}

const Words<ERenderMode> kModes = {{"vertices", ERenderMode::kVertices},
                                   {"wireframe", ERenderMode::kWireframe},
                                   {"solid", ERenderMode::kSolid},
                                   {"textured", ERenderMode::kTextured}};

}  // namespace

std::vector<SOptionRow> PictureRows(SPictureOptions& options) {
  const auto take_size = [&options](const std::string& text) { return TakePictureSize(text, options.size); };
  const auto parse_rotation = [](const std::string& text) { return ParseNumbers(text, 3); };
  return {Option("--size", "WxH", "Size in pixels (default: 800x600)", take_size),
          Choice("--mode", kModes, "Render mode (default: that of new views)", options.mode),
          Option("--rotate", "X,Y,Z", "Rotation in degrees (default: that of new views)",
                 Parsed(options.rotation, parse_rotation, "does not have the form X,Y,Z")),
          Option("--background", "RRGGBB", "Colour behind the model (default: that of the settings)",
                 Parsed(options.background, ParseColor, "does not have the form RRGGBB")),
          Flag("--axes", "Draw the axes", options.axes),
          Flag("--transparency", "Let the transparent texels of faces through", options.transparency)};
}

int DrawPicture(CSession& session, const CBinModel& model, const SBounds& bounds, const SPictureOptions& options,
                const std::string& out) {
  if (session.CheckWritable(out) != kDone) return kFailed;
  const SViewState state = ViewState(session, bounds, options);
  SError error;
  const auto picture = DrawModelPicture(model, state, options.size.first, options.size.second, &error);
  if (!picture) return session.Fail("The picture could not be drawn.", error.what);
  return WritePng(out, *picture, &error) ? kDone : session.FailToWrite(out, error.what);
}

}  // namespace veldra
