#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/binfile.h"
#include "platform/questions.h"

namespace veldra {

class CTarnDoc;

inline constexpr const char* kNotSavedText = "Model could not be saved.";
/// What the question of AskUnusedVertices says; its choices are kDeleteUnusedChoice and those after it.
inline constexpr const char* kUnusedVerticesText =
    "This model contains unused vertices which may cause undesired results in the game. What would you like to do?";
inline constexpr const char* kDeleteUnusedChoice = "Delete unused vertices and save";
inline constexpr const char* kSaveAnywayChoice = "Save Anyway";
inline constexpr const char* kCancelSaveChoice = "Cancel save";
inline constexpr const char* kDontShowAgainText = "Don't show this again";

/// The three kinds of model file that a document can be saved as, in the order of the save dialog's filters.
enum class EModelVariant { kMtm, kBackdrop, kHellbender };

/// How a document is saved: what is asked and in which order, where the file really goes, and what becomes of the one
/// that is there. Each returns false when nothing was saved; the user has been told then, or has stopped it.
class CModelSaver {
 public:
  /// DOCUMENT owns it.
  explicit CModelSaver(CTarnDoc& document) : document_(document) {}
  CModelSaver(const CModelSaver&) = delete;
  CModelSaver& operator=(const CModelSaver&) = delete;

  /// The Save command: an MTM model, to the document's path or to the file of its name in the folder where the settings
  /// want all models, or into the archive that it is edited in. Save as, for a document that is read-only or has no
  /// path.
  bool Save();
  /// The Save as command: checks, then asks for path and variant.
  bool SaveAs();
  /// The document was read from its file anew: finds out which variant that is.
  void TakeLoaded();
  /// The checks of Save as, then VARIANT is written to PATH as if the user had chosen both. PATH stays as it is,
  /// whatever the setting SAVETODEFDIR says, and what it holds is not asked about.
  bool SaveAsVariant(const std::string& path, EModelVariant variant);

  // Without the checks.
  /// With BESIDE as in SSaveOptions.
  bool WriteMtm(const std::string& path, std::span<const std::vector<SNewFile>> beside = {});
  /// Asks first when the file could not be read back (its first face has no texture).
  bool WriteBackdrop(const std::string& path);
  /// Asks for the scale factor, which the setting SCALEFACTOR keeps, and whether face types above 0x29 become 0x18.
  bool WriteHellbender(const std::string& path);

 private:
  bool SaveIntoArchive();
  std::optional<std::string> RealPath(const std::string& path);
  bool CheckModel();
  bool CheckOverwritten(const std::string& path, const std::string& wanted);
  bool CheckChangedOnDisk(const std::string& path);
  bool CheckVariantKept();
  bool WriteVariant(const std::string& path, EModelVariant variant);
  std::optional<int32_t> AskScaleWord();
  bool OfferHellbenderFaceTypes();
  bool Write(const std::string& path, const SSaveOptions& options, EModelVariant variant);
  void KeepOverwrittenFile(const std::string& path) const;

  bool IsOwnFile(const std::string& path) const;
  bool IsConfirmed(const SMessage& question);
  bool Fail(const std::string& text, const std::string& details = {});

  CTarnDoc& document_;
  /// Of the file at the document's path, as far as that can be told, until the user knows what Save makes of it.
  EModelVariant saved_as_ = EModelVariant::kMtm;
  std::string missed_folder_;  ///< where models cannot be saved, which the user knows
};

}  // namespace veldra
