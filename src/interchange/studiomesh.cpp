#include "interchange/studiomesh.h"

#include <cmath>
#include <new>
#include <unordered_map>

namespace veldra {

namespace {

bool IsTriangle(const StudioFace& face) {
  const auto& [a, b, c] = face.vertices;
  return a != b && b != c && c != a;
}

/// Of each face the position of its material; -1 for none. Of several lists that name a face the last counts.
std::vector<int32_t> MaterialsOfFaces(const C3DStudioFile& file) {
  const SStudioExtras& extras = file.Extras();
  std::unordered_map<std::string, int32_t> numbers;
  for (const SStudioExtras::SMaterial& material : extras.materials)
    numbers.try_emplace(material.name, static_cast<int32_t>(numbers.size()));
  std::vector<int32_t> of_lists;
  for (const std::string& name : extras.face_list_names) {
    const auto number = numbers.find(name);
    of_lists.push_back(number != numbers.end() ? number->second : -1);
  }
  std::vector<int32_t> materials(file.Faces().size(), -1);
  for (const auto& [list, face] : extras.face_materials)
    if (of_lists[list] >= 0) materials[face] = of_lists[list];
  return materials;
}

class CMeshMaker {
 public:
  explicit CMeshMaker(const C3DStudioFile& file) : file_(file), extras_(file.Extras()) {}

  SWaveMesh Make() {
    mesh_.file_size = file_.Size();
    AddVertices();
    AddMaterials();
    const std::vector<int32_t> materials = MaterialsOfFaces(file_);
    for (const StudioFace& face : file_.Faces()) {
      while (object_ < extras_.objects.size() && extras_.objects[object_].first_face <= static_cast<size_t>(face.index))
        ++object_;
      if (!IsTriangle(face)) continue;
      Enter(materials[static_cast<size_t>(face.index)]);
      AddFace(face);
    }
    return std::move(mesh_);
  }

 private:
  void AddVertices() {
    for (const StudioVertex& vertex : file_.Vertices())
      mesh_.vertices.push_back({vertex.x, vertex.y, vertex.z});
    const auto& [low, high] = file_.BoundingBox();
    mesh_.min = {low[0], low[1], low[2]};
    mesh_.max = {high[0], high[1], high[2]};
    for (const auto& [u, v] : extras_.coords)
      mesh_.coords.push_back({u, v});
  }
  void AddMaterials() {
    std::unordered_map<std::string, size_t> known;
    for (const SStudioExtras::SMaterial& material : extras_.materials) {
      if (!known.try_emplace(material.name, known.size()).second) continue;
      mesh_.material_names.push_back(material.name);
      mesh_.material_pictures.push_back(material.picture);
    }
    for (const SStudioExtras::SObject& object : extras_.objects)
      mesh_.group_names.push_back(object.name);
  }
  void Enter(int32_t material) {
    std::vector<int32_t> groups;
    if (object_ > 0) groups.push_back(static_cast<int32_t>(object_ - 1));
    mesh_.BeginSection(std::move(groups), material);
  }
  void AddFace(const StudioFace& face) {
    for (const int32_t vertex : face.vertices) {
      mesh_.corners.push_back(vertex);
      if (!mesh_.coords.empty()) mesh_.corner_coords.push_back(HasCoord(vertex) ? vertex : -1);
    }
    mesh_.face_ends.push_back(static_cast<uint32_t>(mesh_.corners.size()));
  }
  bool HasCoord(int32_t vertex) const {
    const auto index = static_cast<size_t>(vertex);
    return index < mesh_.coords.size() && std::isfinite(mesh_.coords[index].u) && std::isfinite(mesh_.coords[index].v);
  }

  const C3DStudioFile& file_;
  const SStudioExtras& extras_;
  SWaveMesh mesh_;
  size_t object_ = 0;  ///< how many have begun
};

}  // namespace

SWaveMesh MeshOf(const C3DStudioFile& file) {
  return CMeshMaker(file).Make();
}

std::optional<SWaveMesh> Read3dsMesh(const std::string& path, bool with_materials, CQuestions& questions,
                                     SImportFault& fault) {
  try {
    C3DStudioFile file(path, with_materials);
    if (file.ReadFile(questions, &fault)) return MeshOf(file);
  } catch (const std::bad_alloc&) {
    fault = kNoMemory;
  }
  return std::nullopt;
}

}  // namespace veldra
