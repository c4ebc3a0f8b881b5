#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "interchange/importfault.h"
#include "platform/questions.h"

/// Autodesk 3D Studio files: a tree of chunks, of which the meshes are taken. docs/file-formats.md has the layout.
namespace veldra {

/// A vertex as it stands in the file.
struct StudioVertex {
  int32_t index = 0;  ///< over the whole file
  float x = 0;
  float y = 0;
  float z = 0;
};

/// A triangle. Its vertices are positions in the list of the whole file.
struct StudioFace {
  std::array<int32_t, 3> vertices = {};
  uint16_t flags = 0;  ///< edge visibility, as read
  int32_t index = 0;   ///< over the whole file
};

/// What is taken beside the mesh when materials are wanted.
struct SStudioExtras {
  struct SMaterial {
    std::string name;
    std::string picture;  ///< file name of its first texture map; "" for none
  };
  struct SObject {
    std::string name;
    size_t first_face = 0;
  };
  std::vector<SMaterial> materials;
  std::vector<SObject> objects;              ///< those with a mesh
  std::vector<std::array<float, 2>> coords;  ///< u and v of each vertex, v upwards; not a number for none
  std::vector<std::string> face_list_names;  ///< of each list of faces its material's
  std::vector<std::pair<uint32_t, uint32_t>> face_materials;  ///< position in those and face, as in the file
};

struct SStudioBox {
  std::array<float, 3> min = {};
  std::array<float, 3> max = {};
};

/// Reads one file. All mesh objects of it are put behind one another; lights, cameras and keyframes are passed over,
/// and so are materials and texture coordinates unless they are wanted.
class C3DStudioFile {
 public:
  explicit C3DStudioFile(std::string path, bool wants_extras = false)
      : path_(std::move(path)), wants_extras_(wants_extras) {}

  /// False when nothing may be used; FAULT (may be null) then says why. Only a version above 3 is told to the user from
  /// here: "This version of the 3ds file format is not supported".
  bool ReadFile(CQuestions& questions, SImportFault* fault = nullptr);
  /// The same for a file's BYTES. Nothing outside them is read whatever the lengths in them say, and the memory taken
  /// stays in proportion to them.
  bool ReadBytes(std::span<const uint8_t> bytes, CQuestions& questions, SImportFault* fault = nullptr);

  const std::string& Path() const { return path_; }
  const std::vector<StudioVertex>& Vertices() const { return vertices_; }
  const std::vector<StudioFace>& Faces() const { return faces_; }
  /// Empty unless wanted. Damage in it is no damage of the mesh: it ends what is taken.
  const SStudioExtras& Extras() const { return extras_; }
  const SStudioBox& BoundingBox() const { return box_; }  ///< of all vertices; zero without any
  uint64_t Size() const { return size_; }                 ///< in bytes
  /// What turns the file's units into those of a model. The file's own unit is not consulted.
  float ScaleFactor() const { return scale_factor_; }

 private:
  friend class CStudioReader;
  std::string path_;
  bool wants_extras_;
  SStudioExtras extras_;
  std::vector<StudioVertex> vertices_;
  std::vector<StudioFace> faces_;
  SStudioBox box_;
  uint64_t size_ = 0;
  float scale_factor_ = 0;
};

}  // namespace veldra
