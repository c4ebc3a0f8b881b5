#include "document/copyfile.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <new>
#include <utility>

#include "platform/compress.h"
#include "platform/text.h"

namespace veldra {

namespace {

// The file: the kind's magic, u32 kVersion, u32 checksum of all that follows, u32 length of the label, the label, u64
// length of the content, the content packed.
constexpr size_t kMagicSize = 8;
constexpr std::string_view kMagics[] = {"VELDCOPY", "VELDTRCK", "VELDPODS"};  ///< in the order of ECopyKind
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

/// The parts of a file, as they lie in it.
struct SParts {
  ECopyKind kind = ECopyKind::kModel;
  std::span<const uint8_t> label;
  uint64_t content_size = 0;
  std::span<const uint8_t> content;
};

std::optional<ECopyKind> KindOf(std::span<const uint8_t> magic) {
  for (size_t kind = 0; kind < std::size(kMagics); ++kind)
    if (std::ranges::equal(magic, kMagics[kind])) return static_cast<ECopyKind>(kind);
  return std::nullopt;
}

std::optional<SParts> Split(std::span<const uint8_t> file, SDiagnosis& fault) {
  CByteReader in(file);
  const auto kind = KindOf(in.ReadBytes(kMagicSize));
  if (!kind) {
    fault = {0, "is no copy of a document"};
    return std::nullopt;
  }
  const uint32_t version = in.ReadU32();
  const uint32_t checksum = in.ReadU32();
  SParts parts;
  parts.kind = *kind;
  parts.label = in.ReadBytes(in.ReadU32());
  parts.content_size = ReadLong(in);
  if (in.Failed()) {
    fault = {in.Position(), "ends too early"};
  } else if (version != kVersion) {
    fault = {kMagicSize, Format("version %u of the format is not known", version)};
  } else if (checksum != Checksum(file.subspan(kHeaderSize))) {
    fault = {kHeaderSize - 4, "the checksum is wrong"};
  }
  if (!fault.Empty()) return std::nullopt;
  parts.content = in.ReadBytes(in.Remaining());
  return parts;
}

}  // namespace

std::vector<uint8_t> WriteCopy(const SCopyLabel& label, std::span<const uint8_t> content) {
  const CByteWriter label_bytes = WriteLabel(label);
  const std::vector<uint8_t> packed = Compress(content);

  CByteWriter body;
  body.Reserve(label_bytes.Size() + packed.size() + 12);
  body.WriteU32(static_cast<uint32_t>(label_bytes.Size()));
  body.WriteBytes(label_bytes.Bytes());
  WriteLong(body, content.size());
  body.WriteBytes(packed);

  CByteWriter file;
  file.Reserve(kHeaderSize + body.Size());
  file.WriteText(kMagics[static_cast<size_t>(label.kind)]);
  file.WriteU32(kVersion);
  file.WriteU32(Checksum(body.Bytes()));
  file.WriteBytes(body.Bytes());
  return {file.Bytes().begin(), file.Bytes().end()};
}

std::vector<uint8_t> PackCopy(const SCopyLabel& label, const CopyWriter& write, SError* error) try {
  return write(label);
} catch (const std::bad_alloc&) {
  Fail(error, kNotEnoughMemory);
  return {};
}

std::optional<SCopyLabel> ReadCopyLabel(std::span<const uint8_t> file, SDiagnosis* diagnosis) {
  SDiagnosis fault;
  const auto parts = Split(file, fault);
  auto label = parts ? ReadLabel(parts->label) : std::nullopt;
  if (parts && !label) fault = {kHeaderSize, "its label is damaged"};
  if (label) label->kind = parts->kind;
  if (diagnosis != nullptr) *diagnosis = fault;
  return label;
}

std::optional<std::vector<uint8_t>> ReadCopy(std::span<const uint8_t> file, ECopyKind kind, SDiagnosis& diagnosis) {
  const auto parts = Split(file, diagnosis);
  if (!parts) return std::nullopt;
  if (parts->kind != kind) {
    diagnosis = {0, "is a copy of another kind of document"};
    return std::nullopt;
  }
  auto content = Decompress(parts->content, static_cast<size_t>(parts->content_size));
  if (!content) diagnosis = {file.size() - parts->content.size(), "the packed document is damaged"};
  return content;
}

bool IsSameContent(std::span<const uint8_t> a, std::span<const uint8_t> b) {
  SDiagnosis fault;
  const auto one = Split(a, fault);
  const auto other = Split(b, fault);
  return one && other && one->kind == other->kind && std::ranges::equal(one->content, other->content);
}

SCopyFile ReadCopyFile(const std::string& path) {
  SError error;
  auto bytes = ReadWholeFile(path, &error);
  return bytes ? SCopyFile{.bytes = std::move(*bytes)} : SCopyFile{.fault = error.what};
}

std::optional<SCopyLabel> ReadLabelOf(const std::string& path, std::string& fault) {
  const SCopyFile file = ReadCopyFile(path);
  SDiagnosis diagnosis;
  auto label = file.fault.empty() ? ReadCopyLabel(file.bytes.View(), &diagnosis) : std::nullopt;
  if (!label) fault = file.fault.empty() ? diagnosis.Text() : file.fault;
  return label;
}

int64_t PresentTime() {
  using namespace std::chrono;
  return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace veldra
