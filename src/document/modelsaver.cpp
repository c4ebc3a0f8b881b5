#include "document/modelsaver.h"

#include <algorithm>
#include <limits>

#include "document/filenews.h"
#include "document/modelcopy.h"
#include "document/tarn2doc.h"
#include "packing/modeltextures.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "platform/unattendedquestions.h"

namespace veldra {

namespace {

constexpr const char* kReadOnlyElsewhereText = "Cannot save as that name.The file has been opened as read-only";
constexpr const char* kHellbenderFacesText =
    "This BIN model uses a face type\nthat is not recognized by Hellbender.\nConvert BIN to Hellbender face types?";
constexpr const char* kUntexturedBackdropText =
    "Face %d has no texture, so the backdrop cannot be opened again.\nWould you like to save anyway?";
constexpr const char* kOverwriteText = "\"%s\" is there already.\nReplace it?";
constexpr const char* kOverwriteDetails = "All models are saved to this folder, as the preferences say.";
constexpr const char* kNoFolderText =
    "The folder in which all models are to be saved is not there:\n\"%s\"\n\nSave to \"%s\" instead?";
constexpr const char* kEntryChangedText =
    "\"%s\" in \"%s\" has been changed since it was opened.\nSave anyway and lose those changes?";
constexpr const char* kOtherVariantText = "\"%s\" was last saved as %s.\nSave makes an MTM model of it. Go on?";

constexpr uint32_t kLastHellbenderFaceType = 41;
constexpr double kFixedPointOne = 65536.0;

/// The Enter key leaves everything as it is.
SMessage CarefulQuestion(const std::string& text, EAnswer usual = EAnswer::kNo) {
  return {.text = text, .icon = EIcon::kWarning, .usual = usual};
}

SFilePrompt SavePrompt(const std::string& directory, const std::string& name) {
  return {.title = "Save Document As",
          .filters = {{"MTM Model *.bin", "*.bin"}, {"MTM Backdrop *.bin", "*.bin"}, {"Hellbender Bin *.bin", "*.bin"}},
          .directory = directory,
          .name = name,
          .default_extension = "bin"};
}

/// Where the settings want all models; "" when they do not, or there is no such folder.
std::string DefaultFolder(const CSettings& settings) {
  const std::string folder = settings.save_to_def_dir == 0 ? "" : FindAnyCase(settings.bin_dir);
  return IsDirectory(folder) ? folder : "";
}

/// Only a backdrop's writer leaves that in each of its faces.
bool IsBackdropFace(const CBinFace& face) {
  constexpr int32_t kBackdropMagic = std::numeric_limits<int32_t>::min();
  return face.Type() == kFaceTransparentMtm && face.StoredMagic() == kBackdropMagic;
}

/// For a file that is read behind the user's back.
class CQuietQuestions : public CUnattendedQuestions {
 public:
  void Message(const SMessage& message) override { Trace(">> CModelSaver: %s\n", message.text.c_str()); }
  EAnswer AskYesNo(const SMessage&) override { return EAnswer::kYes; }
  SUnknownFaceAnswer AskUnknownFace(uint32_t) override { return {}; }
  STextureAnswer AskTexture(const SMessage&, const SFilePrompt&) override {
    return {.choice = STextureAnswer::EChoice::kBlank, .width = kUsualWidth};
  }

 private:
  static constexpr int kUsualWidth = 256;
};

}  // namespace

// --- The commands ----------------------------------------------------------------------------------------------------

bool CModelSaver::Save() {
  if (document_.ArchivePlace() != nullptr && !document_.IsReadOnly()) return SaveIntoArchive();
  if (document_.IsReadOnly() || document_.Path().empty()) return SaveAs();
  const CQuestions::CAbout about(document_.Services().questions, document_.Path());
  const auto path = RealPath(document_.Path());
  if (!path) return false;
  const bool is_own = IsOwnFile(*path);
  if (!is_own && document_.IsOpenReadOnlyElsewhere(*path)) return Fail(kReadOnlyElsewhereText, *path);
  if (!is_own && !CheckOverwritten(*path, document_.Path())) return false;
  if (!CheckChangedOnDisk(*path) || !CheckVariantKept() || !document_.CheckWritable(*path) || !CheckModel())
    return false;
  return document_.SaveMTM(*path);
}

void CModelSaver::TakeLoaded() {
  const CBinModel& model = document_.Model();
  bool is_backdrop = model.FaceCount() > 0;
  for (int32_t i = 0; is_backdrop && i < model.FaceCount(); ++i)
    is_backdrop = IsBackdropFace(model.Face(i));
  saved_as_ = is_backdrop ? EModelVariant::kBackdrop : EModelVariant::kMtm;
}

bool CModelSaver::SaveAs() {
  const SDocumentServices& services = document_.Services();
  const CQuestions::CAbout about(services.questions, document_.Path().empty() ? document_.Title() : document_.Path());
  if (!CheckModel()) return false;
  const std::string default_folder = DefaultFolder(services.settings);
  SFilePrompt prompt =
      SavePrompt(default_folder.empty() ? document_.ModelDirectory() : default_folder, document_.OfferedName());
  // Asked here, about the file that is really written.
  prompt.asks_to_replace = default_folder.empty();
  const auto chosen = services.questions.AskSaveFile(prompt);
  if (!chosen) return false;
  const auto path = RealPath(chosen->path);
  if (!path) return false;
  const auto variant = static_cast<EModelVariant>(std::min<size_t>(chosen->filter, 2));
  if (document_.IsOpenReadOnlyElsewhere(*path)) return Fail(kReadOnlyElsewhereText, *path);
  if (!prompt.asks_to_replace && !IsOwnFile(*path) && !CheckOverwritten(*path, chosen->path)) return false;
  return WriteVariant(*path, variant);
}

bool CModelSaver::SaveAsVariant(const std::string& path, EModelVariant variant) {
  const CQuestions::CAbout about(document_.Services().questions, path);
  if (!CheckModel()) return false;
  if (document_.IsOpenReadOnlyElsewhere(path)) return Fail(kReadOnlyElsewhereText, path);
  return WriteVariant(path, variant);
}

/// PATH, or the file of that name in the default model directory where the settings want all models there. Nothing when
/// that folder is not there and the user wants the model nowhere else.
std::optional<std::string> CModelSaver::RealPath(const std::string& path) {
  const CSettings& settings = document_.Settings();
  const std::string folder = DefaultFolder(settings);
  if (!folder.empty()) return JoinPath(folder, FileNamePart(path));
  if (settings.save_to_def_dir == 0 || missed_folder_ == settings.bin_dir) return path;
  const std::string text = Format(kNoFolderText, settings.bin_dir.c_str(), path.c_str());
  if (!IsConfirmed({.text = text, .icon = EIcon::kWarning})) return std::nullopt;
  missed_folder_ = settings.bin_dir;
  return path;
}

bool CModelSaver::SaveIntoArchive() {
  const SArchivePlace place = *document_.ArchivePlace();
  const SDocumentServices& services = document_.Services();
  const CQuestions::CAbout about(services.questions, document_.Title());
  if (!services.save_into_archive) return SaveAs();
  const std::string text = Format(kEntryChangedText, DisplayName(place.entry).c_str(), place.archive.c_str());
  if (document_.IsEntryChanged() && !IsConfirmed(CarefulQuestion(text))) return false;
  if (!CheckVariantKept() || !CheckModel()) return false;
  const std::string name_fault = NameFault(document_.Model());
  if (!name_fault.empty()) return Fail(kNotSavedText, name_fault);
  CByteWriter bytes;
  SaveBin(document_.Model(), {.vertex_normals = document_.Model().HasFaceType(kFaceShiny)}, bytes);
  if (!services.save_into_archive(place, bytes.Bytes())) return false;
  document_.TakeSavedEntry(bytes.Bytes());
  return true;
}

// --- Questions before the writing ------------------------------------------------------------------------------------

bool CModelSaver::CheckModel() {
  return document_.CheckCentered() && document_.CheckTextureSizes() && document_.CheckUnusedVertices();
}

/// False when the file at PATH, which is not the document's own, is to stay. WANTED is where it was to be saved.
bool CModelSaver::CheckOverwritten(const std::string& path, const std::string& wanted) {
  if (!FileExists(path)) return true;
  SMessage question = CarefulQuestion(Format(kOverwriteText, path.c_str()));
  if (!IsSameFile(path, wanted)) question.details = kOverwriteDetails;
  return IsConfirmed(question);
}

/// False when another program's changes at PATH, the document's own file, are not to be lost.
bool CModelSaver::CheckChangedOnDisk(const std::string& path) {
  return !IsOwnFile(path) || MayOverwrite(document_);
}

/// False when the document's file is to stay a backdrop or a model for Hellbender.
bool CModelSaver::CheckVariantKept() {
  if (saved_as_ == EModelVariant::kMtm) return true;
  const char* variant = saved_as_ == EModelVariant::kBackdrop ? "an MTM backdrop" : "a Hellbender model";
  SMessage question = CarefulQuestion(Format(kOtherVariantText, document_.Title().c_str(), variant));
  question.details = "Save as keeps the choice of the kind of file.";
  if (!IsConfirmed(question)) return false;
  saved_as_ = EModelVariant::kMtm;
  return true;
}

// --- Writing ---------------------------------------------------------------------------------------------------------

bool CModelSaver::WriteVariant(const std::string& path, EModelVariant variant) {
  if (!CheckChangedOnDisk(path) || !document_.CheckWritable(path)) return false;
  const bool was_read_only = document_.IsReadOnly();
  document_.SetReadOnly(false);
  bool saved = false;
  switch (variant) {
    case EModelVariant::kMtm:
      saved = document_.SaveMTM(path);
      break;
    case EModelVariant::kBackdrop:
      saved = document_.SaveBackdrop(path);
      break;
    case EModelVariant::kHellbender:
      saved = document_.SaveHellbender(path);
      break;
  }
  // Nothing was written under a new name: the document still is the file that it may not change.
  if (!saved) document_.SetReadOnly(was_read_only);
  return saved;
}

bool CModelSaver::WriteMtm(const std::string& path, std::span<const std::vector<SNewFile>> beside) {
  const SSaveOptions options = {.vertex_normals = document_.Model().HasFaceType(kFaceShiny), .beside = beside};
  return Write(path, options, EModelVariant::kMtm);
}

bool CModelSaver::WriteBackdrop(const std::string& path) {
  // All faces of a backdrop are of a textured type, and the loader takes none of those before a texture selection. A
  // later face without a texture comes back with that of the face before it.
  const CBinModel& model = document_.Model();
  const bool untextured = model.FaceCount() > 0 && model.Face(0).Texture() == nullptr;
  if (untextured && !IsConfirmed(CarefulQuestion(Format(kUntexturedBackdropText, 0)))) return false;
  return Write(path, {.backdrop = true}, EModelVariant::kBackdrop);
}

bool CModelSaver::WriteHellbender(const std::string& path) {
  const auto scale_word = AskScaleWord();
  if (!scale_word || !OfferHellbenderFaceTypes()) return false;
  const bool vertex_normals = document_.Model().HasFaceType(kFaceShiny);
  return Write(path, {.vertex_normals = vertex_normals, .scale_word = *scale_word}, EModelVariant::kHellbender);
}

/// The factor in 16.16 fixed point; nothing when the user cancelled, or gave one that the file has no place for.
std::optional<int32_t> CModelSaver::AskScaleWord() {
  double& last_factor = document_.Services().settings.scale_factor;
  const double offered = last_factor != 0.0 ? last_factor : document_.Model().ScaleWord() / kFixedPointOne;
  const auto factor = document_.Services().questions.AskScaleFactor(offered);
  if (!factor) return std::nullopt;
  const auto word = TryTruncate(*factor * kFixedPointOne);
  if (!word) {
    Fail(Format("The scale factor %g cannot be saved.\nIt must lie between -32768 and 32767.99998.", *factor));
    return std::nullopt;
  }
  last_factor = *factor;
  return word;
}

bool CModelSaver::OfferHellbenderFaceTypes() {
  if (!document_.Model().HasFaceTypeAbove(kLastHellbenderFaceType)) return true;
  const SMessage question = CarefulQuestion(kHellbenderFacesText, EAnswer::kCancel);
  const EAnswer answer = document_.Services().questions.AskYesNoCancel(question);
  if (answer == EAnswer::kYes) {
    document_.KeepState("Convert to Hellbender face types");
    document_.Model().ReplaceFaceTypesAbove(kLastHellbenderFaceType, kFaceTextured);
  }
  return answer != EAnswer::kCancel;
}

bool CModelSaver::Write(const std::string& path, const SSaveOptions& options, EModelVariant variant) {
  CQuestions& questions = document_.Services().questions;
  const CQuestions::CAbout about(questions, path);
  const std::string name_fault = NameFault(document_.Model());
  if (!name_fault.empty()) return Fail(kNotSavedText, name_fault);
  SError error;
  bool written = false;
  {
    const auto work = questions.BeginWork(Format("Saving %s", FileNamePart(path).c_str()), true);
    KeepOverwrittenFile(path);
    written = SaveBinFile(document_.Model(), options, path, &error, work.get());
    if (written) document_.TakeSavedPath(path);
  }
  if (written) saved_as_ = variant;
  if (!written && !error.what.empty()) Fail(kNotSavedText, error.what);
  return written;
}

/// What PATH holds goes to the earlier states unless it is there already: the document as it was opened, what another
/// program made of it, another model. Not worth a question: what cannot be read as a model is passed over.
void CModelSaver::KeepOverwrittenFile(const std::string& path) const {
  document_.KeepOverwrittenFile(path, [&](const SCopyLabel& label) -> std::vector<uint8_t> {
    CQuietQuestions questions;
    // A store of its own, so that stand-ins for missing textures stay out of the document's.
    CTextureStore textures(questions, GreyRamp());
    CModelTextureFinder finder(textures, questions, document_.Settings(), path);
    CBinModel old;
    if (!LoadBinFile(old, path, {finder, questions, false, nullptr})) return {};
    return WriteModelCopy(label, old);
  });
}

bool CModelSaver::IsOwnFile(const std::string& path) const {
  return IsSameFile(path, document_.Path());
}

bool CModelSaver::IsConfirmed(const SMessage& question) {
  return document_.Services().questions.AskYesNo(question) == EAnswer::kYes;
}

/// Always false, for the caller to pass on.
bool CModelSaver::Fail(const std::string& text, const std::string& details) {
  document_.Services().questions.Message(
      {.text = text, .caption = kErrorCaption, .icon = EIcon::kError, .details = details});
  return false;
}

}  // namespace veldra
