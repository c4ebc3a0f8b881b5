#include "fuzzquestions.h"
#include "interchange/3dstudiofile.h"
#include "interchange/studiomesh.h"
#include "interchange/waveimport.h"
#include "platform/assert.h"

/// A 3ds file: whatever is taken of it lies within its own lists, and what is refused is told.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace veldra;
  fuzz::CFuzzQuestions questions;
  C3DStudioFile file("");
  SImportFault fault;
  const bool is_read = file.ReadBytes({data, size}, questions, &fault);
  VELDRA_ASSERT(is_read == fault.what.empty());
  VELDRA_ASSERT(is_read || (file.Vertices().empty() && file.Faces().empty()));
  // No more than the file holds.
  VELDRA_ASSERT(file.Vertices().size() * 12 + file.Faces().size() * 8 <= size);
  for (size_t i = 0; i < file.Faces().size(); ++i) {
    VELDRA_ASSERT(file.Faces()[i].index == static_cast<int32_t>(i));
    for (const int32_t vertex : file.Faces()[i].vertices)
      VELDRA_ASSERT(vertex >= 0 && static_cast<size_t>(vertex) < file.Vertices().size());
  }
  // With materials it is the same mesh, and the model that comes of it is sound.
  C3DStudioFile rich("", true);
  VELDRA_ASSERT(rich.ReadBytes({data, size}, questions) == is_read && rich.Faces().size() == file.Faces().size());
  fuzz::SFuzzLoad load;
  CBinModel model;
  const SImportContext context = {load.store, load.questions, "/nonexistent"};
  if (is_read && ImportWaveMesh(model, MeshOf(rich), {"/nonexistent/in.3ds", "ROAD.RAW"}, {}, context, fault))
    VELDRA_ASSERT(model.CheckInvariants().empty());
  return 0;
}
