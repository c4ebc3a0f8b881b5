#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "document/copyfile.h"
#include "document/filestamp.h"
#include "platform/questions.h"
#include "settings/settings.h"

namespace veldra {

class CEarlierStates;
class CFileDocument;

/// Who sees to it that nothing of a document is lost, whatever it holds. It leaves the document before it goes.
class CFileDocumentObserver {
 public:
  virtual ~CFileDocumentObserver() = default;
  virtual void OnContentChanged(const CFileDocument& document) = 0;
  /// Path, modified mark or read-only state.
  virtual void OnStateChanged(const CFileDocument& document) = 0;
  /// The document is about to go, whole for the last time.
  virtual void OnGone(const CFileDocument& document) = 0;
};

/// A document that comes from the program's own copies: what a crash left, or an earlier state.
struct SDocumentCopy {
  std::string title;  ///< shown while there is no path
  std::string path = {};
  std::string states_key = {};  ///< of a document without path, so that its earlier states are found again
  bool modified = false;        ///< the file at PATH does not hold this
};

/// What a document has to do with its file and with what is kept of it, whether it is a model or a truck.
class CFileDocument {
 public:
  /// STATES (may be null: nowhere) is where the states before changes are kept. All outlive the document.
  CFileDocument(CQuestions& questions, const CSettings& settings, CEarlierStates* states);
  virtual ~CFileDocument() = default;
  CFileDocument(const CFileDocument&) = delete;
  CFileDocument& operator=(const CFileDocument&) = delete;

  const std::string& Path() const { return path_; }  ///< "" while never saved
  /// The file name, or "Untitled" with a number that the document keeps.
  std::string Title() const;
  bool IsModified() const { return modified_; }
  void SetModified(bool modified) { SetState(path_, modified, read_only_); }
  bool IsReadOnly() const { return read_only_; }
  void SetReadOnly(bool read_only) { SetState(path_, modified_, read_only); }
  CQuestions& Questions() const { return questions_; }
  const CSettings& Settings() const { return settings_; }

  /// It is being worked on: no copy can be made.
  virtual bool IsBusy() const { return false; }
  /// Reads the file anew; views and earlier states stay. On failure, which the user has been told, the document stays
  /// as it is.
  virtual bool Reload() = 0;
  /// Fills a new document from a copy. False, the document empty, when the user has been told what is wrong with it.
  virtual bool OpenCopy(const SDocumentCopy& copy, const SCopyFile& file) = 0;
  /// No file holds the document any more.
  virtual void OnFileGone() { SetModified(true); }
  /// It may be let go: nothing is unsaved, or SAVE has saved it, or the user does not want that.
  bool MayLeave(const std::function<bool()>& save) const;
  /// All that its file holds is in memory too, so that it can be written anew when it is gone.
  virtual bool IsWhole() const { return true; }

  /// The files that a document with this path lies in, its own first; none for "".
  std::vector<std::string> FilesOf(const std::string& path) const;
  /// To ask what has become of the files since they were last read or written here. Looking at one that was written
  /// anew with the same bytes brings it up to date.
  CDocumentStamp& FileStamp() const { return stamp_; }

  /// The whole of it as a copy. Empty, with the reason, while it is being worked on or when memory runs out.
  std::vector<uint8_t> Pack(const SCopyLabel& label, SError* error) const;

  // --- Earlier states ----------------------------------------------------------------------------------------------
  // What goes wrong is traced, and the command goes on.

  /// Under which the document's earlier states are kept; "" when none are.
  std::string StatesKey() const;
  /// Keeps the document as it is now, which COMMAND is about to change.
  void KeepState(const std::string& command);
  /// Keeps what the file at PATH holds, which is about to be replaced, unless it is kept already. WRITE makes the copy;
  /// an empty one when the file holds nothing that can be kept.
  void KeepOverwrittenFile(const std::string& path, const CopyWriter& write) const;

  void AddKeeper(CFileDocumentObserver* keeper);
  void RemoveKeeper(CFileDocumentObserver* keeper);

 protected:
  /// Shown while there is no path; "" for a title of the document's own.
  void SetCopyTitle(const std::string& title) { copy_title_ = title; }
  bool HasState(const std::string& path, bool modified, bool read_only) const;
  void SetState(const std::string& path, bool modified, bool read_only);
  /// The document lies at PATH now, which was just written.
  void TakeWrittenPath(const std::string& path);
  /// It has just been read from the files of STAMP.
  void TakeStamp(CDocumentStamp stamp);
  /// What becomes of a document that was filled from COPY.
  void TakeCopyState(const SDocumentCopy& copy);
  /// The state before COMMAND, to be kept once it has changed something. Empty when nothing is to be kept, or cannot
  /// be.
  std::vector<uint8_t> PackState(const std::string& command) const;
  /// IS_FILE: it is what the document's file holds.
  void KeepPacked(const std::string& key, std::span<const uint8_t> packed, bool is_file);
  void TellChanged() const;
  /// For the destructor of the document that can still be copied.
  void TellGone();

 private:
  /// The copy; may throw std::bad_alloc.
  virtual std::vector<uint8_t> WriteCopyFile(const SCopyLabel& label) const = 0;
  /// For the list of earlier states; without pixels where there is none.
  virtual SImage SmallPicture() const { return {}; }
  /// The files beside PATH that belong to it.
  virtual std::vector<std::string> FilesBeside(const std::string&) const { return {}; }
  virtual void OnStateChanged() = 0;
  int UntitledNumber() const;

  CQuestions& questions_;
  const CSettings& settings_;
  CEarlierStates* states_;
  std::string path_;
  std::string copy_title_;
  std::string copy_states_key_;      ///< of a copy without path
  mutable int untitled_number_ = 0;  ///< 0 until it is first asked for
  bool modified_ = false;
  bool read_only_ = false;
  bool is_file_kept_ = false;  ///< what the file at the path holds is among the earlier states
  mutable CDocumentStamp stamp_;
  std::vector<CFileDocumentObserver*> keepers_;
};

}  // namespace veldra
