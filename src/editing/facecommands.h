#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "editing/editcursor.h"

/// The commands on faces. Each does nothing where its enabling rule forbids it, and says in the status bar what it has
/// done; those that change the model keep the state before as one of the earlier states.
namespace veldra {

/// What a command on "the faces" acts on: the selected ones, ascending, or the current one when none is selected.
std::vector<int32_t> FacesToEdit(const CEditCursor& cursor);

// --- Enabling rules ------------------------------------------------------------------------------------------------
bool HasFaces(const CEditCursor& cursor);
bool HasCurrentFace(const CEditCursor& cursor);
bool HasSelectedFaces(const CEditCursor& cursor);
bool CanEditFace(const CEditCursor& cursor);   ///< the current one
bool CanEditFaces(const CEditCursor& cursor);  ///< FacesToEdit
bool CanDeleteSelectedFaces(const CEditCursor& cursor);
bool CanGroupFaces(const CEditCursor& cursor);
bool CanMakeTaggedFace(const CEditCursor& cursor);  ///< 3 or 4 vertices are tagged

// --- Selection -----------------------------------------------------------------------------------------------------
void SelectCurrentFace(CEditCursor& cursor);

/// The faces whose computed normal is at most DEGREES (0 to 180) off DIRECTION, which has length 1. A face without area
/// faces nowhere.
std::vector<int32_t> FacesFacing(const CBinModel& model, const SUnitNormal& direction, double degrees);

/// What the select-by-facing dialog asks.
struct SFacingInput {
  enum class EDirection { kPlusX, kMinusX, kPlusY, kMinusY, kPlusZ, kMinusZ, kViewer };
  EDirection direction = EDirection::kViewer;
  double degrees = 45.0;
  bool add = false;  ///< to the selection; else they become the selection
};
/// TO_VIEWER: the direction from the model to who looks at it.
std::vector<int32_t> FacesFacing(const CBinModel& model, const SFacingInput& input, const SUnitNormal& to_viewer);
/// Returns how many were found.
int32_t SelectByFacing(CEditCursor& cursor, const SFacingInput& input, const SUnitNormal& to_viewer);

// --- Editing -------------------------------------------------------------------------------------------------------
void DeleteCurrentFace(CEditCursor& cursor);
void DeleteSelectedFaces(CEditCursor& cursor);
/// FacesToEdit look the other way: the first corner stays, the others come in reverse order, each with its u and v.
void FlipFaces(CEditCursor& cursor);
/// The tagged vertices, in the order in which they were tagged, become a face of the type that new faces have. It gets
/// the current face's texture (else the model's first) and becomes the current face; the tags go.
bool MakeTaggedFace(CEditCursor& cursor);

/// All of a face that a user can change.
struct SFaceInput {
  uint32_t type = kFaceTextured;
  int32_t texture = -1;                            ///< position among the model's texture entries, -1 for none
  std::array<int32_t, 4> corners = {0, 1, 2, -1};  ///< vertex indices, the fourth -1 for a triangle
  std::array<STexCoord, 4> coords = {};            ///< 0 to 1
  bool operator==(const SFaceInput&) const = default;
};
SFaceInput InputOf(const CBinFace& face);
/// What is wrong with INPUT for a face of MODEL, or "".
std::string InputFault(const CBinModel& model, const SFaceInput& input);
/// The current face becomes what INPUT, which has no fault, says.
void EditFace(CEditCursor& cursor, const SFaceInput& input);

/// The normal and the plane constant that will be saved.
struct SFacePlane {
  SPoint normal;
  int32_t magic = 0;
};
/// INPUT has no fault.
SFacePlane ComputedPlane(const CBinModel& model, const SFaceInput& input);

/// What many faces get at once.
struct SGroupFacesInput {
  enum class EMagic { kKeep, kComputed, kValue };
  std::vector<int32_t> faces;
  std::optional<uint32_t> type;  ///< nothing: each keeps its own
  EMagic magic = EMagic::kKeep;  ///< of the stored one; kComputed stores the computed normal as well
  int32_t value = 0;             ///< for kValue
};
/// What is wrong with INPUT, or "": a type that needs a texture for faces that have none.
std::string InputFault(const CBinModel& model, const SGroupFacesInput& input);
void GroupFaces(CEditCursor& cursor, const SGroupFacesInput& input);

}  // namespace veldra
