#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "document/commandinputs.h"
#include "document/filestamp.h"
#include "document/history.h"
#include "document/modelsaver.h"
#include "model/binfile.h"
#include "model/binmodel.h"
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
};

/// A model that comes from the program's own copies: what a crash left, or an earlier state.
struct SDocumentCopy {
  std::string title;  ///< shown while there is no path
  std::string path = {};
  std::string states_key = {};  ///< of a document without path, so that its earlier states are found again
  bool modified = false;        ///< the file at PATH does not hold this
};

/// Fills the empty model; false, MODEL empty, with the reason.
using CopyReader = std::function<bool(CBinModel& model, CTextureFinder& textures, SDiagnosis& diagnosis)>;

/// One open model: the model, its file and the commands on the whole of it. A new one is empty, unmodified and without
/// a path.
///
/// A command that changes the model does nothing where its enabling rule (Can...) forbids it, and keeps the state
/// before as one of the earlier states. Where it is refused or fails otherwise, the user has been told and the model is
/// unchanged.
class CTarnDoc : private CModelObserver {
 public:
  explicit CTarnDoc(const SDocumentServices& services);
  ~CTarnDoc() override;
  CTarnDoc(const CTarnDoc&) = delete;
  CTarnDoc& operator=(const CTarnDoc&) = delete;

  CBinModel& Model() { return model_; }
  const CBinModel& Model() const { return model_; }
  const std::string& Path() const { return path_; }  ///< "" while never saved
  /// The file name, or "Untitled" with a number that the document keeps.
  std::string Title() const;
  bool IsModified() const { return modified_; }
  void SetModified(bool modified);
  bool IsReadOnly() const { return read_only_; }
  void SetReadOnly(bool read_only);
  const CSettings& Settings() const { return services_.settings; }
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
  /// Fills a new document from a copy. False, the document empty, when the user has been told what is wrong with it.
  bool OpenCopy(const SDocumentCopy& copy, const CopyReader& reader);

  /// Reads the file anew; views and earlier states stay. On failure, which the user has been told, the document stays
  /// as it is.
  bool Reload();
  /// To ask what has become of the file, and its sidecar, since they were last read or written here. Looking at one
  /// that was written anew with the same bytes brings it up to date.
  CModelFileStamp& FileStamp() const { return stamp_; }

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
  /// What the file at the path holds is among the earlier states.
  bool IsFileKept() const { return is_file_kept_; }
  /// Where dialogs for model files open.
  std::string ModelDirectory() const;

  // --- Earlier states ----------------------------------------------------------------------------------------------
  /// Under which the document's earlier states are kept; "" when none are.
  std::string StatesKey() const;
  /// Keeps the model as it is now, which COMMAND is about to change. A failure is traced, and the command goes on.
  void KeepState(const std::string& command);

  // --- Enabling rules ----------------------------------------------------------------------------------------------
  bool CanSave() const { return modified_; }
  bool CanCenter() const { return !read_only_ && model_.VertexCount() > 0; }
  bool CanResize() const;
  bool CanTranslate() const { return CanCenter(); }
  bool CanRotate() const { return CanCenter(); }
  bool CanMirror() const { return CanCenter(); }
  bool CanAddFace() const { return !read_only_ && model_.VertexCount() > 2 && model_.TextureCount() > 0; }
  bool CanAddVertex() const { return !read_only_; }
  bool CanDeleteAllUnused() const { return CanCenter(); }
  bool CanMergeCloseVertices() const { return CanCenter(); }
  bool CanInsertBin() const { return !read_only_; }
  bool CanInsertGenericObject() const { return false; }  ///< kept disabled in this release
  bool CanLoadTexture() const { return !read_only_; }
  bool CanReplaceTexture() const { return !read_only_ && model_.TextureCount() > 0; }
  bool CanSaveTextureList() const { return model_.TextureCount() > 0; }
  bool CanExportWavefront() const { return true; }
  bool CanExport3ds() const { return model_.VertexCount() > 0; }
  bool CanExportVrml() const { return true; }
  bool CanUndo() const { return false; }  ///< kept disabled in this release, as is CanRedo
  bool CanRedo() const { return false; }

  // --- Commands on the whole model ---------------------------------------------------------------------------------
  void CenterX();
  void CenterY();
  void CenterZ();
  void CenterAll();
  // False when refused.
  bool Resize(const SResizeInput& input);
  bool Translate(const STranslateInput& input);
  bool Rotate(const SRotateInput& input);
  bool Mirror(const SMirrorInput& input);
  /// True when there is a texture for a new face, else the user is told to load one: to ask before the dialog.
  bool CheckTextureLoaded();
  bool AddFace(const SAddFaceInput& input);
  bool AddVertex(const SAddVertexInput& input);
  /// Deletes the vertices that no face uses; returns how many.
  int32_t DeleteAllUnused();
  /// Returns how many vertices were merged away; -1 when refused, or stopped by the user.
  int32_t MergeCloseVertices(const SMergeInput& input);
  /// Asks for a model file and inserts it.
  void InsertBin();
  /// Appends what the model file PATH holds. False also when the user stopped it.
  bool InsertBinFile(const std::string& path);
  /// Appends OTHER, which is empty afterwards; NAME is what a message calls it.
  bool InsertModel(CBinModel& other, const std::string& name);
  /// The texture entry of the RAW file PATH: the one that the model has under its name, else a new one. Null when it
  /// cannot be loaded, which the user has been told.
  CBinTexture* LoadTexture(const std::string& path);
  /// All faces of one texture entry get that of another RAW file, and the old entry goes.
  bool ReplaceTexture(const SReplaceTextureInput& input);
  void Undo();
  void Redo();

  // --- Export ------------------------------------------------------------------------------------------------------
  // Each asks where to.
  void SaveTextureList();
  void ExportWavefront();
  /// Both write nothing, on purpose.
  void Export3ds();
  void ExportVrml() {}

 private:
  class CStateBefore;

  void OnModelChanged(const CBinModel& model, const SModelChange& change) override;
  void OnVerticesAdded(std::span<CBinVertex* const> vertices) override;
  void OnVerticesDeleted(CBinModel::Vertices& vertices) override;
  bool Load(CBinModel& model, const std::string& path, SDiagnosis* diagnosis);
  std::vector<uint8_t> PackState(const std::string& command) const;
  void KeepPacked(const std::string& key, std::span<const uint8_t> packed, bool is_file);

  void CenterAxes(std::initializer_list<EAxis> axes, const char* command);
  int32_t DeleteUnused();
  bool IsWithout(const std::string& fault);
  const STextureImage* ImageForEntry(const std::string& path, std::string& name);
  void Export(const std::string& path, const std::function<bool(SError& error)>& write);
  std::optional<std::string> AskExportPath(const std::string& title, std::vector<SFileFilter> filters,
                                           const std::string& extension);

  void SetState(const std::string& path, bool modified, bool read_only);
  void NotifyChange(const SModelChange& change);
  void NotifyState();
  bool ShowError(const std::string& text, const std::string& details = {});

  SDocumentServices services_;
  CBinModel model_;
  CHistory history_{*this, kHistoryDepth};  ///< after the model, whose vertices its actions may hold
  CModelSaver saver_{*this};
  std::string path_;
  std::string copy_title_;           ///< of a copy without path; "" for a title of the document's own
  std::string copy_states_key_;      ///< likewise
  mutable int untitled_number_ = 0;  ///< 0 until the title is first asked for
  bool modified_ = false;
  bool read_only_ = false;
  bool wants_read_only_ = false;  ///< whatever the file allows
  bool is_file_kept_ = false;
  mutable CModelFileStamp stamp_;
  std::vector<CDocumentObserver*> observers_;
};

}  // namespace veldra
