#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "archive/filepart.h"
#include "platform/bytes.h"
#include "platform/files.h"

namespace veldra {

inline constexpr const char* kFailedToLoadPod = "Failed to load POD file";

// An archive: count, 80 bytes of comment, the records of the directory, the entries' bytes.
inline constexpr size_t kPodCommentSize = 80;
inline constexpr size_t kPodHeaderSize = 84;
inline constexpr size_t kPodRecordSize = 40;
inline constexpr size_t kPodNameSize = 32;  ///< with the zero behind the name

/// Why an entry cannot be extracted.
enum class EPodFault : uint8_t {
  kNone,
  kOutside,    ///< it begins behind the archive's end
  kDirectory,  ///< its bytes are the archive's own header or directory
  kTooLong     ///< the archive ends within it
};

/// As the user reads it: "it lies behind the archive's end". "" for kNone.
std::string PodFaultText(EPodFault fault);

/// One entry. The names are views into the document that it came from, and bytes as stored: not always UTF-8, see
/// DisplayName(). They are looked for in the record when they are asked for, so that an archive of thousands of entries
/// opens in little more time than its directory takes to read.
struct SPodEntry {
  const char* name_field = nullptr;  ///< kPodNameSize bytes
  uint32_t offset = 0;               ///< of the first byte, from the archive's start
  uint32_t length = 0;               ///< in bytes: the stored size
  EPodFault fault = EPodFault::kNone;
  bool extracted = false;  ///< has been written out since the archive was loaded
  uint32_t file = 0;       ///< 0: its bytes are in the archive; else in another file, see CPodDocument::PartOf

  /// Whole, as stored: "ART\SKY.RAW".
  std::string_view Name() const;
  /// What stands before the last "\", without it; "" when there is none.
  std::string_view Folder() const;
  /// What stands behind it.
  std::string_view FileName() const;
};

/// An archive as the extractor and the creator see it: its directory with every entry checked against the archive's
/// length. Only the directory is kept in memory. Can be moved. The list of entries can be changed (podchanges.h does
/// so) without anything being written: it is then the archive that SavePod would make.
class CPodDocument {
 public:
  CPodDocument() = default;
  CPodDocument(CPodDocument&&) = default;
  CPodDocument& operator=(CPodDocument&&) = default;

  /// False when PATH cannot be read or its directory does not fit in it; the document is then empty. The caller shows
  /// kFailedToLoadPod with ERROR as the details.
  bool Load(const std::string& path, SError* error = nullptr);
  /// The same from bytes: HEAD is the archive's beginning, at least its header and directory, ARCHIVE_LENGTH the whole
  /// archive's length.
  bool Parse(CFileBytes head, uint64_t archive_length, SDiagnosis& diagnosis);

  const std::string& Path() const { return path_; }
  /// Opens the archive's file, unless it is another one by now than was loaded.
  bool Open(CInputFile& file, SError* error = nullptr) const { return OpenPart({path_, 0, {}, version_}, file, error); }
  uint64_t ArchiveLength() const { return archive_length_; }
  /// The header's text, as stored up to its zero.
  std::string Comment() const;
  /// When the archive was last written, in seconds since 1970 (entries have no dates of their own); 0 when unknown.
  int64_t ModificationTime() const { return modified_; }

  std::span<const SPodEntry> Entries() const { return entries_; }
  void MarkExtracted(size_t entry) { entries_[entry].extracted = true; }

  /// Where the bytes of ENTRY are: in the archive, or in the file that it is to be taken from (without a length: all of
  /// it). No path for a faulty entry.
  SFilePart PartOf(const SPodEntry& entry) const;
  /// ENTRY is not as the archive on the disk has it.
  bool IsChanged(const SPodEntry& entry) const;
  /// The header and the directory as they are on the disk.
  std::span<const uint8_t> Head() const { return head_.View(); }

  /// The positions of the entries that NAME means, in any letter case and with either separator, in directory order: a
  /// name with a folder is the whole name, one without is that of a file in any folder.
  std::vector<size_t> FindAll(std::string_view name) const;
  /// The same for a name in which "*" stands for any number of any characters and "?" for one.
  std::vector<size_t> FindMatching(std::string_view pattern) const;
  /// The entry for the bare file NAME: the last one in the folder of its type (as the game looks for it), else the last
  /// one in any folder. Nothing when there is none, or it is faulty.
  std::optional<size_t> FindFile(std::string_view file_name) const;

  /// The bytes of one entry, read now; refused when there are more than LIMIT.
  std::optional<CFileBytes> ReadEntry(size_t entry, SError* error = nullptr, size_t limit = kLargestFilePart) const;

  // --- For who changes the list --------------------------------------------------------------------------------------
  /// An entry NAME (cut off behind 31 bytes) that is in no list yet: LENGTH bytes, at BYTES, which is no part of this
  /// archive.
  SPodEntry NewEntry(std::string_view name, const SFilePart& bytes, uint32_t length);
  /// ENTRY under another name.
  SPodEntry Renamed(SPodEntry entry, std::string_view name);
  /// ENTRIES come from this document.
  void SetEntries(std::vector<SPodEntry> entries);
  /// Asks the files that whole entries are to be taken from how long they are now. The position of the first entry
  /// whose file cannot be read, or is too long for an archive.
  std::optional<size_t> MeasureFiles();

 private:
  void BuildIndex() const;

  std::string path_;
  CFileBytes head_;
  uint64_t archive_length_ = 0;
  std::optional<SFileVersion> version_;
  int64_t modified_ = 0;
  std::vector<SPodEntry> entries_;
  std::deque<std::array<char, kPodNameSize>> new_names_;  ///< that the directory on the disk does not have
  std::vector<SFilePart> files_;                          ///< of entries that are not in the archive on the disk
  /// By upper-cased file name, positions in directory order; made at the first look-up.
  mutable std::unordered_map<std::string, std::vector<uint32_t>> by_file_name_;
};

/// TIME, in seconds since 1970, as the dialogs' lists show it: "%m/%d/%y" of local time; "" for 0.
std::string PodDateText(int64_t time);

}  // namespace veldra
