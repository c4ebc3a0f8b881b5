#pragma once

#include <optional>
#include <span>
#include <string>

#include "interchange/waveimport.h"

/// The kinds of mesh file that are read.
namespace veldra {

enum class EMeshFormat { kWavefront, k3ds, kGltf, kPly, kStl };

struct SMeshFormat {
  const char* extension;  ///< in lower case; a format may have several
  EMeshFormat format;
  double scale;  ///< what turns the file's units into a model's, as far as the format says
  bool is_z_up;  ///< programs that write it mostly have z upwards
};

std::span<const SMeshFormat> MeshFormats();
/// "*.obj *.3ds ...", for prompts.
std::string MeshPatterns();
/// By the extension; null where it is none of a mesh.
const SMeshFormat* FindMeshFormat(std::string_view path);
/// By how the file PATH begins, which comes without a name; what begins like no other is a Wavefront file.
const SMeshFormat& MeshFormatOfContent(const std::string& path);

/// Reads the file PATH under a progress that can be stopped, in its own units. A 3D Studio file's materials, texture
/// coordinates and groups are taken WITH_MATERIALS only. Nothing on failure.
std::optional<SWaveMesh> ReadMesh(const std::string& path, EMeshFormat format, bool with_materials,
                                  CQuestions& questions, SImportFault& fault);

}  // namespace veldra
