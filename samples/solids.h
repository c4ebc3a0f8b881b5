#pragma once

#include <functional>

#include "samples/meshbuilder.h"

/// Simple bodies out of quads and triangles. Each face of a box and each side of a tube shows the whole texture or the
/// strip of it that is its share.
namespace veldra::samples {

/// COLUMNS × ROWS quads; AT gives the corners for column 0..COLUMNS (to the right, seen from outside) and row 0..ROWS
/// (upwards).
void AddGrid(CMeshBuilder& mesh, int columns, int rows, const std::function<SCorner(int column, int row)>& at);

void AddBox(CMeshBuilder& mesh, const Vector3& low, const Vector3& high);

enum class ECaps { kNone, kEnd, kBoth };

/// Round about the line FROM, TO; the texture goes round it once, its first row at FROM.
void AddTube(CMeshBuilder& mesh, const Vector3& from, const Vector3& to, double radius, int sides, ECaps caps);
/// A cone's stump: another radius at its end.
void AddStump(CMeshBuilder& mesh, const Vector3& from, const Vector3& to, double from_radius, double to_radius,
              int sides, ECaps caps);

/// A disc whose NORMAL points to where it is seen from; the whole texture lies over it.
void AddDisc(CMeshBuilder& mesh, const Vector3& center, const Vector3& normal, double radius, int sides);

}  // namespace veldra::samples
