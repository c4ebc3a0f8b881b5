#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/binmodel.h"
#include "model/geometry.h"

/// Operations on a model that work things out from its coordinates.
namespace veldra {

/// Scales evenly about the origin so that the largest dimension becomes LARGEST (above 0), to within a unit: here
/// coordinates are rounded and not cut off, which could lose one at either end.
GeometryFault FitModel(CBinModel& model, double largest);

/// u and v of FACES from their corners' coordinates, over the bounds of all of them: along x from z and y, along y from
/// x and z, along z from x and y, v downwards but along y; 0 where the bounds have no size. On whole texels.
void MapPlanar(CBinModel& model, std::span<const int32_t> faces, EAxis axis);
/// The same, each face along the axis that it looks along most, of equal ones x before y before z.
void MapBox(CBinModel& model, std::span<const int32_t> faces);

/// Deletes FACES (ascending, each once) and the vertices that only they used.
void DeleteFacesWithVertices(CBinModel& model, std::span<const int32_t> faces);

/// The vertices of each of CLUSTERS (ascending, none in two of them) become its first one, wherever they lie. Faces
/// that lose corners by that become triangles or go, and so do those that become the same as another.
void MergeClusters(CBinModel& model, std::span<const std::vector<int32_t>> clusters);

}  // namespace veldra
