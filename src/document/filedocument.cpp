#include "document/filedocument.h"

#include <utility>

#include "document/earlierstates.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

CFileDocument::CFileDocument(CQuestions& questions, const CSettings& settings, CEarlierStates* states)
    : questions_(questions), settings_(settings), states_(states) {}

std::string CFileDocument::Title() const {
  if (!path_.empty()) return FileNamePart(path_);
  if (!copy_title_.empty()) return copy_title_;
  return Format("Untitled%d", UntitledNumber());
}

bool CFileDocument::MayLeave(const std::function<bool()>& save) const {
  if (!modified_) return true;
  const CQuestions::CAbout about(questions_, path_);
  const SMessage question = {.text = Format("Save changes to %s?", Title().c_str()),
                             .icon = EIcon::kQuestion,
                             .yes = "&Save",
                             .no = "Do&n't Save"};
  const EAnswer answer = questions_.AskYesNoCancel(question);
  return answer == EAnswer::kNo || (answer == EAnswer::kYes && save());
}

int CFileDocument::UntitledNumber() const {
  static int last_number = 0;
  if (untitled_number_ == 0) untitled_number_ = ++last_number;
  return untitled_number_;
}

// --- Its file --------------------------------------------------------------------------------------------------------

bool CFileDocument::HasState(const std::string& path, bool modified, bool read_only) const {
  return path == path_ && modified == modified_ && read_only == read_only_;
}

void CFileDocument::SetState(const std::string& path, bool modified, bool read_only) {
  if (HasState(path, modified, read_only)) return;
  path_ = path;
  modified_ = modified;
  read_only_ = read_only;
  OnStateChanged();
  for (CFileDocumentObserver* keeper : std::vector(keepers_))
    keeper->OnStateChanged(*this);
}

std::vector<std::string> CFileDocument::FilesOf(const std::string& path) const {
  if (path.empty()) return {};
  std::vector<std::string> files = FilesBeside(path);
  files.insert(files.begin(), path);
  return files;
}

void CFileDocument::TakeStamp(CDocumentStamp stamp) {
  stamp_ = std::move(stamp);
  is_file_kept_ = false;
}

void CFileDocument::TakeWrittenPath(const std::string& path) {
  const std::string old_key = path_.empty() ? StatesKey() : "";
  TakeStamp(CDocumentStamp(FilesOf(path)));
  SetState(path, false, read_only_);
  SError error;
  if (!old_key.empty() && !states_->Move(old_key, StatesKey(), &error)) {
    Trace(">> CFileDocument::TakeWrittenPath(%s): %s\n", path.c_str(), error.what.c_str());
  }
  KeepState("Save");
}

void CFileDocument::TakeCopyState(const SDocumentCopy& copy) {
  copy_title_ = copy.title;
  copy_states_key_ = copy.path.empty() ? copy.states_key : "";
  untitled_number_ = 0;
  TakeStamp(CDocumentStamp(FilesOf(copy.path)));
  SetState(copy.path, copy.modified, FileExists(copy.path) && !IsWritable(copy.path));
}

// --- Copies of it ----------------------------------------------------------------------------------------------------

std::vector<uint8_t> CFileDocument::Pack(const SCopyLabel& label, SError* error) const {
  if (!IsBusy())
    return PackCopy(
        label, [this](const SCopyLabel& whole) { return WriteCopyFile(whole); }, error);
  Fail(error, "the document is being worked on");
  return {};
}

std::string CFileDocument::StatesKey() const {
  if (states_ == nullptr) return "";
  if (!path_.empty()) return CEarlierStates::KeyOfPath(path_);
  if (!copy_states_key_.empty()) return copy_states_key_;
  return states_->KeyOfUntitled(UntitledNumber());
}

void CFileDocument::KeepState(const std::string& command) {
  KeepPacked(StatesKey(), PackState(command), !modified_);
}

std::vector<uint8_t> CFileDocument::PackState(const std::string& command) const {
  if (states_ == nullptr) return {};
  SError error;
  auto packed = Pack({.title = command, .time = PresentTime(), .picture = SmallPicture()}, &error);
  if (packed.empty()) Trace(">> CFileDocument::PackState(%s): %s\n", command.c_str(), error.what.c_str());
  return packed;
}

void CFileDocument::KeepPacked(const std::string& key, std::span<const uint8_t> packed, bool is_file) {
  if (packed.empty()) return;
  SError error;
  const bool is_kept = states_->Keep(key, packed, &error);
  if (!is_kept) Trace(">> CFileDocument::KeepPacked(%s): %s\n", key.c_str(), error.what.c_str());
  if (is_kept && is_file) is_file_kept_ = true;
}

void CFileDocument::KeepOverwrittenFile(const std::string& path, const CopyWriter& write) const {
  if (states_ == nullptr || !IsFile(path)) return;
  if (is_file_kept_ && IsSameFile(path, path_) && !stamp_.IsChanged()) return;
  SError error;
  const auto copy = PackCopy({.title = "File before saving", .time = PresentTime()}, write, &error);
  if (!copy.empty()) states_->Keep(CEarlierStates::KeyOfPath(path), copy, &error);
  if (!error.what.empty()) Trace(">> CFileDocument: %s is not kept: %s\n", path.c_str(), error.what.c_str());
}

// --- Its keepers -----------------------------------------------------------------------------------------------------

void CFileDocument::AddKeeper(CFileDocumentObserver* keeper) {
  keepers_.push_back(keeper);
}

void CFileDocument::RemoveKeeper(CFileDocumentObserver* keeper) {
  std::erase(keepers_, keeper);
}

void CFileDocument::TellChanged() const {
  for (CFileDocumentObserver* keeper : std::vector(keepers_))
    keeper->OnContentChanged(*this);
}

void CFileDocument::TellGone() {
  for (CFileDocumentObserver* keeper : std::exchange(keepers_, {}))
    keeper->OnGone(*this);
}

}  // namespace veldra
