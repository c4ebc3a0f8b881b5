#include "archive/podfile.h"

#include <memory>
#include <utility>

#include "archive/poddirectory.h"
#include "platform/inputfile.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr const char* kReadErrorText = "CMTMPODFile::ReadDirectory:\nError opening file:\n";
constexpr const char* kCountErrorText = "CMTMPODFile::GetPODFileNum:\nError opening file:\n";
#ifdef NDEBUG
constexpr bool kTraces = false;
#else
constexpr bool kTraces = true;
#endif

uint16_t Masked(uint32_t index) {
  return static_cast<uint16_t>(index);
}

void Report(CQuestions& questions, const char* text, const std::string& path, const SError& error) {
  questions.Message({.text = text + path, .caption = kErrorCaption, .icon = EIcon::kError, .details = error.what});
}

PODDirEntry MakeEntry(const SPodRecord& record, size_t index) {
  return {.name_field = record.name_field,
          .offset = record.offset,
          .stored_size = record.stored_size,
          .index = static_cast<int32_t>(index)};
}

void TraceEntry(const PODDirEntry& entry) {
  if (kTraces) {
    Trace("POD Dir Entry: %s, %s, %ld, %ld\n", std::string(entry.Name()).c_str(),
          std::string(entry.TrailingName()).c_str(), static_cast<long>(entry.offset),
          static_cast<long>(entry.stored_size));
  }
}

}  // namespace

std::string_view PODDirEntry::Name() const {
  return NameInField(name_field);
}

std::string_view PODDirEntry::TrailingName() const {
  return TrailingNameInField(name_field);
}

bool CMTMPODFile::ReadDirectory(const std::string& path) {
  if (kTraces) Trace(">> CMTMPodFile::ReadDirectory(%s)\n", path.c_str());
  path_ = path;
  Clear();
  CInputFile file;
  CFileBytes head;
  SError error;
  if (!file.Open(path, &error) || !ReadPodHead(file, head, &error)) {
    Report(questions_, kReadErrorText, path, error);
    return false;
  }
  head_ = std::move(head);
  file_count_ = CByteReader(head_.View()).ReadI32();
  entries_.reserve(static_cast<size_t>(file_count_));
  for (size_t i = 0; i < static_cast<size_t>(file_count_); ++i) {
    entries_.push_back(MakeEntry(PodRecordAt(head_.View(), i), i));
    TraceEntry(entries_.back());
  }
  archive_length_ = static_cast<uint32_t>(file.Length());
  loaded_ = true;
  return true;
}

bool CMTMPODFile::GetDirEntryAt(uint32_t index, SPodEntryInfo& info) const {
  if (kTraces) Trace(">> CMTMPodFile::GetDirEntryAt(%d,...)\n", Masked(index));
  const size_t position = Masked(index);
  if (!loaded_ || position >= GetFileCount() || position >= entries_.size()) return false;
  const PODDirEntry& entry = entries_[position];
  info = {.name = std::string(entry.Name()),
          .trailing_name = std::string(entry.TrailingName()),
          .offset = entry.offset,
          .size = static_cast<uint32_t>(SizeOf(position)),
          .stored_size = entry.stored_size};
  return true;
}

uint16_t CMTMPODFile::GetPODFileNum(CQuestions& questions, const std::string& path) {
  CInputFile file;
  SError error;
  if (!file.Open(path, &error)) {
    Report(questions, kCountErrorText, path, error);
    return 0;
  }
  // Of a file that is shorter, nothing is a count.
  uint8_t start[4] = {};
  return file.ReadAt(0, start) ? static_cast<uint16_t>(CByteReader(start).ReadU32()) : uint16_t{0};
}

int64_t CMTMPODFile::GetFileOffset(std::string_view name) const {
  if (!loaded_) return kNotLoaded;
  const PODDirEntry* const entry = Find(name);
  return entry != nullptr ? int64_t{entry->offset} : kNotFound;
}

int64_t CMTMPODFile::GetFileSize(std::string_view name) const {
  if (!loaded_) return kNotLoaded;
  const PODDirEntry* const entry = Find(name);
  return entry != nullptr ? SizeOf(static_cast<size_t>(entry->index)) : kNotFound;
}

int64_t CMTMPODFile::GetFileSizeAt(uint32_t index) const {
  return loaded_ ? SizeOf(Masked(index)) : kNotLoaded;
}

uint32_t CMTMPODFile::GetStoredSize(std::string_view name) const {
  const PODDirEntry* const entry = loaded_ ? Find(name) : nullptr;
  return entry != nullptr ? entry->stored_size : 0;
}

std::optional<CFileBytes> CMTMPODFile::ReadFile(std::string_view name) const {
  const int64_t size = GetFileSize(name);
  CInputFile file;
  // A computed size can be anything in a damaged archive; memory is taken only for what the file can fill.
  if (size < 0 || !file.Open(path_) || static_cast<uint64_t>(size) > file.Length()) return std::nullopt;
  auto data = std::make_unique_for_overwrite<uint8_t[]>(static_cast<size_t>(size));
  if (!file.ReadAt(0, {data.get(), static_cast<size_t>(size)})) return std::nullopt;
  return CFileBytes(std::move(data), static_cast<size_t>(size));
}

void CMTMPODFile::Clear() {
  by_name_.clear();
  entries_.clear();
  head_ = {};
}

const PODDirEntry* CMTMPODFile::Find(std::string_view name) const {
  if (by_name_.empty()) BuildIndex();
  const auto found = by_name_.find(FoldName(name));
  return found != by_name_.end() ? found->second : nullptr;
}

int64_t CMTMPODFile::SizeOf(size_t index) const {
  if (index >= entries_.size()) return kNotFound;
  const bool is_last = index + 1 == entries_.size();
  const uint32_t end = is_last ? archive_length_ : entries_[index + 1].offset;
  return int64_t{static_cast<uint32_t>(end - entries_[index].offset)};
}

void CMTMPODFile::BuildIndex() const {
  by_name_.reserve(entries_.size());
  for (const PODDirEntry& entry : entries_)
    by_name_[FoldName(entry.Name())] = &entry;
}

}  // namespace veldra
