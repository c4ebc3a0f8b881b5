#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/files.h"
#include "platform/questions.h"

namespace veldra {

/// One record of an archive's directory. The names are views into the object that it came from, looked for in the
/// record when they are asked for.
struct PODDirEntry {
  const char* name_field = nullptr;  ///< 32 bytes
  uint32_t offset = 0;               ///< of the first byte, from the archive's start
  uint32_t stored_size = 0;          ///< in bytes, as the record says; see CMTMPODFile on why it does not count
  int32_t index = 0;                 ///< position in the directory

  /// As stored, any letter case.
  std::string_view Name() const;
  /// For a name that ends in RAW the text behind its zero, else "<none>".
  std::string_view TrailingName() const;
};

/// What CMTMPODFile::GetDirEntryAt tells of an entry.
struct SPodEntryInfo {
  std::string name;
  std::string trailing_name;
  uint32_t offset = 0;
  uint32_t size = 0;  ///< computed
  uint32_t stored_size = 0;
};

/// The directory of an archive: lists the entries and finds them by name, in any letter case. The size of an entry is
/// the distance to the next one's offset (the last: to the archive's end), on purpose: the layout is trusted, not the
/// size field. It is computed in 32 bits and wraps where an archive's offsets go down. What backs the dialogs is
/// CPodDocument, which trusts the size field and checks the entries.
///
/// The program itself uses the listing only; the queries by name and by index are kept for others that build on it.
/// Indices are taken modulo 65536, and the count is told modulo 65536; Entries() has them all. Before a directory has
/// been read the queries return kNotLoaded (or 0).
class CMTMPODFile {
 public:
  static constexpr int64_t kNotFound = -1;
  static constexpr int64_t kNotLoaded = -2;

  explicit CMTMPODFile(CQuestions& questions) : questions_(questions) {}
  CMTMPODFile(const CMTMPODFile&) = delete;
  CMTMPODFile& operator=(const CMTMPODFile&) = delete;

  /// False, after a message, when PATH cannot be opened or is shorter than its own directory. The object then has no
  /// entries while the count and IsLoaded still tell of the archive before: throw it away.
  bool ReadDirectory(const std::string& path);

  /// False when INDEX is beyond the count's low 16 bits.
  bool GetDirEntryAt(uint32_t index, SPodEntryInfo& info) const;
  /// The count in the header of the archive PATH, its low 16 bits; 0, after a message, when it cannot be opened.
  static uint16_t GetPODFileNum(CQuestions& questions, const std::string& path);

  uint16_t GetFileCount() const { return static_cast<uint16_t>(file_count_); }
  uint32_t GetPODSize() const { return loaded_ ? archive_length_ : 0; }
  int64_t GetFileOffset(std::string_view name) const;
  int64_t GetFileSize(std::string_view name) const;
  int64_t GetFileSizeAt(uint32_t index) const;
  /// 0 when there is no such entry.
  uint32_t GetStoredSize(std::string_view name) const;
  /// As many bytes as the entry has, from the START OF THE ARCHIVE: this operation never sought to the entry, and
  /// nothing calls it. Contents are read through CPodDocument. Nothing when the name is not found, or the entry claims
  /// more bytes than the archive has.
  std::optional<CFileBytes> ReadFile(std::string_view name) const;

  bool IsLoaded() const { return loaded_; }
  /// In directory order; as long as the directory is loaded.
  std::span<const PODDirEntry> Entries() const { return entries_; }
  /// Of an entry of this directory.
  uint32_t ComputedSize(const PODDirEntry& entry) const {
    return static_cast<uint32_t>(SizeOf(static_cast<size_t>(entry.index)));
  }
  void Clear();

 private:
  /// The last entry of this name; null when there is none or no directory.
  const PODDirEntry* Find(std::string_view name) const;
  int64_t SizeOf(size_t index) const;
  void BuildIndex() const;

  CQuestions& questions_;
  std::string path_;
  int32_t file_count_ = 0;
  uint32_t archive_length_ = 0;
  CFileBytes head_;
  std::vector<PODDirEntry> entries_;  ///< in directory order
  /// By upper-cased name. Made when the first name is looked up: who only lists an archive needs none.
  mutable std::unordered_map<std::string, const PODDirEntry*> by_name_;
  bool loaded_ = false;
};

}  // namespace veldra
