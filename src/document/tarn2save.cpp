#include <algorithm>
#include <cstdlib>

#include "document/tarn2doc.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "platform/text.h"

// The checks before a save, and what the document takes from it. How they come together is in modelsaver.cpp.

namespace veldra {

namespace {

constexpr const char* kNotCenteredText =
    "Model is not centered along the vertical axis.\nThis will cause the model to float or sink into the "
    "ground.\n\nCenter model vertically before saving?";
constexpr const char* kTextureSizeText =
    "Model uses a texture size not supported by MTM2.\nWould you like to save anyway?";

bool HasUnsupportedSize(const CBinTexture& entry) {
  return std::any_of(entry.Frames().begin(), entry.Frames().end(), [](const CBinTexture::SFrame& frame) {
    return frame.image->size == 128 || frame.image->size == 512;
  });
}

bool UsesUnsupportedTextureSize(const CBinModel& model) {
  for (int32_t i = 0; i < model.TextureCount(); ++i) {
    const CBinTexture& entry = model.Texture(i);
    if (entry.UseCount() > 0 && HasUnsupportedSize(entry)) return true;
  }
  return false;
}

}  // namespace

bool CTarnDoc::SaveMTM(const std::string& path) {
  VELDRA_ASSERT(!IsReadOnly());
  return saver_.WriteMtm(path);
}

void CTarnDoc::TakeSavedPath(const std::string& path) {
  wants_read_only_ = false;
  place_ = {};
  steps_->NoteSaved();
  TakeWrittenPath(path);
}

bool CTarnDoc::CheckWritable(const std::string& path) {
  if (!FileExists(path) || IsWritable(path)) return true;
  return ShowError(kNotSavedText, Format("\"%s\" cannot be written to.", path.c_str()));
}

bool CTarnDoc::CheckCentered() {
  if (services_.settings.not_centered_msg == 0) return true;
  const SBounds& bounds = model_.Bounds();
  if (std::abs(int64_t{bounds.min.y} + int64_t{bounds.max.y}) <= 1) return true;
  const EAnswer answer =
      services_.questions.AskYesNoCancel({.text = kNotCenteredText, .icon = EIcon::kQuestion, .usual = EAnswer::kNo});
  if (answer == EAnswer::kYes) CenterAxes({EAxis::kY}, "Center Y");
  return answer != EAnswer::kCancel;
}

bool CTarnDoc::CheckTextureSizes() {
  if (services_.settings.texture_size_msg == 0 || !UsesUnsupportedTextureSize(model_)) return true;
  return services_.questions.AskYesNo({.text = kTextureSizeText, .icon = EIcon::kQuestion}) == EAnswer::kYes;
}

bool CTarnDoc::CheckUnusedVertices() {
  if (services_.settings.unused_verts_msg == 0 || model_.UnusedVertices().empty()) return true;
  const SUnusedVerticesAnswer answer = services_.questions.AskUnusedVertices();
  if (answer.dont_show_again) services_.settings.unused_verts_msg = 0;
  if (answer.choice == SUnusedVerticesAnswer::EChoice::kDelete) DeleteUnused();
  return answer.choice != SUnusedVerticesAnswer::EChoice::kCancel;
}

bool CTarnDoc::IsOpenReadOnlyElsewhere(const std::string& path) const {
  return services_.is_open_read_only_elsewhere && services_.is_open_read_only_elsewhere(*this, path);
}

}  // namespace veldra
