#include "editing/texturefilecommands.h"

#include "packing/modeltextures.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

enum EPngKind : size_t { kWithTable, kInTrueColor };

bool WritePicture(const std::string& path, size_t kind, const SRawTexture& texture, SError* error) {
  return kind == kWithTable ? WriteIndexedPng(path, IndexedPictureOf(texture), error)
                            : WritePng(path, PictureOf(texture), error);
}

bool IsWritten(CTarnDoc& document, bool is_written, const std::string& path, const SError& error) {
  if (!is_written) return document.ShowError(Format("\"%s\" could not be written.", path.c_str()), error.what);
  document.Say("Saved " + path);
  return true;
}

}  // namespace

STextureSource SourceOf(const STextureImage& image) {
  const bool is_file = image.read == nullptr;
  return {UpperCase(image.name), is_file ? image.path : "",
          [read = image.read, path = image.path] { return read ? read() : ReadTextureFiles(path); }};
}

STextureSource SourceOf(const SCatalogTexture& texture) {
  const bool is_file = !texture.raw.bytes.length;
  return {UpperCase(texture.raw.name), is_file ? texture.raw.bytes.path : "",
          [raw = texture.raw, colors = texture.colors] { return ReadTextureSource(raw, colors); }};
}

std::optional<SRawTexture> OpenTexture(CTarnDoc& document, const STextureSource& source) {
  SError error;
  auto texture = RawTextureOf(source.read(), document.Services().textures.DefaultColors(), &error);
  // What is done with it may write a table over its own.
  if (texture && texture->colors_fault.empty()) return texture;
  if (texture) error.what = "Its colour table cannot be read: " + texture->colors_fault;
  document.ShowError(Format("\"%s\" could not be opened.", source.name.c_str()), error.what);
  return std::nullopt;
}

bool ExportTexture(CTarnDoc& document, const STextureSource& source) {
  const auto texture = OpenTexture(document, source);
  if (!texture) return false;
  SFilePrompt prompt;
  prompt.title = "Export Picture";
  prompt.filters = {{"PNG with the colour table *.png", "*.png"}, {"PNG in true colour *.png", "*.png"}};
  prompt.directory = source.path.empty() ? document.Settings().art_dir : DirectoryPart(source.path);
  prompt.name = ChangeExtension(source.name, "png");
  prompt.default_extension = "png";
  const auto target = document.Services().questions.AskSaveFile(prompt);
  if (!target) return false;
  SError error;
  return IsWritten(document, WritePicture(target->path, target->filter, *texture, &error), target->path, error);
}

std::optional<std::string> SaveTexture(CTarnDoc& document, const STextureSource& source,
                                       const SIndexedTexture& texture) {
  SFilePrompt prompt;
  prompt.title = "Save Texture";
  prompt.filters = {{"MTM Texture *.raw", "*.raw"}};
  prompt.directory = source.path.empty() ? document.Settings().art_dir : DirectoryPart(source.path);
  prompt.name = source.path.empty() ? source.name : FileNamePart(source.path);
  prompt.default_extension = "RAW";
  const auto target = document.Services().questions.AskSaveFile(prompt);
  if (!target) return std::nullopt;
  SError error;
  const bool is_written = WriteTextureFiles(target->path, texture.indices, texture.colors, &error);
  if (is_written) document.Services().textures.AddTexture(target->path, texture);
  return IsWritten(document, is_written, target->path, error) ? std::optional(target->path) : std::nullopt;
}

SIndexedTexture Changed(const SRawTexture& texture, const STextureChange& change) {
  SRawTexture changed = {.size = change.size, .texels = ResizeTexture(texture, change.size, change.scaling)};
  return change.colors ? RepaletteTexture(changed, *change.colors) : std::move(changed.texels);
}

}  // namespace veldra
