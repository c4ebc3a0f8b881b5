#include "document/tarn2doc.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "document/earlierstates.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "textures/texturefinder.h"

// The document's state, and how it is opened. The checks before saving are in tarn2save.cpp, the commands in
// tarn2commands.cpp, the exports in tarn2export.cpp.

namespace veldra {

namespace {

constexpr SModelChange kEverything = {
    .positions = true, .topology = true, .faces = true, .textures = true, .groups = true, .selection = true};

}  // namespace

CTarnDoc::CTarnDoc(const SDocumentServices& services) : services_(services) {
  model_.SetObserver(this);
}

CTarnDoc::~CTarnDoc() {
  for (CDocumentObserver* observer : std::vector(observers_))
    observer->OnDocumentGone(*this);
  model_.SetObserver(nullptr);
}

std::string CTarnDoc::Title() const {
  if (!path_.empty()) return FileNamePart(path_);
  if (!copy_title_.empty()) return copy_title_;
  return Format("Untitled%d", UntitledNumber());
}

void CTarnDoc::SetTitle(const std::string& title) {
  copy_title_ = title;
  offered_name_ = ChangeExtension(title, "bin");
}

int CTarnDoc::UntitledNumber() const {
  static int last_number = 0;
  if (untitled_number_ == 0) untitled_number_ = ++last_number;
  return untitled_number_;
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
  return OnOpenDocument(path, false, diagnosis);
}

bool CTarnDoc::OnOpenDocument(const std::string& path, bool read_only, SDiagnosis* diagnosis) {
  stamp_ = CModelFileStamp(path);
  // A model on its way in is no change by the user, and nobody should draw half of it.
  model_.SetObserver(nullptr);
  model_.Clear();
  const bool loaded = Load(model_, path, diagnosis);
  model_.SetObserver(this);
  wants_read_only_ = loaded && read_only;
  is_file_kept_ = false;
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
  CTextureFinder finder(services_.textures, services_.questions, services_.settings.art_dir);
  const SLoadContext context{finder, services_.questions, services_.settings.texture_size_msg != 0, work.get()};
  return LoadBinFile(model, path, context, diagnosis);
}

bool CTarnDoc::OpenCopy(const SDocumentCopy& copy, const CopyReader& reader) {
  VELDRA_ASSERT(path_.empty() && model_.VertexCount() == 0);
  SDiagnosis diagnosis;
  bool is_read = false;
  const CQuestions::CAbout about(services_.questions, copy.path.empty() ? copy.title : copy.path);
  {
    const auto work = services_.questions.BeginWork(Format("Opening %s", copy.title.c_str()), false);
    CTextureFinder finder(services_.textures, services_.questions, services_.settings.art_dir);
    model_.SetObserver(nullptr);
    is_read = reader(model_, finder, diagnosis);
    model_.SetObserver(this);
  }
  if (!is_read) {
    return ShowError(Format("The copy of \"%s\" could not be opened.", copy.title.c_str()), diagnosis.Text());
  }
  copy_title_ = copy.title;
  copy_states_key_ = copy.path.empty() ? copy.states_key : "";
  stamp_ = CModelFileStamp(copy.path);
  NotifyChange(kEverything);
  SetState(copy.path, copy.modified, FileExists(copy.path) && !IsWritable(copy.path));
  return true;
}

// --- Other programs --------------------------------------------------------------------------------------------------

bool CTarnDoc::Reload() {
  if (path_.empty()) return false;
  CModelFileStamp stamp(path_);
  CBinModel loaded;
  if (!Load(loaded, path_, nullptr)) return false;
  KeepState("Reload");
  history_.Clear();  // its actions hold vertices that go
  TakeModel(loaded);
  stamp_ = std::move(stamp);
  is_file_kept_ = false;
  SetState(path_, false, wants_read_only_ || !IsWritable(path_));
  return true;
}

/// Takes all that MODEL holds, which is then empty, as something that is no change by the user.
void CTarnDoc::TakeModel(CBinModel& model) {
  model_.SetObserver(nullptr);
  model_.TakeContents(model);
  model_.SetObserver(this);
  NotifyChange(kEverything);
}

// --- Earlier states --------------------------------------------------------------------------------------------------

std::string CTarnDoc::StatesKey() const {
  if (services_.earlier_states == nullptr) return "";
  if (!path_.empty()) return CEarlierStates::KeyOfPath(path_);
  if (!copy_states_key_.empty()) return copy_states_key_;
  return services_.earlier_states->KeyOfUntitled(UntitledNumber());
}

void CTarnDoc::KeepState(const std::string& command) {
  KeepPacked(StatesKey(), PackState(command), !modified_);
}

/// Empty when nothing is to be kept, or cannot be.
std::vector<uint8_t> CTarnDoc::PackState(const std::string& command) const {
  if (services_.earlier_states == nullptr) return {};
  const SImage picture = services_.make_picture ? services_.make_picture(*this) : SImage{};
  SError error;
  auto packed = CEarlierStates::Pack(command, model_, &picture, &error);
  if (packed.empty()) Trace(">> CTarnDoc::PackState(%s): %s\n", command.c_str(), error.what.c_str());
  return packed;
}

/// IS_FILE: it is what the document's file holds.
void CTarnDoc::KeepPacked(const std::string& key, std::span<const uint8_t> packed, bool is_file) {
  if (packed.empty()) return;
  SError error;
  const bool is_kept = services_.earlier_states->KeepPacked(key, packed, &error);
  if (!is_kept) Trace(">> CTarnDoc::KeepPacked(%s): %s\n", key.c_str(), error.what.c_str());
  if (is_kept && is_file) is_file_kept_ = true;
}

// --- Telling others --------------------------------------------------------------------------------------------------

void CTarnDoc::OnModelChanged(const CBinModel&, const SModelChange& change) {
  NotifyChange(change);
  if (change.Any()) SetModified(true);
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
