#include "document/tarn2doc.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "model/geometry.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "textures/texturefinder.h"

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

}  // namespace

CTarnDoc::CTarnDoc(const SDocumentServices& services) : services_(services) {
  model_.SetObserver(this);
}

CTarnDoc::~CTarnDoc() {
  model_.SetObserver(nullptr);
}

std::string CTarnDoc::Title() const {
  if (!path_.empty()) return FileNamePart(path_);
  static int last_number = 0;
  if (untitled_number_ == 0) untitled_number_ = ++last_number;
  return Format("Untitled%d", untitled_number_);
}

void CTarnDoc::SetModified(bool modified) {
  SetState(path_, modified, read_only_);
}

void CTarnDoc::SetReadOnly(bool read_only) {
  SetState(path_, modified_, read_only);
}

void CTarnDoc::AddObserver(CDocumentObserver* observer) {
  observers_.push_back(observer);
}

void CTarnDoc::RemoveObserver(CDocumentObserver* observer) {
  std::erase(observers_, observer);
}

bool CTarnDoc::OnOpenDocument(const std::string& path, SDiagnosis* diagnosis) {
  // A model on its way in is no change by the user, and nobody should draw half of it.
  model_.SetObserver(nullptr);
  model_.Clear();
  bool loaded = false;
  if (IsFile(path)) {
    const auto work = services_.questions.BeginWork(Format("Opening %s", FileNamePart(path).c_str()), false);
    CTextureFinder finder(services_.textures, services_.questions, services_.settings.art_dir);
    const SLoadContext context{finder, services_.questions, services_.settings.texture_size_msg != 0};
    loaded = LoadBinFile(model_, path, context, diagnosis);
  } else {
    const char* reason = FileExists(path) ? "It is not a file." : "There is no such file.";
    if (diagnosis != nullptr) *diagnosis = {0, reason};
    ShowError(Format("\"%s\" could not be opened.", path.c_str()), reason);
  }
  model_.SetObserver(this);
  NotifyChange({.positions = true, .topology = true, .faces = true, .textures = true, .groups = true});
  SetState(loaded ? path : "", false, loaded && !IsWritable(path));
  return loaded;
}

bool CTarnDoc::Save() {
  if (read_only_ || path_.empty()) return SaveAs();
  const std::string path = SavePath(path_);
  if (!CheckWritable(path) || !CheckCentered() || !CheckTextureSizes() || !CheckUnusedVertices()) return false;
  return SaveMTM(path);
}

bool CTarnDoc::SaveAs() {
  if (!CheckBeforeSaveAs()) return false;
  const std::string directory = path_.empty() ? services_.settings.bin_dir : DirectoryPart(path_);
  const auto chosen = services_.questions.AskSaveFile(SavePrompt(directory, Title()));
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
  if (!CheckWritable(path)) return false;
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
  if (answer == EAnswer::kYes) model_.ReplaceFaceTypesAbove(kLastHellbenderFaceType, kFaceTextured);
  return answer != EAnswer::kCancel;
}

bool CTarnDoc::Write(const std::string& path, const SSaveOptions& options) {
  const std::string name_fault = NameFault(model_);
  if (!name_fault.empty()) return ShowError(kNotSavedText, name_fault);
  SError error;
  bool written = false;
  {
    const auto work = services_.questions.BeginWork(Format("Saving %s", FileNamePart(path).c_str()), false);
    written = SaveBinFile(model_, options, path, &error);
  }
  if (!written) return ShowError(kNotSavedText, error.what);
  SetState(path, false, read_only_);
  return true;
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
  if (answer == EAnswer::kYes) CenterY();
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
  if (answer.choice == SUnusedVerticesAnswer::EChoice::kDelete) DeleteAllUnused();
  return answer.choice != SUnusedVerticesAnswer::EChoice::kCancel;
}

bool CTarnDoc::IsOpenReadOnlyElsewhere(const std::string& path) const {
  return services_.is_open_read_only_elsewhere && services_.is_open_read_only_elsewhere(*this, path);
}

void CTarnDoc::CenterX() {
  Center(model_, EAxis::kX);
}

void CTarnDoc::CenterY() {
  Center(model_, EAxis::kY);
}

void CTarnDoc::CenterZ() {
  Center(model_, EAxis::kZ);
}

void CTarnDoc::CenterAll() {
  CenterX();
  CenterY();
  CenterZ();
}

int32_t CTarnDoc::DeleteAllUnused() {
  CBinModel::Vertices deleted = model_.TakeVertices(model_.UnusedVertices());
  const auto count = static_cast<int32_t>(deleted.size());
  if (count == 0) return 0;
  std::vector<CBinVertex*> vertices;
  for (const auto& vertex : deleted)
    vertices.push_back(vertex.get());
  if (CHistory::RecordVertexChange(history_, vertices, false)) {
    for (auto& vertex : deleted)
      static_cast<void>(vertex.release());  // the history's now
  }
  return count;
}

void CTarnDoc::OnModelChanged(const CBinModel&, const SModelChange& change) {
  NotifyChange(change);
  if (change.Any()) SetModified(true);
}

std::string CTarnDoc::SavePath(const std::string& path) const {
  const CSettings& settings = services_.settings;
  if (settings.save_to_def_dir == 0 || !IsDirectory(settings.bin_dir)) return path;
  return JoinPath(settings.bin_dir, FileNamePart(path));
}

void CTarnDoc::SetState(const std::string& path, bool modified, bool read_only) {
  if (path == path_ && modified == modified_ && read_only == read_only_) return;
  path_ = path;
  modified_ = modified;
  read_only_ = read_only;
  NotifyState();
}

// Observers may leave while they are told.

void CTarnDoc::NotifyChange(const SModelChange& change) {
  for (CDocumentObserver* observer : std::vector(observers_))
    observer->OnDocumentChanged(*this, change);
}

void CTarnDoc::NotifyState() {
  for (CDocumentObserver* observer : std::vector(observers_))
    observer->OnDocumentStateChanged(*this);
}

/// Always false, for the caller to pass on.
bool CTarnDoc::ShowError(const std::string& text, const std::string& details) {
  services_.questions.Message({.text = text, .caption = kErrorCaption, .icon = EIcon::kError, .details = details});
  return false;
}

}  // namespace veldra
