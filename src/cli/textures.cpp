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

/// The colour table's file beside RAW: the one that is there, whatever the case of its name, or a new one.
std::string ColorTablePath(const std::string& raw) {
  const std::string path = ChangeExtension(raw, "ACT");
  const std::string existing = FindAnyCase(path);
  return existing.empty() ? path : existing;
}

/// Both files are complete on the disk before either takes its name.
int WriteTexture(CSession& session, const std::string& raw, const SIndexedTexture& texture) {
  const std::string act = ColorTablePath(raw);
  CReplacement indices(raw);
  CReplacement colors(act);
  SError error;
  if (!indices.Open(&error) || !indices.Write(texture.indices, &error) || !indices.Finish(&error)) {
    return session.FailToWrite(raw, error.what);
  }
  if (!colors.Open(&error) || !colors.Write(texture.colors, &error) || !colors.Finish(&error)) {
    return session.FailToWrite(act, error.what);
  }
  if (!indices.Commit(&error)) return session.FailToWrite(raw, error.what);
  return colors.Commit(&error) ? kDone : session.FailToWrite(act, error.what);
}

int Import(CSession& session, const SImportOptions& options) {
  SError error;
  const auto sides = ReadPngSize(options.png, &error);
  const auto fail = [&] {
    return session.Fail(Format("\"%s\" could not be opened.", options.png.c_str()), error.what);
  };
  if (!sides) return fail();
  const auto fits = [&](int size) { return sides->width == size && sides->height == size; };
  if (std::none_of(kTextureSizes.begin(), kTextureSizes.end(), fits)) {
    return session.Fail(Format("\"%s\" is %d x %d pixels. A texture is square, 64, 128, 256 or 512 pixels wide.",
                               options.png.c_str(), sides->width, sides->height));
  }
  const auto picture = ReadPng(options.png, &error);
  if (!picture) return fail();
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
  return WriteTexture(session, options.raw, QuantizeTexture(*picture, colors));
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
