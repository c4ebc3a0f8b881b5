#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "document/steps.h"
#include "editing/editcursor.h"
#include "mapping/geometrymapping.h"
#include "mapping/guidelist.h"
#include "mapping/mappedfaces.h"
#include "mapping/texelsnap.h"
#include "mapping/texeltransforms.h"
#include "settings/settings.h"

namespace veldra {

/// The mapping of faces while it is edited: which faces of which model on which texture, what of them is selected, and
/// the one action that is under way.
///
/// The faces are those that are selected in the model, or the current one where none is. What is selected among them
/// is also what is selected in the model, both ways: faces in the modes of faces and islands, vertices in that of
/// corners. A selection that is made here does not change which faces are here.
class CMappingSession {
 public:
  /// CURSOR gives that of the view that is worked on, null for none. Settings must outlive the session.
  CMappingSession(CSettings& settings, std::function<CEditCursor*()> cursor);

  /// Called after each change of what is shown.
  void SetOnChanged(std::function<void()> on_changed) { on_changed_ = std::move(on_changed); }
  CSettings& Settings() { return settings_; }

  // --- Following --------------------------------------------------------------------------------------------------
  /// Something has happened to the model, the selection or the current face. HAS_OTHER_ITEMS: faces or vertices came or
  /// went, or it is another model.
  void Follow(bool has_other_items);

  const CMappedFaces& Faces() const { return faces_; }
  /// Null while nothing is shown, or the model has changed and is not followed yet.
  const CBinTexture* Texture() const { return IsUpToDate() ? texture_ : nullptr; }
  /// The textures of the faces that are selected, in the model's order.
  std::vector<const CBinTexture*> Textures() const;
  void ShowTexture(const CBinTexture& texture);
  /// How many of the selected faces have no texture or do not heed it.
  int32_t UnmappedCount() const { return unmapped_; }
  /// The outlines of the model's other faces with this texture.
  std::vector<Texels> OtherFaces() const;
  bool IsReadOnly() const;

  EMappingMode Mode() const;
  void SetMode(EMappingMode mode);

  // --- Selection --------------------------------------------------------------------------------------------------
  /// CHANGE the selection; the model's follows.
  void Select(const std::function<void(CMappedFaces&)>& change);
  void SelectAll(bool is_selected);
  void InvertSelection();
  bool HasSelection() const { return !faces_.SelectedPoints().empty(); }
  /// Of the selected points; nothing where there are none.
  std::optional<STexelRect> SelectedBounds() const;
  void TakeApart();

  // --- Actions ----------------------------------------------------------------------------------------------------
  /// An action begins, on the selected points, or with WHOLE_FACES on all points of their faces. False when there is
  /// nothing to be changed. NAME stands in the list of earlier states.
  bool Begin(const char* name, bool whole_faces = false);
  bool IsUnderWay() const { return !moved_.empty(); }
  /// The places that the action's points had when it began.
  const Texels& Start() const { return start_; }
  /// The points that it leaves where they are.
  Texels Staying() const;
  /// Shows PLACES for the action's points; the model has them at once, unless the preview is off.
  void Try(const Texels& places);
  /// Makes one change of the document of it.
  void Finish();
  /// Everything is as it was.
  void Cancel();
  /// A whole action at once.
  using Transform = std::function<Texels(const Texels& points)>;
  void Apply(const char* name, const Transform& transform, bool whole_faces = false);
  /// Corners are put on whole texels.
  bool IsOnTexels() const { return is_on_texels_; }
  void SetOnTexels(bool is_on_texels) { is_on_texels_ = is_on_texels; }

  // --- What the tools do; each is one action ----------------------------------------------------------------------
  void Move(const STexel& by);
  /// About the pivot, whole faces or selected corners only, as the settings have it.
  void Turn(double degrees);
  void Scale(double across, double down);
  void Flip(ETexelAxis axis);
  /// Against that side of the texture; again at once, against that of its next part.
  void Justify(EJustify side);
  void Fit(const STexelRect& area);
  /// To the whole texture; again at once, to its next part.
  void FitNext();
  /// By the first selected face.
  void AlignToEdge();
  void Straighten();
  void SnapToTexels();
  /// The selected faces get places from their coordinates, in AREA.
  void MapByGeometry(const SProjection& projection, const STexelRect& area);
  /// Selected points of one vertex come to one place and hang together.
  void Weld();
  void Sew();
  void Pack(const STexelRect& area, double gap);

  // --- Pivot and guides -------------------------------------------------------------------------------------------
  /// Where it was put, else the middle of what is selected.
  STexel Pivot() const;
  const std::optional<STexel>& OwnPivot() const { return pivot_; }
  void SetPivot(const std::optional<STexel>& pivot);
  /// Those of the texture that is shown.
  const STextureGuides& Guides() const;
  void SetGuides(const STextureGuides& guides);
  /// Those of all textures, by name, for the next session: a line a texture.
  std::string AllGuides() const { return GuidesText(guides_); }
  void SetAllGuides(const std::string& text) { guides_ = GuidesOf(text); }

 private:
  bool IsUpToDate() const;
  CEditCursor* Ready();
  void TakeFaces();
  void TakeSelection();
  void ChooseTexture(const CEditCursor& cursor, const std::map<int32_t, int32_t>& uses);
  void Read();
  void GiveSelection();
  int PressesOf(const std::string& tool);
  std::vector<int32_t> SelectedModelFaces() const;
  void NoteRevisions();
  void WriteMoved();
  void End();
  void Changed() const;

  CSettings& settings_;
  std::function<CEditCursor*()> cursor_;
  std::function<void()> on_changed_;
  const CBinModel* model_ = nullptr;
  uint64_t identity_ = 0;
  uint64_t revision_ = 0;            ///< of the model, when it was read or written
  uint64_t selection_revision_ = 0;  ///< likewise
  int32_t current_face_ = -1;
  std::vector<int32_t> chosen_;  ///< faces that are worked on, of all textures
  std::vector<const CBinTexture*> textures_;
  const CBinTexture* texture_ = nullptr;
  std::string texture_name_;
  int32_t unmapped_ = 0;
  CMappedFaces faces_;

  std::string action_;
  std::unique_ptr<CStep> step_;  ///< the whole action is one
  std::vector<int32_t> moved_;   ///< points of the action
  Texels start_;
  std::vector<STexCoord> coords_;  ///< of their corners in the model, when it began
  bool was_modified_ = false;
  bool is_written_ = false;  ///< the model is different by now
  bool is_on_texels_ = true;
  struct SPress {
    std::string tool;
    int count = 0;
    std::optional<STexelRect> bounds;  ///< of what was selected, afterwards
  };
  SPress pressed_;
  std::optional<STexel> pivot_;
  NamedGuides guides_;
};

/// A face that is shown with its part of a texture.
bool IsMapped(const CBinFace& face);

}  // namespace veldra
