#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/helperclasses.h"

namespace veldra {

/// Of the faces that are in no group, and of none by itself; written by this program only.
inline constexpr std::string_view kOwnWaveGroup = "Veldra_Object";
/// The comment of a file that this program wrote, before the factor that its coordinates were multiplied by.
inline constexpr std::string_view kOwnWaveScale = "# Scale";

/// A position as it stands in a Wavefront file: x, y, z.
using SWavePoint = std::array<double, 3>;

/// Complaints about a file that was read all the same: the first ones, and how many there were.
class CRemarks {
 public:
  void Add(std::string text);
  bool Empty() const { return count_ == 0; }
  /// A line each.
  std::string Text() const;

 private:
  std::vector<std::string> first_;
  size_t count_ = 0;
};

/// What a mesh file, first of all a Wavefront one, holds that a model can take. Polygons are as written but for corners
/// that come again.
struct SWaveMesh {
  /// What the faces from FIRST_FACE on belong to, up to the next section.
  struct SSection {
    size_t first_face = 0;
    std::vector<int32_t> groups;  ///< positions in group_names, each once
    int32_t material = -1;        ///< position in material_names
  };
  /// Vertices from FIRST on stand one a line from LINE on, up to the next run.
  struct SLineRun {
    uint32_t first = 0;
    uint32_t line = 0;
  };

  size_t FaceCount() const { return face_ends.size(); }
  size_t FirstCorner(size_t face) const { return face == 0 ? 0 : face_ends[face - 1]; }
  std::span<const int32_t> Corners(size_t face) const {
    return std::span(corners).subspan(FirstCorner(face), face_ends[face] - FirstCorner(face));
  }
  uint32_t LineOfVertex(size_t vertex) const;
  /// Its position in VERTICES. The bounds grow with it.
  int32_t AddVertex(const SWavePoint& point);
  /// The corners from FIRST on become a face, without those that come again, if three of them are left; else they go
  /// away. Returns how many are left.
  size_t FinishFace(size_t first);
  /// The faces that follow have GROUPS and MATERIAL.
  void BeginSection(std::vector<int32_t> section_groups, int32_t material);

  std::vector<SWavePoint> vertices;
  SWavePoint min = {};  ///< of all vertices; zero without any
  SWavePoint max = {};
  std::vector<STexCoord> coords;       ///< as written: v upwards, any value
  std::vector<int32_t> corners;        ///< positions in vertices, all valid; of each face at least 3, not all distinct
  std::vector<int32_t> corner_coords;  ///< for each corner a position in coords or -1; empty when no face has any
  std::vector<uint32_t> face_ends;     ///< for each face where its corners end
  std::vector<SSection> sections;
  std::vector<std::string> group_names;
  std::vector<std::string> material_names;
  std::vector<std::string> material_files;
  /// Of each material the picture that it names, where the mesh file says that itself; "" for none.
  std::vector<std::string> material_pictures;
  /// Pictures that the mesh file itself holds, by the names that MATERIAL_PICTURES have for them.
  std::map<std::string, std::vector<uint8_t>> held_pictures;
  std::vector<SLineRun> vertex_lines;
  uint64_t file_size = 0;      ///< in bytes, with the buffers that it names
  bool is_own_export = false;  ///< written by ExportWavefront or ExportWithMaterials
  double own_scale = 1;        ///< what that multiplied the coordinates by; finite, above 0
  CRemarks remarks;
};

}  // namespace veldra
