#include "podtools/archivedocument.h"

#include <utility>

#include "archive/podedit.h"
#include "platform/files.h"
#include "platform/text.h"
#include "podtools/archivecopy.h"

namespace veldra {

namespace {

constexpr const char* kOtherOnDiskText =
    "\"%s\" has been changed on the disk since it was loaded.\nNothing has been saved. Load it again, and make the "
    "changes once more.";
constexpr const char* kGoneText = "\"%s\" is no longer on the disk.\nNothing has been saved.";
constexpr const char* kSourceGoneText = "\"%s\" cannot be read any more.\nRemove it from the list, or replace it.";

}  // namespace

CArchiveDocument::CArchiveDocument(CQuestions& questions, const CSettings& settings)
    : CFileDocument(questions, settings, nullptr) {}

CArchiveDocument::~CArchiveDocument() {
  TellGone();
}

bool CArchiveDocument::Read(CPodDocument& archive, const std::string& path) {
  SError error;
  return archive.Load(path, &error) || Questions().Fail(kFailedToLoadPod, error.what);
}

void CArchiveDocument::Take(CPodDocument archive) {
  archive_ = std::move(archive);
  changes_.Clear();
  is_recovered_ = false;
  emit Changed();
  emit Loaded();
}

bool CArchiveDocument::Load(const std::string& given_path) {
  // As it is found from wherever the program is started next.
  const std::string path = AbsolutePath(given_path);
  CDocumentStamp stamp(FilesOf(path));
  CPodDocument loaded;
  if (!Read(loaded, path)) return false;
  TakeStamp(std::move(stamp));
  SetState(path, false, false);
  Take(std::move(loaded));
  return true;
}

bool CArchiveDocument::Reload() {
  return !Path().empty() && Load(std::string(Path()));
}

bool CArchiveDocument::IsSaveable() {
  const std::string& path = Path();
  if (!FileExists(path)) return Questions().Fail(Format(kGoneText, path.c_str()));
  if (FileStamp().IsChanged()) return Questions().Fail(Format(kOtherOnDiskText, path.c_str()));
  const auto lost = archive_.MeasureFiles();
  if (!lost) return true;
  return Questions().Fail(Format(kSourceGoneText, archive_.PartOf(archive_.Entries()[*lost]).path.c_str()));
}

bool CArchiveDocument::Save(const std::string& given_path) {
  const std::string path = AbsolutePath(given_path);
  const CQuestions::CAbout about(Questions(), path);
  if (!IsSaveable() || !SavePod(Questions(), archive_, path)) return false;
  CPodDocument written;
  if (!Read(written, path)) return false;
  Take(std::move(written));
  TakeWrittenPath(path);
  return true;
}

void CArchiveDocument::LetGo() {
  SetModified(false);
}

std::vector<uint8_t> CArchiveDocument::WriteCopyFile(const SCopyLabel& label) const {
  return WriteArchiveCopy(label, archive_);
}

bool CArchiveDocument::OpenCopy(const SDocumentCopy& copy, const SCopyFile& file) {
  CPodDocument archive;
  SDiagnosis diagnosis;
  if (!Read(archive, copy.path)) return false;
  if (!ReadArchiveCopy(file, archive, diagnosis))
    return Questions().Fail(Format("The copy of \"%s\" could not be opened.", copy.title.c_str()), diagnosis.Text());
  TakeCopyState(copy);
  Take(std::move(archive));
  is_recovered_ = true;
  SetModified(true);
  TellChanged();
  return true;
}

void CArchiveDocument::TellListChanged() {
  emit Changed();
  SetModified(is_recovered_ || changes_.CanStepBack());
  TellChanged();
  emit StateChanged();
}

bool CArchiveDocument::Change(const std::function<bool(CPodChanges&)>& change) {
  if (Path().empty()) return false;
  const bool is_changed = change(changes_);
  TellListChanged();
  return is_changed;
}

void CArchiveDocument::StepBack() {
  Change([](CPodChanges& changes) {
    changes.StepBack();
    return true;
  });
}

void CArchiveDocument::StepForward() {
  Change([](CPodChanges& changes) {
    changes.StepForward();
    return true;
  });
}

}  // namespace veldra
