#pragma once

#include "interchange/gltfbuffers.h"
#include "interchange/wavemesh.h"

/// Inside the glTF reader.
namespace veldra::gltf {

/// Gives MESH the materials of ROOT with the pictures that they name; those that stand in the file go into its
/// held_pictures. A material that has only a colour gets a picture of one pixel.
void AddMaterials(const Json& root, const CBuffers& buffers, SWaveMesh& mesh);

/// How the texture coordinates of a material's picture are found.
struct SPictureCoords {
  size_t set = 0;  ///< TEXCOORD_0 and so on
  // u and v as they stand in the file times these, and moved.
  std::array<double, 3> u = {1, 0, 0};
  std::array<double, 3> v = {0, 1, 0};
};

SPictureCoords CoordsOf(const Json& root, std::optional<size_t> material);

/// A name that stands in a file: never empty.
std::string NameOf(const Json* object, const char* kind, size_t index);

}  // namespace veldra::gltf
