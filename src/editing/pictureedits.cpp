#include "editing/pictureedits.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/picture.h"
#include "platform/text.h"
#include "textures/picturetexture.h"

namespace veldra {

CPictureEdits::CPictureEdits(CTextureStore& store, CQuestions& questions, std::string folder)
    : store_(store), questions_(questions), folder_(std::move(folder)) {}

/// A picture that was saved last and not taken in is the user's.
CPictureEdits::~CPictureEdits() {
  for (SEdit& edit : edits_)
    if (!edit.stamp.IsChanged()) RemoveFile(edit.picture);
}

/// Two textures of one name are two pictures.
std::string CPictureEdits::PictureOf(const std::string& raw) const {
  const std::string name = FileNamePart(raw);
  std::string picture;
  const auto is_taken = [&] {
    return std::ranges::any_of(
        edits_, [&](const SEdit& edit) { return EqualNoCase(edit.picture, picture) && !IsSameFile(edit.raw, raw); });
  };
  int number = 1;
  do {
    const std::string behind = number == 1 ? "" : Format("-%d", number);
    picture = JoinPath(folder_, name.substr(0, name.rfind('.')) + behind + ".png");
    ++number;
  } while (is_taken());
  return picture;
}

std::optional<std::string> CPictureEdits::Begin(CTarnDoc& document, const STextureSource& source, EColors colors) {
  const auto texture = OpenTexture(document, source);
  if (!texture) return std::nullopt;
  const auto raw = source.path.empty() ? SaveTexture(document, source, texture->texels) : source.path;
  if (!raw) return std::nullopt;
  std::string picture = PictureOf(*raw);
  SError error;
  MakeDirectories(folder_);
  if (!WriteIndexedPng(picture, IndexedPictureOf(*texture), &error)) {
    document.ShowError(Format("\"%s\" could not be written.", picture.c_str()), error.what);
    return std::nullopt;
  }
  std::erase_if(edits_, [&](const SEdit& edit) { return edit.picture == picture; });
  edits_.push_back({picture, *raw, colors, CFileStamp(picture)});
  return picture;
}

std::vector<std::string> CPictureEdits::Files() const {
  std::vector<std::string> files;
  files.reserve(edits_.size());
  for (const SEdit& edit : edits_)
    files.push_back(edit.picture);
  return files;
}

std::vector<std::string> CPictureEdits::TakeNews() {
  std::vector<std::string> changed;
  for (SEdit& edit : edits_) {
    if (!edit.stamp.IsChanged()) continue;
    edit.stamp = CFileStamp(edit.picture);
    if (TakeIn(edit)) changed.push_back(FileNamePart(edit.raw));
  }
  return changed;
}

bool CPictureEdits::TakeIn(const SEdit& edit) {
  const auto fail = [this](const std::string& path, const char* what, const SError& error) {
    questions_.Message({.text = Format(what, path.c_str()), .icon = EIcon::kError, .details = error.what});
    return false;
  };
  SError error;
  const auto old = ReadRawTexture(edit.raw, store_.DefaultColors(), &error);
  if (!old) return fail(edit.raw, "\"%s\" could not be opened.", error);
  if (!old->colors_fault.empty())
    return fail(ColorTablePath(edit.raw), "\"%s\" could not be opened.", {old->colors_fault});
  const auto sides = ReadPictureSize(edit.picture, &error);
  if (!sides) return fail(edit.picture, "\"%s\" could not be opened.", error);
  // One that has become a texture's size means to have it.
  const bool has_size = sides->width == sides->height && std::ranges::count(kTextureSizes, sides->width) > 0;
  STextureOptions options = {.size = has_size ? sides->width : old->size};
  if (edit.colors == EColors::kKeep && !ReadIndexedPng(edit.picture)) options.colors = old->texels.colors;
  const auto texture = TextureOfPicture(edit.picture, options, &error);
  if (!texture) return fail(edit.picture, "\"%s\" could not be opened.", error);
  if (!WriteTextureFiles(edit.raw, texture->indices, texture->colors, &error))
    return fail(edit.raw, "\"%s\" could not be written.", error);
  store_.AddTexture(edit.raw, *texture);
  return true;
}

}  // namespace veldra
