#include "truckeditor/truckdocument.h"

#include <utility>

#include "document/filenews.h"
#include "platform/files.h"
#include "platform/text.h"
#include "truckeditor/truckcopy.h"

namespace veldra {

namespace {

constexpr size_t kMostSteps = 500;
constexpr const char* kUntitled = "Untitled";

}  // namespace

CTruckDocument::CTruckDocument(CQuestions& questions, const CSettings& settings, CEarlierStates* states)
    : CFileDocument(questions, settings, states) {
  SetCopyTitle(kUntitled);
}

CTruckDocument::~CTruckDocument() {
  TellGone();
}

// --- Its file --------------------------------------------------------------------------------------------------------

/// Another truck, whose path and file have just been taken.
void CTruckDocument::Begin(const CTruck& truck) {
  truck_ = truck;
  place_ = {};
  undo_.clear();
  redo_.clear();
  last_key_.clear();
}

void CTruckDocument::New(const CTruck& truck) {
  Begin(truck);
  is_of_unknown_file_ = false;
  saved_ = CTruck();
  TakeCopyState({.title = kUntitled});
  emit FileChanged();
  TellTruckChanged();
}

bool CTruckDocument::Load(const std::string& given_path) {
  // As it is found from wherever the program is started next.
  const std::string path = AbsolutePath(given_path);
  CDocumentStamp stamp(FilesOf(path));
  CTruck truck;
  int known = 0;
  if (!ReadFile(truck, path, known)) return false;
  Begin(truck);
  is_of_unknown_file_ = known == 0;
  saved_ = truck_;
  TakeStamp(std::move(stamp));
  SetState(path, false, false);
  emit FileChanged();
  emit Changed();
  if (is_of_unknown_file_)
    Questions().Message({.text = Format(kNothingKnownText, path.c_str()), .icon = EIcon::kWarning});
  return true;
}

bool CTruckDocument::LoadFromArchive(const SArchivePlace& place) {
  const CQuestions::CAbout about(Questions(), place.Title());
  SError error;
  const auto bytes = ReadPlace(place, &error);
  if (bytes && bytes->View().size() > kLargestFile) error.what = "It is longer than a truck file can be.";
  if (!error.what.empty()) return Questions().Fail(kFailedToLoadTruck, place.Title() + ": " + error.what);
  CTruck truck;
  const int known = truck.Parse(bytes->Text());
  Begin(truck);
  place_ = place;
  is_of_unknown_file_ = known == 0;
  saved_ = truck_;
  TakeCopyState({.title = place.Title()});
  emit FileChanged();
  emit Changed();
  return true;
}

void CTruckDocument::TakeSavedEntry() {
  saved_ = truck_;
  last_key_.clear();
  SetModified(false);
  emit Changed();
}

bool CTruckDocument::ReadFile(CTruck& truck, const std::string& path, int& known) {
  const CQuestions::CAbout about(Questions(), path);
  SError error;
  if (FileLength(path).value_or(0) > kLargestFile) {
    error.what = "It is longer than a truck file can be.";
  } else if (truck.Load(path, &error, &known)) {
    return true;
  }
  return Questions().Fail(kFailedToLoadTruck, path + ": " + error.what);
}

bool CTruckDocument::MayUseUnknownFile() const {
  if (!is_of_unknown_file_) return true;
  const SMessage question = {.text = Format(kNothingKnownText, Path().c_str()) + "\nGo on all the same?",
                             .icon = EIcon::kWarning,
                             .usual = EAnswer::kNo};
  return Questions().AskYesNo(question) == EAnswer::kYes;
}

bool CTruckDocument::Save(const std::string& given_path) {
  const std::string path = AbsolutePath(given_path);
  const CQuestions::CAbout about(Questions(), path);
  if (IsSameFile(path, Path()) && !(MayUseUnknownFile() && MayOverwrite(*this))) return false;
  KeepOverwrittenFile(path, [&](const SCopyLabel& label) {
    CTruck old;
    return old.Load(path) ? WriteTruckCopy(label, old) : std::vector<uint8_t>();
  });
  SError error;
  if (!truck_.Save(path, &error)) return Questions().Fail(kFailedToOpenDestination, path + ": " + error.what);
  const bool is_other = path != Path();
  saved_ = truck_;
  is_of_unknown_file_ = false;
  place_ = {};
  last_key_.clear();
  TakeWrittenPath(path);
  if (is_other) emit FileChanged();
  emit Changed();
  return true;
}

bool CTruckDocument::Reload() {
  CDocumentStamp stamp(FilesOf(Path()));
  CTruck truck;
  int known = 0;
  if (Path().empty() || !ReadFile(truck, Path(), known)) return false;
  is_of_unknown_file_ = known == 0;
  saved_ = truck;
  ChangeMuch("Reload", [&](CTruck& changed) { changed = truck; });
  TakeStamp(std::move(stamp));
  SetModified(false);
  emit Changed();
  return true;
}

void CTruckDocument::OnFileGone() {
  saved_.reset();
  SetModified(true);
}

void CTruckDocument::LetGo() {
  saved_ = truck_;
  SetModified(false);
}

void CTruckDocument::OnStateChanged() {
  emit Changed();
}

// --- Copies of it ----------------------------------------------------------------------------------------------------

std::vector<uint8_t> CTruckDocument::WriteCopyFile(const SCopyLabel& label) const {
  return WriteTruckCopy(label, truck_);
}

bool CTruckDocument::ReadState(CTruck& truck, const SCopyFile& file, const std::string& title) {
  SDiagnosis diagnosis;
  auto read = ReadTruckCopy(file, diagnosis);
  if (!read)
    return Questions().Fail(Format("The copy of \"%s\" could not be opened.", title.c_str()), diagnosis.Text());
  truck = std::move(*read);
  return true;
}

bool CTruckDocument::OpenCopy(const SDocumentCopy& copy, const SCopyFile& file) {
  CTruck truck;
  if (!ReadState(truck, file, copy.title)) return false;
  Begin(truck);
  saved_.reset();
  TakeCopyState(copy);
  TellChanged();
  emit FileChanged();
  emit Changed();
  return true;
}

bool CTruckDocument::GoBackTo(const SCopyFile& state) {
  CTruck truck;
  if (!ReadState(truck, state, Title())) return false;
  ChangeMuch("Earlier state", [&](CTruck& changed) { changed = truck; });
  return true;
}

// --- Changes ---------------------------------------------------------------------------------------------------------

void CTruckDocument::Change(const QString& key, const std::function<void(CTruck&)>& change) {
  CTruck changed = truck_;
  change(changed);
  if (changed == truck_) return;
  if (key.isEmpty() || key != last_key_) {
    if (undo_.size() == kMostSteps) undo_.erase(undo_.begin());
    undo_.push_back(std::move(truck_));
  }
  last_key_ = key;
  redo_.clear();
  truck_ = std::move(changed);
  TellTruckChanged();
}

void CTruckDocument::ChangeMuch(const QString& command, const std::function<void(CTruck&)>& change) {
  CTruck changed = truck_;
  change(changed);
  if (changed == truck_) return;
  KeepState(command.toStdString());
  Change("", [&](CTruck& truck) { truck = changed; });
}

void CTruckDocument::TellTruckChanged() {
  TellChanged();
  SetModified(truck_ != saved_);
  emit Changed();
}

void CTruckDocument::Swap(std::vector<CTruck>& from, std::vector<CTruck>& to) {
  if (from.empty()) return;
  to.push_back(std::move(truck_));
  truck_ = std::move(from.back());
  from.pop_back();
  last_key_.clear();
  TellTruckChanged();
}

void CTruckDocument::Undo() {
  Swap(undo_, redo_);
}

void CTruckDocument::Redo() {
  Swap(redo_, undo_);
}

}  // namespace veldra
