#include <algorithm>

#include "fuzzquestions.h"
#include "model/infofile.h"
#include "model/texturenames.h"
#include "platform/assert.h"
#include "platform/text.h"

/// A model file: whatever loads is sound, can be saved, and what was saved loads and saves alike. Who reads only the
/// names of its textures finds those that the loader found.

namespace {

using namespace veldra;

std::vector<uint8_t> Saved(const CBinModel& model, bool backdrop) {
  CByteWriter out;
  SaveBin(model, {.backdrop = backdrop, .vertex_normals = !backdrop, .scale_word = model.ScaleWord()}, out);
  return {out.Bytes().begin(), out.Bytes().end()};
}

/// FILE has no faces of unknown type, which the loader reads as it is told.
void CheckNames(const CBinModel& model, std::span<const uint8_t> file) {
  std::vector<std::string> names;
  VELDRA_ASSERT(ReadTextureNames(file, names).Empty());
  for (int32_t i = 0; i < model.TextureCount(); ++i) {
    for (const CBinTexture::SFrame& frame : model.Texture(i).Frames()) {
      VELDRA_ASSERT(std::find(names.begin(), names.end(), UpperCase(frame.name)) != names.end());
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::SFuzzLoad load;
  CBinModel model;
  SDiagnosis diagnosis;
  const bool is_loaded = LoadBin(model, {data, size}, "", load.context, &diagnosis);
  VELDRA_ASSERT(model.CheckInvariants().empty());
  VELDRA_ASSERT(is_loaded == diagnosis.Empty() && diagnosis.offset <= size);
  VELDRA_ASSERT(is_loaded || (model.VertexCount() == 0 && model.TextureCount() == 0));
  std::vector<std::string> names;
  ReadTextureNames({data, size}, names);
  if (!is_loaded || !NameFault(model).empty()) return 0;

  Saved(model, true);
  const std::vector<uint8_t> saved = Saved(model, false);
  const std::string info = WriteInfo(model, AnimationNamesInFileOrder(model));
  CBinModel again;
  VELDRA_ASSERT(LoadBin(again, saved, info, load.context));
  VELDRA_ASSERT(again.CheckInvariants().empty());
  CheckNames(again, saved);
  VELDRA_ASSERT(again.VertexCount() == model.VertexCount() && again.FaceCount() == model.FaceCount());
  // The same but for the periods of animations, which truncation can lower by one.
  VELDRA_ASSERT(Saved(again, false).size() == saved.size());
  VELDRA_ASSERT(AnimationNamesInFileOrder(again).size() <= AnimationNamesInFileOrder(model).size());
  return 0;
}
