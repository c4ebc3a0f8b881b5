#include <algorithm>
#include <cstdlib>

#include "document/earlierstates.h"
#include "document/tarn2doc.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "platform/unattendedquestions.h"
#include "platform/userfolders.h"
#include "textures/texturefinder.h"

// Saving: the questions before it, and the three writers.

namespace veldra {

namespace {

constexpr const char* kNotSavedText = "Model could not be saved.";
constexpr const char* kNotCenteredText =
    "Model is not centered along the vertical axis.\nThis will cause the model to float or sink into the "
    "ground.\n\nCenter model vertically before saving?";
constexpr const char* kTextureSizeText =
    "Model uses a texture size not supported by MTM2.\nWould you like to save anyway?";
constexpr const char* kReadOnlyElsewhereText = "Cannot save as that name.The file has been opened as read-only";
constexpr const char* kHellbenderFacesText =
    "This BIN model uses a face type\nthat is not recognized by Hellbender.\nConvert BIN to Hellbender face types?";
constexpr const char* kUntexturedBackdropText =
    "Face %d has no texture, so the backdrop cannot be opened again.\nWould you like to save anyway?";

constexpr const char* kChangedOnDiskText =
    "\"%s\" has been changed by another program since it was opened.\nSave anyway and lose those changes?";

constexpr uint32_t kLastHellbenderFaceType = 41;
constexpr double kFixedPointOne = 65536.0;

SMessage Question(const std::string& text) {
  return {.text = text, .icon = EIcon::kQuestion};
}

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

SFilePrompt SavePrompt(const std::string& directory, const std::string& name) {
  return {.title = "Save Document As",
          .filters = {{"MTM Model *.bin", "*.bin"}, {"MTM Backdrop *.bin", "*.bin"}, {"Hellbender Bin *.bin", "*.bin"}},
          .directory = directory,
          .name = name,
          .default_extension = "bin"};
}

/// For a file that is read behind the user's back.
class CQuietQuestions : public CUnattendedQuestions {
 public:
  void Message(const SMessage& message) override { Trace(">> CTarnDoc: %s\n", message.text.c_str()); }
  EAnswer AskYesNo(const SMessage&) override { return EAnswer::kYes; }
  SUnknownFaceAnswer AskUnknownFace(uint32_t) override { return {}; }
  STextureAnswer AskTexture(const SMessage&, const SFilePrompt&) override {
    return {.choice = STextureAnswer::EChoice::kBlank, .width = kUsualWidth};
  }

 private:
  static constexpr int kUsualWidth = 256;
};

}  // namespace

bool CTarnDoc::Save() {
  if (read_only_ || path_.empty()) return SaveAs();
  const std::string path = SavePath(path_);
  if (!CheckChangedOnDisk(path) || !CheckWritable(path) || !CheckCentered() || !CheckTextureSizes() ||
      !CheckUnusedVertices()) {
    return false;
  }
  return SaveMTM(path);
}

bool CTarnDoc::SaveAs() {
  if (!CheckBeforeSaveAs()) return false;
  const auto chosen = services_.questions.AskSaveFile(
      SavePrompt(ModelDirectory(), path_.empty() && !offered_name_.empty() ? offered_name_ : Title()));
  if (!chosen) return false;
  const auto variant = static_cast<EModelVariant>(std::min<size_t>(chosen->filter, 2));
  return WriteVariant(SavePath(chosen->path), variant);
}

bool CTarnDoc::SaveAsVariant(const std::string& path, EModelVariant variant) {
  return CheckBeforeSaveAs() && WriteVariant(path, variant);
}

bool CTarnDoc::CheckBeforeSaveAs() {
  return CheckCentered() && CheckTextureSizes() && CheckUnusedVertices();
}

bool CTarnDoc::WriteVariant(const std::string& path, EModelVariant variant) {
  if (IsOpenReadOnlyElsewhere(path)) return ShowError(kReadOnlyElsewhereText);
  if (!CheckChangedOnDisk(path) || !CheckWritable(path)) return false;
  const bool was_read_only = read_only_;
  SetReadOnly(false);
  bool saved = false;
  switch (variant) {
    case EModelVariant::kMtm:
      saved = SaveMTM(path);
      break;
    case EModelVariant::kBackdrop:
      saved = SaveBackdrop(path);
      break;
    case EModelVariant::kHellbender:
      saved = SaveHellbender(path);
      break;
  }
  // Nothing was written under a new name: the document still is the file that it may not change.
  if (!saved) SetReadOnly(was_read_only);
  if (saved) wants_read_only_ = false;
  return saved;
}

bool CTarnDoc::SaveMTM(const std::string& path) {
  VELDRA_ASSERT(!read_only_);
  return Write(path, {.vertex_normals = model_.HasFaceType(kFaceShiny)});
}

bool CTarnDoc::SaveBackdrop(const std::string& path) {
  // All faces of a backdrop are of a textured type, and the loader takes none of those before a texture selection. A
  // later face without a texture comes back with that of the face before it.
  const bool untextured = model_.FaceCount() > 0 && model_.Face(0).Texture() == nullptr;
  if (untextured && services_.questions.AskYesNo(Question(Format(kUntexturedBackdropText, 0))) != EAnswer::kYes) {
    return false;
  }
  return Write(path, {.backdrop = true});
}

bool CTarnDoc::SaveHellbender(const std::string& path) {
  const auto scale_word = AskScaleWord();
  if (!scale_word || !OfferHellbenderFaceTypes()) return false;
  return Write(path, {.vertex_normals = model_.HasFaceType(kFaceShiny), .scale_word = *scale_word});
}

/// The factor in 16.16 fixed point; nothing when the user cancelled, or gave one that the file has no place for.
std::optional<int32_t> CTarnDoc::AskScaleWord() {
  double& last_factor = services_.settings.scale_factor;
  const double offered = last_factor != 0.0 ? last_factor : model_.ScaleWord() / kFixedPointOne;
  const auto factor = services_.questions.AskScaleFactor(offered);
  if (!factor) return std::nullopt;
  const auto word = TryTruncate(*factor * kFixedPointOne);
  if (!word) {
    ShowError(Format("The scale factor %g cannot be saved.\nIt must lie between -32768 and 32767.99998.", *factor));
    return std::nullopt;
  }
  last_factor = *factor;
  return word;
}

bool CTarnDoc::OfferHellbenderFaceTypes() {
  if (!model_.HasFaceTypeAbove(kLastHellbenderFaceType)) return true;
  const EAnswer answer = services_.questions.AskYesNoCancel(Question(kHellbenderFacesText));
  if (answer == EAnswer::kYes) {
    KeepState("Convert to Hellbender face types");
    model_.ReplaceFaceTypesAbove(kLastHellbenderFaceType, kFaceTextured);
  }
  return answer != EAnswer::kCancel;
}

bool CTarnDoc::Write(const std::string& path, const SSaveOptions& options) {
  const std::string name_fault = NameFault(model_);
  if (!name_fault.empty()) return ShowError(kNotSavedText, name_fault);
  SError error;
  bool written = false;
  {
    const auto work = services_.questions.BeginWork(Format("Saving %s", FileNamePart(path).c_str()), true);
    KeepOverwrittenFile(path);
    written = SaveBinFile(model_, options, path, &error, work.get());
    if (written) TakeSavedPath(path);
  }
  if (!written && !error.what.empty()) ShowError(kNotSavedText, error.what);
  return written;
}

/// What PATH holds goes to the earlier states unless it is there already: the document as it was opened, what another
/// program made of it, another model. Not worth a question: what cannot be read as a model is passed over.
void CTarnDoc::KeepOverwrittenFile(const std::string& path) const {
  if (services_.earlier_states == nullptr || !IsFile(path)) return;
  if (IsOwnPath(path) && is_file_kept_ && !ChangedOnDisk()) return;
  CQuietQuestions questions;
  // A store of its own, so that stand-ins for missing textures stay out of the document's.
  CTextureStore textures(questions, GreyRamp());
  CTextureFinder finder(textures, questions, services_.settings.art_dir);
  CBinModel old;
  if (!LoadBinFile(old, path, {finder, questions, false, nullptr})) return;
  SError error;
  const std::string key = CEarlierStates::KeyOfPath(path);
  if (!services_.earlier_states->Keep(key, "File before saving", old, nullptr, &error)) {
    Trace(">> CTarnDoc::KeepOverwrittenFile(%s): %s\n", path.c_str(), error.what.c_str());
  }
}

/// The model lies at PATH now.
void CTarnDoc::TakeSavedPath(const std::string& path) {
  const std::string old_key = path_.empty() ? StatesKey() : "";
  TakeStamps(path);
  is_file_kept_ = false;
  SetState(path, false, read_only_);
  SError error;
  if (!old_key.empty() && !services_.earlier_states->Move(old_key, StatesKey(), &error)) {
    Trace(">> CTarnDoc::TakeSavedPath(%s): %s\n", path.c_str(), error.what.c_str());
  }
  KeepState("Save");
}

bool CTarnDoc::IsOwnPath(const std::string& path) const {
  return !path_.empty() && (path == path_ || ComparablePath(path) == ComparablePath(path_));
}

bool CTarnDoc::CheckChangedOnDisk(const std::string& path) {
  if (!IsOwnPath(path) || !ChangedOnDisk()) return true;
  return services_.questions.AskYesNo(Question(Format(kChangedOnDiskText, path.c_str()))) == EAnswer::kYes;
}

bool CTarnDoc::CheckWritable(const std::string& path) {
  if (!FileExists(path) || IsWritable(path)) return true;
  return ShowError(kNotSavedText, Format("\"%s\" cannot be written to.", path.c_str()));
}

bool CTarnDoc::CheckCentered() {
  if (services_.settings.not_centered_msg == 0) return true;
  const SBounds& bounds = model_.Bounds();
  if (std::abs(int64_t{bounds.min.y} + int64_t{bounds.max.y}) <= 1) return true;
  const EAnswer answer = services_.questions.AskYesNoCancel(Question(kNotCenteredText));
  if (answer == EAnswer::kYes) CenterAxes({EAxis::kY}, "Center Y");
  return answer != EAnswer::kCancel;
}

bool CTarnDoc::CheckTextureSizes() {
  if (services_.settings.texture_size_msg == 0 || !UsesUnsupportedTextureSize(model_)) return true;
  return services_.questions.AskYesNo(Question(kTextureSizeText)) == EAnswer::kYes;
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

std::string CTarnDoc::SavePath(const std::string& path) const {
  const CSettings& settings = services_.settings;
  if (settings.save_to_def_dir == 0 || !IsDirectory(settings.bin_dir)) return path;
  return JoinPath(settings.bin_dir, FileNamePart(path));
}

}  // namespace veldra
