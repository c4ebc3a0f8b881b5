#include "fuzzquestions.h"
#include "model/infofile.h"
#include "platform/assert.h"

/// A sidecar, beside a model of three vertices and three faces: the groups that come of it are sound, and written they
/// read the same without a complaint.

namespace {

using namespace veldra;

void Fill(CBinModel& model) {
  CBinVertex* const corners[] = {&model.AddVertex({0, 0, 0}), &model.AddVertex({9, 0, 0}), &model.AddVertex({0, 9, 0})};
  for (int i = 0; i < 3; ++i) {
    auto face = std::make_unique<CBinFace>(model);
    face->SetType(kFaceUntextured);
    face->SetCorners(corners);
    model.AddFace(std::move(face));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  SModelInfo info = ParseInfo({reinterpret_cast<const char*>(data), size});
  CBinModel model;
  Fill(model);
  AddInfoGroups(model, info);
  VELDRA_ASSERT(model.CheckInvariants().empty());

  const std::string text = WriteInfo(model, info.animations);
  SModelInfo again = ParseInfo(text);
  CBinModel copy;
  Fill(copy);
  AddInfoGroups(copy, again);
  VELDRA_ASSERT(again.complaints.empty());
  VELDRA_ASSERT(again.animations == info.animations);
  VELDRA_ASSERT(WriteInfo(copy, again.animations) == text);
  return 0;
}
