#include <algorithm>

#include "document/modelcopy.h"
#include "fuzzquestions.h"
#include "model/snapshot.h"
#include "model/snapshotformat.h"
#include "platform/assert.h"
#include "platform/compress.h"

/// A recovery copy or an earlier state, and the snapshot of a model that is in one. The first byte says which.
/// Checksums are made right, or nothing would ever get behind them.

namespace {

using namespace veldra;

void PutChecksum(std::vector<uint8_t>& file, size_t at, size_t header_size) {
  if (file.size() < header_size) return;
  CByteWriter sum;
  sum.WriteU32(Checksum(std::span(file).subspan(header_size)));
  std::copy(sum.Bytes().begin(), sum.Bytes().end(), file.begin() + static_cast<ptrdiff_t>(at));
}

void ReadOne(std::span<const uint8_t> bytes,
             bool (*read)(CBinModel& model, std::span<const uint8_t>, CTextureFinder&)) {
  fuzz::SFuzzLoad load;
  CBinModel model;
  if (!read(model, bytes, load.finder)) {
    VELDRA_ASSERT(model.VertexCount() == 0);
    return;
  }
  VELDRA_ASSERT(model.CheckInvariants().empty());
  CByteWriter snapshot;
  WriteSnapshot(model, snapshot);
  CBinModel again;
  VELDRA_ASSERT(ReadSnapshot(again, snapshot.Bytes(), load.finder));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  std::vector<uint8_t> file(data + 1, data + size);
  if (data[0] % 2 == 0) {
    PutChecksum(file, 12, 16);
    ReadCopyLabel(file);
    ReadOne(file, [](CBinModel& model, std::span<const uint8_t> bytes, CTextureFinder& finder) {
      return ReadModelCopy(bytes, model, finder);
    });
  } else {
    PutChecksum(file, snapshot::kHeaderSize - 4, snapshot::kHeaderSize);
    ReadOne(file, [](CBinModel& model, std::span<const uint8_t> bytes, CTextureFinder& finder) {
      return ReadSnapshot(model, bytes, finder);
    });
  }
  return 0;
}
