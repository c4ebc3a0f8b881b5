#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/command.h"
#include "cli/session.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/png.h"
#include "platform/text.h"
#include "textures/picturetexture.h"
#include "textures/quantize.h"
#include "textures/rawtexture.h"
#include "textures/texturefiles.h"

namespace veldra {

namespace {

// --- export ---------------------------------------------------------------------------------------------------------

struct SExportOptions {
  std::string raw;
  std::string out;
  bool indexed = false;
};

/// Nothing when it cannot be read; the user has been told why.
std::optional<SRawTexture> OpenRaw(CSession& session, const std::string& raw) {
  const std::string path = session.InputPath(raw);
  if (path.empty()) return std::nullopt;
  SError error;
  auto texture = ReadRawTexture(path, session.DefaultColors(), &error);
  if (!texture) session.Fail(Format("\"%s\" could not be opened.", raw.c_str()), error.what);
  if (texture && !texture->colors_fault.empty())
    session.Questions().Message({.text = Format(kUnreadColorsText, ColorTablePath(path).c_str()),
                                 .icon = EIcon::kWarning,
                                 .details = texture->colors_fault});
  return texture;
}

int ExportIndexed(CSession& session, const SExportOptions& options) {
  const auto texture = OpenRaw(session, options.raw);
  if (!texture || session.CheckWritable(options.out) != kDone) return kFailed;
  SError error;
  return WriteIndexedPng(options.out, IndexedPictureOf(*texture), &error)
             ? kDone
             : session.FailToWrite(options.out, error.what);
}

int Export(CSession& session, const SExportOptions& options) {
  if (options.indexed) return ExportIndexed(session, options);
  const std::string path = session.InputPath(options.raw);
  if (!IsFile(path)) {
    return session.Fail(Format("\"%s\" could not be opened.", options.raw.c_str()), "There is no such file.");
  }
  const int printed_before = session.Questions().PrintedCount();
  const STextureImage* const image = session.Textures().GetTexture(path);
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
                      Output("OUT", "PNG file to write", options->out),
                      Flag("--indexed", "With the colour table, in its order", options->indexed)},
          .run = [options](CSession& session) { return Export(session, *options); }};
}

// --- import ---------------------------------------------------------------------------------------------------------

struct STextureImport {
  std::string png;
  std::string raw;
  std::string palette;
  int size = 0;  ///< 0: that of the picture
  bool nearest = false;

  EScaling Scaling() const { return nearest ? EScaling::kNearest : EScaling::kSmooth; }
};

const Words<int> kSizes = {{"64", 64}, {"128", 128}, {"256", 256}, {"512", 512}};

SOptionRow SizeOption(int& size) {
  return Choice("--size", kSizes, "Width in texels", size);
}

SOptionRow NearestOption(bool& nearest) {
  return Flag("--nearest", "Scale by the nearest texel (default: smooth)", nearest);
}

int WriteTexture(CSession& session, const std::string& raw, const SIndexedTexture& texture) {
  SError error;
  return WriteTextureFiles(raw, texture.indices, texture.colors, &error) ? kDone : session.FailToWrite(raw, error.what);
}

/// Nothing when it is no colour table; the user has been told.
std::optional<ColorTable> OpenColors(CSession& session, const std::string& path) {
  auto colors = ReadColorTable(path);
  if (!colors) session.Fail(Format("\"%s\" is not a colour table.", path.c_str()));
  return colors;
}

/// RAW can take the texels, and its colour table those.
int CheckTarget(CSession& session, const std::string& raw) {
  if (EqualNoCase(ExtensionPart(raw), "ACT"))
    return session.Fail(Format("\"%s\" is the name of the colour table beside the texture.", raw.c_str()));
  return session.CheckWritable(raw) == kDone ? session.CheckWritable(ColorTablePath(raw)) : kFailed;
}

/// Nothing after a message.
std::optional<SIndexedTexture> OpenPicture(CSession& session, const STextureImport& options) {
  const std::string path = session.InputPath(options.png);
  if (path.empty()) return std::nullopt;
  STextureOptions wanted = {.size = options.size, .scaling = options.Scaling()};
  if (!options.palette.empty()) {
    wanted.colors = OpenColors(session, options.palette);
    if (!wanted.colors) return std::nullopt;
  }
  SError error;
  auto texture = TextureOfPicture(path, wanted, &error);
  if (!texture) session.Fail(Format("\"%s\" could not be opened.", options.png.c_str()), error.what);
  return texture;
}

int ImportTexture(CSession& session, const STextureImport& options) {
  const auto texture = OpenPicture(session, options);
  if (!texture || CheckTarget(session, options.raw) != kDone) return kFailed;
  return WriteTexture(session, options.raw, *texture);
}

SCommandRow ImportTextureCommand() {
  const auto options = std::make_shared<STextureImport>();
  return {.name = "import",
          .help = "Turn a picture into a texture and its colour table",
          .options = {Argument("PICTURE", "Square picture, 64, 128, 256 or 512 pixels wide", options->png),
                      Output("RAW", "Texture file to write; the ACT file is written beside it", options->raw),
                      Option("--palette", "ACT", "Take the colours of this table (default: a table made to fit)",
                             options->palette),
                      SizeOption(options->size), NearestOption(options->nearest)},
          .run = [options](CSession& session) { return ImportTexture(session, *options); }};
}

// --- info -----------------------------------------------------------------------------------------------------------

struct STextureInfo {
  std::string raw;
  bool json = false;
};

int PrintTextureInfo(CSession& session, const STextureInfo& options) {
  const auto texture = OpenRaw(session, options.raw);
  if (!texture) return kFailed;
  const std::string name = ToUtf8(FileNamePart(options.raw));
  const char* const palette = texture->has_own_colors ? "own" : "default";
  const int colors = ColorCount(texture->texels);
  const int transparent = TransparentCount(texture->texels);
  if (options.json) {
    const nlohmann::ordered_json json = {{"name", name},
                                         {"width", texture->size},
                                         {"palette", palette},
                                         {"colours", colors},
                                         {"transparent", transparent}};
    return session.Print(DisplayJson(json.dump()) + "\n");
  }
  return session.Print(Format("name: %s\nwidth: %d\npalette: %s\ncolours: %d\ntransparent: %d\n", name.c_str(),
                              texture->size, palette, colors, transparent));
}

SCommandRow TextureInfoCommand() {
  const auto options = std::make_shared<STextureInfo>();
  return {.name = "info",
          .help = "Print the width of a texture, where its colours come from, and how many it uses",
          .options = {Argument("RAW", "Texture file; its ACT file is taken from beside it", options->raw),
                      Flag("--json", "As JSON", options->json)},
          .run = [options](CSession& session) { return PrintTextureInfo(session, *options); }};
}

// --- resize, repalette ----------------------------------------------------------------------------------------------

struct SChangeOptions {
  std::string raw;
  std::string out;
  std::string palette;
  int size = 0;
  bool nearest = false;
};

int ResizeTo(CSession& session, const SChangeOptions& options) {
  const auto texture = OpenRaw(session, options.raw);
  if (!texture || CheckTarget(session, options.out) != kDone) return kFailed;
  const EScaling scaling = options.nearest ? EScaling::kNearest : EScaling::kSmooth;
  return WriteTexture(session, options.out, ResizeTexture(*texture, options.size, scaling));
}

int Repalette(CSession& session, const SChangeOptions& options) {
  const auto texture = OpenRaw(session, options.raw);
  const auto colors = texture ? OpenColors(session, options.palette) : std::nullopt;
  if (!colors || CheckTarget(session, options.out) != kDone) return kFailed;
  if (TransparentCount(texture->texels) > 0 && !HasNearBlack(*colors))
    session.Questions().Message(
        {.text =
             Format("\"%s\" has no near-black colour: what was transparent is not any more.", options.palette.c_str()),
         .icon = EIcon::kWarning});
  return WriteTexture(session, options.out, RepaletteTexture(*texture, *colors));
}

SCommandRow ResizeCommand() {
  const auto options = std::make_shared<SChangeOptions>();
  return {.name = "resize",
          .help = "Give a texture another width; its colour table stays",
          .options = {Argument("RAW", "Texture file; its ACT file is taken from beside it", options->raw),
                      Output("OUT", "Texture file to write; the ACT file is written beside it", options->out),
                      Required(SizeOption(options->size)), NearestOption(options->nearest)},
          .run = [options](CSession& session) { return ResizeTo(session, *options); }};
}

SCommandRow RepaletteCommand() {
  const auto options = std::make_shared<SChangeOptions>();
  return {.name = "repalette",
          .help = "Give a texture the nearest colours of another table",
          .options = {Argument("RAW", "Texture file; its ACT file is taken from beside it", options->raw),
                      Output("OUT", "Texture file to write; the table is written beside it", options->out),
                      Required(Option("--palette", "ACT", "Colour table to take", options->palette))},
          .run = [options](CSession& session) { return Repalette(session, *options); }};
}

}  // namespace

SCommandRow TextureCommands() {
  return {
      .name = "texture",
      .help = "Textures: to and from PNG files, other widths and colours",
      .commands = {TextureInfoCommand(), ExportCommand(), ImportTextureCommand(), ResizeCommand(), RepaletteCommand()}};
}

}  // namespace veldra
