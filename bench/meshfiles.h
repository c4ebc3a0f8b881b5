#pragma once

#include <string>

/// Mesh files of a size that general tools write, for the comparisons with other readers.
namespace veldra::bench {

/// A 3ds file of 16 meshes, each with 65,535 vertices and as many triangles.
std::string StudioMeshes();
inline constexpr int kStudioMeshes = 16;
inline constexpr int kStudioMeshSize = 65535;

/// A Wavefront text of 1,000 x 1,000 vertices with six decimals and 2 x 999 x 999 triangles.
std::string WaveMesh();
/// The same with a texture coordinate a vertex, and a material and a group for every 20 rows.
std::string WaveMeshWithMaterials();
inline constexpr int kWaveSide = 1000;

}  // namespace veldra::bench
