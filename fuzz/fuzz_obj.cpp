#include "fuzzquestions.h"
#include "interchange/wavefront.h"
#include "interchange/waveimport.h"
#include "interchange/wavematerials.h"
#include "interchange/waveparser.h"
#include "platform/assert.h"

/// A Wavefront file, and the same bytes as its material file: the model that comes of it is sound, and exported it
/// comes back the same.

namespace {

using namespace veldra;

bool Import(CBinModel& model, SWaveMesh mesh, const SWaveOptions& options, fuzz::SFuzzLoad& load, SImportFault& fault) {
  mesh.material_files.clear();  // what lies on the disk is no input
  const SImportContext context = {load.store, load.questions, "/nonexistent"};
  return ImportWaveMesh(model, mesh, {"/nonexistent/in.obj", "ROAD.RAW"}, options, context, fault);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  WaveMaps maps;
  ParseMaterials(text, "", maps);
  SImportFault fault;
  const auto mesh = ParseWavefront(text, nullptr, fault);
  VELDRA_ASSERT(mesh.has_value() == fault.what.empty());
  if (!mesh) return 0;
  for (const int32_t corner : mesh->corners)
    VELDRA_ASSERT(corner >= 0 && static_cast<size_t>(corner) < mesh->vertices.size());

  fuzz::SFuzzLoad load;
  CBinModel model;
  const SWaveOptions options = {.scale = size % 3 == 0 ? 1 : 0.01, .swap_yz = size % 2 == 0, .center = size % 5 == 0};
  if (!Import(model, *mesh, options, load, fault)) {
    VELDRA_ASSERT(!fault.what.empty() && model.VertexCount() == 0);
    return 0;
  }
  VELDRA_ASSERT(model.CheckInvariants().empty());
  VELDRA_ASSERT(WaveBounds(*mesh, options) == model.Bounds() || model.VertexCount() == 0);

  const std::string exported = WavefrontText(model);
  const auto again = ParseWavefront(exported, nullptr, fault);
  CBinModel copy;
  VELDRA_ASSERT(again && Import(copy, *again, {}, load, fault));
  VELDRA_ASSERT(WavefrontText(copy) == exported);
  return 0;
}
