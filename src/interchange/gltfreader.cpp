#include "interchange/gltfreader.h"

#include <cmath>
#include <new>

#include "interchange/gltfmaterials.h"
#include "interchange/importmodel.h"
#include "interchange/meshsteps.h"
#include "interchange/vertexwelder.h"
#include "platform/bytes.h"
#include "platform/text.h"

namespace veldra::gltf {

namespace {

/// Three rows of a matrix whose fourth is 0 0 0 1.
using Placement = std::array<std::array<double, 4>, 3>;
constexpr Placement kInPlace = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}};

Placement operator*(const Placement& a, const Placement& b) {
  Placement product = {};
  for (size_t row = 0; row < 3; ++row)
    for (size_t column = 0; column < 4; ++column) {
      double sum = column == 3 ? a[row][3] : 0;
      for (size_t k = 0; k < 3; ++k)
        sum += a[row][k] * b[k][column];
      product[row][column] = sum;
    }
  return product;
}

SWavePoint operator*(const Placement& placement, const SWavePoint& p) {
  SWavePoint moved;
  for (size_t row = 0; row < 3; ++row) {
    const auto& [x, y, z, shift] = placement[row];
    moved[row] = x * p[0] + y * p[1] + z * p[2] + shift;
  }
  return moved;
}

bool IsMirror(const Placement& m) {
  return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
             m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]) <
         0;
}

Placement PlacementOf(const Json& node) {
  Placement placement = kInPlace;
  if (const auto matrix = Numbers<16>(&node, "matrix")) {
    for (size_t i = 0; i < 12; ++i)
      placement[i % 3][i / 3] = (*matrix)[i / 3 * 4 + i % 3];
    return placement;
  }
  const auto shift = Numbers<3>(&node, "translation").value_or(SWavePoint{});
  const auto [x, y, z, w] = Numbers<4>(&node, "rotation").value_or(std::array{0.0, 0.0, 0.0, 1.0});
  const auto scale = Numbers<3>(&node, "scale").value_or(SWavePoint{1, 1, 1});
  const Placement turned = {{{1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w), shift[0]},
                             {2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w), shift[1]},
                             {2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y), shift[2]}}};
  placement = turned;
  for (auto& row : placement)
    for (size_t column = 0; column < 3; ++column)
      row[column] *= scale[column];
  return placement;
}

/// Kinds of primitive that are triangles.
enum EMode : size_t { kTriangles = 4, kStrip = 5, kFan = 6 };

class CGltfReader {
 public:
  CGltfReader(const Json& root, const CBuffers& buffers, CMeshSteps steps, SImportFault& fault)
      : root_(root), buffers_(buffers), steps_(steps), fault_(fault) {}

  /// FILE_SIZE counts the buffers, too.
  bool Read(uint64_t file_size);
  SWaveMesh Take() { return std::move(mesh_); }

 private:
  /// A node whose children are being read.
  struct SVisit {
    size_t node;
    Placement placement;
    size_t next_child;
  };
  /// A primitive on the way in.
  struct SPart {
    CAccessor positions;
    std::optional<CAccessor> coords;
    std::optional<CAccessor> indices;
    SPictureCoords picture;
    std::vector<int32_t> vertices;  ///< of each position, once it is used; -1
    std::vector<int32_t> coord_numbers;
    size_t Count() const { return indices ? indices->Count() : positions.Count(); }
    size_t Index(size_t i) const { return indices ? indices->IndexAt(i) : i; }
  };

  bool CheckVersion();
  std::vector<size_t> RootNodes() const;
  bool ReadNodes();
  bool Enter(size_t index, const Placement& parent);
  bool ReadMesh(size_t index, const Json& node, const Placement& placement);
  bool ReadPrimitive(const Json& primitive, const Placement& placement);
  bool Open(const Json& primitive, SPart& part);
  bool AddTriangles(SPart& part, size_t mode, const Placement& placement);
  bool AddTriangle(SPart& part, std::array<size_t, 3> corners, const Placement& placement);
  int32_t VertexOf(SPart& part, size_t index, const Placement& placement);
  int32_t CoordOf(SPart& part, size_t index);
  bool Fail(std::string what) {
    fault_ = {std::move(what), false};
    return false;
  }

  const Json& root_;
  const CBuffers& buffers_;
  CMeshSteps steps_;
  SImportFault& fault_;
  SWaveMesh mesh_;
  CVertexWelder welder_{mesh_};
  std::string where_;  ///< which mesh is being read
  size_t triangles_ = 0;
  uint64_t positions_ = 0;  ///< that lists name
  size_t nodes_done_ = 0;
  std::vector<bool> is_done_;
  std::vector<SVisit> visits_;  ///< from the root down
  size_t other_primitives_ = 0;
};

bool CGltfReader::CheckVersion() {
  const std::string version = TextOr(Member(&root_, "asset"), "version", "");
  if (!version.starts_with("2.")) return Fail("it is of version \"" + DisplayName(version) + "\" of glTF, not 2");
  constexpr std::string_view kKnown[] = {"KHR_texture_transform", "KHR_mesh_quantization", "KHR_lights_punctual"};
  for (size_t i = 0; i < CountOf(&root_, "extensionsRequired"); ++i) {
    const Json& value = *Element(&root_, "extensionsRequired", i);
    const std::string name = value.is_string() ? value.get<std::string>() : "";
    if (!name.starts_with("KHR_materials_") && std::ranges::find(kKnown, name) == std::end(kKnown))
      return Fail("it needs the extension " + DisplayName(name) +
                  ", which is not read. Export it without compression.");
  }
  return true;
}

bool CGltfReader::Read(uint64_t file_size) {
  mesh_.file_size = file_size;
  if (!CheckVersion()) return false;
  constexpr size_t kMostMaterials = 65'536;
  if (CountOf(&root_, "materials") > kMostMaterials) return Fail("it has too many materials");
  AddMaterials(root_, buffers_, mesh_);
  if (!ReadNodes()) return false;
  if (other_primitives_ > 0)
    mesh_.remarks.Add(Counted(static_cast<int64_t>(other_primitives_), "list", "lists") +
                      " of points or lines left out");
  return mesh_.FaceCount() > 0 || Fail("it has no triangles");
}

// --- Nodes -----------------------------------------------------------------------------------------------------------

/// Those of the scene; in a file without one, all that are nobody's children.
std::vector<size_t> CGltfReader::RootNodes() const {
  const Json* const scene = Element(&root_, "scenes", WholeNumber(&root_, "scene").value_or(0));
  const size_t count = CountOf(&root_, "nodes");
  std::vector<size_t> roots;
  if (scene != nullptr) {
    for (size_t i = 0; i < CountOf(scene, "nodes"); ++i)
      if (const Json& node = *Element(scene, "nodes", i); node.is_number_unsigned())
        roots.push_back(node.get<size_t>());
    return roots;
  }
  std::vector<bool> is_child(count);
  for (size_t i = 0; i < count; ++i) {
    const Json* const node = Element(&root_, "nodes", i);
    for (size_t k = 0; k < CountOf(node, "children"); ++k)
      if (const Json& child = *Element(node, "children", k); child.is_number_unsigned() && child.get<size_t>() < count)
        is_child[child.get<size_t>()] = true;
  }
  for (size_t i = 0; i < count; ++i)
    if (!is_child[i]) roots.push_back(i);
  return roots;
}

bool CGltfReader::ReadNodes() {
  is_done_.resize(CountOf(&root_, "nodes"));
  for (const size_t root : RootNodes()) {
    if (!Enter(root, kInPlace)) return false;
    while (!visits_.empty()) {
      SVisit& visit = visits_.back();
      const Json* const child = Element(Element(&root_, "nodes", visit.node), "children", visit.next_child++);
      if (child == nullptr)
        visits_.pop_back();
      else if (child->is_number_unsigned() && !Enter(child->get<size_t>(), visit.placement))
        return false;
    }
  }
  return true;
}

bool CGltfReader::Enter(size_t index, const Placement& parent) {
  const Json* const node = Element(&root_, "nodes", index);
  // A node has one parent: what comes again is a circle.
  if (node == nullptr || is_done_[index]) return true;
  is_done_[index] = true;
  ++nodes_done_;
  const Placement placement = parent * PlacementOf(*node);
  visits_.push_back({index, placement, 0});
  const auto mesh = WholeNumber(node, "mesh");
  return !mesh || ReadMesh(*mesh, *node, placement);
}

bool CGltfReader::ReadMesh(size_t index, const Json& node, const Placement& placement) {
  const Json* const mesh = Element(&root_, "meshes", index);
  where_ = Format("mesh %zu: ", index);
  if (mesh == nullptr) return Fail(where_ + "it is not there");
  welder_.Forget();
  mesh_.group_names.push_back(NameOf(Member(&node, "name") != nullptr ? &node : mesh, "Mesh", index));
  for (size_t i = 0; i < CountOf(mesh, "primitives"); ++i)
    if (!ReadPrimitive(*Element(mesh, "primitives", i), placement)) return false;
  return true;
}

// --- Triangles -------------------------------------------------------------------------------------------------------

bool CGltfReader::ReadPrimitive(const Json& primitive, const Placement& placement) {
  const size_t mode = WholeNumber(&primitive, "mode").value_or(kTriangles);
  if (mode < kTriangles || mode > kFan) {
    ++other_primitives_;
    return true;
  }
  SPart part;
  if (!Open(primitive, part)) return Fail(where_ + fault_.what);
  const size_t materials = mesh_.material_names.size();
  const auto material = WholeNumber(&primitive, "material");
  mesh_.BeginSection({static_cast<int32_t>(mesh_.group_names.size() - 1)},
                     material && *material < materials ? static_cast<int32_t>(*material) : -1);
  return AddTriangles(part, mode, placement);
}

bool CGltfReader::Open(const Json& primitive, SPart& part) {
  const Json* const attributes = Member(&primitive, "attributes");
  if (!part.positions.Open(root_, buffers_, WholeNumber(attributes, "POSITION"), fault_.what)) return false;
  if (part.positions.Parts() != 3) return Fail("its positions are no points in space");
  if (Member(&primitive, "indices") != nullptr) {
    part.indices.emplace();
    if (!part.indices->Open(root_, buffers_, WholeNumber(&primitive, "indices"), fault_.what)) return false;
    if (!part.indices->IsIndices()) return Fail("its indices are no whole numbers");
  }
  part.picture = CoordsOf(root_, WholeNumber(&primitive, "material"));
  const auto coords = WholeNumber(attributes, Format("TEXCOORD_%zu", part.picture.set).c_str());
  if (coords) {
    part.coords.emplace();
    if (!part.coords->Open(root_, buffers_, coords, fault_.what)) return false;
    if (part.coords->Parts() != 2 || part.coords->Count() < part.positions.Count())
      return Fail("it has fewer texture coordinates than positions");
  }
  // A file could have each of many lists name all of its positions.
  constexpr uint64_t kMostVisits = 16'000'000;
  positions_ += part.positions.Count();
  if (positions_ > kMostVisits + 16 * buffers_.Size()) return Fail("its lists share too many positions");
  part.vertices.assign(part.positions.Count(), -1);
  if (part.coords) part.coord_numbers.assign(part.positions.Count(), -1);
  return true;
}

bool CGltfReader::AddTriangles(SPart& part, size_t mode, const Placement& placement) {
  const bool is_mirror = IsMirror(placement);
  const size_t count = part.Count();
  const size_t step = mode == kTriangles ? 3 : 1;
  for (size_t i = 0; i + 2 < count; i += step) {
    std::array<size_t, 3> corners = {mode == kFan ? 0 : i, i + 1, i + 2};
    // In a strip each second triangle runs the other way.
    if (is_mirror != (mode == kStrip && i % 2 == 1)) std::swap(corners[1], corners[2]);
    for (size_t& corner : corners) {
      corner = part.Index(corner);
      if (corner >= part.positions.Count())
        return Fail(where_ + Format("a triangle names vertex %zu, there are %zu", corner, part.positions.Count()));
    }
    if (!AddTriangle(part, corners, placement)) return false;
  }
  return true;
}

bool CGltfReader::AddTriangle(SPart& part, std::array<size_t, 3> corners, const Placement& placement) {
  // Nodes can show the same triangles any number of times.
  if (triangles_ > MostFaces(mesh_.file_size)) return Fail(TooManyFaces(mesh_.file_size));
  if (!steps_.Step(triangles_++, nodes_done_, CountOf(&root_, "nodes"))) {
    fault_ = {"", true};
    return false;
  }
  std::array<int32_t, 3> vertices;
  for (size_t k = 0; k < 3; ++k)
    if (vertices[k] = VertexOf(part, corners[k], placement); vertices[k] < 0)
      return Fail(where_ + Format("vertex %zu has no place", corners[k]));
  if (vertices[0] == vertices[1] || vertices[1] == vertices[2] || vertices[2] == vertices[0]) return true;
  if (part.coords && mesh_.corner_coords.empty()) mesh_.corner_coords.resize(mesh_.corners.size(), -1);
  const bool has_coords = part.coords || !mesh_.corner_coords.empty();
  for (size_t k = 0; k < 3; ++k) {
    mesh_.corners.push_back(vertices[k]);
    if (has_coords) mesh_.corner_coords.push_back(part.coords ? CoordOf(part, corners[k]) : -1);
  }
  mesh_.face_ends.push_back(static_cast<uint32_t>(mesh_.corners.size()));
  return true;
}

/// -1 where it is nowhere.
int32_t CGltfReader::VertexOf(SPart& part, size_t index, const Placement& placement) {
  int32_t& vertex = part.vertices[index];
  if (vertex >= 0) return vertex;
  const SWavePoint own = {part.positions.At(index, 0), part.positions.At(index, 1), part.positions.At(index, 2)};
  const SWavePoint point = placement * own;
  for (const double part_of_it : point)
    if (!std::isfinite(part_of_it)) return -1;
  return vertex = welder_.Add(point);
}

int32_t CGltfReader::CoordOf(SPart& part, size_t index) {
  int32_t& number = part.coord_numbers[index];
  if (number >= 0) return number;
  const double s = part.coords->At(index, 0);
  const double t = part.coords->At(index, 1);
  const auto& [u, v] = std::pair(part.picture.u, part.picture.v);
  const STexCoord coord = {u[0] * s + u[1] * t + u[2], v[0] * s + v[1] * t + v[2]};
  const bool is_finite = std::isfinite(coord.u) && std::isfinite(coord.v);
  // The file counts v from the picture's first row down.
  mesh_.coords.push_back(is_finite ? STexCoord{coord.u, 1 - coord.v} : STexCoord{});
  return number = static_cast<int32_t>(mesh_.coords.size() - 1);
}

// --- The file --------------------------------------------------------------------------------------------------------

struct SChunks {
  std::string_view json;
  std::span<const uint8_t> packed;
};

constexpr uint32_t kBinaryMark = 0x46546C67;  // "glTF"

/// A binary file's JSON and what stands behind it; of a text the whole.
std::optional<SChunks> ChunksOf(std::span<const uint8_t> bytes, std::string& fault) {
  const auto text = [](std::span<const uint8_t> part) {
    return std::string_view(reinterpret_cast<const char*>(part.data()), part.size());
  };
  CByteReader in(bytes);
  if (in.ReadU32() != kBinaryMark) return SChunks{text(bytes), {}};
  constexpr uint32_t kJson = 0x4E4F534A;
  constexpr uint32_t kPacked = 0x004E4942;
  const uint32_t version = in.ReadU32();
  const uint32_t length = in.ReadU32();
  if (length >= in.Position() && length < bytes.size()) return ChunksOf(bytes.first(length), fault);
  SChunks chunks;
  for (bool is_first = true; !in.AtEnd() && !in.Failed(); is_first = false) {
    const uint32_t part_length = in.ReadU32();
    const uint32_t kind = in.ReadU32();
    const auto part = in.ReadBytes(part_length);
    if (is_first && kind == kJson) chunks.json = text(part);
    if (kind == kPacked && chunks.packed.empty()) chunks.packed = part;
  }
  if (version == 2 && !in.Failed() && !chunks.json.empty()) return chunks;
  fault = version != 2 ? Format("it is of version %u of binary glTF, not 2", version) : "it is cut short";
  return std::nullopt;
}

}  // namespace

static std::optional<SWaveMesh> Parse(std::span<const uint8_t> bytes, const FileReader& read_file, CProgress* progress,
                                      SImportFault& fault) {
  const auto chunks = ChunksOf(bytes, fault.what);
  const auto root = chunks ? ParseJson(chunks->json, fault.what) : std::nullopt;
  if (!root) return std::nullopt;
  CBuffers buffers(*root, chunks->packed, read_file);
  if (!buffers.Load(fault.what)) return std::nullopt;
  CGltfReader reader(*root, buffers, CMeshSteps(progress), fault);
  return reader.Read(chunks->json.size() + buffers.Size()) ? std::optional(reader.Take()) : std::nullopt;
}

}  // namespace veldra::gltf

namespace veldra {

std::optional<SWaveMesh> ParseGltf(std::span<const uint8_t> bytes, const gltf::FileReader& read_file,
                                   CProgress* progress, SImportFault& fault) try {
  fault = {};
  return gltf::Parse(bytes, read_file, progress, fault);
} catch (const std::bad_alloc&) {
  fault = kNoMemory;
  return std::nullopt;
}

}  // namespace veldra
