#include "document/filestamp.h"

#include <utility>

#include "platform/compress.h"
#include "platform/files.h"
#include "platform/filetime.h"

namespace veldra {

namespace {

constexpr size_t kLargestChecked = size_t{32} << 20;

}  // namespace

CFileStamp::CFileStamp(std::string path) : path_(std::move(path)) {
  if (!IsFile(path_)) return;
  length_ = FileLength(path_);
  time_ = FileWriteTime(path_);
  if (const auto bytes = ReadWholeFile(path_, nullptr, kLargestChecked)) checksum_ = Checksum(bytes->View());
}

bool CFileStamp::IsChanged() {
  if (path_.empty() || !IsFile(path_)) return false;
  if (length_ && FileLength(path_) == length_ && FileWriteTime(path_) == time_) return false;
  CFileStamp now(path_);
  if (!now.length_) return false;  // gone meanwhile
  const bool is_same = checksum_ && now.length_ == length_ && now.checksum_ == checksum_;
  if (is_same) *this = std::move(now);
  return !is_same;
}

}  // namespace veldra
