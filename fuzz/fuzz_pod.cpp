#include <algorithm>
#include <memory>

#include "archive/poddocument.h"
#include "archive/podnames.h"
#include "archive/stockfiles.h"
#include "platform/assert.h"
#include "platform/text.h"

/// An archive: every entry that is called good lies in its data, a name that may be extracted has no way out, and a
/// name that may be in an archive can be taken out of it again. The same bytes as a stock-file list come back
/// unchanged.

namespace {

using namespace veldra;

void CheckPath(const std::string& path) {
  VELDRA_ASSERT(!path.empty() && path.front() != '/' && path.back() != '/');
  for (size_t start = 0; start <= path.size();) {
    const size_t end = std::min(path.find_first_of("\\/", start), path.size());
    const std::string part = path.substr(start, end - start);
    VELDRA_ASSERT(!part.empty() && part != "." && part != ".." && part.find(':') == std::string::npos);
    VELDRA_ASSERT(std::none_of(part.begin(), part.end(), [](unsigned char c) { return c < 32; }));
    start = end + 1;
  }
}

void CheckEntry(const SPodEntry& entry, uint64_t data_start, uint64_t archive_length) {
  if (entry.fault == EPodFault::kNone && entry.length > 0) {
    VELDRA_ASSERT(entry.offset >= data_start && entry.offset + uint64_t{entry.length} <= archive_length);
  }
  VELDRA_ASSERT(entry.Folder().size() + entry.FileName().size() <= entry.Name().size());
  VELDRA_ASSERT(DisplayName(entry.Name()).find('\n') == std::string::npos);
  for (const bool folders : {false, true}) {
    const SNameResult path = SafeRelativePath(entry.Name(), folders);
    if (path.Ok()) CheckPath(path.name);
  }
  const SNameResult name = PodEntryName(entry.Name());
  VELDRA_ASSERT(!name.Ok() || (name.name.size() < kPodNameSize && SafeRelativePath(name.name, true).Ok()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  auto copy = std::make_unique<uint8_t[]>(size);
  std::copy_n(data, size, copy.get());
  CPodDocument pod;
  SDiagnosis diagnosis;
  if (pod.Parse(CFileBytes(std::move(copy), size), size, diagnosis)) {
    const uint64_t data_start = kPodHeaderSize + kPodRecordSize * pod.Entries().size();
    VELDRA_ASSERT(pod.Entries().empty() || data_start <= size);
    for (const SPodEntry& entry : pod.Entries())
      CheckEntry(entry, data_start, size);
    for (size_t i = 0; i < std::min<size_t>(pod.Entries().size(), 4); ++i)
      VELDRA_ASSERT(!pod.FindAll(pod.Entries()[i].Name()).empty());
    VELDRA_ASSERT(pod.Comment().size() <= kPodCommentSize);
  }
  if (const auto names = ReadStringList({data, size})) {
    const auto written = WriteStringList(*names);
    VELDRA_ASSERT(std::equal(written.begin(), written.end(), data, data + size));
  }
  return 0;
}
