#pragma once

#include <cstdint>
#include <vector>

#include "editing/editcursor.h"
#include "model/geometry.h"

/// The commands on vertices. Each does nothing where its enabling rule forbids it, and says in the status bar what it
/// has done. Those that change more than a step of a move keep the state before as one of the earlier states.
namespace veldra {

// --- Enabling rules ------------------------------------------------------------------------------------------------
bool HasVertices(const CEditCursor& cursor);
bool HasCurrentVertex(const CEditCursor& cursor);
bool HasSelectedVertices(const CEditCursor& cursor);
bool CanEditVertex(const CEditCursor& cursor);  ///< the current one, tagging it included
bool CanEditSelectedVertices(const CEditCursor& cursor);

void SelectCurrentVertex(CEditCursor& cursor);
/// Tags it, or takes its tag off. False where no more can be tagged.
bool TagCurrentVertex(CEditCursor& cursor);
void ClearTags(CEditCursor& cursor);

// Refused with the model's message while a face uses one of them; false then.
bool DeleteCurrentVertex(CEditCursor& cursor);
bool DeleteSelectedVertices(CEditCursor& cursor);

void SetVertexCoordinates(CEditCursor& cursor, const SPoint& position);

/// The plane into which vertices are brought: one coordinate becomes the same, or they go the shortest way to the plane
/// that fits them best, or to that of the current face.
struct SPlaneInput {
  enum class EPlane { kValue, kMean, kCurrent, kFitting, kFace };
  EAxis axis = EAxis::kX;  ///< for the first three
  EPlane plane = EPlane::kMean;
  int32_t value = 0;  ///< for kValue
};
constexpr bool IsAcrossAxis(SPlaneInput::EPlane plane) {
  return plane < SPlaneInput::EPlane::kFitting;
}
/// The selected vertices, or else those of the selected faces; ascending.
std::vector<int32_t> VerticesToFlatten(const CEditCursor& cursor);
bool CanFlatten(const CEditCursor& cursor);  ///< there are some
/// Which coordinate it is, across an axis: a mean is truncated toward zero, as every result in the model is. There are
/// vertices to flatten, and for kCurrent there is a current one.
int32_t PlaneCoordinate(const CEditCursor& cursor, const SPlaneInput& input);
/// Where VerticesToFlatten come to lie, in the same order. A fault where that cannot be; POSITIONS means nothing then.
GeometryFault FlatPositions(const CEditCursor& cursor, const SPlaneInput& input, std::vector<SPoint>& positions);
bool SetToPlane(CEditCursor& cursor, const SPlaneInput& input);

// By the step of the setting MOVESTEP, wrapping at the ends of 32 bits as every move of the model does.
void MoveCurrentVertex(CEditCursor& cursor, EAxis axis, bool forward);
void MoveSelectedVertices(CEditCursor& cursor, EAxis axis, bool forward);

}  // namespace veldra
