#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "model/geometry.h"

/// Building on what is there. FACES and VERTICES are indices, ascending, each once; each function is one change of the
/// model. New corners get texture coordinates that continue those around them, so far as the texture reaches.
namespace veldra {

/// Moves FACES outward along their normals by DISTANCE, which may be negative, and closes the gap to what stays with
/// sides of the same texture and type. Faces that share an edge stay together. Vertices that would leave the 32-bit
/// numbers: a fault, and nothing is changed.
GeometryFault ExtrudeFaces(CBinModel& model, std::span<const int32_t> faces, double distance);

/// FACES get vertices of their own where they shared them with others. Returns how many were made.
int32_t DetachFaces(CBinModel& model, std::span<const int32_t> faces);

/// Copies of FACES on vertices of their own, mirrored about 0 along MIRROR. They are the last faces of the model.
void DuplicateFaces(CBinModel& model, std::span<const int32_t> faces, std::optional<EAxis> mirror);

/// A vertex in the middle of the edge from CORNER of FACE to the next one, and all faces at that edge cut there: a
/// triangle into two, a quad into a triangle and a quad. Returns the new vertex; -1, with nothing changed, where the
/// edge is too short to have a middle.
int32_t SplitEdge(CBinModel& model, int32_t face, int corner);

/// The quads among FACES become two triangles each, cut along the diagonal that bulges outward, or else the shorter
/// one. Returns how many were cut.
int32_t SplitQuads(CBinModel& model, std::span<const int32_t> faces);

/// Pairs of triangles among FACES become quads where these are flat and convex, and of one type and texture that runs
/// on over the edge. Returns how many quads were made.
int32_t JoinTriangles(CBinModel& model, std::span<const int32_t> faces);

/// Quads between two rows of vertices, VERTICES, which follow each other along the edges of faces: two edges, two
/// longer rows of as many, or two rings. They look where their neighbours look, or else toward the viewer, who is in
/// the direction TO_VIEWER, and are the last faces of the model. A fault where VERTICES are no two such rows.
GeometryFault BridgeVertices(CBinModel& model, std::span<const int32_t> vertices, const SUnitNormal& to_viewer);
/// Likewise between the edges of FACE and OTHER that are next to each other.
GeometryFault BridgeFaces(CBinModel& model, int32_t face, int32_t other, const SUnitNormal& to_viewer);
/// FACES, ascending, each once, two walls of them with as many corners, go, and quads between their rims come: a hole
/// through what is between the walls, or a tube where there is nothing. As for BridgeVertices otherwise.
GeometryFault TunnelFaces(CBinModel& model, std::span<const int32_t> faces, const SUnitNormal& to_viewer);

/// CORNERS of a face, or the other way round from the first, whichever looks toward the viewer, who is in the direction
/// TO_VIEWER; empty when they are, as seen from there, no convex polygon in this order.
std::vector<int32_t> TurnedToward(const CBinModel& model, std::vector<int32_t> corners, const SUnitNormal& to_viewer);

/// VERTICES, 3 or 4 of them, in the order that makes a face look toward the viewer, who is in the direction TO_VIEWER;
/// empty when they lie on a line, or make no convex quad.
std::vector<int32_t> OrderedToward(const CBinModel& model, std::span<const int32_t> vertices,
                                   const SUnitNormal& to_viewer);

/// VERTICES go to the nearest points whose coordinates are multiples of SPACING, above 0. Returns how many moved.
int32_t SnapToGrid(CBinModel& model, std::span<const int32_t> vertices, int32_t spacing);

}  // namespace veldra
