#include "document/modelcopy.h"

#include <new>
#include <utility>

#include "model/snapshot.h"

namespace veldra {

namespace {

bool ReadInto(CBinModel& model, std::span<const uint8_t> file, CTextureFinder& textures, SDiagnosis& fault) try {
  const auto snapshot = ReadCopy(file, ECopyKind::kModel, fault);
  return snapshot && ReadSnapshot(model, *snapshot, textures, &fault);
} catch (const std::bad_alloc&) {
  fault = {0, kNotEnoughMemory};
  return false;
}

}  // namespace

std::vector<uint8_t> WriteModelCopy(SCopyLabel label, const CBinModel& model) {
  label.kind = ECopyKind::kModel;
  label.vertices = model.VertexCount();
  label.faces = model.FaceCount();
  CByteWriter snapshot;
  WriteSnapshot(model, snapshot);
  return WriteCopy(label, snapshot.Bytes());
}

bool ReadModelCopy(std::span<const uint8_t> file, CBinModel& model, CTextureFinder& textures, SDiagnosis* diagnosis) {
  SDiagnosis fault;
  const bool is_read = ReadInto(model, file, textures, fault);
  if (diagnosis != nullptr) *diagnosis = fault;
  return is_read;
}

}  // namespace veldra
