#include <algorithm>
#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/session.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/png.h"
#include "platform/text.h"
#include "textures/quantize.h"
#include "textures/texturefiles.h"

namespace veldra {

namespace {

// --- export ---------------------------------------------------------------------------------------------------------

struct SExportOptions {
  std::string raw;
  std::string out;
};

int Export(CSession& session, const SExportOptions& options) {
  if (!IsFile(options.raw)) {
    return session.Fail(Format("\"%s\" could not be opened.", options.raw.c_str()), "There is no such file.");
  }
  const int printed_before = session.Questions().PrintedCount();
  const STextureImage* const image = session.Textures().GetTexture(options.raw);
  if (image == nullptr) {
    if (session.Questions().PrintedCount() > printed_before) return kFailed;
    return session.Fail(Format("\"%s\" could not be opened.", options.raw.c_str()));
  }
  SError error;
  if (session.CheckWritable(options.out) != kDone) return kFailed;
  const SImage picture{image->size, image->size, image->rgba};
  return WritePng(options.out, picture, &error) ? kDone : session.FailToWrite(options.out, error.what);
}

SCommandRow ExportCommand() {
  const auto options = std::make_shared<SExportOptions>();
  return {.name = "export",
          .help = "Write a texture as a PNG file",
          .options = {Argument("RAW", "Texture file; its ACT file is taken from beside it", options->raw),
                      Output("OUT", "PNG file to write", options->out)},
          .run = [options](CSession& session) { return Export(session, *options); }};
}

// --- import ---------------------------------------------------------------------------------------------------------

struct SImportOptions {
  std::string png;
  std::string raw;
  std::string palette;
};

int Import(CSession& session, const SImportOptions& options) {
  SError error;
  const auto picture = ReadPng(options.png, &error);
  if (!picture) return session.Fail(Format("\"%s\" could not be opened.", options.png.c_str()), error.what);
  const auto fits = [&](int size) { return picture->width == size && picture->height == size; };
  if (std::none_of(kTextureSizes.begin(), kTextureSizes.end(), fits)) {
    return session.Fail(Format("\"%s\" is %d x %d pixels. A texture is square, 64, 128, 256 or 512 pixels wide.",
                               options.png.c_str(), picture->width, picture->height));
  }
  std::optional<ColorTable> colors;
  if (!options.palette.empty()) {
    colors = ReadColorTable(options.palette);
    if (!colors) return session.Fail(Format("\"%s\" is not a colour table.", options.palette.c_str()));
  }
  if (EqualNoCase(ExtensionPart(options.raw), "ACT")) {
    return session.Fail(Format("\"%s\" is the name of the colour table beside the texture.", options.raw.c_str()));
  }
  if (session.CheckWritable(options.raw) != kDone || session.CheckWritable(ColorTablePath(options.raw)) != kDone) {
    return kFailed;
  }
  const SIndexedTexture texture = QuantizeTexture(*picture, colors);
  return WriteTextureFiles(options.raw, texture.indices, texture.colors, &error)
             ? kDone
             : session.FailToWrite(options.raw, error.what);
}

SCommandRow ImportTextureCommand() {
  const auto options = std::make_shared<SImportOptions>();
  return {.name = "import",
          .help = "Turn a PNG file into a texture and its colour table",
          .options = {Argument("PNG", "Square picture, 64, 128, 256 or 512 pixels wide", options->png),
                      Output("RAW", "Texture file to write; the ACT file is written beside it", options->raw),
                      Option("--palette", "ACT", "Take the colours of this table (default: a table made to fit)",
                             options->palette)},
          .run = [options](CSession& session) { return Import(session, *options); }};
}

}  // namespace

SCommandRow TextureCommands() {
  return {.name = "texture",
          .help = "Textures to and from PNG files",
          .commands = {ExportCommand(), ImportTextureCommand()}};
}

}  // namespace veldra
