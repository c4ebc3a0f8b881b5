#include "document/tarn2doc.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "document/modelcopy.h"
#include "packing/modeltextures.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"

// The document's state, and how it is opened. The checks before saving are in tarn2save.cpp, the commands in
// tarn2commands.cpp, the exports in tarn2export.cpp.

namespace veldra {

namespace {

constexpr SModelChange kEverything = {
    .positions = true, .topology = true, .faces = true, .textures = true, .groups = true, .selection = true};

uint64_t HashOf(std::span<const uint8_t> bytes) {
  return HashText({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

}  // namespace

CTarnDoc::CTarnDoc(const SDocumentServices& services)
    : CFileDocument(services.questions, services.settings, services.earlier_states),
      services_(services),
      steps_(std::make_shared<CSteps>(*this, model_)) {
  model_.SetObserver(this);
}

CTarnDoc::~CTarnDoc() {
  TellGone();
  for (CDocumentObserver* observer : std::vector(observers_))
    observer->OnDocumentGone(*this);
  model_.SetObserver(nullptr);
}

void CTarnDoc::SetTitle(const std::string& title) {
  SetCopyTitle(title);
  offered_name_ = ChangeExtension(title, "bin");
}

void CTarnDoc::AddObserver(CDocumentObserver* observer) {
  observers_.push_back(observer);
}

void CTarnDoc::RemoveObserver(CDocumentObserver* observer) {
  std::erase(observers_, observer);
}

bool CTarnDoc::OnOpenDocument(const std::string& path, SDiagnosis* diagnosis) {
  return OnOpenDocument(path, false, diagnosis);
}

bool CTarnDoc::OnOpenDocument(const std::string& path, bool read_only, SDiagnosis* diagnosis) {
  CDocumentStamp stamp(FilesOf(path));
  // A model on its way in is no change by the user, and nobody should draw half of it.
  model_.SetObserver(nullptr);
  model_.Clear();
  const bool loaded = Load(model_, path, diagnosis);
  model_.SetObserver(this);
  wants_read_only_ = loaded && read_only;
  TakeStamp(std::move(stamp));
  saver_.TakeLoaded();
  steps_->Clear();
  if (loaded) steps_->NoteSaved();
  NotifyChange(kEverything);
  SetState(loaded ? path : "", false, loaded && (read_only || !IsWritable(path)));
  return loaded;
}

/// Fills the empty MODEL.
bool CTarnDoc::Load(CBinModel& model, const std::string& path, SDiagnosis* diagnosis) {
  if (!IsFile(path)) {
    const char* reason = FileExists(path) ? "It is not a file." : "There is no such file.";
    if (diagnosis != nullptr) *diagnosis = {0, reason};
    return ShowError(Format("\"%s\" could not be opened.", path.c_str()), reason);
  }
  const CQuestions::CAbout about(services_.questions, path);
  const auto work = services_.questions.BeginWork(Format("Opening %s", FileNamePart(path).c_str()), true);
  CModelTextureFinder finder(services_.textures, services_.questions, services_.settings, path);
  const SLoadContext context{finder, services_.questions, services_.settings.texture_size_msg != 0, work.get()};
  if (!LoadBinFile(model, path, context, diagnosis)) return false;
  texture_note_ = finder.Note();
  return true;
}

bool CTarnDoc::OpenFromArchive(const SArchivePlace& place) {
  VELDRA_ASSERT(Path().empty() && model_.VertexCount() == 0);
  const std::string name = DisplayFileName(place.entry);
  const CQuestions::CAbout about(services_.questions, name);
  SError error;
  const auto bytes = ReadPlace(place, &error);
  if (!bytes) return ShowError(Format("\"%s\" could not be opened.", name.c_str()), error.what);
  auto finder =
      CModelTextureFinder::InArchive(services_.textures, services_.questions, services_.settings, place.archive);
  const auto work = services_.questions.BeginWork("Opening " + name, true);
  const SLoadContext context{finder, services_.questions, services_.settings.texture_size_msg != 0, work.get()};
  model_.SetObserver(nullptr);
  const bool loaded = LoadBin(model_, bytes->View(), {}, context);
  model_.SetObserver(this);
  if (!loaded) return false;
  place_ = place;
  TakeSavedEntry(bytes->View());
  SetCopyTitle(place.Title());
  offered_name_ = name;
  texture_note_ = finder.Note();
  saver_.TakeLoaded();
  NotifyChange(kEverything);
  SetState("", false, true);
  return true;
}

void CTarnDoc::TakeSavedEntry(std::span<const uint8_t> bytes) {
  entry_hash_ = HashOf(bytes);
  SetModified(false);
}

bool CTarnDoc::IsEntryChanged() const {
  const auto bytes = ReadPlace(place_, nullptr);
  return bytes && HashOf(bytes->View()) != entry_hash_;
}

bool CTarnDoc::OpenCopy(const SDocumentCopy& copy, const SCopyFile& file) {
  VELDRA_ASSERT(Path().empty() && model_.VertexCount() == 0);
  SDiagnosis diagnosis = {0, file.fault};
  bool is_read = false;
  const CQuestions::CAbout about(services_.questions, copy.path.empty() ? copy.title : copy.path);
  if (file.fault.empty()) {
    const auto work = services_.questions.BeginWork(Format("Opening %s", copy.title.c_str()), false);
    CModelTextureFinder finder(services_.textures, services_.questions, services_.settings, copy.path);
    model_.SetObserver(nullptr);
    steps_->StopNoting();
    is_read = ReadModelCopy(file.bytes.View(), model_, finder, &diagnosis);
    model_.SetObserver(this);
  }
  steps_->Clear();
  if (!is_read) {
    return ShowError(Format("The copy of \"%s\" could not be opened.", copy.title.c_str()), diagnosis.Text());
  }
  if (!copy.modified) steps_->NoteSaved();
  NotifyChange(kEverything);
  TakeCopyState(copy);
  return true;
}

// --- Other programs --------------------------------------------------------------------------------------------------

bool CTarnDoc::Reload() {
  if (Path().empty()) return false;
  CDocumentStamp stamp(FilesOf(Path()));
  CBinModel loaded;
  if (!Load(loaded, Path(), nullptr)) return false;
  KeepState("Reload");
  history_.Clear();  // its actions hold vertices that go
  TakeModel(loaded);
  steps_->Clear();
  steps_->NoteSaved();
  TakeStamp(std::move(stamp));
  saver_.TakeLoaded();
  SetState(Path(), false, wants_read_only_ || !IsWritable(Path()));
  return true;
}

/// Takes all that MODEL holds, which is then empty, as something that is no change by the user.
void CTarnDoc::TakeModel(CBinModel& model) {
  model_.SetObserver(nullptr);
  steps_->StopNoting();
  model_.TakeContents(model);
  steps_->DropUnderWay();
  model_.SetObserver(this);
  NotifyChange(kEverything);
}

// --- What is kept of it ----------------------------------------------------------------------------------------------

std::vector<uint8_t> CTarnDoc::WriteCopyFile(const SCopyLabel& label) const {
  return WriteModelCopy(label, model_);
}

SImage CTarnDoc::SmallPicture() const {
  return services_.make_picture ? services_.make_picture(*this) : SImage();
}

std::vector<std::string> CTarnDoc::FilesBeside(const std::string& path) const {
  return {InfoPath(path)};
}

// --- Telling others --------------------------------------------------------------------------------------------------

void CTarnDoc::OnModelChanged(const CBinModel&, const SModelChange& change) {
  if (change.Any()) steps_->OnModelChanged();
  NotifyChange(change);
  if (change.Any() && !steps_->IsGoing()) SetModified(true);
}

// What the history itself does to the model is no news to it.

void CTarnDoc::OnVerticesAdded(std::span<CBinVertex* const> vertices) {
  if (!history_.IsBusy()) CHistory::RecordVertexChange(history_, vertices, true);
}

void CTarnDoc::OnVerticesDeleted(CBinModel::Vertices& vertices) {
  if (history_.IsBusy()) return;
  std::vector<CBinVertex*> pointers;
  for (const auto& vertex : vertices)
    pointers.push_back(vertex.get());
  if (!CHistory::RecordVertexChange(history_, pointers, false)) return;
  for (auto& vertex : vertices)
    static_cast<void>(vertex.release());  // the history's now
}

// Observers may leave while they are told.

void CTarnDoc::NotifyChange(const SModelChange& change) {
  for (CDocumentObserver* observer : std::vector(observers_))
    observer->OnDocumentChanged(*this, change);
  if (change.Any()) TellChanged();
}

void CTarnDoc::OnStateChanged() {
  for (CDocumentObserver* observer : std::vector(observers_))
    observer->OnDocumentStateChanged(*this);
}

/// Always false, for the caller to pass on.
bool CTarnDoc::ShowError(const std::string& text, const std::string& details) {
  services_.questions.Message({.text = text, .caption = kErrorCaption, .icon = EIcon::kError, .details = details});
  return false;
}

}  // namespace veldra
