#include "podtools/archivecopy.h"

#include <map>
#include <new>
#include <string_view>
#include <utility>

#include "platform/bytes.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kOtherArchiveText = "the archive has been changed since";
constexpr uint32_t kWholeFile = 1;

void WriteLong(CByteWriter& out, uint64_t value) {
  out.WriteU32(static_cast<uint32_t>(value));
  out.WriteU32(static_cast<uint32_t>(value >> 32));
}

uint64_t ReadLong(CByteReader& in) {
  const uint64_t low = in.ReadU32();
  return low | uint64_t{in.ReadU32()} << 32;
}

/// What tells one directory from another.
uint64_t HashOfHead(const CPodDocument& archive) {
  const auto head = archive.Head();
  return HashText({reinterpret_cast<const char*>(head.data()), head.size()});
}

void WriteEntry(CByteWriter& out, const CPodDocument& archive, const SPodEntry& entry) {
  out.WriteBytes({reinterpret_cast<const uint8_t*>(entry.name_field), kPodNameSize});
  out.WriteU32(entry.file);
  out.WriteU32(entry.offset);
  out.WriteU32(entry.length);
  out.WriteU32(static_cast<uint32_t>(entry.fault));
  if (entry.file == 0) return;
  const SFilePart part = archive.PartOf(entry);
  out.WriteU32(part.length ? 0 : kWholeFile);
  WriteLong(out, part.offset);
  out.WriteU32(static_cast<uint32_t>(part.path.size()));
  out.WriteText(part.path);
}

SPodEntry ReadEntry(CByteReader& in, CPodDocument& archive) {
  const auto field = in.ReadBytes(kPodNameSize);
  const std::string name(field.begin(), field.end());
  const uint32_t file = in.ReadU32();
  SPodEntry entry{.offset = in.ReadU32(), .length = in.ReadU32()};
  const uint32_t fault = in.ReadU32();
  entry.fault =
      fault <= static_cast<uint32_t>(EPodFault::kTooLong) ? static_cast<EPodFault>(fault) : EPodFault::kOutside;
  if (file == 0) return archive.Renamed(entry, name);
  const bool is_whole = in.ReadU32() == kWholeFile;
  SFilePart part;
  part.offset = ReadLong(in);
  const auto path = in.ReadBytes(in.ReadU32());
  part.path.assign(path.begin(), path.end());
  if (!is_whole) part.length = entry.length;
  return archive.NewEntry(name, part, entry.length);
}

/// Entries that are as the directory has them keep its names, so that they do not count as changed.
void KeepOwnNames(const CPodDocument& archive, std::vector<SPodEntry>& entries) {
  std::map<std::pair<uint32_t, std::string_view>, const char*> own;
  const auto key = [](const SPodEntry& entry) {
    return std::pair(entry.offset, std::string_view(entry.name_field, kPodNameSize - 1));
  };
  for (const SPodEntry& entry : archive.Entries())
    own.emplace(key(entry), entry.name_field);
  for (SPodEntry& entry : entries) {
    const auto found = own.find(key(entry));
    if (entry.file == 0 && found != own.end()) entry.name_field = found->second;
  }
}

bool IsInside(const SPodEntry& entry, uint64_t archive_length) {
  return entry.file > 0 || entry.fault != EPodFault::kNone || uint64_t{entry.offset} + entry.length <= archive_length;
}

}  // namespace

std::vector<uint8_t> WriteArchiveCopy(SCopyLabel label, const CPodDocument& archive) {
  label.kind = ECopyKind::kArchive;
  CByteWriter out;
  WriteLong(out, archive.ArchiveLength());
  WriteLong(out, HashOfHead(archive));
  out.WriteU32(static_cast<uint32_t>(archive.Entries().size()));
  for (const SPodEntry& entry : archive.Entries())
    WriteEntry(out, archive, entry);
  return WriteCopy(label, out.Bytes());
}

bool ReadArchiveCopy(const SCopyFile& file, CPodDocument& archive, SDiagnosis& diagnosis) try {
  diagnosis = {0, file.fault};
  if (!file.fault.empty()) return false;
  const auto content = ReadCopy(file.bytes.View(), ECopyKind::kArchive, diagnosis);
  if (!content) return false;
  CByteReader in(*content);
  const bool is_same = ReadLong(in) == archive.ArchiveLength() && ReadLong(in) == HashOfHead(archive);
  const uint32_t count = in.ReadU32();
  std::vector<SPodEntry> entries;
  while (is_same && entries.size() < count && !in.Failed()) {
    entries.push_back(ReadEntry(in, archive));
    if (!IsInside(entries.back(), archive.ArchiveLength())) diagnosis = {in.Position(), "an entry lies outside"};
  }
  if (in.Failed()) diagnosis = {in.Position(), "ends too early"};
  if (!is_same) diagnosis = {0, kOtherArchiveText};
  if (!diagnosis.Empty()) return false;
  KeepOwnNames(archive, entries);
  archive.SetEntries(std::move(entries));
  return true;
} catch (const std::bad_alloc&) {
  diagnosis = {0, kNotEnoughMemory};
  return false;
}

}  // namespace veldra
