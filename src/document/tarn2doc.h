#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "document/archiveplace.h"
#include "document/filedocument.h"
#include "document/history.h"
#include "document/modelsaver.h"
#include "document/steps.h"
#include "model/binfile.h"
#include "model/binmodel.h"
#include "model/geometry.h"
#include "platform/bytes.h"
#include "platform/png.h"
#include "platform/questions.h"
#include "settings/settings.h"
#include "textures/texturefinder.h"
#include "textures/texturestore.h"

namespace veldra {

class CEarlierStates;
class CTarnDoc;

/// Actions that a document's history holds at most.
inline constexpr int32_t kHistoryDepth = 100;

/// A window on a document: told what changed, never asked to poll. It leaves the document before it goes.
class CDocumentObserver {
 public:
  virtual ~CDocumentObserver() = default;
  virtual void OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) = 0;
  /// Path, modified mark or read-only state.
  virtual void OnDocumentStateChanged(const CTarnDoc& document) = 0;
  /// The document is about to go, whole for the last time.
  virtual void OnDocumentGone(const CTarnDoc&) {}
};

/// What the documents of one application share.
struct SDocumentServices {
  CQuestions& questions;
  CTextureStore& textures;
  CSettings& settings;
  /// True when another open document has PATH and is read-only. May be empty: there are no others.
  std::function<bool(const CTarnDoc& asking, const std::string& path)> is_open_read_only_elsewhere = {};
  /// Where the states before commands are kept; null: nowhere.
  CEarlierStates* earlier_states = nullptr;
  /// A small picture of the document for the list of its earlier states. May be empty, and give an image without
  /// pixels.
  std::function<SImage(const CTarnDoc& document)> make_picture = {};
  /// Gives the entry of PLACE these bytes, after asking what is to be asked. False when the user has been told why not.
  /// Empty: nothing can be saved into archives.
  std::function<bool(const SArchivePlace& place, std::span<const uint8_t> bytes)> save_into_archive = {};
  /// Shows what a command has done where one can look without being stopped. May be empty.
  std::function<void(const std::string& text)> say = {};
};

/// One open model with its file. A new one is empty, unmodified and without a path. What changes the model stands in
/// the folder editing, but for what saving may have to do first.
class CTarnDoc : public CFileDocument, private CModelObserver {
 public:
  explicit CTarnDoc(const SDocumentServices& services);
  ~CTarnDoc() override;

  CBinModel& Model() { return model_; }
  const CBinModel& Model() const { return model_; }
  /// Shown while there is no path, for a document made from a file of another kind.
  void SetTitle(const std::string& title);
  /// Where textures came from when the file was loaded that were not in the texture directory; "" for nowhere.
  const std::string& TextureNote() const { return texture_note_; }
  /// Of the file when it is first saved.
  std::string OfferedName() const { return Path().empty() && !offered_name_.empty() ? offered_name_ : Title(); }
  const SDocumentServices& Services() const { return services_; }
  /// The Save and Save as commands.
  CModelSaver& Saver() { return saver_; }

  void AddObserver(CDocumentObserver* observer);
  void RemoveObserver(CDocumentObserver* observer);

  // --- File --------------------------------------------------------------------------------------------------------
  /// Fills the document from PATH; read-only when the user wants it so, or when the file may not be written to. On
  /// failure the user has been told (or has stopped it) and the document is empty; DIAGNOSIS (may be null) says more.
  bool OnOpenDocument(const std::string& path, SDiagnosis* diagnosis = nullptr);
  bool OnOpenDocument(const std::string& path, bool read_only, SDiagnosis* diagnosis = nullptr);
  /// Fills the new document from the entry of an archive: read-only, with its textures from that archive where they are
  /// in it. On failure as OnOpenDocument.
  bool OpenFromArchive(const SArchivePlace& place);
  /// Where it was opened from and has not been saved elsewhere since; null for any other document.
  const SArchivePlace* ArchivePlace() const { return place_.archive.empty() ? nullptr : &place_; }
  bool CanEditInArchive() const { return ArchivePlace() != nullptr && IsReadOnly(); }
  /// From here on it can be changed, and Save gives the archive what it has become.
  void EditInArchive() { SetReadOnly(false); }
  bool OpenCopy(const SDocumentCopy& copy, const SCopyFile& file) override;
  bool Reload() override;
  bool IsBusy() const override { return model_.IsBusy(); }
  void OnFileGone() override;

  // The writers. True when PATH holds the model: it is then the document's path, and the document, which must not be
  // read-only, is not modified. On failure the user has been told and the old file at PATH is untouched.
  bool SaveMTM(const std::string& path);
  bool SaveBackdrop(const std::string& path) { return saver_.WriteBackdrop(path); }
  bool SaveHellbender(const std::string& path) { return saver_.WriteHellbender(path); }

  // Each false when the save must not go on. All but the first can be switched off in the settings.
  bool CheckWritable(const std::string& path);
  bool CheckCentered();
  bool CheckTextureSizes();
  bool CheckUnusedVertices();
  /// Another open document has PATH and is read-only.
  bool IsOpenReadOnlyElsewhere(const std::string& path) const;

  /// For the saver: the model lies at PATH now.
  void TakeSavedPath(const std::string& path);
  /// Likewise: its entry of the archive is BYTES now.
  void TakeSavedEntry(std::span<const uint8_t> bytes);
  /// The entry holds something else than when it was read or written here.
  bool IsEntryChanged() const;

  // --- Enabling rules ----------------------------------------------------------------------------------------------
  bool CanSave() const { return IsModified(); }
  bool CanCenter() const { return !IsReadOnly() && model_.VertexCount() > 0; }
  bool CanUndo() const { return false; }  ///< kept disabled in this release, as is CanRedo
  bool CanRedo() const { return false; }

  // --- What saving may have to do first ----------------------------------------------------------------------------
  // Each keeps the state before. The other commands stand in the folder editing.
  void CenterX();
  void CenterY();
  void CenterZ();
  void CenterAll();
  /// Deletes the vertices that no face uses; returns how many.
  int32_t DeleteAllUnused();

  void Undo();
  void Redo();

  // --- Steps back ----------------------------------------------------------------------------------------------------
  CSteps& Steps() { return *steps_; }
  const CSteps& Steps() const { return *steps_; }
  /// For who lives as long as a step does, which may be longer than the document.
  std::weak_ptr<CSteps> SharedSteps() const { return steps_; }
  bool CanStepBack() const { return !IsReadOnly() && steps_->CanGoBack(); }
  bool CanStepForward() const { return !IsReadOnly() && steps_->CanGoForward(); }
  void StepBack();
  void StepForward();
  /// The document becomes what FILE, one of its copies, holds, as a step. False when the user has been told why not.
  bool GoBackTo(const SCopyFile& file);

  // --- For the commands --------------------------------------------------------------------------------------------
  /// Where dialogs for model files open.
  std::string ModelDirectory() const;
  /// Reads the model file PATH into MODEL, asking what is to be asked. False when the user has been told what is wrong,
  /// or has stopped it; DIAGNOSIS (may be null) says more.
  bool Load(CBinModel& model, const std::string& path, SDiagnosis* diagnosis);
  /// Says in the status bar what has been done. Does not wait for anybody.
  void Say(const std::string& text) const;
  /// Returns false, for the caller to pass on.
  bool ShowError(const std::string& text, const std::string& details = {});

 private:
  friend class CStateBefore;

  void OnModelChanged(const CBinModel& model, const SModelChange& change) override;
  void OnVerticesAdded(std::span<CBinVertex* const> vertices) override;
  void OnVerticesDeleted(CBinModel::Vertices& vertices) override;
  void TakeModel(CBinModel& model);
  std::vector<uint8_t> WriteCopyFile(const SCopyLabel& label) const override;
  SImage SmallPicture() const override;
  std::vector<std::string> FilesBeside(const std::string& path) const override;
  void OnStateChanged() override;

  void CenterAxes(std::initializer_list<EAxis> axes, const char* command);
  int32_t DeleteUnused();

  void NotifyChange(const SModelChange& change);

  SDocumentServices services_;
  CBinModel model_;
  std::shared_ptr<CSteps> steps_;           ///< after the model, which it watches
  CHistory history_{*this, kHistoryDepth};  ///< after the model, whose vertices its actions may hold
  CModelSaver saver_{*this};
  std::string texture_note_;
  SArchivePlace place_;
  uint64_t entry_hash_ = 0;       ///< of what the entry held
  std::string offered_name_;      ///< of the file when it is first saved; "" for the title
  bool wants_read_only_ = false;  ///< whatever the file allows
  std::vector<CDocumentObserver*> observers_;
};

}  // namespace veldra
