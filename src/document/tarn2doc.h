#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "document/history.h"
#include "model/binfile.h"
#include "model/binmodel.h"
#include "platform/bytes.h"
#include "platform/questions.h"
#include "settings/settings.h"
#include "textures/texturestore.h"

namespace veldra {

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

/// A window on a document: told what changed, never asked to poll.
class CDocumentObserver {
 public:
  virtual ~CDocumentObserver() = default;
  virtual void OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) = 0;
  /// Path, modified mark or read-only state.
  virtual void OnDocumentStateChanged(const CTarnDoc& document) = 0;
};

/// What the documents of one application share.
struct SDocumentServices {
  CQuestions& questions;
  CTextureStore& textures;
  CSettings& settings;
  /// True when another open document has PATH and is read-only. May be empty: there are no others.
  std::function<bool(const CTarnDoc& asking, const std::string& path)> is_open_read_only_elsewhere = {};
};

/// One open model: the model, its file and the commands on the whole of it.
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
  CHistory& History() { return history_; }

  void AddObserver(CDocumentObserver* observer);
  void RemoveObserver(CDocumentObserver* observer);

  // --- File --------------------------------------------------------------------------------------------------------
  /// Fills the document from PATH. On failure the user has been told and the document is empty; DIAGNOSIS (may be null)
  /// says more.
  bool OnOpenDocument(const std::string& path, SDiagnosis* diagnosis = nullptr);
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

  // --- Commands on the whole model ---------------------------------------------------------------------------------
  void CenterX();
  void CenterY();
  void CenterZ();
  void CenterAll();
  /// Deletes the vertices that no face uses; returns how many.
  int32_t DeleteAllUnused();

 private:
  void OnModelChanged(const CBinModel& model, const SModelChange& change) override;
  bool CheckBeforeSaveAs();
  bool WriteVariant(const std::string& path, EModelVariant variant);
  bool Write(const std::string& path, const SSaveOptions& options);
  std::optional<int32_t> AskScaleWord();
  bool OfferHellbenderFaceTypes();
  /// PATH, or the file of that name in the default model directory where the settings want all models there.
  std::string SavePath(const std::string& path) const;
  void SetState(const std::string& path, bool modified, bool read_only);
  void NotifyChange(const SModelChange& change);
  void NotifyState();
  bool ShowError(const std::string& text, const std::string& details = {});

  SDocumentServices services_;
  CBinModel model_;
  CHistory history_{*this, kHistoryDepth};  ///< after the model, whose vertices its actions may hold
  std::string path_;
  mutable int untitled_number_ = 0;  ///< 0 until the title is first asked for
  bool modified_ = false;
  bool read_only_ = false;
  std::vector<CDocumentObserver*> observers_;
};

}  // namespace veldra
