#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "document/steps.h"
#include "editing/editcursor.h"

namespace veldra {

/// FacesToEdit (facecommands.h) get the texture ENTRY of the cursor's model; u and v stay. Faces that did not heed a
/// texture become of the type that new faces have, and one whose corners are all in one place shows all of the texture.
void AssignTexture(CEditCursor& cursor, CBinTexture& entry);
void AssignTexture(CTarnDoc& document, std::span<const int32_t> faces, CBinTexture& entry);
bool CanAssignTexture(const CEditCursor& cursor);  ///< the model has textures, and there are faces to edit

/// Texture and mapping of one face are given to others, as with a brush: one change of the document.
class CTextureTransfer {
 public:
  enum class EWay {
    kFold,     ///< the texture goes on round the edge with a face that has it
    kProject,  ///< as if it shone through from the first face
    kPlane     ///< folded, to all faces that lie in one plane with it
  };
  /// SOURCE: a face with a texture and an area.
  CTextureTransfer(CTarnDoc& document, int32_t source);
  static bool CanTake(const CBinFace& face);

  /// Nothing happens to a face that has it already.
  void GiveTo(int32_t face, EWay way);
  size_t GivenCount() const { return given_.size() - 1; }
  /// All faces are as they were.
  void Cancel();

 private:
  struct SBefore {
    int32_t face;
    uint32_t type;
    CBinTexture* texture;
    std::vector<STexCoord> coords;
  };
  bool HasIt(int32_t face) const;
  void Give(int32_t face, int32_t from, bool folds);
  void FillPlane(int32_t face);
  void PutBack();
  int32_t Neighbor(int32_t face) const;

  CTarnDoc& document_;
  CBinModel& model_;
  CStep step_;                  ///< all that is given is one
  std::vector<int32_t> given_;  ///< in order; the source first
  std::vector<bool> has_it_;    ///< by face
  std::vector<SBefore> before_;
  bool was_modified_;
};

}  // namespace veldra
