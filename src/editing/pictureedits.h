#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/filestamp.h"
#include "editing/texturefilecommands.h"

namespace veldra {

/// Textures that are being edited as pictures, by another program. Whenever it saves one, the texture becomes that.
class CPictureEdits {
 public:
  /// FOLDER is where the pictures lie; they go with this. Both references outlive it.
  CPictureEdits(CTextureStore& store, CQuestions& questions, std::string folder);
  ~CPictureEdits();
  CPictureEdits(const CPictureEdits&) = delete;
  CPictureEdits& operator=(const CPictureEdits&) = delete;

  /// What becomes of the colours of a picture that has no table of its own.
  enum class EColors { kKeep, kMake };
  /// Writes the texture as a picture with its table and returns its path. One in an archive is saved as a file first,
  /// where the user says. Nothing when that came to nothing, which the user knows.
  std::optional<std::string> Begin(CTarnDoc& document, const STextureSource& source, EColors colors);
  EColors LastColors() const { return edits_.empty() ? EColors::kKeep : edits_.back().colors; }
  /// The pictures.
  std::vector<std::string> Files() const;
  /// Takes in those that have been saved; the names of the textures that are others now. What cannot be taken in has
  /// been told.
  std::vector<std::string> TakeNews();

 private:
  struct SEdit {
    std::string picture;
    std::string raw;
    EColors colors = EColors::kKeep;
    CFileStamp stamp;
  };
  std::string PictureOf(const std::string& raw) const;
  bool TakeIn(const SEdit& edit);

  CTextureStore& store_;
  CQuestions& questions_;
  std::string folder_;
  std::vector<SEdit> edits_;
};

}  // namespace veldra
