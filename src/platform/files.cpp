#include "platform/files.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "platform/files_system.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// A read that finds more than the file's length said goes on with this much.
constexpr size_t kFirstGrowth = 4096;

FileFault& CurrentFault() {
  static FileFault fault;
  return fault;
}

/// Bytes that grow without being zeroed first.
struct SBuffer {
  std::unique_ptr<uint8_t[]> data;
  size_t size = 0;
  size_t capacity = 0;

  std::span<uint8_t> Free() { return {data.get() + size, capacity - size}; }
  void Grow(size_t new_capacity) {
    auto grown = std::make_unique_for_overwrite<uint8_t[]>(new_capacity);
    std::copy_n(data.get(), size, grown.get());
    data = std::move(grown);
    capacity = new_capacity;
  }
};

/// Reads until the end, whatever the length was when the file was opened: it may be written meanwhile.
bool ReadToEnd(disk::Handle handle, SBuffer& buffer, size_t limit, SError* error) {
  for (;;) {
    uint8_t beyond = 0;
    const bool full = buffer.size == buffer.capacity;
    size_t count = 0;
    const int number = disk::Read(handle, full ? std::span<uint8_t>(&beyond, 1) : buffer.Free(), count);
    if (number != 0) return disk::FailWith(error, number);
    if (count == 0) return true;
    if (!full) {
      buffer.size += count;
      continue;
    }
    if (buffer.size >= limit) return Fail(error, Format("is longer than %zu bytes", limit));
    buffer.Grow(std::min(limit, buffer.capacity + std::max(buffer.capacity, kFirstGrowth)));
    buffer.data[buffer.size++] = beyond;
  }
}

/// What stands at the beginning of an open file of LENGTH bytes, for CHECK.
bool CheckStart(disk::Handle handle, uint64_t length, FileStartCheck check, SError* error) {
  if (check == nullptr || length <= kCheckedLength) return true;
  std::array<uint8_t, 32> start = {};
  size_t count = 0;
  const int number = disk::ReadAt(handle, 0, start, count);
  if (number != 0) return disk::FailWith(error, number);
  std::string fault = check(std::span(start).first(count), length);
  return fault.empty() || Fail(error, std::move(fault));
}

bool ReadInto(SBuffer& buffer, const std::string& path, size_t limit, FileStartCheck check, SError* error) {
  disk::COpenFile file;
  disk::SStatus status;
  const int number = disk::OpenToRead(path, file.handle, status);
  if (number != 0) return disk::FailWith(error, number);
  if (status.kind != disk::EKind::kFile) return Fail(error, disk::NotAFileText(status.kind));
  if (status.length > limit) return Fail(error, Format("is longer than %zu bytes", limit));
  if (!CheckStart(file.handle, status.length, check, error)) return false;
  buffer.Grow(static_cast<size_t>(status.length));
  return ReadToEnd(file.handle, buffer, limit, error);
}

}  // namespace

void SetFileFault(FileFault fault) {
  CurrentFault() = std::move(fault);
}

int disk::Fault(std::string_view operation, const std::string& path) {
  return CurrentFault() ? CurrentFault()(operation, path) : 0;
}

bool disk::FailWith(SError* error, int number) {
  return Fail(error, ErrorText(number));
}

const char* disk::NotAFileText(EKind kind) {
  return kind == EKind::kDirectory ? "is a folder" : "is not a file";
}

std::optional<CFileBytes> ReadWholeFile(std::string_view path, SError* error, size_t limit, FileStartCheck check) try {
  SBuffer buffer;
  if (!ReadInto(buffer, disk::SystemPath(path), limit, check, error)) return std::nullopt;
  return CFileBytes(std::move(buffer.data), buffer.size);
} catch (const std::bad_alloc&) {
  Fail(error, kNotEnoughMemory);
  return std::nullopt;
}

std::optional<CFileBytes> ReadTextFile(std::string_view path, SError* error, size_t limit) {
  auto file = ReadWholeFile(path, error, limit);
  if (!file) return file;
  const std::string_view text = file->Text();
  // Any of the ways to end a line; "\r\n" is two of them, and no file with so many lines is right anyway.
  const auto ends = std::count(text.begin(), text.end(), '\n') + std::count(text.begin(), text.end(), '\r');
  if (ends <= ptrdiff_t{2 * kMostTextLines}) return file;
  Fail(error, Format("has more than %zu lines", kMostTextLines));
  return std::nullopt;
}

bool IsSameFile(std::string_view a, std::string_view b) {
  if (a.empty() || b.empty()) return false;
  const auto followed = [](std::string_view path) {
    const std::string absolute = disk::SystemPath(AbsolutePath(path));
    std::string target;
    return disk::FollowLinks(absolute, target) == 0 ? target : absolute;
  };
  const std::string first = followed(a);
  const std::string second = followed(b);
  const auto identity = disk::Identity(first);
  const auto other = disk::Identity(second);
  if (identity || other) return identity == other;
  if (!disk::IsSameName(FileNamePart(first), FileNamePart(second))) return false;
  // A root that is not there, as of a drive without a disk, has no folder above.
  const std::string folder = DirectoryPart(first);
  return folder == first ? second == first : IsSameFile(folder, DirectoryPart(second));
}

bool FileExists(std::string_view path) {
  return disk::Status(disk::SystemPath(path)).kind != disk::EKind::kNothing;
}

bool IsFile(std::string_view path) {
  return disk::Status(disk::SystemPath(path)).kind == disk::EKind::kFile;
}

bool IsLink(std::string_view path) {
  return disk::IsLink(disk::SystemPath(path));
}

bool IsDirectory(std::string_view path) {
  return disk::Status(disk::SystemPath(path)).kind == disk::EKind::kDirectory;
}

std::optional<uint64_t> FileLength(std::string_view path) {
  const disk::SStatus status = disk::Status(disk::SystemPath(path));
  return status.kind == disk::EKind::kFile ? std::optional<uint64_t>(status.length) : std::nullopt;
}

bool RemoveFile(std::string_view path) {
  return disk::Remove(disk::SystemPath(path)) == 0;
}

bool CMadeFolder::Make(std::string_view path) {
  if (IsDirectory(path)) return true;
  const std::string folder = disk::SystemPath(path);
  if (folder.empty() || disk::MakeDirectory(folder) != 0) return false;
  made_ = folder;
  return true;
}

CMadeFolder::~CMadeFolder() {
  if (!made_.empty()) disk::RemoveEmptyDirectory(made_);
}

bool MakeDirectories(std::string_view path) {
  // Upwards to the first folder that is there, then down again.
  std::vector<std::string> missing;
  std::string folder = disk::SystemPath(path);
  while (!folder.empty() && disk::Status(folder).kind == disk::EKind::kNothing) {
    missing.push_back(folder);
    std::string above = disk::FolderAbove(folder);
    if (above.size() >= folder.size()) return false;
    folder = std::move(above);
  }
  for (auto each = missing.rbegin(); each != missing.rend(); ++each) {
    // A name that ends in a separator was made with the one before.
    const int number = disk::MakeDirectory(*each);
    if (number != 0 && !disk::IsAlreadyThere(number)) return false;
  }
  return IsDirectory(path);
}

}  // namespace veldra
