#include "document/modelcopy.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <utility>

#include "model/snapshot.h"
#include "platform/compress.h"
#include "platform/files.h"
#include "platform/text.h"

namespace veldra {

namespace {

// The file: kMagic, u32 kVersion, u32 checksum of all that follows, u32 length of the label, the label, u64 length of
// the snapshot, the snapshot packed.
constexpr std::string_view kMagic = "VELDCOPY";
constexpr uint32_t kVersion = 1;
constexpr size_t kHeaderSize = 8 + 4 + 4;
constexpr size_t kLargestPicture = size_t{4} * kLargestCopyPicture * kLargestCopyPicture;

void WriteLong(CByteWriter& out, uint64_t value) {
  out.WriteU32(static_cast<uint32_t>(value));
  out.WriteU32(static_cast<uint32_t>(value >> 32));
}

uint64_t ReadLong(CByteReader& in) {
  const uint64_t low = in.ReadU32();
  return low | uint64_t{in.ReadU32()} << 32;
}

void WriteText(CByteWriter& out, std::string_view text) {
  out.WriteU32(static_cast<uint32_t>(text.size()));
  out.WriteText(text);
}

std::string ReadText(CByteReader& in) {
  const uint32_t length = in.ReadU32();
  const auto bytes = in.ReadBytes(length);
  return {bytes.begin(), bytes.end()};
}

bool IsGoodPicture(int width, int height, size_t bytes) {
  return width > 0 && height > 0 && width <= kLargestCopyPicture && height <= kLargestCopyPicture &&
         bytes == size_t{4} * static_cast<size_t>(width) * static_cast<size_t>(height);
}

void WritePicture(CByteWriter& out, const SImage& picture) {
  const bool is_good = IsGoodPicture(picture.width, picture.height, picture.rgba.size());
  out.WriteI32(is_good ? picture.width : 0);
  out.WriteI32(is_good ? picture.height : 0);
  if (is_good) out.WriteBytes(Compress(picture.rgba));
}

/// What is left of IN.
SImage ReadPicture(CByteReader& in) {
  const int width = in.ReadI32();
  const int height = in.ReadI32();
  auto pixels = Decompress(in.ReadBytes(in.Remaining()), kLargestPicture);
  if (!pixels || !IsGoodPicture(width, height, pixels->size())) return {};
  return {width, height, std::move(*pixels)};
}

CByteWriter WriteLabel(const SCopyLabel& label) {
  CByteWriter out;
  WriteText(out, label.title);
  WriteText(out, label.path);
  WriteText(out, label.states_key);
  WriteLong(out, static_cast<uint64_t>(label.time));
  out.WriteI32(label.vertices);
  out.WriteI32(label.faces);
  WritePicture(out, label.picture);
  return out;
}

std::optional<SCopyLabel> ReadLabel(std::span<const uint8_t> bytes) {
  CByteReader in(bytes);
  SCopyLabel label;
  label.title = ReadText(in);
  label.path = ReadText(in);
  label.states_key = ReadText(in);
  label.time = static_cast<int64_t>(ReadLong(in));
  label.vertices = in.ReadI32();
  label.faces = in.ReadI32();
  if (in.Failed()) return std::nullopt;
  label.picture = ReadPicture(in);
  return label;
}

/// The two parts of a file, as they lie in it.
struct SParts {
  std::span<const uint8_t> label;
  uint64_t snapshot_size = 0;
  std::span<const uint8_t> snapshot;
};

std::optional<SParts> Split(std::span<const uint8_t> file, SDiagnosis& fault) {
  CByteReader in(file);
  const auto magic = in.ReadBytes(kMagic.size());
  if (!std::equal(magic.begin(), magic.end(), kMagic.begin(), kMagic.end())) {
    fault = {0, "is no copy of a model"};
    return std::nullopt;
  }
  const uint32_t version = in.ReadU32();
  const uint32_t checksum = in.ReadU32();
  SParts parts;
  parts.label = in.ReadBytes(in.ReadU32());
  parts.snapshot_size = ReadLong(in);
  if (in.Failed()) {
    fault = {in.Position(), "ends too early"};
  } else if (version != kVersion) {
    fault = {kMagic.size(), Format("version %u of the format is not known", version)};
  } else if (checksum != Checksum(file.subspan(kHeaderSize))) {
    fault = {kHeaderSize - 4, "the checksum is wrong"};
  }
  if (!fault.Empty()) return std::nullopt;
  parts.snapshot = in.ReadBytes(in.Remaining());
  return parts;
}

bool ReadParts(std::span<const uint8_t> file, CBinModel& model, CTextureFinder& textures, SDiagnosis& fault) try {
  const auto parts = Split(file, fault);
  if (!parts) return false;
  const auto snapshot = Decompress(parts->snapshot, static_cast<size_t>(parts->snapshot_size));
  if (!snapshot) {
    fault = {file.size() - parts->snapshot.size(), "the packed model is damaged"};
    return false;
  }
  return ReadSnapshot(model, *snapshot, textures, &fault);
} catch (const std::bad_alloc&) {
  fault = {0, "not enough memory"};
  return false;
}

}  // namespace

std::vector<uint8_t> WriteModelCopy(SCopyLabel label, const CBinModel& model) {
  label.vertices = model.VertexCount();
  label.faces = model.FaceCount();
  const CByteWriter label_bytes = WriteLabel(label);
  CByteWriter snapshot;
  WriteSnapshot(model, snapshot);
  const std::vector<uint8_t> packed = Compress(snapshot.Bytes());

  CByteWriter body;
  body.Reserve(label_bytes.Size() + packed.size() + 12);
  body.WriteU32(static_cast<uint32_t>(label_bytes.Size()));
  body.WriteBytes(label_bytes.Bytes());
  WriteLong(body, snapshot.Size());
  body.WriteBytes(packed);

  CByteWriter file;
  file.Reserve(kHeaderSize + body.Size());
  file.WriteText(kMagic);
  file.WriteU32(kVersion);
  file.WriteU32(Checksum(body.Bytes()));
  file.WriteBytes(body.Bytes());
  return {file.Bytes().begin(), file.Bytes().end()};
}

std::optional<SCopyLabel> ReadCopyLabel(std::span<const uint8_t> file, SDiagnosis* diagnosis) {
  SDiagnosis fault;
  const auto parts = Split(file, fault);
  auto label = parts ? ReadLabel(parts->label) : std::nullopt;
  if (parts && !label) fault = {kHeaderSize, "its label is damaged"};
  if (diagnosis != nullptr) *diagnosis = fault;
  return label;
}

bool ReadModelCopy(std::span<const uint8_t> file, CBinModel& model, CTextureFinder& textures, SDiagnosis* diagnosis) {
  SDiagnosis fault;
  const bool is_read = ReadParts(file, model, textures, fault);
  if (diagnosis != nullptr) *diagnosis = fault;
  return is_read;
}

bool IsSameModel(std::span<const uint8_t> a, std::span<const uint8_t> b) {
  SDiagnosis fault;
  const auto one = Split(a, fault);
  const auto other = Split(b, fault);
  return one && other && std::ranges::equal(one->snapshot, other->snapshot);
}

int64_t PresentTime() {
  using namespace std::chrono;
  return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace veldra
