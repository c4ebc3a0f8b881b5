#include "archive/poddocument.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <functional>
#include <memory>
#include <new>

#include "archive/filepart.h"
#include "archive/filetypes.h"
#include "archive/poddirectory.h"
#include "platform/inputfile.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kCommentOffset = 4;

EPodFault FaultOf(const SPodRecord& record, uint64_t data_start, uint64_t archive_length) {
  // Of thousands of entries nearly all are good: one look for those.
  if (record.offset >= data_start && uint64_t{record.offset} + record.stored_size <= archive_length) {
    return EPodFault::kNone;
  }
  if (record.offset > archive_length) return EPodFault::kOutside;
  if (record.stored_size > 0 && record.offset < data_start) return EPodFault::kDirectory;
  return record.stored_size > archive_length - record.offset ? EPodFault::kTooLong : EPodFault::kNone;
}

SPodEntry MakeEntry(const SPodRecord& record, uint64_t data_start, uint64_t archive_length) {
  return {.name_field = record.name_field,
          .offset = record.offset,
          .length = record.stored_size,
          .fault = FaultOf(record, data_start, archive_length)};
}

/// One spelling for all that mean one name, with the archive's separator.
std::string LookUpName(std::string_view name) {
  std::string wanted = FoldName(name);
  std::replace(wanted.begin(), wanted.end(), '/', '\\');
  return wanted;
}

/// Where the character of TEXT at AT ends.
size_t NextCharacter(std::string_view text, size_t at) {
  do {
    ++at;
  } while (at < text.size() && (static_cast<uint8_t>(text[at]) & 0xC0) == 0x80);
  return at;
}

/// Both upper-cased UTF-8. After a mismatch the last "*" takes one character more.
bool MatchesPattern(std::string_view text, std::string_view pattern) {
  size_t at = 0;
  size_t in_pattern = 0;
  size_t star = std::string_view::npos;
  size_t behind_star = 0;
  while (at < text.size()) {
    const char wanted = in_pattern < pattern.size() ? pattern[in_pattern] : '\0';
    if (wanted == '*') {
      star = in_pattern++;
      behind_star = at;
    } else if (in_pattern < pattern.size() && (wanted == '?' || wanted == text[at])) {
      at = wanted == '?' ? NextCharacter(text, at) : at + 1;
      ++in_pattern;
    } else if (star != std::string_view::npos) {
      in_pattern = star + 1;
      at = behind_star = NextCharacter(text, behind_star);
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', in_pattern) == std::string_view::npos;
}

}  // namespace

std::string PodFaultText(EPodFault fault) {
  switch (fault) {
    case EPodFault::kOutside:
      return "it begins behind the archive's end";
    case EPodFault::kDirectory:
      return "its bytes are the archive's own directory";
    case EPodFault::kTooLong:
      return "it is longer than what the archive has left";
    case EPodFault::kNone:
      break;
  }
  return {};
}

std::string_view SPodEntry::Name() const {
  return NameInField(name_field);
}

std::string_view SPodEntry::Folder() const {
  const std::string_view name = Name();
  const size_t separator = name.rfind('\\');
  return name.substr(0, separator == std::string_view::npos ? 0 : separator);
}

std::string_view SPodEntry::FileName() const {
  const std::string_view name = Name();
  return name.substr(name.rfind('\\') + 1);
}

bool CPodDocument::Load(const std::string& path, SError* error) {
  *this = CPodDocument();
  CInputFile file;
  CFileBytes head;
  SDiagnosis diagnosis;
  if (!file.Open(path, error) || !ReadPodHead(file, head, error)) return false;
  if (!Parse(std::move(head), file.Length(), diagnosis)) return Fail(error, diagnosis.Text());
  path_ = path;
  version_ = file.Version();
  modified_ = file.ModificationTime();
  return true;
}

bool CPodDocument::Parse(CFileBytes head, uint64_t archive_length, SDiagnosis& diagnosis) try {
  *this = CPodDocument();
  const std::span<const uint8_t> bytes = head.View();
  uint32_t count = 0;
  if (!CheckPodCount(bytes, std::min<uint64_t>(archive_length, bytes.size()), count, diagnosis)) return false;
  const uint64_t data_start = kPodHeaderSize + uint64_t{count} * kPodRecordSize;
  std::vector<SPodEntry> entries;
  entries.reserve(count);
  for (uint32_t i = 0; i < count; ++i)
    entries.push_back(MakeEntry(PodRecordAt(bytes, i), data_start, archive_length));
  entries_ = std::move(entries);
  head_ = std::move(head);
  archive_length_ = archive_length;
  return true;
} catch (const std::bad_alloc&) {
  diagnosis = {0, kNotEnoughMemory};
  return false;
}

SFilePart CPodDocument::PartOf(const SPodEntry& entry) const {
  if (entry.fault != EPodFault::kNone) return {};
  if (entry.file > 0) return files_[entry.file - 1];
  return {path_, entry.offset, entry.length, version_};
}

bool CPodDocument::IsChanged(const SPodEntry& entry) const {
  if (entry.file > 0) return true;
  const auto* const field = reinterpret_cast<const uint8_t*>(entry.name_field);
  const auto head = head_.View();
  return std::less<>()(field, head.data()) || !std::less<>()(field, head.data() + head.size());
}

SPodEntry CPodDocument::Renamed(SPodEntry entry, std::string_view name) {
  auto& field = new_names_.emplace_back();
  std::copy_n(name.begin(), std::min(name.size(), kPodNameSize - 1), field.begin());
  entry.name_field = field.data();
  return entry;
}

SPodEntry CPodDocument::NewEntry(std::string_view name, const SFilePart& bytes, uint32_t length) {
  files_.push_back(bytes);
  return Renamed({.length = length, .file = static_cast<uint32_t>(files_.size())}, name);
}

void CPodDocument::SetEntries(std::vector<SPodEntry> entries) {
  entries_ = std::move(entries);
  by_file_name_.clear();
}

std::optional<size_t> CPodDocument::MeasureFiles() {
  for (size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].file == 0 || PartOf(entries_[i]).length) continue;
    const std::string& path = files_[entries_[i].file - 1].path;
    const auto length = IsFile(path) ? FileLength(path) : std::nullopt;
    if (!length || *length > UINT32_MAX) return i;
    entries_[i].length = static_cast<uint32_t>(*length);
  }
  return std::nullopt;
}

std::string CPodDocument::Comment() const {
  CByteReader reader(head_.View());
  reader.Seek(kCommentOffset);
  return reader.ReadFixedText(std::min(kPodCommentSize, reader.Remaining()));
}

void CPodDocument::BuildIndex() const {
  if (!by_file_name_.empty()) return;
  for (size_t i = 0; i < entries_.size(); ++i)
    by_file_name_[FileNamePart(LookUpName(entries_[i].Name()))].push_back(static_cast<uint32_t>(i));
}

std::vector<size_t> CPodDocument::FindAll(std::string_view name) const {
  BuildIndex();
  const std::string wanted = LookUpName(name);
  const bool has_folder = wanted.find('\\') != std::string::npos;
  std::vector<size_t> found;
  const auto row = by_file_name_.find(FileNamePart(wanted));
  if (row != by_file_name_.end()) {
    for (const uint32_t i : row->second)
      if (!has_folder || LookUpName(entries_[i].Name()) == wanted) found.push_back(i);
  }
  return found;
}

std::vector<size_t> CPodDocument::FindMatching(std::string_view pattern) const {
  std::vector<size_t> found = FindAll(pattern);
  const std::string wanted = LookUpName(pattern);
  if (!found.empty() || wanted.find_first_of("*?") == std::string::npos) return found;
  const bool has_folder = wanted.find('\\') != std::string::npos;
  for (size_t i = 0; i < entries_.size(); ++i) {
    const std::string name = LookUpName(entries_[i].Name());
    if (MatchesPattern(has_folder ? name : FileNamePart(name), wanted)) found.push_back(i);
  }
  return found;
}

std::optional<size_t> CPodDocument::FindFile(std::string_view file_name) const {
  const std::string folder = FolderOfType(TypeOfFile(file_name));
  std::optional<size_t> in_folder;
  std::optional<size_t> anywhere;
  for (const size_t i : FindAll(file_name)) {
    if (entries_[i].fault != EPodFault::kNone) continue;
    anywhere = i;
    if (EqualNoCase(entries_[i].Folder(), folder)) in_folder = i;
  }
  return in_folder ? in_folder : anywhere;
}

std::optional<CFileBytes> CPodDocument::ReadEntry(size_t entry, SError* error, size_t limit) const {
  const SPodEntry& wanted = entries_.at(entry);
  if (wanted.fault == EPodFault::kNone) return ReadFilePart(PartOf(wanted), error, limit);
  Fail(error, PodFaultText(wanted.fault));
  return std::nullopt;
}

std::string PodDateText(int64_t time) {
  if (time == 0) return {};
  const auto seconds = static_cast<std::time_t>(time);
  const std::tm* const local = std::localtime(&seconds);
  std::array<char, 16> text = {};
  if (local != nullptr) std::strftime(text.data(), text.size(), "%m/%d/%y", local);
  return text.data();
}

}  // namespace veldra
