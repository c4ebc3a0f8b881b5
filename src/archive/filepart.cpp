#include "archive/filepart.h"

#include <memory>
#include <new>
#include <utility>

#include "platform/text.h"

namespace veldra {

namespace {

std::nullopt_t Nothing(SError* error, std::string what) {
  Fail(error, std::move(what));
  return std::nullopt;
}

}  // namespace

bool OpenPart(const SFilePart& part, CInputFile& file, SError* error) {
  if (!file.Open(part.path, error)) return false;
  if (!part.version || *part.version == file.Version()) return true;
  file.Close();
  return Fail(error, "another program has changed it meanwhile");
}

std::optional<CFileBytes> ReadFilePart(const SFilePart& part, SError* error, size_t limit) try {
  CInputFile file;
  if (!OpenPart(part, file, error)) return std::nullopt;
  if (part.offset > file.Length()) return Nothing(error, "the file ends before its time");
  const uint64_t there = file.Length() - part.offset;
  const uint64_t wanted = part.length.value_or(there);
  if (wanted > limit) return Nothing(error, Format("is longer than %zu bytes", limit));
  if (wanted > there) return Nothing(error, "the file ends before its time");
  const auto size = static_cast<size_t>(wanted);
  auto data = std::make_unique_for_overwrite<uint8_t[]>(size);
  if (!file.ReadAt(part.offset, {data.get(), size}, error)) return std::nullopt;
  return CFileBytes(std::move(data), size);
} catch (const std::bad_alloc&) {
  return Nothing(error, kNotEnoughMemory);
}

}  // namespace veldra
