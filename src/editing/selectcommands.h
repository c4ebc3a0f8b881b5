#pragma once

#include <cstdint>
#include <vector>

#include "editing/editcursor.h"

/// Selecting what belongs together. What is there to start from are the selected faces, or the current one while none
/// is selected; commands on vertices start from the selected ones. What was selected stays so, but for shrinking.
namespace veldra {

/// What faces can have in common with those that one starts from.
enum class ESame { kTexture, kType, kGroup, kFacing, kSize };

/// Faces that look so close to one direction count as looking the same way.
inline constexpr double kSameFacingDegrees = 5;
/// Areas that differ by no more than this part of the larger one are similar.
inline constexpr double kSimilarSize = 0.1;

bool CanSelectFrom(const CEditCursor& cursor);       ///< a face
bool CanSelectAround(const CEditCursor& cursor);     ///< a face, or vertices
bool CanShrinkSelection(const CEditCursor& cursor);  ///< something is selected
bool CanSelectLoop(const CEditCursor& cursor);       ///< the current face is a quad

/// Everything that hangs together with the faces, and with the selected vertices, by shared vertices.
void SelectLinked(CEditCursor& cursor);
/// And what touches it: faces at a common vertex, vertices along an edge.
void GrowSelection(CEditCursor& cursor);
/// Without what touches something that is not selected.
void ShrinkSelection(CEditCursor& cursor);
/// Of facing and size one face is compared with: the current one, else the first that is selected.
void SelectSame(CEditCursor& cursor, ESame same);
/// The quads that follow the current one from edge to opposite edge, both ways: beginning at the edge from the current
/// vertex to the next corner, or with ACROSS at the one behind that. Without a current vertex at a corner, from the
/// first one.
void SelectQuadLoop(CEditCursor& cursor, bool across);

/// The faces of SelectQuadLoop, from FACE over the edge between its corners CORNER and the next one; FACE comes first.
std::vector<int32_t> QuadLoop(const CBinModel& model, int32_t face, int corner);

// --- Hiding ----------------------------------------------------------------------------------------------------------
bool HasHidden(const CEditCursor& cursor);
void HideSelected(CEditCursor& cursor);
/// Everything but what is there to start from.
void HideOthers(CEditCursor& cursor);
void ShowHidden(CEditCursor& cursor);

}  // namespace veldra
