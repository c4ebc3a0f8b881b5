#include "archive/poddirectory.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>

#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kCountSize = 4;
constexpr std::string_view kNoTrailingName = "<none>";
constexpr std::string_view kTextureExtension = "RAW";

std::string_view UpToZero(std::string_view field) {
  const void* const zero = std::memchr(field.data(), 0, field.size());
  return zero == nullptr ? field : field.substr(0, static_cast<size_t>(static_cast<const char*>(zero) - field.data()));
}

}  // namespace

bool CheckPodCount(std::span<const uint8_t> head, uint64_t archive_length, uint32_t& count, SDiagnosis& diagnosis) {
  CByteReader reader(head);
  count = reader.ReadU32();
  if (reader.Failed()) {
    diagnosis = {0, "the file is too short for an archive"};
    return false;
  }
  const uint64_t room = archive_length < kPodHeaderSize ? 0 : (archive_length - kPodHeaderSize) / kPodRecordSize;
  if (count <= room) return true;
  diagnosis = {0, Format("%u entries, the file has room for %llu", count, static_cast<unsigned long long>(room))};
  return false;
}

bool ReadPodHead(const CInputFile& file, CFileBytes& head, SError* error) try {
  std::array<uint8_t, kCountSize> start = {};
  const auto known = static_cast<size_t>(std::min<uint64_t>(file.Length(), kCountSize));
  if (!file.ReadAt(0, std::span(start).first(known), error)) return false;
  uint32_t count = 0;
  SDiagnosis diagnosis;
  if (!CheckPodCount(std::span(start).first(known), file.Length(), count, diagnosis)) {
    if (error != nullptr) error->what = diagnosis.Text();
    return false;
  }
  const uint64_t wanted = kPodHeaderSize + uint64_t{count} * kPodRecordSize;
  const auto size = static_cast<size_t>(std::min(wanted, file.Length()));
  auto data = std::make_unique_for_overwrite<uint8_t[]>(size);
  if (!file.ReadAt(0, {data.get(), size}, error)) return false;
  head = CFileBytes(std::move(data), size);
  return true;
} catch (const std::bad_alloc&) {
  if (error != nullptr) error->what = kNotEnoughMemory;
  return false;
}

std::string_view NameInField(const char* field) {
  return UpToZero({field, kPodNameSize});
}

std::string_view TrailingNameInField(const char* field) {
  const std::string_view name = NameInField(field);
  if (name.size() < kTextureExtension.size() || name.size() == kPodNameSize) return kNoTrailingName;
  if (!EqualNoCase(name.substr(name.size() - kTextureExtension.size()), kTextureExtension)) return kNoTrailingName;
  const std::string_view behind = UpToZero(std::string_view(field, kPodNameSize).substr(name.size() + 1));
  return behind.empty() ? kNoTrailingName : behind;
}

}  // namespace veldra
