#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "editing/editcursor.h"
#include "model/geometry.h"

/// Building faces and vertices out of what is there (meshedit.h). What is worked on are the selected faces, or the
/// current one while none is selected. Each does nothing where its rule forbids it, keeps the state before where
/// it changes what was there, selects what it has made where that is to be worked on next, and says in the status bar
/// what it has done.
namespace veldra {

// --- Enabling rules ------------------------------------------------------------------------------------------------
bool CanSplitEdge(const CEditCursor& cursor);     ///< the current vertex is a corner of the current face
bool CanMakeFaceHere(const CEditCursor& cursor);  ///< 3 or 4 vertices are selected
bool CanBridge(const CEditCursor& cursor);        ///< 4 vertices or more are selected, or two faces
bool CanTunnel(const CEditCursor& cursor);        ///< 2 faces or more are selected

/// DISTANCE in model units; negative is inward. The caps stay selected.
bool Extrude(CEditCursor& cursor, int32_t distance);
void Detach(CEditCursor& cursor);
/// The copies lie where the originals do, or mirrored about 0, and are what is selected then.
void Duplicate(CEditCursor& cursor, std::optional<EAxis> mirror);
/// The edge from the current vertex to the next corner of the current face. The new vertex becomes the current one.
void SplitCurrentEdge(CEditCursor& cursor);
void SplitFaces(CEditCursor& cursor);
void JoinFaces(CEditCursor& cursor);
/// Of the selected vertices, in the order in which they were selected one by one where that makes a face, looking to
/// the viewer in the direction TO_VIEWER; with the surface of the current face, or else of a face that is there.
bool MakeFaceOfSelected(CEditCursor& cursor, const SUnitNormal& to_viewer);
/// Between the edges that the selected vertices make, or else those of two selected faces that are next to each other;
/// looking as the neighbours do, or to the viewer. What is made is what is selected then.
bool Bridge(CEditCursor& cursor, const SUnitNormal& to_viewer);
/// Likewise between the rims of two walls of selected faces, which go.
bool Tunnel(CEditCursor& cursor, const SUnitNormal& to_viewer);
/// The selected vertices.
void SnapSelected(CEditCursor& cursor, int32_t spacing);

/// A vertex a line: three whole numbers with blanks, commas or semicolons between them; empty lines do not count. The
/// fault of the first line that is none, or "".
std::string ParseVertices(const std::string& text, std::vector<SPoint>& points);
/// The new vertices are what is selected then.
void AddVertices(CEditCursor& cursor, const std::vector<SPoint>& points);

}  // namespace veldra
