#pragma once

#include <QObject>
#include <functional>
#include <string>

#include "archive/podchanges.h"
#include "archive/poddocument.h"
#include "document/filedocument.h"

namespace veldra {

/// The archive that is being changed, with its file. Only its directory is in memory: what is not saved is a list of
/// what is to be where, and the archive on the disk must be the one that it was made from.
class CArchiveDocument : public QObject, public CFileDocument {
  Q_OBJECT

 public:
  CArchiveDocument(CQuestions& questions, const CSettings& settings);
  ~CArchiveDocument() override;

  CPodDocument& Archive() { return archive_; }
  const CPodDocument& Archive() const { return archive_; }
  const CPodChanges& Changes() const { return changes_; }
  bool IsWhole() const override { return false; }

  /// False after "Failed to load POD file": the archive that was there stays.
  bool Load(const std::string& path);
  /// False when it cannot be written, which the user has been told, or is not to be. Steps back end with it.
  bool Save(const std::string& path);
  bool Reload() override;
  bool OpenCopy(const SDocumentCopy& copy, const SCopyFile& file) override;
  /// The user has let go of what is not saved.
  void LetGo();

  /// CHANGE is one of the changes of CPodChanges; what it returns.
  bool Change(const std::function<bool(CPodChanges&)>& change);
  void StepBack();
  void StepForward();

 signals:
  /// The list of entries.
  void Changed();
  /// It is another archive now, or the same one read again.
  void Loaded();
  /// Path or modified mark.
  void StateChanged();

 private:
  std::vector<uint8_t> WriteCopyFile(const SCopyLabel& label) const override;
  void OnStateChanged() override { emit StateChanged(); }
  bool Read(CPodDocument& archive, const std::string& path);
  void Take(CPodDocument archive);
  bool IsSaveable();
  void TellListChanged();

  CPodDocument archive_;
  CPodChanges changes_{archive_};
  bool is_recovered_ = false;  ///< its list differs from the file's before the first step
};

}  // namespace veldra
