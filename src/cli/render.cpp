#include <memory>

#include "cli/command.h"
#include "cli/pictureoptions.h"
#include "cli/session.h"

namespace veldra {

namespace {

struct SRenderOptions {
  std::string model;
  std::string out;
  SPictureOptions picture;
};

int Render(CSession& session, const SRenderOptions& options) {
  const auto document = session.Open(options.model);
  if (!document) return kFailed;
  return DrawPicture(session, document->Model(), document->Model().Bounds(), options.picture, options.out);
}

}  // namespace

SCommandRow RenderCommand() {
  const auto options = std::make_shared<SRenderOptions>();
  SCommandRow command = {
      .name = "render",
      .help = "Draw the model into a PNG file; needs no display",
      .options = {Argument("MODEL", "Model file", options->model), Output("OUT", "PNG file to write", options->out)},
      .run = [options](CSession& session) { return Render(session, *options); }};
  for (SOptionRow& row : PictureRows(options->picture))
    command.options.push_back(std::move(row));
  return command;
}

}  // namespace veldra
