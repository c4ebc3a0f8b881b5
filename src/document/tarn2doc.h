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

/// What the question of AskUnusedVertices says; its choices are kDeleteUnusedChoice and those after it.
inline constexpr const char* kUnusedVerticesText =
    "This model contains unused vertices which may cause undesired results in the game. What would you like to do?";
inline constexpr const char* kDeleteUnusedChoice = "Delete unused vertices and save";
inline constexpr const char* kSaveAnywayChoice = "Save Anyway";
inline constexpr const char* kCancelSaveChoice = "Cancel save";
inline constexpr const char* kDontShowAgainText = "Don't show this again";

/// The three kinds of model file that a document can be saved as, in the order of the save dialog's filters.
enum class EModelVariant { kMtm, kBackdrop, kHellbender };

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
  /// Shown while there is no path, for a document made from a file of another kind.
  void SetTitle(const std::string& title);
  bool IsModified() const { return modified_; }
  void SetModified(bool modified);
  bool IsReadOnly() const { return read_only_; }
  void SetReadOnly(bool read_only);
  const CSettings& Settings() const { return services_.settings; }
  const SDocumentServices& Services() const { return services_; }
  CHistory& History() { return history_; }

  void AddObserver(CDocumentObserver* observer);
  void RemoveObserver(CDocumentObserver* observer);

  // --- File --------------------------------------------------------------------------------------------------------
  /// Fills the document from PATH; read-only when the user wants it so, or when the file may not be written to. On
  /// failure the user has been told (or has stopped it) and the document is empty; DIAGNOSIS (may be null) says more.
  bool OnOpenDocument(const std::string& path, SDiagnosis* diagnosis = nullptr);
  bool OnOpenDocument(const std::string& path, bool read_only, SDiagnosis* diagnosis = nullptr);
  /// Fills a new document from a copy. False, the document empty, when the user has been told what is wrong with it.
  bool OpenCopy(const SDocumentCopy& copy, const CopyReader& reader);

  /// Another program has changed the model's file, or its sidecar, since it was last read or written here.
  bool ChangedOnDisk() const;
  /// ChangedOnDisk, but true only once for each such change: for who tells the user.
  bool NoticeChangeOnDisk();
  /// Reads the file anew, after asking whether unsaved changes may go; views stay. On failure, which the user has been
  /// told, the document stays as it is.
  bool Reload();

  /// The Save command. False when it was stopped.
  bool Save();
  /// The Save as command: checks, then asks for path and variant.
  bool SaveAs();
  /// The checks of Save as, then VARIANT is written to PATH as if the user had chosen both. PATH stays as it is,
  /// whatever the setting SAVETODEFDIR says.
  bool SaveAsVariant(const std::string& path, EModelVariant variant);

  // The writers. True when PATH holds the model: it is then the document's path, and the document is not modified. On
  // failure the user has been told and the old file at PATH is untouched.
  /// The document must not be read-only.
  bool SaveMTM(const std::string& path);
  /// Asks first when the file could not be read back (its first face has no texture).
  bool SaveBackdrop(const std::string& path);
  /// Asks for the scale factor, which the setting SCALEFACTOR keeps, and whether face types above 0x29 become 0x18.
  bool SaveHellbender(const std::string& path);

  // Each false when the save must not go on. All but the first can be switched off in the settings.
  bool CheckWritable(const std::string& path);
  bool CheckCentered();
  bool CheckTextureSizes();
  bool CheckUnusedVertices();
  /// Another open document has PATH and is read-only.
  bool IsOpenReadOnlyElsewhere(const std::string& path) const;

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
  bool Load(CBinModel& model, const std::string& path, SDiagnosis* diagnosis);
  void TakeStamps(const std::string& path);
  std::vector<uint8_t> PackState(const std::string& command) const;
  void KeepPacked(const std::string& key, std::span<const uint8_t> packed, bool is_file);

  bool CheckBeforeSaveAs();
  /// False when another program's changes at PATH, the document's own file, are not to be lost.
  bool CheckChangedOnDisk(const std::string& path);
  bool IsOwnPath(const std::string& path) const;
  bool WriteVariant(const std::string& path, EModelVariant variant);
  bool Write(const std::string& path, const SSaveOptions& options);
  void KeepOverwrittenFile(const std::string& path) const;
  void TakeSavedPath(const std::string& path);
  std::optional<int32_t> AskScaleWord();
  bool OfferHellbenderFaceTypes();
  /// PATH, or the file of that name in the default model directory where the settings want all models there.
  std::string SavePath(const std::string& path) const;

  void CenterAxes(std::initializer_list<EAxis> axes, const char* command);
  int32_t DeleteUnused();
  bool IsWithout(const std::string& fault);
  const STextureImage* ImageForEntry(const std::string& path, std::string& name);
  /// Where dialogs for model files open.
  std::string ModelDirectory() const;
  void Export(const std::string& path, const std::function<bool(SError& error)>& write);
  int UntitledNumber() const;
  std::optional<std::string> AskExportPath(const std::string& title, std::vector<SFileFilter> filters,
                                           const std::string& extension);

  void SetState(const std::string& path, bool modified, bool read_only);
  void NotifyChange(const SModelChange& change);
  void NotifyState();
  bool ShowError(const std::string& text, const std::string& details = {});

  SDocumentServices services_;
  CBinModel model_;
  CHistory history_{*this, kHistoryDepth};  ///< after the model, whose vertices its actions may hold
  std::string path_;
  std::string offered_name_;         ///< of the file when it is first saved; "" for the title
  std::string copy_title_;           ///< of a copy or an import without path; "" for a title of the document's own
  std::string copy_states_key_;      ///< likewise
  mutable int untitled_number_ = 0;  ///< 0 until it is first asked for
  bool modified_ = false;
  bool read_only_ = false;
  bool wants_read_only_ = false;  ///< whatever the file allows
  bool is_file_kept_ = false;     ///< what the file at the path holds is among the earlier states
  // Looking at a file that was written anew with the same bytes brings its stamp up to date.
  mutable CFileStamp model_stamp_;
  mutable CFileStamp info_stamp_;
  std::optional<int64_t> noticed_change_;  ///< when the file was written that the user has been told of
  std::vector<CDocumentObserver*> observers_;
};

}  // namespace veldra
