#include "interchange/3dstudioreader.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr const char* kVersionText = "This version of the 3ds file format is not supported";
constexpr const char* kUnknownTrace = "Unknown chunk %#lx found - %lu bytes skipped\n";

constexpr uint16_t kMainId = 0x4D4D;
constexpr uint32_t kNewestVersion = 3;
constexpr size_t kHeaderSize = 6;
constexpr size_t kVertexSize = 12;
constexpr size_t kFaceSize = 8;

// What stands in a chunk before its sub-chunks.
constexpr size_t kLightFields = 12;
constexpr size_t kSpotlightFields = 20;
constexpr size_t kCameraFields = 32;

// For the long lists, whose bytes are known to be there.
uint16_t HalfAt(std::span<const uint8_t> bytes, size_t at) {
  return static_cast<uint16_t>(bytes[at] | bytes[at + 1] << 8);
}
float FloatAt(std::span<const uint8_t> bytes, size_t at) {
  const uint32_t low = HalfAt(bytes, at);
  const uint32_t high = HalfAt(bytes, at + 2);
  return std::bit_cast<float>(high << 16 | low);
}

void TraceChunk(const SStudioChunkRow& row, size_t data_size) {
  const auto size = static_cast<unsigned long>(data_size);
  switch (row.action) {
    case EStudioAction::kVersion:
    case EStudioAction::kEditor:
      return Trace("%s", row.text);
    case EStudioAction::kKeyframer:
      return Trace("Keyframer chunk found. Skipping %lu bytes\n", size);
    default:
      return Trace("Found %s(%#lx bytes)\n", row.text, size);
  }
}

}  // namespace

bool CStudioReader::Fail(std::string what) {
  fault_ = {std::move(what), false};
  return false;
}

bool CStudioReader::FailIn(const SStudioChunk& chunk, const std::string& what) {
  return Fail(Format("chunk 0x%04X at byte %zu: %s", chunk.id, chunk.start, what.c_str()));
}

bool CStudioReader::Read() {
  const uint16_t id = reader_.ReadU16();
  if (reader_.Failed()) return Fail(Format("the file of %zu bytes is too short", reader_.Size()));
  if (id != kMainId) return Fail(Format("it begins with 0x%04X, a 3ds file with 0x%04X", id, kMainId));
  const uint32_t length = reader_.ReadU32();
  if (reader_.Failed()) return Fail(Format("the file of %zu bytes is too short", reader_.Size()));
  const SStudioChunk main = {kMainId, 0, kHeaderSize, length};
  if (length < kHeaderSize) return FailIn(main, Format("a length of %u is less than its header", length));
  if (length > reader_.Size()) {
    return FailIn(main, Format("its length is %u, the file has %zu bytes", length, reader_.Size()));
  }
  return ReadMain(main.end);
}

/// Some writers give the main chunk a smaller length than the file has, so all chunks of the file count; what follows
/// behind the main chunk and is none is padding.
bool CStudioReader::ReadMain(size_t end) {
  // About as many as the lists of a file that is all mesh hold.
  file_.vertices_.reserve(reader_.Size() / (kVertexSize + kFaceSize));
  file_.faces_.reserve(reader_.Size() / (kVertexSize + kFaceSize));
  if (!ReadChildren(EStudioPlace::kMain, end)) return false;
  while (!reader_.AtEnd()) {
    const size_t position = reader_.Position();
    SStudioChunk chunk;
    if (!ReadHeader(reader_.Size(), chunk)) {
      Trace(">> C3DStudioFile::ReadFile(): %s\n", fault_.what.c_str());
      fault_ = {};
      return true;
    }
    reader_.Seek(position);
    if (!ReadChildren(EStudioPlace::kMain, chunk.end)) return false;
  }
  return true;
}

/// The chunk at the present position; leaves the reader behind its header.
bool CStudioReader::ReadHeader(size_t parent_end, SStudioChunk& chunk) {
  chunk.start = reader_.Position();
  const size_t left = parent_end - chunk.start;
  if (left < kHeaderSize) {
    return Fail(Format("at byte %zu: %zu bytes are left, a chunk needs %zu", chunk.start, left, kHeaderSize));
  }
  chunk.id = reader_.ReadU16();
  const uint32_t length = reader_.ReadU32();
  if (length < kHeaderSize) return FailIn(chunk, Format("a length of %u is less than its header", length));
  if (length > left) return FailIn(chunk, Format("its length is %u, %zu bytes are left", length, left));
  chunk.data = chunk.start + kHeaderSize;
  chunk.end = chunk.start + length;
  return true;
}

bool CStudioReader::ReadChildren(EStudioPlace place, size_t end) {
  while (reader_.Position() < end) {
    SStudioChunk chunk;
    if (!ReadHeader(end, chunk)) return false;
    const SStudioChunkRow* const row = FindStudioChunk(place, chunk.id);
    if (row == nullptr) {
      Trace(kUnknownTrace, static_cast<unsigned long>(chunk.id), static_cast<unsigned long>(chunk.DataSize()));
    } else {
      TraceChunk(*row, chunk.DataSize());
      if (!ReadKnown(*row, chunk)) return false;
    }
    reader_.Seek(chunk.end);
  }
  return true;
}

bool CStudioReader::ReadKnown(const SStudioChunkRow& row, const SStudioChunk& chunk) {
  switch (row.action) {
    case EStudioAction::kVersion:
      return ReadVersion(chunk);
    case EStudioAction::kEditor:
      return ReadChildren(EStudioPlace::kEditor, chunk.end);
    case EStudioAction::kObject:
      return ReadObject(chunk);
    case EStudioAction::kMesh:
      return ReadMesh(chunk);
    case EStudioAction::kVertices:
      return ReadVertices(chunk);
    case EStudioAction::kFaces:
      return ReadFaces(chunk);
    case EStudioAction::kFaceMaterials:
    case EStudioAction::kMapCoordinates:
    case EStudioAction::kMaterialName:
    case EStudioAction::kMapFile:
      return !file_.wants_extras_ || ReadExtra(row, chunk);
    case EStudioAction::kTextureMap:
      is_texture_map_ = true;
      TraceChildren(EStudioPlace::kSubMaterial, chunk, 0);
      is_texture_map_ = false;
      return true;
    case EStudioAction::kTraceMaterial:
      if (file_.wants_extras_) file_.extras_.materials.emplace_back();
      TraceChildren(EStudioPlace::kMaterial, chunk, 0);
      return true;
    case EStudioAction::kTraceSubMaterial:
      TraceChildren(EStudioPlace::kSubMaterial, chunk, 0);
      return true;
    case EStudioAction::kTraceLight:
      TraceChildren(EStudioPlace::kLight, chunk, kLightFields);
      return true;
    case EStudioAction::kTraceSpotlight:
      TraceChildren(EStudioPlace::kSpotlight, chunk, kSpotlightFields);
      return true;
    case EStudioAction::kTraceCamera:
      TraceChildren(EStudioPlace::kCamera, chunk, kCameraFields);
      return true;
    case EStudioAction::kSkip:
    case EStudioAction::kKeyframer:
      break;
  }
  return true;
}

/// Nothing of these chunks is taken, so nothing in them can spoil the import: where their insides make no sense, the
/// trace ends.
void CStudioReader::TraceChildren(EStudioPlace place, const SStudioChunk& chunk, size_t fields) {
  if (chunk.DataSize() < fields) return;
  reader_.Seek(chunk.data + fields);
  if (!ReadChildren(place, chunk.end)) fault_ = {};
}

// --- Materials, where they are wanted --------------------------------------------------------------------------------

/// Always true: what makes no sense is left out.
bool CStudioReader::ReadExtra(const SStudioChunkRow& row, const SStudioChunk& chunk) {
  auto& materials = file_.extras_.materials;
  if (row.action == EStudioAction::kFaceMaterials) ReadFaceMaterials(chunk);
  if (row.action == EStudioAction::kMapCoordinates) ReadMapCoordinates(chunk);
  if (row.action == EStudioAction::kMaterialName && !materials.empty()) materials.back().name = ReadName(chunk);
  if (row.action == EStudioAction::kMapFile && is_texture_map_ && !materials.empty())
    materials.back().picture = ReadName(chunk);
  return true;
}

/// Up to its zero, or as far as the chunk goes; the reader stands behind it.
std::string CStudioReader::ReadName(const SStudioChunk& chunk) {
  const auto field = reader_.ReadBytes(chunk.DataSize());
  const auto zero = std::find(field.begin(), field.end(), uint8_t{0});
  const std::string name(field.begin(), zero);
  reader_.Seek(std::min(chunk.end, chunk.data + name.size() + 1));
  return name;
}

void CStudioReader::ReadFaceMaterials(const SStudioChunk& chunk) {
  const std::string name = ReadName(chunk);
  const size_t left = chunk.end - reader_.Position();
  if (left < 2) return;
  const size_t count = std::min<size_t>(reader_.ReadU16(), (left - 2) / 2);
  const auto list = static_cast<uint32_t>(file_.extras_.face_list_names.size());
  file_.extras_.face_list_names.push_back(name);
  for (size_t i = 0; i < count; ++i) {
    const size_t face = reader_.ReadU16();
    if (face < mesh_.face_count)
      file_.extras_.face_materials.emplace_back(list, static_cast<uint32_t>(mesh_.first_face + face));
  }
}

void CStudioReader::ReadMapCoordinates(const SStudioChunk& chunk) {
  constexpr size_t kCoordSize = 8;
  if (chunk.DataSize() < 2) return;
  const size_t stored = std::min<size_t>(reader_.ReadU16(), (chunk.DataSize() - 2) / kCoordSize);
  const size_t count = std::min(stored, mesh_.vertex_count);
  const auto bytes = reader_.ReadBytes(count * kCoordSize);
  constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
  file_.extras_.coords.resize(file_.vertices_.size(), {kNone, kNone});
  for (size_t i = 0; i < count; ++i)
    file_.extras_.coords[mesh_.first_vertex + i] = {FloatAt(bytes, i * kCoordSize), FloatAt(bytes, i * kCoordSize + 4)};
}

bool CStudioReader::ReadVersion(const SStudioChunk& chunk) {
  if (chunk.DataSize() < 4) return FailIn(chunk, Format("a version needs 4 bytes, %zu are left", chunk.DataSize()));
  const uint32_t version = reader_.ReadU32();
  if (version <= kNewestVersion) return true;
  FailIn(chunk, Format("version %u, the newest known is %u", version, kNewestVersion));
  questions_.Message({.text = kVersionText, .icon = EIcon::kWarning, .details = fault_.what});
  fault_.is_told = true;
  return false;
}

bool CStudioReader::ReadObject(const SStudioChunk& chunk) {
  const auto field = reader_.ReadBytes(chunk.DataSize());
  const auto zero = std::find(field.begin(), field.end(), uint8_t{0});
  if (zero == field.end()) return FailIn(chunk, "the object's name does not end");
  const std::string name(field.begin(), zero);
  Trace(">> C3DStudioFile::ReadFile(): object %s\n", name.c_str());
  object_ = name;
  reader_.Seek(chunk.data + name.size() + 1);
  return ReadChildren(EStudioPlace::kObject, chunk.end);
}

bool CStudioReader::ReadMesh(const SStudioChunk& chunk) {
  mesh_ = {};
  if (file_.wants_extras_) file_.extras_.objects.push_back({object_, file_.faces_.size()});
  return ReadChildren(EStudioPlace::kMesh, chunk.end);
}

bool CStudioReader::ReadCount(const SStudioChunk& chunk, const char* things, size_t width, size_t& count) {
  if (chunk.DataSize() < 2) {
    return FailIn(chunk, Format("the number of %s needs 2 bytes, %zu are left", things, chunk.DataSize()));
  }
  count = reader_.ReadU16();
  const size_t left = chunk.end - reader_.Position();
  if (count * width <= left) return true;
  return FailIn(chunk, Format("%zu %s need %zu bytes, %zu are left", count, things, count * width, left));
}

bool CStudioReader::ReadVertices(const SStudioChunk& chunk) {
  if (mesh_.has_vertices) return FailIn(chunk, "a second list of vertices in one mesh");
  size_t count = 0;
  if (!ReadCount(chunk, "vertices", kVertexSize, count)) return false;
  mesh_ = {true, file_.vertices_.size(), count, 0, 0};
  const auto bytes = reader_.ReadBytes(count * kVertexSize);
  file_.vertices_.resize(mesh_.first_vertex + count);
  for (size_t i = 0; i < count; ++i) {
    const size_t at = i * kVertexSize;
    const auto index = static_cast<int32_t>(mesh_.first_vertex + i);
    file_.vertices_[mesh_.first_vertex + i] = {index, FloatAt(bytes, at), FloatAt(bytes, at + 4),
                                               FloatAt(bytes, at + 8)};
  }
  Widen(std::span(file_.vertices_).subspan(mesh_.first_vertex));
  return true;
}

void CStudioReader::Widen(std::span<const StudioVertex> vertices) {
  if (vertices.empty()) return;
  const StudioVertex& first = vertices.front();
  SStudioBox box = file_.box_;
  if (first.index == 0) box = {{first.x, first.y, first.z}, {first.x, first.y, first.z}};
  for (const StudioVertex& vertex : vertices) {
    box.min = {std::min(box.min[0], vertex.x), std::min(box.min[1], vertex.y), std::min(box.min[2], vertex.z)};
    box.max = {std::max(box.max[0], vertex.x), std::max(box.max[1], vertex.y), std::max(box.max[2], vertex.z)};
  }
  file_.box_ = box;
}

bool CStudioReader::ReadFaces(const SStudioChunk& chunk) {
  if (!mesh_.has_vertices) return FailIn(chunk, "faces before the list of vertices");
  size_t count = 0;
  if (!ReadCount(chunk, "faces", kFaceSize, count)) return false;
  const auto bytes = reader_.ReadBytes(count * kFaceSize);
  for (size_t i = 0; i < count; ++i) {
    const size_t at = i * kFaceSize;
    const uint16_t corners[] = {HalfAt(bytes, at), HalfAt(bytes, at + 2), HalfAt(bytes, at + 4)};
    const uint16_t largest = std::max({corners[0], corners[1], corners[2]});
    if (largest >= mesh_.vertex_count) {
      return FailIn(chunk, Format("face %zu names vertex %u, the mesh has %zu", i, largest, mesh_.vertex_count));
    }
    const auto first = static_cast<int32_t>(mesh_.first_vertex);
    file_.faces_.push_back({{first + corners[0], first + corners[1], first + corners[2]},
                            HalfAt(bytes, at + 6),
                            static_cast<int32_t>(file_.faces_.size())});
  }
  if (!file_.wants_extras_) return true;
  mesh_.first_face = file_.faces_.size() - count;
  mesh_.face_count = count;
  const SStudioChunk behind = {chunk.id, chunk.start, reader_.Position(), chunk.end};
  TraceChildren(EStudioPlace::kFaceList, behind, 0);
  return true;
}

}  // namespace veldra
