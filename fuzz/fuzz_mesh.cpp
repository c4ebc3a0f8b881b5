#include "fuzzquestions.h"
#include "interchange/gltfreader.h"
#include "interchange/plyreader.h"
#include "interchange/stlreader.h"
#include "interchange/waveimport.h"
#include "platform/assert.h"

/// A glTF, PLY or STL file, as its beginning says; of a glTF file the same bytes are each of its buffers. The mesh
/// names only what it has, and the model that comes of it is sound.

namespace {

using namespace veldra;

std::optional<SWaveMesh> Parse(std::span<const uint8_t> bytes, SImportFault& fault) {
  if (bytes.empty()) return std::nullopt;
  if (bytes[0] == 'p') return ParsePly(bytes, nullptr, fault);
  if (bytes[0] != '{' && bytes[0] != 'g') return ParseStl(bytes, nullptr, fault);
  const auto reader = [bytes](const std::string&, SError*) -> std::optional<CFileBytes> {
    auto data = std::make_unique<uint8_t[]>(bytes.size());
    std::ranges::copy(bytes, data.get());
    return CFileBytes(std::move(data), bytes.size());
  };
  return ParseGltf(bytes, reader, nullptr, fault);
}

bool IsBelow(int32_t number, size_t count) {
  return number >= 0 && static_cast<size_t>(number) < count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  SImportFault fault;
  auto mesh = Parse({data, size}, fault);
  if (!mesh) {
    VELDRA_ASSERT(size == 0 || !fault.what.empty());
    return 0;
  }
  VELDRA_ASSERT(mesh->FaceCount() > 0 && mesh->face_ends.back() == mesh->corners.size());
  VELDRA_ASSERT(mesh->corner_coords.empty() || mesh->corner_coords.size() == mesh->corners.size());
  for (const int32_t corner : mesh->corners)
    VELDRA_ASSERT(IsBelow(corner, mesh->vertices.size()));
  for (const int32_t coord : mesh->corner_coords)
    VELDRA_ASSERT(coord == -1 || IsBelow(coord, mesh->coords.size()));
  VELDRA_ASSERT(mesh->material_pictures.size() == mesh->material_names.size());

  fuzz::SFuzzLoad load;
  CBinModel model;
  const SImportContext context = {load.store, load.questions, "/nonexistent"};
  const SWaveOptions options = {.scale = 0.5, .swap_yz = size % 2 == 0, .fit = size % 3 == 0 ? 100.0 : 0};
  fault = {};
  const bool is_made = ImportWaveMesh(model, *mesh, {"/nonexistent/in", "ROAD.RAW"}, options, context, fault);
  VELDRA_ASSERT(is_made || (!fault.what.empty() && model.VertexCount() == 0));
  VELDRA_ASSERT(model.CheckInvariants().empty());
  return 0;
}
